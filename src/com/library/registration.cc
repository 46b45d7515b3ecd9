// SPDX-License-Identifier: MIT
#include "com/library/registration.h"

#include <oleauto.h>

#include <array>
#include <string>
#include <vector>

#include "com/automation/text.h"
#include "com/library/identifiers.h"
#include "com/library/module.h"
#include "com/library/registry_key.h"

namespace stockbook::com {
namespace {

constexpr const wchar_t* kDescription = L"Stockbook";
constexpr const wchar_t* kVersion = L"1.0";
// A control, which keeps its appearance in property bags, streams and storages.
constexpr std::array<const wchar_t*, 4> kCategories = {
    L"{40FC6ED4-2438-11CF-A3DB-080036F12502}", L"{0DE86A57-2BAA-11CF-A229-00AA003D7352}",
    L"{0DE86A53-2BAA-11CF-A229-00AA003D7352}", L"{0DE86A52-2BAA-11CF-A229-00AA003D7352}"};

std::wstring TextOf(const GUID& guid) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring ClassKey() { return L"CLSID\\" + TextOf(CLSID_Stockbook); }

std::wstring VersionedName() { return std::wstring(kProgramIdentifier) + L".1"; }

std::vector<RegistryText> Entries(const std::wstring& path) {
  const std::wstring name = kProgramIdentifier;
  const std::wstring versioned = VersionedName();
  const std::wstring class_text = TextOf(CLSID_Stockbook);
  const std::wstring key = ClassKey();
  std::vector<RegistryText> entries = {
      {name, L"", kDescription},
      {name + L"\\CLSID", L"", class_text},
      {name + L"\\CurVer", L"", versioned},
      {versioned, L"", kDescription},
      {versioned + L"\\CLSID", L"", class_text},
      {key, L"", kDescription},
      {key + L"\\InprocServer32", L"", path},
      {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
      {key + L"\\ProgID", L"", versioned},
      {key + L"\\VersionIndependentProgID", L"", name},
      {key + L"\\Control", L"", L""},
      {key + L"\\Programmable", L"", L""},
      {key + L"\\MiscStatus", L"", L"0"},
      {key + L"\\MiscStatus\\1", L"", std::to_wstring(kMiscStatus)},
      {key + L"\\TypeLib", L"", TextOf(LIBID_tqStockbook)},
      {key + L"\\Version", L"", kVersion},
      {key + L"\\ToolboxBitmap32", L"", path + L", " + std::to_wstring(kToolboxBitmap)},
  };
  for (const wchar_t* category : kCategories)
    entries.push_back({key + L"\\Implemented Categories\\" + category, L"", L""});
  return entries;
}

HRESULT RegisterLibrary(const std::wstring& path) {
  ITypeLib* library = nullptr;
  HRESULT result = LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library);
  if (FAILED(result)) return result;
  std::wstring writable = path;
  result = RegisterTypeLib(library, writable.data(), nullptr);
  library->Release();
  return result;
}

HRESULT UnregisterLibrary() {
  constexpr SYSKIND kWidth = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
  Bstr path;
  if (FAILED(QueryPathOfRegTypeLib(LIBID_tqStockbook, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, path.Put())))
    return S_OK;
  return UnRegisterTypeLib(LIBID_tqStockbook, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, kWidth);
}

// The names are the same for both widths, and another component may have taken them since.
bool IsOwnName(const std::wstring& name) {
  return ReadClassText(name + L"\\CLSID") == TextOf(CLSID_Stockbook) && !OtherWidthHasClassKey(ClassKey());
}

HRESULT WriteEntries(const std::wstring& path) {
  for (const RegistryText& entry : Entries(path))
    if (const LSTATUS status = WriteClassText(entry); status != ERROR_SUCCESS) return HRESULT_FROM_WIN32(status);
  return S_OK;
}

}  // namespace

HRESULT RegisterComponent() {
  const std::wstring path = ModulePath();
  if (path.empty()) return SELFREG_E_CLASS;
  HRESULT result = WriteEntries(path);
  if (SUCCEEDED(result)) result = RegisterLibrary(path);
  if (FAILED(result)) UnregisterComponent();
  return result;
}

HRESULT UnregisterComponent() {
  LSTATUS status = DeleteClassKey(ClassKey());
  for (const std::wstring& name : {std::wstring(kProgramIdentifier), VersionedName()}) {
    if (!IsOwnName(name)) continue;
    const LSTATUS deleted = DeleteClassKey(name);
    if (status == ERROR_SUCCESS) status = deleted;
  }
  const HRESULT library = UnregisterLibrary();
  return status != ERROR_SUCCESS ? HRESULT_FROM_WIN32(status) : library;
}

}  // namespace stockbook::com
