// corpus_list: what the checks say about every program of the corpus, one line for each:
//
//     NAME<TAB>error|warning|nothing<TAB>IDS
//
// corpus_list FILE...: the same for these sources, with their paths as names.
#include "corpus.h"

#include <exception>
#include <iostream>

namespace {

std::vector<Orvane::CorpusProgram> readPrograms(int count, char** arguments) {
    if (count < 2) return Orvane::readCorpus();
    std::vector<Orvane::CorpusProgram> programs;
    for (int index = 1; index < count; ++index) {
        Orvane::CorpusProgram program;
        program.name = arguments[index];
        program.diagnostics = Orvane::checkText(Orvane::readText(program.name));
        programs.push_back(std::move(program));
    }
    return programs;
}

} // namespace

int main(int count, char** arguments) {
    try {
        for (const auto& program : readPrograms(count, arguments)) {
            const char* verdict = program.diagnostics.empty() ? "nothing" : "warning";
            if (program.saysError()) verdict = "error";
            std::cout << program.name << '\t' << verdict << '\t' << program.ids() << '\n';
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
