// Expressions that are written operand by operand: operators, member accesses, indexing and calls.
//
// A source such as a + b + c + ... or a[1][2]... makes a tree that leans to the left as deep as the
// chain is long, so nothing here recurses along it: genChain walks the operands with a stack of its
// own. That spares the program's stack the many small steps of a tree of operators as well.

#include "codegen/code_generator_core.h"

#include <utility>

namespace Orvane {

namespace {

const BinaryExpr* asMemberAccess(const Expr* expr) {
    const auto* binary = nodeCast<BinaryExpr>(expr);
    return binary && binary->op == "." ? binary : nullptr;
}

// The name behind the point; empty for a tree in which no name stands there.
std::string_view memberName(const BinaryExpr& access) {
    const auto* member = nodeCast<IdentifierExpr>(access.right);
    return member ? member->name : std::string_view{};
}

// x.all, which stands for all elements of x.
const BinaryExpr* asAllReference(const Expr* expr) {
    const auto* access = asMemberAccess(expr);
    return access && memberName(*access) == "all" ? access : nullptr;
}

// The x.all of an assignment x.all = y.
const BinaryExpr* assignedAll(const BinaryExpr& binary) {
    return binary.op == "=" ? asAllReference(binary.left.get()) : nullptr;
}

// The x.all of a call x.all.method(...).
const BinaryExpr* calledAll(const CallExpr& call) {
    const auto* access = asMemberAccess(call.callee.get());
    return access && nodeCast<IdentifierExpr>(access->right) ? asAllReference(access->left.get())
                                                             : nullptr;
}

// What both broadcasts write around the collection and the work on one element. They visit the
// elements of the collection under the name _e.
constexpr std::string_view broadcastFront = "([&]() { auto& _arr = ";
constexpr std::string_view broadcastLoop = "; for (auto& _e : _arr.arrayVal) { ";
constexpr std::string_view broadcastEnd = "; } })()";

} // namespace

void CodeGeneratorCore::genBinary(const BinaryExpr& binary) { genChain(&binary); }

void CodeGeneratorCore::genIndex(const IndexExpr& index) { genChain(&index); }

// ---- Walking a chain ----

void CodeGeneratorCore::genChain(const Expr* expr) {
    const std::size_t outermost = openNodes.size();
    bool hasOperand = true;
    while (hasOperand) {
        while (stepLeft(expr)) {
        }
        generateExpr(expr);
        hasOperand = false;
        while (!hasOperand && openNodes.size() > outermost) hasOperand = stepRight(expr);
    }
}

// In front of everything that is written for the node.
[[gnu::always_inline]] inline void CodeGeneratorCore::openNode(const Expr* node, Rest rest) {
    if (observer) [[unlikely]]
        noteBegin(node, out);
    openNodes.push(node, rest);
}

// Writes the front of a chain node and moves on to its left operand; false, with nothing written,
// for a node of another kind.
bool CodeGeneratorCore::stepLeft(const Expr*& node) {
    if (const auto* binary = nodeCast<BinaryExpr>(node)) {
        node = openBinary(*binary);
        return true;
    }
    if (const auto* index = nodeCast<IndexExpr>(node)) {
        openNode(node, Rest::bracketAndIndex);
        node = index->object.get();
        return true;
    }
    const auto* call = nodeCast<CallExpr>(node);
    const BinaryExpr* all = call ? calledAll(*call) : nullptr;
    if (!all) return false;
    openNode(node, Rest::broadcastCall);
    write(broadcastFront);
    node = all->left.get();
    return true;
}

// Returns the left operand, or null when the text is complete already.
const Expr* CodeGeneratorCore::openBinary(const BinaryExpr& binary) {
    if (binary.op == ".") return openMember(binary);
    if (const BinaryExpr* all = assignedAll(binary)) {
        openNode(&binary, Rest::broadcastAssignment);
        write(broadcastFront);
        return all->left.get();
    }
    openNode(&binary, Rest::operatorAndRight);
    write("(");
    return binary.left.get();
}

// x.all is x itself. On the right side of an assignment to x.all it means the element to which
// the loop has come.
const Expr* CodeGeneratorCore::openMember(const BinaryExpr& access) {
    if (memberName(access) != "all") {
        openNode(&access, Rest::memberName);
        return access.left.get();
    }
    const auto* collection = nodeCast<IdentifierExpr>(access.left);
    if (allElementName.empty() || !collection || collection->name != allElementName)
        return access.left.get();
    write("_e");
    return nullptr;
}

// Goes on behind the operand that has just been written. True when the innermost open node has
// another one, to which it moves; otherwise the node is closed.
bool CodeGeneratorCore::stepRight(const Expr*& node) {
    const Expr& open = *openNodes.nodes.back();
    Rest& rest = openNodes.rests.back();
    if (rest == Rest::operatorAndRight) {
        const auto& operation = static_cast<const BinaryExpr&>(open);
        rest = Rest::closeOperation;
        node = operation.right.get();
        write(" ", operation.op, " ");
        return true;
    }
    if (rest == Rest::bracketAndIndex) {
        rest = Rest::closeIndex;
        node = static_cast<const IndexExpr&>(open).index.get();
        write("[");
        return true;
    }
    const Rest last = rest;
    openNodes.pop();
    writeRest(open, last);
    if (observer) [[unlikely]]
        noteEnd(out);
    return false;
}

// (LEFT + RIGHT), the operator as it stands in the source
// OBJECT[INDEX]
// LEFT["NAME"]
void CodeGeneratorCore::writeRest(const Expr& node, Rest rest) {
    switch (rest) {
    case Rest::closeOperation:
        return write(")");
    case Rest::closeIndex:
        return write("]");
    case Rest::broadcastAssignment:
        return genBroadcastAssignment(static_cast<const BinaryExpr&>(node));
    case Rest::broadcastCall:
        return genBroadcastCall(static_cast<const CallExpr&>(node));
    default:
        return write("[\"", memberName(static_cast<const BinaryExpr&>(node)), "\"]");
    }
}

// ([&]() { auto& _arr = COLLECTION; for (auto& _e : _arr.arrayVal) { _e = RIGHT; } })()
void CodeGeneratorCore::genBroadcastAssignment(const BinaryExpr& binary) {
    const auto* collection = nodeCast<IdentifierExpr>(assignedAll(binary)->left);
    const std::string_view outer =
        std::exchange(allElementName, collection ? collection->name : std::string_view());
    write(broadcastLoop, "_e = ", binary.right, broadcastEnd);
    allElementName = outer;
}

// ([&]() { auto& _arr = COLLECTION; for (auto& _e : _arr.arrayVal) { _e["METHOD"](ARGS); } })()
void CodeGeneratorCore::genBroadcastCall(const CallExpr& call) {
    const std::string_view method = memberName(*asMemberAccess(call.callee.get()));
    write(broadcastLoop, "_e[\"", method, "\"](", call.args, ")", broadcastEnd);
}

// ---- Calls ----

// NAME(ARGS)
// Of what `alert` and `print` are given only the first counts:
// MessageBoxW(NULL, utf8_to_wide(Value(FIRST).toString()).c_str(), L"Orvane", MB_OK)
// std::cout << Value(FIRST).toString() << std::endl
void CodeGeneratorCore::genCall(const CallExpr& call) {
    if (call.callee) {
        if (calledAll(call)) return genChain(&call);
        return genMemberCall(call);
    }
    const Expr* first = call.args.empty() ? nullptr : call.args.front().get();
    if (call.name == "alert") {
        write("MessageBoxW(NULL, utf8_to_wide(Value(");
        generateExpr(first);
        write(").toString()).c_str(), L\"Orvane\", MB_OK)");
    } else if (call.name == "print") {
        write("std::cout << Value(");
        generateExpr(first);
        write(").toString() << std::endl");
    } else {
        write(call.name, "(", call.args, ")");
    }
}

// CLASS__METHOD(OBJECT, ARGS)
// The class is known only of variables that are declared with one. A call that cannot be settled
// is replaced by an empty value, with what is known of it in a comment:
// /* class call CLASS.METHOD */ Value()
void CodeGeneratorCore::genMemberCall(const CallExpr& call) {
    const auto* access = asMemberAccess(call.callee.get());
    const auto* object = access ? nodeCast<IdentifierExpr>(access->left) : nullptr;
    const std::string_view method = access ? memberName(*access) : std::string_view{};

    const std::string_view className =
        object && varClasses ? declaredClass(object->name, *varClasses) : std::string_view();
    const ClassInfo* info = object ? findClass(className) : nullptr;
    if (!info || !info->methods.contains(method)) {
        write("/* class call ", className, ".", method, " */ Value()");
        return;
    }
    write(className, "__", method, "(", object->name);
    for (const auto& argument : call.args) write(", ", argument);
    write(")");
}

} // namespace Orvane
