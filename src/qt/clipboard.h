// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clipboard.h"

namespace stockbook::qt {

// The desktop's clipboard, as plain text.
class QtClipboard : public platform::Clipboard {
 public:
  void Clear() override;
  void SetText(std::string_view text) override;
  void TakeText(std::string text) override;
};

}  // namespace stockbook::qt
