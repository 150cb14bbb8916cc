// The expression `object.name` in the tree.
#pragma once

#include "frontend/syntax_tree.h"

#include <string_view>

namespace Orvane {

// Null when the expression is no access to a member.
inline const BinaryExpr* asMember(const Expr* expr) {
    const auto* binary = nodeCast<BinaryExpr>(expr);
    return binary && binary->op == "." ? binary : nullptr;
}

// Empty when what stands behind the "." is no name.
inline std::string_view memberName(const BinaryExpr& access) {
    const auto* member = nodeCast<IdentifierExpr>(access.right);
    return member ? member->name : std::string_view{};
}

} // namespace Orvane
