// The command new.

#include "codegen/code_generator_core.h"
#include "libraries/files.h"
#include "orvane/commands.h"
#include "orvane/embedded.h"
#include "orvane/system.h"

#include <filesystem>

namespace Orvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view suffix = ".vorla";
constexpr std::string_view titleGap = "$TITLE$";

std::string_view templateText(std::string_view name) {
    for (const EmbeddedText& text : programTemplates())
        if (text.name == name) return text.text;
    return {};
}

// The name of the file stands in the title; quotes and the like would end the text there.
std::string fillTitle(std::string_view pattern, const std::string& title) {
    std::string text(pattern);
    const std::string escaped = CodeGeneratorCore::escapeString(title);
    for (std::size_t at = text.find(titleGap); at != std::string::npos;
         at = text.find(titleGap, at + escaped.size()))
        text.replace(at, titleGap.size(), escaped);
    return text;
}

int fail(Output& err, const std::string& sentence) {
    err.write("orvane: " + sentence + "\n");
    return somethingIsWrong;
}

// "x" makes the file and fails when there is one: nobody can put one there in between.
bool writeNewFile(const fs::path& path, std::string_view text) {
    std::FILE* file = openNewFile(path);
    if (!file) return false;
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const bool isClosed = std::fclose(file) == 0;
    return isWritten && isClosed;
}

} // namespace

int runNew(const CommandRequest& request, Output& out, Output& err) {
    std::string name = request.names.front();
    if (!name.ends_with(suffix)) name += suffix;
    const fs::path path = pathOf(name);
    const std::string title = textOf(path.stem());
    if (title.empty() || title == suffix) return fail(err, "'" + name + "' is no name for a file.");
    if (pathExists(path)) return fail(err, "'" + name + "' is there already and stays as it is.");
    if (!writeNewFile(path, fillTitle(templateText(request.templateName), title)))
        return fail(err, "'" + name + "' cannot be written. Its folder must be there.");
    out.write("Made " + name + ". To see it: orvane run " + name + "\n");
    return allIsWell;
}

} // namespace Orvane
