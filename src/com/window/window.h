// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "com/window/window_host.h"

namespace stockbook::com {

// What a window of the system is made with.
struct WindowStyle {
  const wchar_t* class_name = L"";
  UINT class_style = 0;
  DWORD style = WS_CHILD;
  DWORD extended_style = 0;
};

// A child window. It keeps itself and what it borrows alive while it handles a message, and no exception leaves it for
// the system. It may outlive the system's window, which a parent destroys; then it has no handle any more. Its class is
// registered until the last window of it has ended, whoever ended it. To be made by std::make_shared.
class Window : public std::enable_shared_from_this<Window> {
 public:
  explicit Window(WindowHost& host) : host_(host) {}
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  HWND handle() const { return handle_; }
  // Keeps alive what the window borrows, see WindowHost.
  ComPtr<IUnknown> Pin() const { return host_.Pin(); }
  // Throws platform::Error if the system does not make one.
  void Create(HWND parent, const RECT& place);
  // Nothing is heard of the window afterwards; the second call does nothing.
  void Destroy();

  // The window of this kind behind the handle, or nullptr.
  static Window* Of(HWND handle);

 protected:
  WindowHost& host() const { return host_; }
  virtual WindowStyle Style() const = 0;
  // The result of the message, or nothing if the system shall do what is usual.
  virtual std::optional<LRESULT> Handle(UINT message, WPARAM wide, LPARAM data) = 0;

 private:
  static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wide, LPARAM data);
  LRESULT HandleSafely(UINT message, WPARAM wide, LPARAM data) noexcept;
  void ForgetClass() const;

  WindowHost& host_;
  HWND handle_ = nullptr;
  const wchar_t* class_name_ = nullptr;  // of the class that was registered
};

}  // namespace stockbook::com
