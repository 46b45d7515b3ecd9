// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "stockbook/platform/clipboard.h"

namespace stockbook::com {

// The system's clipboard, as Unicode text. Another program may hold it for a moment; if it does for longer, an error
// tells the user.
class WindowsClipboard : public platform::Clipboard {
 public:
  void Clear() override;
  void SetText(std::string text) override;
  // The window that owns what is copied.
  void SetOwner(std::function<HWND()> owner) { owner_ = std::move(owner); }

 private:
  HWND Owner() const { return owner_ ? owner_() : nullptr; }

  std::function<HWND()> owner_;
};

}  // namespace stockbook::com
