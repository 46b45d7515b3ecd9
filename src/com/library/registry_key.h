// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace stockbook::com {

// A value of the classes that all users of the machine have: below `key`, "" being the key's own.
struct RegistryText {
  std::wstring key;
  std::wstring name;
  std::wstring text;
};

// Makes the key where it is missing. The result is Windows' error number, 0 for none.
LSTATUS WriteClassText(const RegistryText& entry);

// The key's own value, if it has one, as programs of this width see it.
std::optional<std::wstring> ReadClassText(const std::wstring& key);

// Whether programs of the other width see that key; never where there is but one width.
bool OtherWidthHasClassKey(const std::wstring& key);

// Removes a key with all below it; one that is missing is no error.
LSTATUS DeleteClassKey(const std::wstring& key);

}  // namespace stockbook::com
