// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>

#include "com/automation/text.h"
#include "com/component.h"
#include "com/library/identifiers.h"
#include "com/library_dump.h"
#include "com/member_table.h"

// Hosts are compiled against the library, so nothing in it may move.
namespace stockbook::com {
namespace {

class TypeLibrary : public ::testing::Test {
 protected:
  TypeLibrary() { LoadTypeLibEx(testing::ComponentPath().c_str(), REGKIND_NONE, library_.PutTyped()); }

  void SetUp() override { ASSERT_TRUE(library_) << "the DLL carries no type library"; }

  static void ExpectLines(const std::vector<std::string>& found, const std::vector<std::string>& expected) {
    for (size_t at = 0; at < std::min(found.size(), expected.size()); ++at) EXPECT_EQ(found[at], expected[at]);
    EXPECT_EQ(found.size(), expected.size());
  }

  testing::Apartment apartment_;
  ComPtr<ITypeLib> library_;
};

TEST_F(TypeLibrary, HasTheMembersOfTheControlInTheirOrder) {
  ExpectLines(testing::LibraryDump(*library_).Functions("_Stockbook"), testing::ExpectedMembers());
}

TEST_F(TypeLibrary, HasTheEventsInTheirOrder) {
  ExpectLines(testing::LibraryDump(*library_).Functions("__Stockbook"), testing::ExpectedEvents());
}

TEST_F(TypeLibrary, HasTheJournalTypesWithTheirSpelling) {
  ExpectLines(testing::LibraryDump(*library_).EnumMembers("tqJournalTypeContants"),
              {"MaterialJournal = 0", "SupplierJournal = 1", "CustomerJournal = 2", "ProjectJournal = 3"});
}

TEST_F(TypeLibrary, HasOneClassThatAnyoneMayCreate) {
  ExpectLines(testing::LibraryDump(*library_).Interfaces("Stockbook"),
              {"_Stockbook default", "__Stockbook default source"});
}

TEST_F(TypeLibrary, HasNothingElse) {
  std::vector<std::string> types = testing::LibraryDump(*library_).Types();
  std::sort(types.begin(), types.end());
  ExpectLines(types, {"class Stockbook creatable control", "dispatch _Stockbook hidden dual nonextensible dispatchable",
                      "dispatch __Stockbook hidden dispatchable", "enum tqJournalTypeContants"});
}

TEST_F(TypeLibrary, LetsEarlyBindingAndAnyApartmentCallTheControl) {
  const ComPtr<ITypeInfo> type = testing::LibraryDump(*library_).Find("_Stockbook");
  ASSERT_TRUE(type);
  HREFTYPE reference = 0;
  ASSERT_EQ(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
  ComPtr<ITypeInfo> table;
  ASSERT_EQ(type->GetRefTypeInfo(reference, table.PutTyped()), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(table->GetTypeAttr(&attributes), S_OK);
  EXPECT_TRUE(attributes->guid == IID__Stockbook);
  EXPECT_EQ(attributes->wTypeFlags & TYPEFLAG_FOLEAUTOMATION, TYPEFLAG_FOLEAUTOMATION);
  table->ReleaseTypeAttr(attributes);
}

TEST_F(TypeLibrary, IsCalledAsHostsCallIt) {
  Bstr name;
  library_->GetDocumentation(-1, name.Put(), nullptr, nullptr, nullptr);
  EXPECT_EQ(name.Text(), "tqStockbook");
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library_->GetLibAttr(&attributes), S_OK);
  EXPECT_TRUE(attributes->guid == LIBID_tqStockbook);
  EXPECT_EQ(attributes->wMajorVerNum, kLibraryMajor);
  EXPECT_EQ(attributes->wMinorVerNum, kLibraryMinor);
  EXPECT_EQ(attributes->lcid, 0U);
  library_->ReleaseTLibAttr(attributes);
}

TEST_F(TypeLibrary, FindsEveryMemberByItsNameInAnyCase) {
  const ComPtr<ITypeInfo> type = testing::LibraryDump(*library_).Find("_Stockbook");
  ASSERT_TRUE(type);
  wchar_t name[] = L"OUTLINEBAR";
  LPOLESTR names[] = {name};
  MEMBERID id = 0;
  EXPECT_EQ(type->GetIDsOfNames(names, 1, &id), S_OK);
  EXPECT_EQ(id, 65);
}

}  // namespace
}  // namespace stockbook::com
