// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace stockbook::grid {

// The list of hidden column keys as one text, each key between bars: "|Period|BillDate|". A key is in it when "|" + key
// + "|" occurs in the text, so a part of a key never matches.
class HiddenKeys {
 public:
  const std::string& Text() const { return text_; }
  void Assign(std::string_view text) { text_ = text; }
  // Appends the text unchanged, with or without bars.
  void Append(std::string_view text) { text_ += text; }
  // Appends the keys, each with a bar after it.
  void AppendKeys(std::span<const char* const> keys);
  void AppendKeys(std::initializer_list<const char*> keys) { AppendKeys(std::span(keys.begin(), keys.size())); }
  bool IsHiddenKey(std::string_view key) const;
  // Puts the key on the list unless it is already there.
  void HideKey(std::string_view key);
  // Removes every occurrence of the key.
  void ShowKey(std::string_view key);

  bool operator==(const HiddenKeys&) const = default;

 private:
  std::string text_;
};

}  // namespace stockbook::grid
