// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "com/grid/member_call.h"

namespace stockbook::com {

// Colours, lines, bars, pictures and the font.
std::span<const LateMember> LookMembers();

}  // namespace stockbook::com
