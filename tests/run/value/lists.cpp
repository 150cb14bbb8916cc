// A list of values does what a vector of the library does with texts, step by step. Programs of an
// installation have lists of their own for this; without it the test says that the test is right.
#include "import.hpp"

#include <algorithm>
#include <iterator>
#include <random>

#include "checks.h"
#include "parts.h"

namespace {

using List = std::vector<Value>;
using Model = std::vector<std::string>;

bool isLike(const List& list, const Model& model) {
    if (list.size() != model.size() || list.empty() != model.empty()) return false;
    const auto isText = [](const Value& value, const std::string& text) {
        return value.isString() && value.stringVal == text;
    };
    if (!std::equal(list.begin(), list.end(), model.begin(), isText)) return false;
    if (!std::equal(list.crbegin(), list.crend(), model.crbegin(), isText)) return false;
    for (size_t at = 0; at < model.size(); ++at)
        if (!isText(list[at], model[at]) || !isText(list.at(at), model[at])) return false;
    return model.empty() ||
           (isText(list.front(), model.front()) && isText(list.back(), model.back()));
}

List listOf(const Model& model) {
    List list;
    std::copy(model.begin(), model.end(), std::back_inserter(list));
    return list;
}

// Both, and what is done to both.
class Pair {
public:
    void change() {
        switch (random(22)) {
        case 0:
            return pushCopy();
        case 1:
            return pushMoved();
        case 2:
            return list.emplace_back(next), model.emplace_back(next), void();
        case 3:
            return insertOne();
        case 4:
            return insertCopies();
        case 5:
            return insertRange();
        case 6:
            return eraseOne();
        case 7:
            return eraseRange();
        case 8:
            return shorten();
        case 9:
            return resize();
        case 10:
            return copy();
        case 11:
            return move();
        case 12:
            return list.reserve(random(64)), model.reserve(random(64));
        case 13:
            return list.shrink_to_fit(), model.shrink_to_fit();
        case 14:
            return assign();
        case 15:
            return pushOwn();
        case 16:
            return insertOwn();
        case 17:
            return sort();
        case 18:
            return list.assign({next, "b"}), model.assign({next, "b"});
        case 19:
            return swap();
        case 20:
            return clearSeldom();
        default:
            return insertTwo();
        }
    }
    bool isAlike() const { return isLike(list, model); }

private:
    size_t random(size_t limit) {
        next = std::string(generator() % 40, static_cast<char>('a' + generator() % 26));
        return generator() % limit;
    }
    size_t place() { return random(model.size() + 1); }
    void pushCopy() {
        const Value value(next);
        list.push_back(value);
        model.push_back(next);
    }
    void pushMoved() {
        list.push_back(Value(next));
        model.push_back(next);
    }
    void insertOne() {
        const auto at = static_cast<std::ptrdiff_t>(place());
        const auto where = list.insert(list.begin() + at, Value(next));
        CHECK(where == list.begin() + at && where->stringVal == next);
        model.insert(model.begin() + at, next);
    }
    void insertCopies() {
        const auto at = static_cast<std::ptrdiff_t>(place());
        const auto where = list.insert(list.cbegin() + at, 3, Value(next));
        CHECK(where == list.begin() + at);
        model.insert(model.begin() + at, 3, next);
    }
    void insertRange() {
        const auto at = static_cast<std::ptrdiff_t>(place());
        const Model texts(random(5), next);
        const List others = listOf(texts);
        list.insert(list.begin() + at, others.begin(), others.end());
        model.insert(model.begin() + at, texts.begin(), texts.end());
    }
    void insertTwo() {
        list.insert(list.end(), {"a", next});
        model.insert(model.end(), {"a", next});
    }
    void eraseOne() {
        if (model.empty()) return;
        const auto at = static_cast<std::ptrdiff_t>(random(model.size()));
        const auto where = list.erase(list.begin() + at);
        CHECK(where == list.begin() + at);
        model.erase(model.begin() + at);
    }
    void eraseRange() {
        const auto from = static_cast<std::ptrdiff_t>(place());
        const auto to = from + static_cast<std::ptrdiff_t>(
                                   random(model.size() - static_cast<size_t>(from) + 1));
        list.erase(list.begin() + from, list.begin() + to);
        model.erase(model.begin() + from, model.begin() + to);
    }
    void shorten() {
        if (model.empty()) return;
        list.pop_back();
        model.pop_back();
    }
    void resize() {
        const size_t size = random(40);
        list.resize(size, Value(next));
        model.resize(size, next);
    }
    void copy() {
        const List copied(list);
        list.clear();
        list = copied;
        List& same = list;
        list = same;
        CHECK(copied.size() == list.size());
    }
    void move() {
        List moved(std::move(list));
        list = List();
        list = std::move(moved);
        CHECK(moved.empty());
    }
    void assign() {
        const size_t size = random(12);
        list.assign(size, Value(next));
        model.assign(size, next);
    }
    // An element of the list itself goes in, also when the list has to grow for it.
    void pushOwn() {
        if (model.empty()) return;
        const size_t at = random(model.size());
        list.push_back(list[at]);
        model.push_back(model[at]);
    }
    void insertOwn() {
        if (model.empty()) return;
        const size_t size = model.size() + random(3);
        list.resize(size, list.back());
        model.resize(size, std::string(model.back()));
        list.insert(list.begin(), list.back());
        model.insert(model.begin(), model.back());
    }
    void sort() {
        std::sort(list.begin(), list.end(),
                  [](const Value& left, const Value& right) { return left < right; });
        std::sort(model.begin(), model.end());
    }
    void swap() {
        List others = listOf({next});
        std::swap(list, others);
        CHECK(isLike(list, {next}));
        list.swap(others);
    }
    void clearSeldom() {
        if (random(4) != 0) return;
        list.clear();
        model.clear();
    }

    List list;
    Model model;
    std::mt19937 generator;
    std::string next;
};

void testSteps() {
    Pair pair;
    for (int step = 0; step < 20000; ++step) {
        pair.change();
        CHECK(pair.isAlike());
    }
}

void testWaysToMakeOne() {
    const Model three(3, "x");
    CHECK(isLike(List(3, Value("x")), three));
    CHECK(isLike(List(three.begin(), three.end()), three));
    CHECK(isLike(List{"x", "x", "x"}, three));
    CHECK(List(three.begin(), three.end()).capacity() == 3);
    CHECK(List(2)[1].isNull());
    List list = {1};
    list = {"x", "x", "x"};
    CHECK(isLike(list, three));
    CHECK(isLike(List(list, list.get_allocator()), three));
    CHECK(list == List(3, Value("x")) && list != List{"x"} && List{"a"} < list);
    CHECK(isLike(List(), {}) && List().begin() == List().end() && List().data() == nullptr);
    CHECK(List().capacity() == 0);
}

std::string messageOf(void (*function)()) {
    try {
        function();
    } catch (const std::out_of_range& error) {
        return error.what();
    }
    return "nothing";
}

void testPlacesThatDoNotExist() {
    const std::string message = messageOf([] { std::vector<int>(2).at(7); });
    CHECK_EQUAL(messageOf([] { List(2).at(7); }), message);
    const std::string none = messageOf([] { std::vector<int>().at(0); });
    CHECK_EQUAL(messageOf([] { List().at(0); }), none);
    List list(2);
    CHECK_THROWS((list.reserve(list.max_size() + 1), 0), std::length_error);
    CHECK_THROWS((list.resize(static_cast<size_t>(-1)), 0), std::length_error);
    CHECK(list.size() == 2);
}

// Elements stay where they are while there is room, and growing makes room for many.
void testGrowth() {
    List list;
    list.reserve(100);
    list.push_back(Value("first"));
    const Value& first = list.front();
    const auto place = list.begin();
    for (int i = 1; i < 100; ++i) list.push_back(Value(i));
    CHECK(&first == &list[0] && place == list.begin() && list.capacity() == 100);
    int moves = 0;
    for (int i = 0; i < 100000; ++i) {
        const size_t before = list.capacity();
        list.push_back(Value(i));
        moves += list.capacity() != before;
    }
    CHECK(moves < 30);
    const size_t room = list.capacity();
    list.clear();
    CHECK(list.capacity() == room && list.empty());
}

} // namespace

void testListsAsVector() {
    testSteps();
    testWaysToMakeOne();
    testPlacesThatDoNotExist();
    testGrowth();
}
