// SPDX-License-Identifier: MIT
#include "com/automation/text.h"

#include <windows.h>

#include <limits>
#include <new>

#include "base/text.h"

namespace stockbook::com {
namespace {

int LengthForWindows(size_t length) {
  if (length > static_cast<size_t>(std::numeric_limits<int>::max())) throw std::bad_alloc();
  return static_cast<int>(length);
}

std::wstring WideOfClean(std::string_view text) {
  const int length = LengthForWindows(text.size());
  std::wstring wide(text.size(), L'\0');  // never more units than bytes
  const int written = length == 0 ? 0 : MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
  wide.resize(static_cast<size_t>(written));
  return wide;
}

}  // namespace

std::wstring ToWide(std::string_view text) {
  return base::IsCleanUtf8(text) ? WideOfClean(text) : WideOfClean(base::CleanUtf8(text));
}

std::string FromWide(std::wstring_view text) {
  const int length = LengthForWindows(text.size());
  if (length == 0) return {};
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), bytes, nullptr, nullptr);
  return base::IsCleanUtf8(narrow) ? narrow : base::CleanUtf8(narrow);
}

std::string FromBstr(BSTR text) {
  return text == nullptr ? std::string() : FromWide({text, static_cast<size_t>(SysStringLen(text))});
}

Bstr::Bstr(std::string_view text) {
  const std::wstring wide = ToWide(text);
  text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (text_ == nullptr) throw std::bad_alloc();
}

}  // namespace stockbook::com
