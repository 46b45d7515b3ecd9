// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stockbook::platform {

// The system clipboard as plain text.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  virtual void Clear() = 0;
  virtual void SetText(std::string_view text) = 0;
  // The same for a text that nobody else needs; one that keeps it need not copy it.
  virtual void TakeText(std::string text) { SetText(text); }
};

}  // namespace stockbook::platform
