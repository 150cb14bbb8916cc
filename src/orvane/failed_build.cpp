#include "orvane/failed_build.h"

#include "codegen/code_generator.h"
#include "libraries/files.h"
#include "orvane/text_layout.h"

#include <algorithm>

namespace Orvane {

namespace {

bool continuesName(char character) {
    return character == '_' || (character >= '0' && character <= '9') ||
           (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

std::string_view nameAt(std::string_view text, std::size_t offset) {
    std::size_t end = std::min(offset, text.size());
    const std::size_t begin = end;
    while (end < text.size() && continuesName(text[end])) ++end;
    return text.substr(begin, end - begin);
}

// Which of the two texts a path of g++'s leads to.
std::optional<GeneratedText> generatedText(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    if (path.ends_with("code_generation/main.cpp")) return GeneratedText::main;
    if (path.ends_with("code_generation/import.hpp")) return GeneratedText::import;
    return std::nullopt;
}

// The byte of a line at which a column of g++ begins: it counts columns of a terminal with tabs of
// eight, from 1.
std::size_t byteOfColumn(std::string_view line, std::size_t column) {
    constexpr std::size_t tab = 8;
    std::size_t byte = 0;
    for (std::size_t at = 1; byte < line.size() && at < column;) {
        const DecodedCharacter character = decodeCharacter(line.substr(byte));
        at += character.value == '\t' ? tab - (at - 1) % tab : columnsOf(character.value);
        byte += character.length;
    }
    return byte;
}

} // namespace

FailedBuild::FailedBuild(const Options& options_, const std::filesystem::path& installation)
    : options(options_), files(outputFilesFor(options.sourceFile)),
      source(options.sourceFile, readTextFile(pathOf(options.sourceFile)).value_or("")),
      libraries(installation, options) {
    messages.push_back({&source.source(), {}});
}

bool FailedBuild::isAsWritten(const std::filesystem::path& path, const TextStream& text) const {
    const std::optional<std::string> written = readTextFile(path);
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    return written && written->starts_with(byteOrderMark) &&
           std::string_view(*written).substr(byteOrderMark.size()) == text.view();
}

// A source that was saved again meanwhile gives another text, and no place would be right.
void FailedBuild::generateAgain() {
    libraries.load(source.tree());
    TextStream main;
    TextStream import;
    int indentLevel = 0;
    CodeGenerator generator(libraries.table(), main, import, indentLevel);
    generator.setObserver(&map);
    generator.generate(source.tree(), Orvane::textOf(files.mainCpp),
                       Orvane::textOf(files.importHpp), options.debug, libraries.hasLoadedAny());
    if (!isAsWritten(files.mainCpp, main) || !isAsWritten(files.importHpp, import)) return;
    texts[0].emplace("main.cpp", std::string(main.view()));
    texts[1].emplace("import.hpp", std::string(import.view()));
}

// The token of the node that is the word, or all of the node.
ByteRange FailedBuild::narrow(const void* node, std::string_view word) const {
    const auto range = source.tokensOf(node);
    if (!range) return {};
    if (!word.empty())
        for (std::size_t index = range->first; index <= range->last; ++index)
            if (source.tokens()[index].text() == word) return source.tokenRange(index);
    return source.rangeOf(*range);
}

// A function is written as its signature, a brace, and the lines of its body four blanks deeper.
std::optional<FailedBuild::Found> FailedBuild::locateInLibrary(const FunctionEntry& entry,
                                                               const SourceMap::Span& span,
                                                               std::size_t offset) {
    constexpr std::size_t indentation = 4;
    const auto place = libraries.find(entry);
    if (!place) return std::nullopt;
    const std::string_view text = texts[1]->part({span.begin, offset});
    const std::size_t breaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    // Inside the signature: the body's first line stands for it.
    if (breaks == 0) return Found{place->file, {place->offset, place->offset}};
    const std::size_t head = text.find('\n') + 1;
    const std::size_t blanks = breaks * indentation;
    std::size_t at = place->offset + text.size() - std::min(text.size(), head + blanks);
    at = std::min(at, place->file->text().size());
    const std::size_t length = nameAt(place->file->text(), at).size();
    return Found{place->file, {at, at + std::max<std::size_t>(length, 1)}};
}

std::optional<FailedBuild::Found> FailedBuild::locate(const GxxPlace& place) {
    const auto which = generatedText(place.file);
    if (!which || !texts[0]) return std::nullopt;
    const SourceText& text = *texts[*which == GeneratedText::main ? 0 : 1];
    if (place.line == 0 || place.line > text.lineCount()) return std::nullopt;
    const std::string_view line = text.lineText(place.line);
    const std::size_t offset = text.offsetOf(place.line, byteOfColumn(line, place.column) + 1);
    const SourceMap::Span* span = map.innermost(*which, offset);
    if (!span) return std::nullopt;
    if (const FunctionEntry* entry = libraries.findEntry(span->node))
        return locateInLibrary(*entry, *span, offset);
    const ByteRange range = narrow(span->node, nameAt(text.text(), offset));
    if (range.end == 0) return std::nullopt;
    return Found{&source.source(), range};
}

// The linker names a function and no place: its first call is meant.
std::optional<FailedBuild::Found> FailedBuild::locateCall(const GxxError& error) const {
    constexpr std::string_view front = "undefined reference to '";
    if (!error.text.starts_with(front)) return std::nullopt;
    const std::string_view name = nameAt(error.text, front.size());
    for (std::size_t index = 0; index < source.tokens().size(); ++index)
        if (!name.empty() && source.tokens()[index].text() == name)
            return Found{&source.source(), source.tokenRange(index)};
    return std::nullopt;
}

std::optional<FailedBuild::Found> FailedBuild::locate(const GxxError& error) {
    if (auto found = locate(error.place)) return found;
    for (const GxxPlace& user : error.users)
        if (auto found = locate(user)) return found;
    return locateCall(error);
}

void FailedBuild::addError(const GxxError& error) {
    const auto found = locate(error);
    if (!found) {
        complete = false;
        return;
    }
    std::string text = inPlainWords(error.text);
    const std::size_t line = found->file->placeOf(found->range.begin).line;
    if (count == mostErrors || !lines.insert({found->file, line}).second) return;
    // A name that is missing is told once.
    if (error.text.find("was not declared") != std::string::npos && !said.insert(text).second)
        return;
    ++count;
    const bool isOwn = found->file == &source.source();
    auto its = std::find_if(messages.begin(), messages.end(),
                            [&](const FileMessages& file) { return file.source == found->file; });
    if (its == messages.end()) its = messages.insert(its, FileMessages{found->file, {}});
    its->diagnostics.push_back(makeDiagnostic(isOwn ? MessageId::cppError : MessageId::libraryError,
                                              found->range, {text}));
}

std::vector<FileMessages> FailedBuild::explain(std::string_view gxxOutput) {
    generateAgain();
    const std::vector<GxxError> errors = readGxxOutput(gxxOutput);
    for (const GxxError& error : errors) addError(error);
    if (errors.empty()) complete = false;
    if (count == 0) {
        const std::string text =
            "the C++ compiler failed: " + (errors.empty() ? "it says nothing about the program"
                                                          : inPlainWords(errors.front().text));
        messages.front().diagnostics.push_back(makeDiagnostic(MessageId::cppError, {}, {text}));
    }
    for (FileMessages& file : messages)
        std::stable_sort(file.diagnostics.begin(), file.diagnostics.end(),
                         [](const Diagnostic& first, const Diagnostic& second) {
                             return first.range.begin < second.range.begin;
                         });
    return messages;
}

} // namespace Orvane
