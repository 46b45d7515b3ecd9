// SPDX-License-Identifier: MIT
#include "grid/hidden_keys.h"

#include "base/text.h"

namespace stockbook::grid {
namespace {

std::string Barred(std::string_view key) { return "|" + std::string(key) + "|"; }

}  // namespace

bool HiddenKeys::IsHiddenKey(std::string_view key) const { return text_.find(Barred(key)) != std::string::npos; }

void HiddenKeys::AppendKeys(std::span<const char* const> keys) {
  for (const char* key : keys) text_.append(key).append("|");
}

void HiddenKeys::HideKey(std::string_view key) {
  if (IsHiddenKey(key)) return;
  // Keys put on an empty list before the first layout still need a bar in front of them.
  if (text_.empty()) text_ = "|";
  text_.append(key).append("|");
}

void HiddenKeys::ShowKey(std::string_view key) {
  while (IsHiddenKey(key)) text_ = base::ReplaceAll(text_, Barred(key), "|");
}

}  // namespace stockbook::grid
