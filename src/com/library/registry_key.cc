// SPDX-License-Identifier: MIT
#include "com/library/registry_key.h"

namespace stockbook::com {
namespace {

constexpr const wchar_t* kClasses = L"Software\\Classes\\";

}  // namespace

LSTATUS WriteClassText(const RegistryText& entry) {
  const std::wstring path = kClasses + entry.key;
  HKEY key = nullptr;
  LSTATUS status = RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE,
                                   nullptr, &key, nullptr);
  if (status != ERROR_SUCCESS) return status;
  const auto bytes = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
  status = RegSetValueExW(key, entry.name.empty() ? nullptr : entry.name.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(entry.text.c_str()), bytes);
  RegCloseKey(key);
  return status;
}

std::optional<std::wstring> ReadClassText(const std::wstring& key) {
  const std::wstring path = kClasses + key;
  DWORD bytes = 0;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
    return std::nullopt;
  std::wstring text(bytes / sizeof(wchar_t), L'\0');
  if (RegGetValueW(HKEY_LOCAL_MACHINE, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
      ERROR_SUCCESS)
    return std::nullopt;
  text.resize(wcsnlen(text.c_str(), text.size()));
  return text;
}

bool OtherWidthHasClassKey(const std::wstring& key) {
  BOOL under_wow64 = FALSE;
  if (sizeof(void*) == 4 && (IsWow64Process(GetCurrentProcess(), &under_wow64) == FALSE || under_wow64 == FALSE))
    return false;
  const REGSAM other = sizeof(void*) == 4 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
  HKEY found = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, (kClasses + key).c_str(), 0, KEY_READ | other, &found) != ERROR_SUCCESS)
    return false;
  RegCloseKey(found);
  return true;
}

LSTATUS DeleteClassKey(const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kClasses + key).c_str());
  return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

}  // namespace stockbook::com
