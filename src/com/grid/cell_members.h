// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "com/grid/member_call.h"

namespace stockbook::com {

// Rows, columns and cells: what the grid contains.
std::span<const LateMember> CellMembers();

}  // namespace stockbook::com
