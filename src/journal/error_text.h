// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stockbook::journal {

// What the user is told of the exception that is being handled: its own text, or `unknown` where it has none. To be
// called in a catch clause.
std::string TextOfError(std::string_view unknown);
// The same, kept in `room`. It never fails: without memory for the text it is another one that says so.
const std::string& TextOfError(std::string_view unknown, std::string& room) noexcept;

}  // namespace stockbook::journal
