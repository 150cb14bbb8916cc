// Calls: which function a name means where it stands, and whether the arguments fit.
#include "check/member_access.h"
#include "check/nearest_name.h"
#include "check/platform_names.h"
#include "check/type_checker.h"
#include "codegen/code_generator.h"
#include "codegen/library_calls.h"

#include <algorithm>

namespace Orvane {

namespace {

// As far as it is known. C++ compares values of one type only.
bool areOfOneType(const std::vector<ExprType>& arguments) {
    const auto plain = [](ExprType argument) {
        return argument.type == ValueType::zero ? ValueType::integer : argument.type;
    };
    for (const ExprType& argument : arguments) {
        if (argument.type == ValueType::unknown) return true;
        if (plain(argument) != plain(arguments.front())) return false;
    }
    return true;
}

bool isBuiltIn(std::string_view name) { return name == "alert" || name == "print"; }

// "3 arguments"
std::string countOf(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

struct LibraryType {
    std::string_view text;
    ValueType type;
    bool variable;
};
constexpr LibraryType libraryTypes[] = {
    {"value", ValueType::dynamic, false},        {"Value", ValueType::dynamic, false},
    {"value&", ValueType::dynamic, true},        {"Value&", ValueType::dynamic, true},
    {"const Value&", ValueType::dynamic, false}, {"const value&", ValueType::dynamic, false},
    {"int", ValueType::integer, false},          {"long long", ValueType::big, false},
    {"double", ValueType::floating, false},      {"bool", ValueType::truth, false},
    {"string", ValueType::text, false},          {"std::string", ValueType::text, false},
    {"const string&", ValueType::text, false},   {"const std::string&", ValueType::text, false},
    {"void", ValueType::nothing, false},
};

const LibraryType* findLibraryType(std::string_view text) {
    for (const LibraryType& type : libraryTypes)
        if (type.text == text) return &type;
    return nullptr;
}

} // namespace

// ---- Which function ----

// Of what `alert` and `print` are given only the first argument is written.
ExprType TypeChecker::typeOfCall(const CallExpr& call) {
    if (call.callee) {
        const BinaryExpr* access = asMember(call.callee.get());
        const BinaryExpr* inner = access ? asMember(access->left.get()) : nullptr;
        if (inner && memberName(*inner) == "all") return typeOfBroadcastCall(call);
        return typeOfMemberCall(call);
    }
    if (isBuiltIn(call.name)) return typeOfBuiltIn(call);
    if (const Symbol* symbol = findVariable(call.name)) return callOfVariable(call, *symbol);
    if (!names.functionsOf(call.name).empty()) return callOfFunction(call);
    if (libraries.table().exists(call.name)) return callOfLibrary(call);
    return callOfUnknown(call);
}

ExprType TypeChecker::typeOfBuiltIn(const CallExpr& call) {
    if (!call.args.empty()) valueOf(call.args.front().get());
    if (call.args.size() > 1)
        report(MessageId::ignoredArguments, placeOf(call.args[1].get()), {call.name});
    if (body.kind == BodyKind::method) checkCallInMethod(call, isWrittenInto(call.name));
    return {call.name == "alert" ? ValueType::integer : ValueType::stream};
}

// A dynamic value can be called: nothing happens, and the result is null.
ExprType TypeChecker::callOfVariable(const CallExpr& call, const Symbol& symbol) {
    const ValueType type = symbol.type;
    for (const auto& argument : call.args) valueOf(argument.get());
    if (type == ValueType::unknown) return {};
    const MessageId id =
        type == ValueType::dynamic ? MessageId::callOfVariable : MessageId::notCallable;
    report(id, placeOfFirst(&call), {call.name, describe(type)});
    return {type == ValueType::dynamic ? ValueType::dynamic : ValueType::unknown};
}

// Functions of scripts have no prototypes: each knows those above it and itself.
bool TypeChecker::isVisible(const UserFunction& function) const {
    if (function.hasPrototype || body.kind == BodyKind::handler) return true;
    return body.kind == BodyKind::scriptFunction && body.entry &&
           function.order <= body.entry->order;
}

ExprType TypeChecker::callOfFunction(const CallExpr& call) {
    std::vector<Candidate> candidates;
    for (const UserFunction& function : names.functionsOf(call.name)) {
        if (!isVisible(function)) continue;
        Candidate candidate{.result = function.result};
        for (const ValueType type : function.parameters) candidate.parameters.push_back({type});
        candidates.push_back(std::move(candidate));
    }
    if (isCppType(call.name))
        report(MessageId::ambiguousFunction, placeOfFirst(&call), {call.name});
    if (!candidates.empty()) return settleCall(call, call.name, candidates);
    typesOf(call.args);
    if (!mayBePlatformName(call.name))
        report(MessageId::functionUsedBefore, placeOfFirst(&call), {call.name});
    return {};
}

ExprType TypeChecker::callOfLibrary(const CallExpr& call) {
    if (body.kind == BodyKind::method && !isWrittenInto(call.name)) {
        typesOf(call.args);
        checkCallInMethod(call, mayBePlatformName(call.name));
        return {};
    }
    std::vector<Candidate> candidates;
    for (const FunctionEntry& entry : libraries.find(call.name)) {
        const LibraryType* result = findLibraryType(entry.returnType);
        Candidate candidate{.result = result ? result->type : ValueType::unknown};
        for (const LibraryParameter& parameter : parametersOf(entry)) {
            const LibraryType* type = findLibraryType(parameter.type);
            candidate.parameters.push_back(type ? Wanted{type->type, type->variable}
                                                : Wanted{ValueType::unknown, false});
        }
        candidates.push_back(std::move(candidate));
    }
    return settleCall(call, call.name, candidates);
}

// Whether the library function is among those that the program contains.
bool TypeChecker::isWrittenInto(std::string_view libraryFunction) {
    if (libraryFunction == "alert") return CodeGenerator::needsUtf8Conv(names.calledNames());
    if (names.calledNames().contains(libraryFunction)) return true;
    if (libraryFunction == "print") return false;
    if (!libraries.anyLoaded()) return false;
    if (!writtenLibraryFunctions)
        writtenLibraryFunctions = closeOverLibraryCalls(libraries.table(), names.calledNames());
    return writtenLibraryFunctions->contains(libraryFunction);
}

void TypeChecker::checkCallInMethod(const CallExpr& call, bool isWritten) {
    if (!isWritten) report(MessageId::callOnlyInMethods, placeOfFirst(&call), {call.name});
}

// Whether the headers may have a function of the name that takes the arguments.
bool TypeChecker::mayBeOfPlatform(std::string_view name, const std::vector<ExprType>& arguments) {
    if (name.find("__") != std::string_view::npos) return true; // of the translation
    if (!mayBePlatformName(name)) return false;
    if (arguments.empty() && isTemplateFunction(name)) return false;
    if (name == "max" || name == "min") return areOfOneType(arguments);
    const auto isForeign = [](ExprType argument) {
        return argument.type == ValueType::dynamic || argument.type == ValueType::list ||
               argument.type == ValueType::text;
    };
    return !isPlainPlatformFunction(name) ||
           std::none_of(arguments.begin(), arguments.end(), isForeign);
}

// A method of the class that is called by its bare name. Without arguments no function of the
// headers is meant but a few of C.
bool TypeChecker::isOwnMethod(const CallExpr& call) const {
    if (body.kind != BodyKind::method || !body.owner) return false;
    if (!ProgramNames::hasMethod(*body.owner, call.name)) return false;
    return !mayBePlatformName(call.name) || (call.args.empty() && isTemplateFunction(call.name));
}

// No function of the source and of the loaded libraries.
ExprType TypeChecker::callOfUnknown(const CallExpr& call) {
    const std::vector<ExprType> arguments = typesOf(call.args);
    const std::vector<std::string>& owners = libraries.librariesWith(call.name);
    const ByteRange place = placeOfFirst(&call);
    if (mayBeOfPlatform(call.name, arguments)) {
        if (isOwnMethod(call)) report(MessageId::methodAsFunction, place, {call.name});
        return {};
    }
    if (isCalledLikeFunction(call.name)) return {};
    if (names.classOf(call.name)) {
        report(MessageId::constructorCall, place, {call.name});
    } else if (isOwnMethod(call)) {
        report(MessageId::methodAsFunction, place, {call.name});
    } else if (!owners.empty()) {
        report(MessageId::missingLibrary, place, {call.name, owners.front()});
    } else if (isPlainPlatformFunction(call.name)) {
        report(MessageId::platformArgument, place, {call.name});
    } else if (reservedWord(call.name) == ReservedWord::cpp) {
        report(MessageId::reservedName, place, {call.name, "C++"});
    } else {
        reportUnknownFunction(call.name, place);
    }
    return {};
}

// With a library that is not found, it is probably a function of that one, and one message is
// enough.
void TypeChecker::reportUnknownFunction(std::string_view name, ByteRange place) {
    if (!unknownImports.empty()) {
        callsUnknownFunctions = true;
        return;
    }
    std::vector<std::string_view> candidates = names.functionNames();
    candidates.insert(candidates.end(), {"alert", "print"});
    for (const auto& [function, entries] : libraries.table().entries())
        if (!function.starts_with("orx")) candidates.push_back(function);
    std::string_view nearest = nearestName(name, candidates);
    if (nearest.empty()) nearest = nearestName(name, libraries.knownNames());
    Diagnostic& message = report(MessageId::unknownFunction, place, {name});
    if (!nearest.empty()) message.hint = "Did you mean '" + std::string(nearest) + "'?";
}

// ---- Whether the arguments fit ----

std::vector<ExprType> TypeChecker::typesOf(const ExprList& arguments) {
    std::vector<ExprType> types;
    types.reserve(arguments.size());
    for (const auto& argument : arguments) {
        types.push_back(valueOf(argument.get()));
        storeContent(argument.get(), nullptr, ValueType::unknown); // the call may change it
    }
    return types;
}

bool TypeChecker::accepts(const Wanted& parameter, ExprType argument) {
    if (argument.type == ValueType::unknown || parameter.type == ValueType::unknown) return true;
    if (parameter.variable) return argument.isVariable && argument.type == parameter.type;
    return canBecome(argument.type, parameter.type);
}

bool TypeChecker::accepts(const Candidate& candidate, const std::vector<ExprType>& arguments) {
    if (candidate.parameters.size() != arguments.size()) return false;
    for (std::size_t index = 0; index < arguments.size(); ++index)
        if (!accepts(candidate.parameters[index], arguments[index])) return false;
    return true;
}

// For C++ a number fits a function of numbers better than one of dynamic values.
bool TypeChecker::meansSilentFunction(std::string_view name,
                                      const std::vector<Candidate>& candidates,
                                      const std::vector<ExprType>& arguments) {
    return isSilentFunction(name) && arguments.size() == 1 && isNumber(arguments[0].type) &&
           std::all_of(candidates.begin(), candidates.end(), [](const Candidate& candidate) {
               return candidate.parameters.size() == 1 &&
                      candidate.parameters[0].type == ValueType::dynamic;
           });
}

ExprType TypeChecker::settleCall(const CallExpr& call, std::string_view shown,
                                 const std::vector<Candidate>& candidates) {
    const std::vector<ExprType> arguments = typesOf(call.args);
    const bool mayBeOther = !call.callee && mayBeOfPlatform(shown, arguments);
    ExprType result;
    bool any = false;
    for (const Candidate& candidate : candidates) {
        if (!accepts(candidate, arguments)) continue;
        if (any && candidate.result != result.type) return {};
        result = {candidate.result};
        any = true;
    }
    if (mayBeOther) {
        if (meansSilentFunction(shown, candidates, arguments)) return {ValueType::nothing};
        const bool allDynamic = std::all_of(arguments.begin(), arguments.end(), [](ExprType type) {
            return type.type == ValueType::dynamic;
        });
        return any && allDynamic ? result : ExprType{};
    }
    if (any) return result;
    const auto fitting =
        std::find_if(candidates.begin(), candidates.end(), [&](const Candidate& candidate) {
            return candidate.parameters.size() == arguments.size();
        });
    if (fitting == candidates.end())
        reportCount(call, shown, candidates);
    else
        reportArgument(call, shown, *fitting, arguments);
    return candidates.size() == 1 ? ExprType{candidates.front().result} : ExprType{};
}

void TypeChecker::reportCount(const CallExpr& call, std::string_view shown,
                              const std::vector<Candidate>& candidates) {
    std::vector<std::size_t> counts;
    counts.reserve(candidates.size());
    for (const Candidate& candidate : candidates) counts.push_back(candidate.parameters.size());
    std::sort(counts.begin(), counts.end());
    counts.erase(std::unique(counts.begin(), counts.end()), counts.end());
    std::string wanted;
    for (std::size_t index = 0; index + 1 < counts.size(); ++index)
        wanted += std::to_string(counts[index]) + " or ";
    wanted += countOf(counts.back());
    report(MessageId::argumentCount, placeOf(&call),
           {shown, wanted, std::to_string(call.args.size())});
}

void TypeChecker::reportArgument(const CallExpr& call, std::string_view shown,
                                 const Candidate& candidate,
                                 const std::vector<ExprType>& arguments) {
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const Wanted& parameter = candidate.parameters[index];
        const ExprType given = arguments[index];
        if (accepts(parameter, given)) continue;
        const ByteRange place = placeOf(call.args[index].get());
        if (parameter.variable) {
            report(MessageId::argumentNoVariable, place, {shown});
            return;
        }
        Diagnostic& message = report(MessageId::argumentType, place,
                                     {shown, describe(parameter.type), describe(given.type)});
        if (given.type != ValueType::dynamic) return;
        if (parameter.type == ValueType::text)
            message.hint = "Store it first: string t = \"\" + x; and pass t.";
        else if (parameter.type == ValueType::floating)
            message.hint = "Convert it: toDouble(...) of the library 'math'.";
        else if (parameter.type == ValueType::truth)
            message.hint = "Convert it: toBool(...) of the library 'math'.";
        else
            message.hint = "Convert it: toInt(...) of the library 'math'.";
        return;
    }
}

// ---- Methods ----

// The class is known of variables that are declared with one. Every other call of a member is
// written as an empty value, its arguments not at all.
ExprType TypeChecker::typeOfMemberCall(const CallExpr& call) {
    const BinaryExpr* access = asMember(call.callee.get());
    const auto* object = access ? nodeCast<IdentifierExpr>(access->left) : nullptr;
    const std::string_view className =
        object ? CodeGeneratorCore::declaredClass(object->name, variableClasses)
               : std::string_view();
    const ClassDef* definition = object ? names.classOf(className) : nullptr;
    if (!definition || !ProgramNames::hasMethod(*definition, memberName(*access))) {
        reportUnknownMethod(call, access, className);
        return {ValueType::dynamic};
    }
    valueOf(object);
    return callOfMethod(call, className, memberName(*access));
}

void TypeChecker::reportUnknownMethod(const CallExpr& call, const BinaryExpr* access,
                                      std::string_view className) {
    if (!access) {
        report(MessageId::methodOfNoObject, placeOf(&call), {""});
        return;
    }
    const std::string_view method = memberName(*access);
    const ByteRange place = placeOf(access->right.get());
    const bool isFunction = !names.functionsOf(method).empty() || !libraries.find(method).empty() ||
                            !libraries.librariesWith(method).empty();
    Diagnostic& message = names.classOf(className)
                              ? report(MessageId::unknownMethod, place, {method, className})
                              : report(MessageId::methodOfNoObject, place, {method});
    if (!isFunction) return;
    const std::string_view object = source.source().part(placeOf(access->left.get()));
    message.hint = "Write the function: " + std::string(method) + "(" + std::string(object) +
                   (call.args.empty() ? ")." : ", ...).");
}

ExprType TypeChecker::callOfMethod(const CallExpr& call, std::string_view className,
                                   std::string_view method) {
    std::vector<Candidate> candidates;
    for (const UserFunction& function : names.methodsOf(className, method)) {
        const bool below =
            body.kind == BodyKind::method && body.entry && function.order > body.entry->order;
        if (below) continue;
        Candidate candidate{.result = function.result};
        for (const ValueType type : function.parameters) candidate.parameters.push_back({type});
        candidates.push_back(std::move(candidate));
    }
    if (!candidates.empty()) return settleCall(call, method, candidates);
    typesOf(call.args);
    report(MessageId::methodUsedBefore, placeOf(call.callee.get()), {method});
    return {};
}

// A method that changes its object changes a copy; only its result has the change.
void TypeChecker::checkDroppedResult(const Expr* expr) {
    const auto* call = nodeCast<CallExpr>(expr);
    const BinaryExpr* access = call ? asMember(call->callee.get()) : nullptr;
    const auto* object = access ? nodeCast<IdentifierExpr>(access->left) : nullptr;
    if (!object) return;
    const std::string_view className =
        CodeGeneratorCore::declaredClass(object->name, variableClasses);
    const auto methods = names.methodsOf(className, memberName(*access));
    const bool allChange = !methods.empty() && std::all_of(methods.begin(), methods.end(),
                                                           [](const UserFunction& method) {
                                                               return method.changesObject;
                                                           });
    if (!allChange) return;
    Diagnostic& message =
        report(MessageId::changedCopy, placeOf(call), {memberName(*access), object->name});
    if (methods.front().result == ValueType::nothing)
        message.hint = "Let the method return _this, and store what it returns.";
}

// x.all.method(...) calls every element as a function, which does nothing.
ExprType TypeChecker::typeOfBroadcastCall(const CallExpr& call) {
    const BinaryExpr* access = asMember(call.callee.get());
    const BinaryExpr* all = asMember(access->left.get());
    const ExprType collection = valueOf(all->left.get());
    const bool fits = collection.type == ValueType::unknown ||
                      (collection.type == ValueType::dynamic && collection.isVariable);
    if (!fits) report(MessageId::allOfNoList, placeOf(all), {describe(collection.type)});
    for (const auto& argument : call.args) valueOf(argument.get());
    return {ValueType::nothing};
}

} // namespace Orvane
