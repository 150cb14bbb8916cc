// One source, read and checked.
//
//     CheckedFile file = checkFile("app.vorla", {});
//     report.add(file.source(), file.diagnostics());
#pragma once

#include "check/parsed_source.h"

#include <memory>
#include <string>
#include <vector>

namespace Orvane {

class CheckedFile {
public:
    CheckedFile(std::unique_ptr<ParsedSource> parsed_, std::vector<Diagnostic> found_)
        : parsed(std::move(parsed_)), found(std::move(found_)) {}

    const SourceText& source() const { return parsed->source(); }
    const std::vector<Diagnostic>& diagnostics() const { return found; }
    bool hasErrors() const;

private:
    std::unique_ptr<ParsedSource> parsed;
    std::vector<Diagnostic> found;
};

// "-" is standard input, called <stdin> in messages. The options are those of orvanec, of which
// only the libraries count. A file that cannot be read has one error that says so.
CheckedFile checkFile(const std::string& path, const std::vector<std::string>& compilerOptions);

} // namespace Orvane
