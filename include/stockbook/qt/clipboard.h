// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/base/api.h"
#include "stockbook/platform/clipboard.h"

namespace stockbook::qt {

// The desktop's clipboard, as plain text.
class STOCKBOOK_API QtClipboard : public platform::Clipboard {
 public:
  // Empties the desktop's clipboard, whoever has filled it.
  void Clear() override;
  // UTF-8, converted when somebody pastes it. Costs no copy of the text.
  void SetText(std::string text) override;
};

}  // namespace stockbook::qt
