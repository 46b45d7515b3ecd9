// SPDX-License-Identifier: MIT
#include "databases/dialect/ast.h"

namespace stockbook::databases {

Expr::Expr(ExprKind the_kind, size_t the_offset) : kind(the_kind), offset(the_offset) {}
Expr::~Expr() = default;

}  // namespace stockbook::databases
