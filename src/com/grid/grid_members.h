// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include "com/grid/member_call.h"

namespace stockbook::com {

// All members of the grid object.
std::span<const LateMember> GridMembers();

}  // namespace stockbook::com
