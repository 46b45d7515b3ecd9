// SPDX-License-Identifier: MIT
#include "com/window/clipboard.h"

#include <algorithm>

#include "com/automation/text.h"
#include "platform/error.h"

namespace stockbook::com {
namespace {

// The clipboard while it is open to this program alone.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) {
    constexpr int kTries = 20;
    constexpr DWORD kPauseMs = 10;
    for (int left = kTries; OpenClipboard(owner) == 0; Sleep(kPauseMs)) {
      if (--left == 0) Fail("剪贴板正被其他程序占用，未能复制：请稍后重试。");
    }
  }
  ~OpenedClipboard() { CloseClipboard(); }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  [[noreturn]] static void Fail(const char* message) {
    throw platform::Error("copy", message, static_cast<int>(GetLastError()));
  }
};

}  // namespace

void WindowsClipboard::Clear() {
  const OpenedClipboard clipboard(Owner());
  EmptyClipboard();
}

void WindowsClipboard::SetText(std::string text) {
  const std::wstring wide = ToWide(text);
  const OpenedClipboard clipboard(Owner());
  EmptyClipboard();
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (wide.size() + 1) * sizeof(wchar_t));
  auto* units = static_cast<wchar_t*>(memory == nullptr ? nullptr : GlobalLock(memory));
  if (units == nullptr) OpenedClipboard::Fail("内存不足，未能复制：请选定较少的行再复制。");
  std::copy_n(wide.c_str(), wide.size() + 1, units);
  GlobalUnlock(memory);
  // From here on the memory belongs to the system.
  if (SetClipboardData(CF_UNICODETEXT, memory) == nullptr) {
    GlobalFree(memory);
    OpenedClipboard::Fail("系统没有接受复制的文字：请重试。");
  }
}

}  // namespace stockbook::com
