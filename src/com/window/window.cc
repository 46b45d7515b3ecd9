// SPDX-License-Identifier: MIT
#include "com/window/window.h"

#include "com/library/module.h"
#include "stockbook/platform/error.h"

namespace stockbook::com {

Window::~Window() {
  if (handle_ != nullptr) {
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
  }
  ForgetClass();
}

// It fails while there are other windows of the class. A class that stays would outlive the DLL.
void Window::ForgetClass() const {
  if (class_name_ != nullptr) UnregisterClassW(class_name_, ModuleInstance());
}

void Window::Create(HWND parent, const RECT& place) {
  const WindowStyle style = Style();
  const HINSTANCE instance = ModuleInstance();
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.style = style.class_style;
  description.lpfnWndProc = &Procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
  description.lpszClassName = style.class_name;
  // It fails if the class is there already, which is as good.
  RegisterClassExW(&description);
  class_name_ = style.class_name;
  CreateWindowExW(style.extended_style, style.class_name, L"", style.style, static_cast<int>(place.left),
                  static_cast<int>(place.top), static_cast<int>(place.right - place.left),
                  static_cast<int>(place.bottom - place.top), parent, nullptr, instance, this);
  if (handle_ == nullptr)
    throw platform::Error("create a window", "系统没有创建窗口：请关闭一些窗口后重试。",
                          static_cast<int>(GetLastError()));
}

void Window::Destroy() {
  if (handle_ == nullptr) return;
  const std::shared_ptr<Window> keep = shared_from_this();
  DestroyWindow(handle_);
  ForgetClass();
}

Window* Window::Of(HWND handle) { return reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA)); }

LRESULT CALLBACK Window::Procedure(HWND handle, UINT message, WPARAM wide, LPARAM data) {
  if (message == WM_NCCREATE) {
    auto* window = static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(data)->lpCreateParams);
    window->handle_ = handle;
    SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
  }
  Window* window = Of(handle);
  if (window == nullptr) return DefWindowProcW(handle, message, wide, data);
  const std::shared_ptr<Window> keep = window->weak_from_this().lock();
  const ComPtr<IUnknown> pin = window->Pin();
  const LRESULT result = window->HandleSafely(message, wide, data);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
    window->handle_ = nullptr;
  }
  return result;
}

LRESULT Window::HandleSafely(UINT message, WPARAM wide, LPARAM data) noexcept {
  const HWND handle = handle_;
  try {
    if (const std::optional<LRESULT> result = Handle(message, wide, data)) return *result;
  } catch (...) {
    // The control has told its listeners what it could; the system knows no exceptions.
    return 0;
  }
  return DefWindowProcW(handle, message, wide, data);
}

}  // namespace stockbook::com
