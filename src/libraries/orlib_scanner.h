// The text of one library file to its directives and functions, in the order in which they stand.
//
// Made by the loader for each file that it reads. Whatever is no directive and no function
// (comments, stray semicolons, unknown words) is skipped without a message. The time is
// proportional to the length of the text, also for one made to be expensive: what an attempt that
// failed had to look for is remembered.
//
//     OrlibScanner scanner("int one() { return 1; }");
//     while (std::optional<OrlibItem> item = scanner.next()) { ... }
#pragma once

#include "libraries/replacement_table.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Orvane {

// using NAME "VALUE";
struct OrlibUsing {
    std::string name;
    std::string value;
};

// import "PATH"
struct OrlibImport {
    std::string path; // as written
};

using OrlibItem = std::variant<OrlibUsing, OrlibImport, FunctionEntry>;

class OrlibScanner {
public:
    explicit OrlibScanner(std::string text_) : text(std::move(text_)) {}

    // The next directive or function; none at the end of the text.
    std::optional<OrlibItem> next();

    // Each tells whether its construct stands at pos (a byte index, from 0); if so, pos goes past
    // it, otherwise pos and the results stay as they are.
    bool parseUsing(std::size_t& pos, OrlibUsing& directive);
    bool parseImport(std::size_t& pos, OrlibImport& directive);
    bool parseFunction(std::size_t& pos, FunctionEntry& entry);

    // Without leading and trailing blanks, tabs, line feeds and carriage returns.
    static std::string_view trim(std::string_view text);

private:
    // Where a character comes next. A search that is repeated from a later place, still before the
    // hit, has the same answer.
    struct Search {
        char character;
        std::size_t from = 1;
        std::size_t found = 0; // an empty range: nothing is known yet
    };

    bool skipWord(std::size_t& pos, std::string_view word) const;
    bool skipQuoted(std::size_t& pos, std::string& content);
    std::size_t skipSpace(std::size_t pos) const;
    std::size_t wordEnd(std::size_t pos) const; // letters and underscores
    std::size_t nameEnd(std::size_t pos);       // letters, digits and underscores
    std::size_t find(Search& search, std::size_t pos) const;
    std::size_t closingBrace(std::size_t open);
    void findUnclosedBraces();
    void skipUnknown();

    std::string text;
    std::size_t position = 0; // of the next character that next() looks at

    std::size_t knownNameStart = 0; // the run of name characters seen last
    std::size_t knownNameEnd = 0;
    Search quote{'"'};
    Search closingParenthesis{')'};
    Search openingBrace{'{'};
    std::vector<bool> unclosed; // by position; filled when a brace without its partner comes up
};

} // namespace Orvane
