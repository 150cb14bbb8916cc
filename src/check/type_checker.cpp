#include "check/type_checker.h"

namespace Orvane {

TypeChecker::TypeChecker(const ParsedSource& source_, const LibraryFunctions& libraries_,
                         std::vector<Diagnostic>& found_)
    : source(source_), program(source_.tree()), libraries(libraries_), found(found_),
      names(source_.tree()) {}

// The bodies in the order of the translation, because a variable's class stays known in all bodies
// behind the one that declares it.
void TypeChecker::run() {
    for (const Using& entry : program.usings)
        if (entry.isAlias) variableClasses.set(entry.key, entry.value);
    checkImports();
    checkControls();
    checkClasses();
    checkFunctions();
    checkHandlers();
    reportPending();
}

Diagnostic& TypeChecker::report(MessageId id, ByteRange place,
                                std::initializer_list<std::string_view> arguments) {
    found.push_back(makeDiagnostic(id, place, arguments));
    return found.back();
}

ByteRange TypeChecker::placeOfName(const void* node, std::string_view name) const {
    const auto range = source.tokensOf(node);
    if (!range) return {};
    for (std::size_t index = range->first; index <= range->last; ++index)
        if (source.tokens()[index].text() == name) return source.tokenRange(index);
    return source.tokenRange(range->first);
}

ByteRange TypeChecker::placeOfFirst(const void* node) const {
    const auto range = source.tokensOf(node);
    return range ? source.tokenRange(range->first) : ByteRange{};
}

ByteRange TypeChecker::placeOfLast(const void* node) const {
    const auto range = source.tokensOf(node);
    return range ? source.tokenRange(range->last) : ByteRange{};
}

} // namespace Orvane
