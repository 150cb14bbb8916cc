#include "check/lexical_problems.h"

#include <algorithm>
#include <string_view>

namespace Orvane {

namespace {

using Kind = LexicalProblem::Kind;
constexpr std::size_t mostProblems = 20;

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }
bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }
bool isWordPart(char byte) {
    return isDigit(byte) || byte == '_' || (byte >= 'a' && byte <= 'z') ||
           (byte >= 'A' && byte <= 'Z');
}

std::size_t lineEnd(const std::string& text, std::size_t at) {
    const std::size_t end = text.find_first_of("\r\n", at);
    return end == std::string::npos ? text.size() : end;
}

// The next curved quotation mark of the line: three bytes, U+2018 to U+201F.
std::size_t findCurvedQuote(const std::string& text, std::size_t at) {
    const std::size_t end = lineEnd(text, at);
    for (; at + 3 <= end; ++at)
        if (text.compare(at, 2, "\xE2\x80") == 0 && text[at + 2] >= '\x98' &&
            text[at + 2] <= '\x9F')
            return at;
    return std::string::npos;
}

std::size_t endOfEscape(const std::string& text, std::size_t backslash) {
    const bool code = text.compare(backslash, 2, "\\u") == 0;
    return std::min(backslash + (code ? 6 : 2), text.size());
}

std::size_t endOfCharacter(const std::string& text, std::size_t at) {
    if (at < text.size() && text[at] == '\\') {
        const std::size_t end = endOfEscape(text, at);
        return text.compare(end, 2, "\\u") == 0 ? endOfEscape(text, end) : end;
    }
    if (at < text.size()) ++at;
    while (at < text.size() && isContinuation(text[at])) ++at;
    return at;
}

// Repairs one problem after the other, each time reading the text anew: what the lexer says behind
// a broken literal is wrong.
class Examination {
public:
    explicit Examination(const SourceText& source_) : source(source_) {
        report.repaired = source.text();
    }

    LexicalReport run() {
        for (std::size_t count = 0; count < mostProblems && repairNext(); ++count) {
        }
        shrinkNumbers();
        return std::move(report);
    }

private:
    bool repairNext() {
        RecordingConsole console;
        std::vector<LexicalProblem> problems;
        Lexer lexer(report.repaired, console, &problems);
        const std::vector<Token> tokens = lexer.tokenize();
        const std::size_t quote = curvedQuoteIn(tokens);
        if (!problems.empty() && problems.front().offset < quote)
            repair(problems.front(), tokens);
        else if (quote != std::string::npos)
            repairCurved(quote);
        else
            return false;
        return true;
    }

    // The parser must not meet a number without a value: those behind the last problem that is
    // said lose theirs as well.
    void shrinkNumbers() {
        RecordingConsole console;
        std::vector<LexicalProblem> problems;
        Lexer lexer(report.repaired, console, &problems);
        lexer.tokenize();
        for (const LexicalProblem& problem : problems)
            if (problem.kind == Kind::numberTooLarge) zeroDigits(rangeOfNumber(problem.offset));
    }

    std::size_t offsetOf(const Token& token) const {
        return source.offsetOf(static_cast<std::size_t>(token.line),
                               static_cast<std::size_t>(token.column));
    }

    // The first one that stands outside of texts and comments.
    std::size_t curvedQuoteIn(const std::vector<Token>& tokens) const {
        for (const Token& token : tokens) {
            if (token.type != TokenType::Unknown) continue;
            const std::size_t at = offsetOf(token);
            if (findCurvedQuote(report.repaired, at) == at) return at;
        }
        return std::string::npos;
    }

    void repair(const LexicalProblem& problem, const std::vector<Token>& tokens) {
        switch (problem.kind) {
        case Kind::numberTooLarge:
            return repairNumber(problem.offset);
        case Kind::unterminatedText:
            return repairText(findUnclosed(tokens, problem.offset));
        case Kind::unclosedCharacter:
        case Kind::unterminatedCharacter:
            return repairCharacter(problem.offset);
        }
    }

    void say(MessageId id, ByteRange range) {
        report.diagnostics.push_back(makeDiagnostic(id, range, {source.part(range)}));
        report.repairs.push_back(range);
    }

    ByteRange rangeOfNumber(std::size_t begin) const {
        std::size_t end = begin;
        while (end < report.repaired.size() &&
               (isDigit(report.repaired[end]) || report.repaired[end] == '.'))
            ++end;
        return {begin, end};
    }

    void zeroDigits(ByteRange number) {
        for (std::size_t at = number.begin; at < number.end; ++at)
            if (isDigit(report.repaired[at])) report.repaired[at] = '0';
    }

    void repairNumber(std::size_t begin) {
        const ByteRange number = rangeOfNumber(begin);
        say(MessageId::numberTooLarge, number);
        zeroDigits(number);
    }

    // Which text lacks its quote: the first one over several lines whose end touches a word, which
    // is the beginning of the next text then; else the one that reaches the end of the file.
    std::size_t findUnclosed(const std::vector<Token>& tokens, std::size_t last) const {
        const std::string& text = report.repaired;
        for (const Token& token : tokens) {
            if (token.type != TokenType::StringLiteral) continue;
            const std::size_t begin = offsetOf(token);
            const std::size_t end = endOfLiteral(text, begin);
            const std::string_view literal(text.data() + begin, end - begin);
            const bool severalLines = literal.find('\n') != std::string_view::npos;
            if (severalLines && end < text.size() && isWordPart(text[end])) return begin;
        }
        return last;
    }

    // The text ends in front of what usually follows one at the end of a line.
    void repairText(std::size_t begin) {
        std::string& text = report.repaired;
        std::size_t end = lineEnd(text, begin);
        while (end > begin + 1 &&
               std::string_view(" \t;,)}").find(text[end - 1]) != std::string::npos)
            --end;
        say(MessageId::unterminatedText, {begin, end});
        if (end == begin + 1)
            text[begin] = '0';
        else
            fill({begin, end}, '"', '"');
    }

    bool beginsLine(std::size_t at) const {
        const Place place = source.placeOf(at);
        return source.lineText(place.line).find_first_not_of(" \t") + 1 == place.byteColumn;
    }

    // A quote at the beginning of a line begins a comment elsewhere.
    void repairCharacter(std::size_t begin) {
        const std::string& text = report.repaired;
        const std::size_t end = lineEnd(text, begin);
        const std::size_t closing = text.find('\'', begin + 1);
        if (closing < end) {
            say(MessageId::singleQuotedText, {begin, closing + 1});
            fill({begin, closing + 1}, '"', '"');
            return;
        }
        if (beginsLine(begin)) {
            say(MessageId::commentSign, {begin, begin + 1});
            fill({begin, end}, ' ', ' ');
            return;
        }
        const std::size_t behind = std::min(endOfCharacter(text, begin + 1), end);
        say(MessageId::unterminatedCharacter, {begin, behind});
        fill({begin, behind}, behind > begin + 1 ? '"' : '0', '"');
    }

    // To the next such mark of the line; a single one is blanked.
    void repairCurved(std::size_t begin) {
        const std::size_t closing = findCurvedQuote(report.repaired, begin + 3);
        const std::size_t end = (closing == std::string::npos ? begin : closing) + 3;
        say(MessageId::curvedQuotes, {begin, end});
        if (closing == std::string::npos)
            fill({begin, end}, ' ', ' ');
        else
            fill({begin, end}, '"', '"');
    }

    // Blanks between two ends.
    void fill(ByteRange range, char first, char last) {
        std::string& text = report.repaired;
        std::fill(text.begin() + static_cast<std::ptrdiff_t>(range.begin),
                  text.begin() + static_cast<std::ptrdiff_t>(range.end), ' ');
        text[range.end - 1] = last;
        text[range.begin] = first;
    }

    const SourceText& source;
    LexicalReport report;
};

} // namespace

LexicalReport examineLiterals(const SourceText& source) { return Examination(source).run(); }

std::vector<Diagnostic> describeUnclosed(const SourceText& source,
                                         const std::vector<LexicalProblem>& problems) {
    std::vector<Diagnostic> found;
    std::size_t described = 0; // offset behind the last text
    for (const LexicalProblem& problem : problems) {
        if (problem.kind != Kind::unclosedCharacter || problem.offset < described) continue;
        const std::size_t begin = problem.offset;
        const std::size_t end = endOfCharacter(source.text(), begin + 1);
        const std::size_t closing = source.text().find('\'', end);
        const bool closed = closing < lineEnd(source.text(), begin);
        described = closed ? closing + 1 : end;
        found.push_back(makeDiagnostic(MessageId::unclosedCharacter, {begin, described},
                                       {source.part({begin + 1, end})}));
    }
    return found;
}

bool holdsLargeNumber(const std::vector<LexicalProblem>& problems) {
    return std::any_of(problems.begin(), problems.end(), [](const LexicalProblem& problem) {
        return problem.kind == Kind::numberTooLarge;
    });
}

std::size_t endOfLiteral(const std::string& text, std::size_t begin) {
    if (begin >= text.size()) return text.size();
    if (text[begin] == '\'') {
        const std::size_t end = endOfCharacter(text, begin + 1);
        return end < text.size() && text[end] == '\'' ? end + 1 : end;
    }
    std::size_t end = begin + 1;
    while (end < text.size() && text[end] != '"' && text[end] != '\0')
        end += text[end] == '\\' ? 2 : 1;
    return std::min(end + 1, text.size());
}

} // namespace Orvane
