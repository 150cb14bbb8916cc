// The entries of a value do what a map of the library does with numbers, step by step. Programs of
// an installation have maps of their own for this; without it the test says that the test is right.
#include "import.hpp"

#include <algorithm>
#include <iterator>
#include <random>

#include "checks.h"
#include "parts.h"

namespace {

using Entries = std::map<std::string, Value>;
using Model = std::map<std::string, long long>;

bool isEntry(const Entries::value_type& entry, const Model::value_type& expected) {
    return entry.first == expected.first && entry.second.intVal == expected.second;
}

bool isLike(const Entries& entries, const Model& model) {
    return entries.size() == model.size() && entries.empty() == model.empty() &&
           std::equal(entries.begin(), entries.end(), model.begin(), model.end(), isEntry) &&
           std::equal(entries.crbegin(), entries.crend(), model.crbegin(), model.crend(), isEntry);
}

// Names of all lengths around those that are compared in pieces, some with the same beginning, end
// or both, some with bytes of zero or above 127.
std::string nameOf(unsigned number) {
    const std::string digits = std::to_string(number / 7 % 400);
    switch (number % 7) {
    case 0:
        return digits;
    case 1:
        return "balance of the account " + digits + " in the books";
    case 2:
        return std::string(number / 7 % 20, 'x');
    case 3:
        return "eight by" + digits;
    case 4:
        return digits + std::string("\0\0", number % 3);
    case 5:
        return "\xc3\xa4" + digits;
    default:
        return std::string(8, static_cast<char>('a' + number / 7 % 3)) + digits + "same end";
    }
}

// Both, and what is done to both; the names are taken from as many as the limit says.
class Pair {
public:
    explicit Pair(unsigned names) : limit(names) {}

    void change() {
        choose();
        switch (generator() % 20) {
        case 0:
            return insert();
        case 1:
            return insertOrAssign();
        case 2:
            return tryEmplace();
        case 3:
            return eraseByName();
        case 4:
            return eraseByPlace();
        case 5:
            return eraseRange();
        case 6:
            return look();
        case 7:
            return lookAround();
        case 8:
            return copy();
        case 9:
            return move();
        case 10:
            return clearSeldom();
        case 11:
            return holder.mapVal.swap(entries), holder.mapVal.swap(entries);
        case 12:
            return readNamed();
        case 13:
            return insertRange();
        case 14:
            return takeOut();
        case 15:
            return mergeOthers();
        default:
            return assign();
        }
    }
    bool isAlike() const { return isLike(entries, model); }

private:
    void choose() {
        name = nameOf(static_cast<unsigned>(generator() % limit));
        number = static_cast<long long>(generator() % 1000);
    }
    void assign() {
        entries[name] = Value(number);
        model[name] = number;
    }
    void insert() {
        const char* const kept = "a text that is kept elsewhere";
        Entries::value_type entry(name, Value(number));
        entry.second.stringVal = kept;
        const auto done = entries.insert(std::move(entry));
        const auto expected = model.insert({name, number});
        CHECK(done.second == expected.second && isEntry(*done.first, *expected.first));
        if (!done.second) CHECK(entry.second.stringVal == kept);
        entries.emplace(name, Value(number));
        entries.emplace_hint(entries.begin(), name, Value(1));
    }
    void insertOrAssign() {
        CHECK(entries.insert_or_assign(name, Value(number)).second ==
              model.insert_or_assign(name, number).second);
    }
    void tryEmplace() {
        CHECK(entries.try_emplace(name, Value(number)).second ==
              model.try_emplace(name, number).second);
    }
    void eraseByName() { CHECK(entries.erase(name) == model.erase(name)); }
    void eraseByPlace() {
        const auto place = entries.find(name);
        const auto expected = model.find(name);
        if (expected == model.end()) return CHECK(place == entries.end());
        const auto next = entries.erase(place);
        const auto expectedNext = model.erase(expected);
        CHECK(std::distance(entries.begin(), next) == std::distance(model.begin(), expectedNext));
    }
    void eraseRange() {
        if (generator() % 4 != 0) return;
        auto from = entries.lower_bound(name);
        auto expected = model.lower_bound(name);
        auto to = from;
        auto expectedEnd = expected;
        for (int i = 0; i < 5 && expectedEnd != model.end(); ++i) ++to, ++expectedEnd;
        entries.erase(from, to);
        model.erase(expected, expectedEnd);
    }
    void look() {
        const Entries& fixed = entries;
        CHECK(entries.count(name) == model.count(name));
        CHECK((fixed.find(name) == fixed.end()) == (model.find(name) == model.end()));
        if (model.count(name) == 0) {
            CHECK_THROWS(fixed.at(name), std::out_of_range);
        } else {
            CHECK(fixed.at(name).intVal == model.at(name) && &fixed.at(name) == &entries[name]);
        }
    }
    void lookAround() {
        const Entries& fixed = entries;
        const Model& expected = model;
        const auto range = fixed.equal_range(name);
        CHECK(std::distance(fixed.begin(), range.first) ==
              std::distance(expected.begin(), expected.lower_bound(name)));
        CHECK(std::distance(fixed.begin(), range.second) ==
              std::distance(expected.begin(), expected.upper_bound(name)));
    }
    void copy() {
        const Entries copied(entries);
        CHECK(isLike(copied, model));
        entries.clear();
        entries = copied;
        const Entries& same = entries;
        entries = same;
    }
    void move() {
        Entries moved(std::move(entries));
        entries = Entries{{"gone", 1}};
        entries = std::move(moved);
        CHECK(moved.empty());
    }
    void clearSeldom() {
        if (generator() % 8 != 0) return;
        entries.clear();
        model.clear();
    }
    // As programs write it, with the name in a literal or in a value.
    void readNamed() {
        holder.typeName = "Stock";
        holder.mapVal.swap(entries);
        if (name.size() == std::char_traits<char>::length(name.c_str())) {
            holder[name.c_str()] = number;
            model[name] = number;
        }
        holder[Value(name)] = number + 1;
        model[name] = number + 1;
        holder.mapVal.swap(entries);
    }
    void takeOut() {
        auto taken = entries.extract(name);
        auto expected = model.extract(name);
        CHECK(taken.empty() == expected.empty());
        if (expected) {
            CHECK(taken.key() == expected.key() && taken.mapped().intVal == expected.mapped());
            taken.key() += "'";
            expected.key() += "'";
        }
        const auto done = entries.insert(std::move(taken));
        const auto expectedDone = model.insert(std::move(expected));
        CHECK(done.inserted == expectedDone.inserted);
        CHECK(done.node.empty() == expectedDone.node.empty());
        CHECK((done.position == entries.end()) == (expectedDone.position == model.end()));
    }
    void mergeOthers() {
        Entries others = {{name, Value(number)}, {"three", Value(3)}};
        Model expected = {{name, number}, {"three", 3}};
        entries.merge(others);
        model.merge(expected);
        CHECK(isLike(others, expected));
    }
    void insertRange() {
        const Model others = {{name, number}, {"one", 1}, {"two", 2}};
        entries.insert(others.begin(), others.end());
        model.insert(others.begin(), others.end());
    }

    Entries entries;
    Model model;
    Value holder;
    std::mt19937 generator;
    unsigned limit;
    std::string name;
    long long number = 0;
};

// Few names make maps that are looked at one by one, many those with a table.
void testSteps(unsigned names, int steps) {
    Pair pair(names);
    for (int step = 0; step < steps; ++step) {
        pair.change();
        if (names < 100 || step % 50 == 0) CHECK(pair.isAlike());
    }
}

void testWaysToMakeOne() {
    const Model model = {{"a", 1}, {"b", 2}};
    CHECK(isLike(Entries{{"b", 2}, {"a", 1}, {"a", 3}}, model));
    CHECK(isLike(Entries(model.begin(), model.end()), model));
    Entries entries;
    entries = {{"a", 1}, {"b", 2}};
    CHECK(isLike(entries, model));
    CHECK(entries == Entries(model.begin(), model.end()) && !(entries != entries) &&
          entries != Entries(model.begin(), std::next(model.begin())));
    CHECK(isLike(Entries(), {}));
    CHECK_THROWS(Entries().at("a"), std::out_of_range);
}

// What points to an entry goes on doing so while others come and go, in a copy as in a map that has
// grown; and the end stays the end.
void testEntriesStay(Entries entries) {
    const auto end = entries.end();
    Value& kept = entries["kept"];
    const auto place = entries.find("kept");
    kept = 7;
    for (int i = 0; i < 1000; ++i) entries[std::to_string(i)] = Value(i);
    for (int i = 0; i < 1000; i += 2) entries.erase(std::to_string(i));
    CHECK(&kept == &entries["kept"] && &place->second == &kept && kept.intVal == 7);
    CHECK(end == entries.end() && std::next(place) == entries.find("one"));
    CHECK(entries.size() == 502);
    Entries moved(std::move(entries));
    CHECK(&kept == &moved["kept"]);
}

// A copy has its entries in one piece: those that leave it and those that come do not disturb it.
void testCopiesThatChange() {
    Entries entries;
    for (int i = 0; i < 20; ++i)
        entries[std::to_string(i)] = Value("a text that is kept elsewhere");
    Entries copy(entries);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 20; ++i) {
            CHECK(copy.erase(std::to_string(i)) == 1);
            copy[std::to_string(i)] = Value("another text that is kept elsewhere");
            const Entries again(copy);
            CHECK(again.size() == 20 && again == copy);
        }
    }
    CHECK(entries["7"] == "a text that is kept elsewhere");
}

#ifdef ORVANE_COMPILED_ONCE
// A name is the same whether it is a text or letters behind which nothing can be read. Otherwise
// entries that are asked for by a literal would be found in the end, but slowly.
void testNamesOfLetters() {
    const std::string all = "abcdefghijklmnopqrstuvwxyz";
    for (size_t size = 0; size <= all.size(); ++size) {
        const std::string text(all, all.size() - size);
        const std::vector<char> letters(text.begin(), text.end());
        const OrvaneValues::Name name(letters.data(), size), same(text);
        CHECK(name.first == same.first && name.last == same.last && name.hash() == same.hash());
        CHECK(name.isThatOf(text) && !name.isThatOf(text + "z"));
    }
}
#endif

} // namespace

void testEntriesAsMap() {
#ifdef ORVANE_COMPILED_ONCE
    testNamesOfLetters();
#endif
    testSteps(7, 5000);
    testSteps(60, 10000);
    testSteps(2800, 20000);
    testWaysToMakeOne();
    testEntriesStay(Entries{{"one", 1}});
    testEntriesStay(Entries(Entries{{"one", 1}, {"0", 0}, {"1", 1}}));
    testCopiesThatChange();
}
