// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stockbook::com {

// Appends UTF-16 as clean UTF-8 (base::CleanUtf8): a lone surrogate and a NUL become U+FFFD. For texts by the thousand;
// a call of Windows for each costs several times as much.
void AppendCleanUtf8(std::wstring_view wide, std::string& utf8);

}  // namespace stockbook::com
