// SPDX-License-Identifier: MIT
#include "com/window/clipboard.h"

#include <algorithm>

#include "com/automation/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::com {
namespace {

[[noreturn]] void FailToCopy(const char* message) {
  throw platform::Error("copy", message, static_cast<int>(GetLastError()));
}

// What nobody owns cannot be put on the clipboard: a control without a window has this one meanwhile.
class OwnerForNow {
 public:
  explicit OwnerForNow(HWND owner)
      : made_(owner != nullptr
                  ? nullptr
                  : CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)),
        owner_(owner != nullptr ? owner : made_) {}
  ~OwnerForNow() {
    if (made_ != nullptr) DestroyWindow(made_);
  }
  OwnerForNow(const OwnerForNow&) = delete;
  OwnerForNow& operator=(const OwnerForNow&) = delete;

  HWND handle() const { return owner_; }

 private:
  HWND made_;
  HWND owner_;
};

// The clipboard while it is open to this program alone.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) {
    constexpr int kTries = 20;
    constexpr DWORD kPauseMs = 10;
    for (int left = kTries; OpenClipboard(owner) == 0; Sleep(kPauseMs)) {
      if (--left == 0) FailToCopy("剪贴板正被其他程序占用，未能复制：请稍后重试。");
    }
  }
  ~OpenedClipboard() { CloseClipboard(); }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
};

// Memory of the system's with the text, until it is handed over.
class TextMemory {
 public:
  explicit TextMemory(const std::wstring& text)
      : memory_(GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t))) {
    auto* units = static_cast<wchar_t*>(memory_ == nullptr ? nullptr : GlobalLock(memory_));
    if (units == nullptr) FailToCopy("内存不足，未能复制：请选定较少的行再复制。");
    std::copy_n(text.c_str(), text.size() + 1, units);
    GlobalUnlock(memory_);
  }
  ~TextMemory() { GlobalFree(memory_); }
  TextMemory(const TextMemory&) = delete;
  TextMemory& operator=(const TextMemory&) = delete;

  // To the open clipboard, whose it is from then on.
  void HandOver() {
    if (SetClipboardData(CF_UNICODETEXT, memory_) == nullptr) FailToCopy("系统没有接受复制的文字：请重试。");
    memory_ = nullptr;
  }

 private:
  HGLOBAL memory_;
};

}  // namespace

void WindowsClipboard::Clear() {
  const OwnerForNow owner(Owner());
  const OpenedClipboard clipboard(owner.handle());
  EmptyClipboard();
}

void WindowsClipboard::SetText(std::string text) {
  // What was copied before stays where there is no memory for this.
  TextMemory memory(ToWide(text));
  const OwnerForNow owner(Owner());
  const OpenedClipboard clipboard(owner.handle());
  EmptyClipboard();
  memory.HandOver();
}

}  // namespace stockbook::com
