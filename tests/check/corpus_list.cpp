// corpus_list: what the checks say about every program of the corpus, one line for each:
//
//     NAME<TAB>error|warning|nothing<TAB>IDS
#include "corpus.h"

#include <exception>
#include <iostream>

int main() {
    try {
        for (const auto& program : Orvane::readCorpus()) {
            const char* verdict = program.diagnostics.empty() ? "nothing" : "warning";
            if (program.saysError()) verdict = "error";
            std::cout << program.name << '\t' << verdict << '\t' << program.ids() << '\n';
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
