// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>

#include "com/automation/text.h"
#include "com/component.h"
#include "com/library/identifiers.h"

// The registry of the machine is Wine's own here, in a prefix made for the tests.
namespace stockbook::com {
namespace {

using Lines = std::vector<std::string>;

std::string ValueText(HKEY key, const std::wstring& name) {
  DWORD bytes = 0;
  DWORD type = 0;
  RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &bytes);
  std::wstring value(bytes / sizeof(wchar_t) + 1, L'\0');
  RegQueryValueExW(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(value.data()), &bytes);
  return type == REG_SZ ? FromWide(value.c_str()) : "type " + std::to_string(type);
}

// Every key below one, and every value.
void Collect(HKEY parent, const std::wstring& path, Lines& lines) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  lines.push_back(FromWide(path));
  wchar_t name[512];
  DWORD length = 512;
  for (DWORD at = 0; RegEnumValueW(key, at, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS; ++at) {
    lines.push_back(FromWide(path) + " : " + FromWide(name) + " = " + ValueText(key, name));
    length = 512;
  }
  for (DWORD at = 0; RegEnumKeyW(key, at, name, 512) == ERROR_SUCCESS; ++at)
    Collect(parent, path + L"\\" + name, lines);
  RegCloseKey(key);
}

Lines Classes() {
  Lines lines;
  Collect(HKEY_LOCAL_MACHINE, L"Software\\Classes", lines);
  std::sort(lines.begin(), lines.end());
  return lines;
}

Lines Difference(const Lines& more, const Lines& less) {
  Lines difference;
  std::set_difference(more.begin(), more.end(), less.begin(), less.end(), std::back_inserter(difference));
  return difference;
}

class Registration : public ::testing::Test {
 protected:
  void SetUp() override { Call("DllUnregisterServer"); }
  void TearDown() override { Call("DllUnregisterServer"); }

  static HRESULT Call(const char* name) {
    using Entrance = HRESULT(STDAPICALLTYPE*)();
    const auto entrance = reinterpret_cast<Entrance>(reinterpret_cast<void*>(testing::ComponentExport(name)));
    return entrance == nullptr ? E_NOTIMPL : entrance();
  }

  testing::Apartment apartment_;
};

TEST_F(Registration, LeavesNothingBehind) {
  const Lines before = Classes();
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  const Lines registered = Classes();
  EXPECT_GT(registered.size(), before.size() + 20);
  EXPECT_EQ(Difference(before, registered), Lines());
  ASSERT_EQ(Call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(Difference(Classes(), before), Lines());
  EXPECT_EQ(Difference(before, Classes()), Lines());
}

TEST_F(Registration, MayBeRepeatedAndTakenBackTwice) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  const Lines once = Classes();
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  EXPECT_EQ(Classes(), once);
  EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
}

TEST_F(Registration, LetsHostsFindTheClassByItsNames) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  for (const wchar_t* name : {L"tqStockbook.Stockbook", L"tqStockbook.Stockbook.1"}) {
    CLSID id = {};
    EXPECT_EQ(CLSIDFromProgID(name, &id), S_OK);
    EXPECT_TRUE(id == CLSID_Stockbook);
    ComPtr<_Stockbook> book;
    EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID__Stockbook, book.Put()), S_OK);
    EXPECT_TRUE(book);
  }
}

TEST_F(Registration, LetsHostsFindTheTypeLibrary) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(LIBID_tqStockbook, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, library.PutTyped()), S_OK);
  EXPECT_TRUE(library);
}

TEST_F(Registration, SaysWhatKindOfObjectItIs) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  DWORD status = 0;
  EXPECT_EQ(OleRegGetMiscStatus(CLSID_Stockbook, DVASPECT_CONTENT, &status), S_OK);
  EXPECT_EQ(status, kMiscStatus);
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, L"tqStockbook.Stockbook\\CLSID", 0, KEY_READ, &key), ERROR_SUCCESS);
  const std::wstring path = L"CLSID\\" + ToWide(ValueText(key, L""));
  RegCloseKey(key);
  ASSERT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, (path + L"\\InprocServer32").c_str(), 0, KEY_READ, &key), ERROR_SUCCESS);
  EXPECT_EQ(ValueText(key, L"ThreadingModel"), "Apartment");
  EXPECT_EQ(ToWide(ValueText(key, L"")), testing::ComponentPath());
  RegCloseKey(key);
  // A control for forms, not an object to insert into documents.
  EXPECT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, (path + L"\\Insertable").c_str(), 0, KEY_READ, &key),
            ERROR_FILE_NOT_FOUND);
  ASSERT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, (path + L"\\Control").c_str(), 0, KEY_READ, &key), ERROR_SUCCESS);
  RegCloseKey(key);
}

TEST_F(Registration, LeavesANameThatAnotherClassHasTaken) {
  ASSERT_EQ(Call("DllRegisterServer"), S_OK);
  HKEY key = nullptr;
  constexpr const wchar_t* kTaken = L"Software\\Classes\\tqStockbook.Stockbook";
  constexpr wchar_t kOther[] = L"{00000000-0000-0000-0000-000000000001}";
  ASSERT_EQ(RegCreateKeyW(HKEY_LOCAL_MACHINE, (std::wstring(kTaken) + L"\\CLSID").c_str(), &key), ERROR_SUCCESS);
  RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(kOther), sizeof kOther);
  RegCloseKey(key);
  EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kTaken, 0, KEY_READ, &key), ERROR_SUCCESS);
  RegCloseKey(key);
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kTaken);
}

}  // namespace
}  // namespace stockbook::com
