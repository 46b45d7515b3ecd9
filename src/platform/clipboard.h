// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace stockbook::platform {

// The system clipboard as plain text.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  virtual void Clear() = 0;
  virtual void SetText(std::string_view text) = 0;
};

}  // namespace stockbook::platform
