// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/base/api.h"

namespace stockbook::platform {

// The system clipboard as plain text.
class STOCKBOOK_API Clipboard {
 public:
  virtual ~Clipboard() = default;
  // Both may throw Error, which the control tells its user.
  virtual void Clear() = 0;
  virtual void SetText(std::string text) = 0;
};

}  // namespace stockbook::platform
