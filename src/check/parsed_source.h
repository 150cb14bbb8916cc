// A source with its tokens, its tree and the places of all nodes: what every check reads.
//
// Made once per file. Owns the lexer whose texts the tokens view, so it stays where it is. What the
// lexer and the parser had to say is in `diagnostics`; the tree holds whatever could be parsed.
//
//     ParsedSource source("app.vorla", readFile("app.vorla"));
//     ByteRange range = source.rangeOf(node);
#pragma once

#include "check/message.h"
#include "frontend/lexer.h"
#include "frontend/recovery.h"
#include "frontend/source_positions.h"
#include "frontend/syntax_tree.h"

#include <memory>
#include <optional>
#include <vector>

namespace Orvane {

class ParsedSource {
public:
    ParsedSource(std::string path, std::string text);
    ParsedSource(const ParsedSource&) = delete;
    ParsedSource& operator=(const ParsedSource&) = delete;

    const SourceText& source() const { return sourceText; }
    const std::vector<Token>& tokens() const { return tokenList; } // ends with EndOfInput
    const AST& tree() const { return *program; }

    // Whether the compiler accepts the file. If not, parts of the tree may be missing.
    bool isAccepted() const { return accepted; }

    // In source order. Any error among them means that the compiler refuses the file.
    const std::vector<Diagnostic>& diagnostics() const { return found; }

    // Indices of `tokens()`; nothing for nodes that are not of this tree.
    std::optional<TokenRange> tokensOf(const void* node) const { return positions.find(node); }

    // The bytes of a node or record of the tree; empty at 0 for others.
    ByteRange rangeOf(const void* node) const;
    ByteRange rangeOf(TokenRange range) const;

    // The bytes of one token, quotes included.
    ByteRange tokenRange(std::size_t index) const;

private:
    void parse();
    void parseAsCompiler();
    void parseOnBehindErrors();
    void addFailures(const std::vector<SyntaxFailure>& failures,
                     const std::vector<ByteRange>& repairs);

    SourceText sourceText;
    RecordingConsole console;
    std::vector<LexicalProblem> problems;
    Lexer lexer;
    std::string repairedText;      // what was parsed when literals had to be repaired; else empty
    std::optional<Lexer> repaired; // of that text
    bool accepted = false;
    std::vector<Token> tokenList;
    PositionTable positions;
    std::unique_ptr<AST> program;
    std::vector<Diagnostic> found;
};

} // namespace Orvane
