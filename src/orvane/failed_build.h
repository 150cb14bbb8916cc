// A build that the C++ compiler refused, explained in places of the source.
//
// The program is generated once more with an observer, and each place that g++ names is followed
// back to the statement or expression that its text came from. Errors in the body of a library
// function belong to the library's file.
//
//     FailedBuild failed(options, installation);
//     for (const auto& [source, diagnostics] : failed.explain(gxxOutput)) report.add(*source, ...);
#pragma once

#include "check/parsed_source.h"
#include "codegen/text_stream.h"
#include "driver/options.h"
#include "driver/output_files.h"
#include "orvane/gxx_output.h"
#include "orvane/program_libraries.h"
#include "orvane/source_map.h"

#include <array>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace Orvane {

struct FileMessages {
    const SourceText* source; // the explanation's own; valid as long as that is
    std::vector<Diagnostic> diagnostics;
};

class FailedBuild {
public:
    FailedBuild(const Options& options, const std::filesystem::path& installation);

    // The messages for what g++ printed, the program's own file first; at most 20, and one for a
    // line. Called once.
    std::vector<FileMessages> explain(std::string_view gxxOutput);

    // Whether every error of g++ has found its place; the original text tells about the others.
    bool isComplete() const { return complete; }

private:
    struct Found {
        const SourceText* file;
        ByteRange range;
    };

    void generateAgain();
    bool isAsWritten(const std::filesystem::path& path, const TextStream& text) const;
    std::optional<Found> locate(const GxxError& error);
    std::optional<Found> locate(const GxxPlace& place);
    std::optional<Found> locateCall(const GxxError& error) const;
    std::optional<Found> locateInLibrary(const FunctionEntry& entry, const SourceMap::Span& span,
                                         std::size_t offset);
    ByteRange narrow(const void* node, std::string_view word) const;
    void addError(const GxxError& error);

    static constexpr std::size_t mostErrors = 20;

    Options options;
    OutputFiles files;
    ParsedSource source;
    ProgramLibraries libraries;
    SourceMap map;
    std::array<std::optional<SourceText>, 2> texts; // main.cpp and import.hpp as they were written
    std::vector<FileMessages> messages;
    std::set<std::pair<const SourceText*, std::size_t>> lines; // that have their message
    std::unordered_set<std::string> said;
    std::size_t count = 0;
    bool complete = true;
};

} // namespace Orvane
