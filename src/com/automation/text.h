// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>
#include <utility>

namespace stockbook::com {

// Texts are UTF-8 inside and UTF-16 in Windows; they are converted here and nowhere else. What is malformed on either
// side, and every NUL, becomes U+FFFD.
std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);

// An automation string; a null one is the empty text.
std::string FromBstr(BSTR text);

// Owns an automation string. Throws std::bad_alloc where there is no memory for it.
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(std::string_view text);
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  BSTR get() const { return text_; }
  BSTR* Put() {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  BSTR Detach() { return std::exchange(text_, nullptr); }
  std::string Text() const { return FromBstr(text_); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace stockbook::com
