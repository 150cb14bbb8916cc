#include "bench/source_generator.h"

#include <algorithm>
#include <array>
#include <random>
#include <string_view>

namespace Orvane::Bench {

namespace {

constexpr std::array<std::string_view, 16> nouns = {
    "price", "width",  "total", "order",   "client", "weight", "speed",    "height",
    "count", "factor", "limit", "balance", "score",  "level",  "distance", "amount"};
constexpr std::array<std::string_view, 8> verbs = {"update", "measure", "collect", "format",
                                                   "check",  "convert", "combine", "describe"};
constexpr std::array<std::string_view, 6> kinds = {"button", "entry",   "text",
                                                   "slider", "listbox", "checkbox"};

// Every handler declares all controls of its window in the generated program; a bounded number of
// handlers keeps that text in proportion to the source.
constexpr std::size_t controlsWithHandler = 20;

class Writer {
public:
    std::string take() { return std::move(text); }
    std::size_t lineCount() const { return lines; }

    void window(std::size_t controls) {
        line("vorla Main {");
        line("    title = \"Measurements\";");
        line("    width = 900; height = 700;");
        for (std::size_t i = 0; i < controls; ++i) control(i);
        line("}");
    }

    void classDeclaration() {
        line("class Record {");
        line("    int id, count;");
        line("    string label;");
        line("    Record(int id, int count) { label = \"record\"; }");
        line("    int area(int factor) { return id * count * factor; }");
        line("}");
    }

    void openScript() { line("Main.script {"); }
    void closeScript() { line("}"); }

    // Ten lines, the closing brace included.
    void function() {
        const std::string id = std::to_string(functions++);
        const std::string noun(pick(nouns)), other(pick(nouns));
        line("    // " + std::string(pick(verbs)) + "s the " + noun + " of step " + id);
        line("    value " + std::string(pick(verbs)) + "_" + noun + "_" + id +
             "(int first, second) {");
        line("        int " + noun + id + " = first * " + number() + " + " + number() + ";");
        line("        string name" + id + " = \"" + other + " no. " + number() + ": \" + second;");
        line("        value list" + id + " = {" + noun + id + ", " + number() + ", \"" + number() +
             "\", second};");
        line("        for (value item" + id + " : list" + id + ") { second = second + item" + id +
             " * " + decimal() + "; }");
        middle(noun + id, id);
        line("        Record r" + id + " = Record { id = " + number() + ", count = first }; r" +
             id + ".label = name" + id + ";");
        line("        return r" + id + ".area(" + number() + ") - list" + id + "[0] / (second - " +
             decimal() + ");");
        line("    }");
    }

private:
    template <std::size_t size>
    std::string_view pick(const std::array<std::string_view, size>& words) {
        return words[random() % size];
    }
    std::string number() { return std::to_string(random() % 100'000); }
    std::string decimal() {
        return std::to_string(random() % 1000) + "." + std::to_string(random() % 100);
    }

    void line(const std::string& content) {
        text += content;
        text += '\n';
        ++lines;
    }

    void control(std::size_t index) {
        const std::string id = std::to_string(index);
        line("    " + std::string(pick(kinds)) + " " + std::string(pick(nouns)) + id + " {");
        line("        x = " + number() + "; y = " + number() + "; width = " + number() +
             "; height = 30;");
        line("        text = \"Control " + id + "\"; color = #" +
             std::to_string(100'000 + random() % 900'000) + ";");
        if (index < controlsWithHandler)
            line("        on click { alert(\"clicked " + id + " of \" + " + number() + "); }");
        line("    }");
    }

    // One line of one of several shapes, so that functions differ in more than their numbers.
    void middle(const std::string& variable, const std::string& id) {
        switch (random() % 5) {
        case 0:
            return line("        if (" + variable + " > " + number() + ") { print(name" + id +
                        "); } else { second = " + number() + "; }");
        case 1:
            return line("        while (second < " + number() + ") { second = second + first * " +
                        number() + "; }");
        case 2:
            return line("        when (second) { is int -> print(" + number() +
                        "); else -> print(name" + id + "); }");
        case 3:
            return line("        value squares" + id + " = [n * n for n in list" + id +
                        " where n > " + number() + "];");
        default:
            return line("        second = " + variable + " == " + number() +
                        " ? first : -(second % " + number() + ");");
        }
    }

    std::string text;
    std::size_t lines = 0;
    std::size_t functions = 0;
    std::mt19937 random{20'240'601};
};

} // namespace

std::string generateSource(std::size_t lines) {
    constexpr std::size_t linesPerControl = 1000;
    constexpr std::size_t minimumControls = 3;
    Writer writer;
    writer.window(std::max(lines / linesPerControl, minimumControls));
    writer.classDeclaration();
    writer.openScript();
    while (writer.lineCount() + 1 < lines) writer.function();
    writer.closeScript();
    return writer.take();
}

} // namespace Orvane::Bench
