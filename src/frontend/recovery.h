// What a parse records when it goes on behind errors, and how it finds its way back.
//
// The compiler parses without a Recovery and stops at the first error. Given one, the parser
// prints and throws nothing: each failure is recorded here, and parsing goes on at the next
// statement, member or declaration that the tokens, their lines and their indentation show.
//
//     Recovery recovery;
//     Parser parser(tokens, console, nullptr, Parser::Texts::copied, &recovery);
//     auto program = parser.parse();   // whatever could be parsed
//     for (const SyntaxFailure& failure : recovery.failures()) ...
//
// All indices are those of the parsed tokens, from 0. Correct sources give the same tree with and
// without.
#pragma once

#include "frontend/token.h"

#include <cstddef>
#include <initializer_list>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

namespace Orvane {

// The lists of the grammar whose elements are parsed one by one.
enum class Body : unsigned char {
    topLevel,
    window,
    component,
    script,
    classMembers,
    ableMethods,
    whenCases,
    statements,
};

inline constexpr std::size_t noToken = std::numeric_limits<std::size_t>::max();

struct SyntaxFailure {
    std::size_t found = 0;        // the token that does not fit
    TokenType expected{};         // EndOfInput when several kinds would do
    std::string_view message;     // the parser's own words for what it expected
    std::size_t construct = 0;    // first token of the statement, member or declaration
    Body body = Body::topLevel;   // the list that the construct is an element of
    std::size_t opener = noToken; // the innermost bracket or brace that is still open there
};

// Neighbouring tokens that the grammar skips without a word.
struct SkippedTokens {
    std::size_t first = 0;
    std::size_t last = 0; // included
    Body body = Body::topLevel;
};

class Recovery {
public:
    static constexpr std::size_t mostFailures = 20;

    // With `limit` 1 the parse follows the compiler up to the first error and ends there.
    explicit Recovery(std::size_t limit_ = mostFailures) : limit(limit_) {}

    // In source order.
    const std::vector<SyntaxFailure>& failures() const { return recorded; }
    const std::vector<SkippedTokens>& skipped() const { return unread; }

    // ---- Called by the parser ----
    using Tokens = std::span<const Token>;

    // What to do about a token that is not there.
    enum class Remedy {
        suppose, // go on as if it had been there
        take,    // take the one that is there in its place
        giveUp,  // drop the construct; resume() says where to go on
    };

    void enter(Body body, std::size_t opener) { open.push_back({body, opener, opener}); }
    void leave() { open.pop_back(); }
    Body body() const { return open.back().body; }
    // An element of the innermost list begins.
    void begin(std::size_t construct);
    // Whether the innermost list is to end, though its "}" has not come.
    bool leaving() const { return open.size() > keptLists; }

    Remedy missing(Tokens tokens, std::size_t at, TokenType expected, std::string_view message);
    void failed(Tokens tokens, std::size_t at, std::string_view message);
    // Every list ends, and so does the parse.
    void stop(Tokens tokens);
    // Skips up to the token where the innermost list, or after leaving() one around it, goes on.
    std::size_t resume(Tokens tokens, std::size_t at);

    // Records tokens as skipped.
    void skip(std::size_t first, std::size_t last);
    // What begins at a token that the grammar skips, when it is something that stands in the wrong
    // place: better parsed and dropped as a whole than read as something else.
    enum class Misplaced {
        nothing,
        function,
        statement,
        component,
        handler,
        event,  // NAME "{" ... "}" in a control
        head,   // of a function, without its "("
        tokens, // up to endOfMisplaced()
        outer,  // a declaration of a list around this one, which is to end; recorded
    };
    Misplaced misplacedAt(Tokens tokens, std::size_t at);
    static std::size_t endOfMisplaced(Tokens tokens, std::size_t at);

private:
    struct OpenList {
        Body body;
        std::size_t opener;    // its "{"; 0 for the top level
        std::size_t construct; // first token of the current element
        bool afterFailure = false;
    };

    bool endsListsAt(Tokens tokens, std::size_t at);
    std::size_t listsKeptAt(Tokens tokens, std::size_t at) const;
    std::size_t listsOf(Tokens tokens, std::size_t at, std::initializer_list<Body> bodies) const;
    bool isRemainder(Tokens tokens, std::size_t at) const;
    void record(Tokens tokens, std::size_t at, TokenType expected, std::string_view message);
    void add(Tokens tokens, const SyntaxFailure& failure);
    bool supposes(Tokens tokens, std::size_t at, TokenType expected);
    std::size_t resumeStatement(Tokens tokens, std::size_t at) const;
    std::size_t resumeMember(Tokens tokens, std::size_t at) const;

    std::size_t limit;
    std::vector<SyntaxFailure> recorded;
    std::vector<SkippedTokens> unread;
    std::vector<OpenList> open = {{Body::topLevel, 0, 0}};
    std::size_t keptLists = noToken;     // lists behind this number are to end
    std::size_t resumeAt = noToken;      // where parsing goes on when that has been decided
    std::size_t firstNewFailure = 0;     // failures at earlier tokens follow from recorded ones
    std::size_t supposedParen = noToken; // the construct whose "(" was supposed
};

} // namespace Orvane
