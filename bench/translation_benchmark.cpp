// Time of each stage of a translation on generated sources of growing size.
//
// Items are source lines, so that "items_per_second" reads as lines per second and linear growth
// shows as an equal figure in every row.
#include "bench/source_generator.h"

#include "codegen/code_generator.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "libraries/replacement_table.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace Orvane::Bench {
namespace {

class SilentConsole final : public Console {
public:
    void write(std::string_view) override {}
};

void countLines(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

std::string sourceOf(const benchmark::State& state) {
    return generateSource(static_cast<std::size_t>(state.range(0)));
}

void generateOnce(const AST& program) {
    const ReplacementTable table;
    TextStream mainStream;
    TextStream importStream;
    int indentLevel = 0;
    CodeGenerator generator(table, mainStream, importStream, indentLevel);
    generator.generate(program, "main.cpp", "import.hpp", false, false);
    benchmark::DoNotOptimize(importStream.view().data());
}

void lex(benchmark::State& state) {
    const std::string source = sourceOf(state);
    SilentConsole console;
    for (auto _ : state) {
        Lexer lexer(source, console);
        benchmark::DoNotOptimize(lexer.tokenize());
    }
    countLines(state);
}

void parse(benchmark::State& state) {
    const std::string source = sourceOf(state);
    SilentConsole console;
    Lexer lexer(source, console);
    const std::vector<Token> tokens = lexer.tokenize();
    for (auto _ : state) {
        state.PauseTiming();
        auto copy = tokens;
        state.ResumeTiming();
        Parser parser(std::move(copy), console, nullptr, Parser::Texts::viewed);
        benchmark::DoNotOptimize(parser.parse());
    }
    countLines(state);
}

void generate(benchmark::State& state) {
    const std::string source = sourceOf(state);
    SilentConsole console;
    Lexer lexer(source, console);
    Parser parser(lexer.tokenize(), console);
    const std::unique_ptr<AST> program = parser.parse();
    for (auto _ : state) generateOnce(*program);
    countLines(state);
}

void translate(benchmark::State& state) {
    const std::string source = sourceOf(state);
    SilentConsole console;
    for (auto _ : state) {
        Lexer lexer(source, console);
        const std::unique_ptr<AST> program =
            Parser(lexer.tokenize(), console, nullptr, Parser::Texts::viewed).parse();
        generateOnce(*program);
    }
    countLines(state);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1'000)->Arg(11'000)->Arg(110'000)->Arg(1'100'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(lex)->Apply(sizes);
BENCHMARK(parse)->Apply(sizes);
BENCHMARK(generate)->Apply(sizes);
BENCHMARK(translate)->Apply(sizes);

} // namespace
} // namespace Orvane::Bench
