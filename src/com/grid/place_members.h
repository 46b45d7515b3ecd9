// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "com/grid/member_call.h"

namespace stockbook::com {

// Where the user is, and how a host moves there; the outline.
std::span<const LateMember> PlaceMembers();

}  // namespace stockbook::com
