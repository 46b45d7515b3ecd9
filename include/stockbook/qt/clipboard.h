// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/base/api.h"
#include "stockbook/platform/clipboard.h"

namespace stockbook::qt {

// The desktop's clipboard, as plain text.
class STOCKBOOK_API QtClipboard : public platform::Clipboard {
 public:
  void Clear() override;
  void SetText(std::string text) override;
};

}  // namespace stockbook::qt
