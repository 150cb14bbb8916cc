// Any bytes are lexed to the end, or end in the exception of a number that does not fit. Tokens
// stand behind each other, and each piece of the source from one token to the next gives that
// token again when it is lexed alone, and holds nothing else but blanks and comments.
#include "fuzz/targets.h"

#include "frontend/lexer.h"
#include "support/token_pieces.h"

namespace Orvane::Fuzzing {

namespace {

void checkPiece(std::string_view piece, const Token& token) {
    RecordingConsole console;
    Lexer lexer(std::string(piece), console);
    const std::vector<Token> alone = lexer.tokenize();
    require(alone.size() == 2, "a piece gives one token");
    require(alone[0].type == token.type && alone[0].text() == token.text(),
            "a piece gives the token that it was cut for");
    require(alone[0].line == 1 && alone[0].column == 1, "a piece begins with its token");
}

void checkTokens(const std::string& source) {
    RecordingConsole console;
    Lexer lexer(source, console);
    const std::vector<Token> tokens = lexer.tokenize();
    require(!tokens.empty() && tokens.back().type == TokenType::EndOfInput,
            "the last token is the end");
    const std::vector<std::size_t> offsets = offsetsOf(source, tokens);
    require(offsets.size() + 1 == tokens.size(), "there is one end token");
    require(isFiller(source.substr(0, offsets.empty() ? source.size() : offsets.front())),
            "no token is passed over at the start");
    const std::vector<std::string_view> pieces = piecesOf(source, tokens);
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        if (index > 0) require(offsets[index - 1] < offsets[index], "tokens do not overlap");
        require(isSpelledRight(tokens[index]), "a token is spelled as its kind is");
        require(holdsNothingElse(pieces[index], tokens[index]), "no token is passed over");
        checkPiece(pieces[index], tokens[index]);
    }
}

} // namespace

void fuzzLexer(Bytes input) {
    try {
        checkTokens(textOf(input));
    } catch (const std::out_of_range&) {
    }
}

} // namespace Orvane::Fuzzing
