// The programs of the corpus, their true verdicts, and what the checks say about them.
//
//     for (const CorpusProgram& program : readCorpus())
//         if (program.isRefused && !program.saysError()) ...
#pragma once

#include "check/message.h"

#include <string>
#include <vector>

namespace Orvane {

struct CorpusProgram {
    std::string name;
    bool isRefused = false; // by the compiler or by the C++ compiler behind it
    bool misleads = false;  // is accepted, and does something else than it seems to say
    std::vector<Diagnostic> diagnostics;

    bool saysError() const;
    std::string ids() const; // of the diagnostics, each once, with blanks between them
};

// In the order of corpus.csv. Throws when a program or the table is missing.
std::vector<CorpusProgram> readCorpus();

// Throws when the file cannot be read.
std::string readText(const std::string& path);

// What the checks say about a source, with the libraries of this source tree.
std::vector<Diagnostic> checkText(const std::string& text);

} // namespace Orvane
