// SPDX-License-Identifier: MIT
// What screen readers ask of the table, and what they might.
#include "com/window/accessible_sheet.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "com/automation/text.h"
#include "com/window/sheet_window.h"
#include "support/sample_ledger.h"

namespace stockbook::com {
namespace {

class DeafHost : public WindowHost {
 public:
  ComPtr<IUnknown> Pin() override { return {}; }
  void FocusChanged(Focus) override {}
};

VARIANT Child(LONG number) {
  VARIANT child{};
  child.vt = VT_I4;
  child.lVal = number;
  return child;
}

class AccessibleSheetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    parent_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 600, 400, nullptr, nullptr, nullptr, nullptr);
    if (parent_ == nullptr) GTEST_SKIP() << "nothing here shows windows";
    testing::SampleLedger().Fill(sheet_);
    window_ = std::make_shared<SheetWindow>(host_, sheet_.view());
    window_->Create(parent_, {0, 0, 500, 300});
    table_ = ComPtr<AccessibleSheet>::Adopt(new AccessibleSheet(*window_));
  }
  void TearDown() override {
    if (table_) table_->Detach();
    table_.Reset();
    if (window_ != nullptr) window_->Destroy();
    if (parent_ != nullptr) DestroyWindow(parent_);
  }
  LONG Count() {
    LONG count = 0;
    EXPECT_EQ(table_->get_accChildCount(&count), S_OK);
    return count;
  }
  LONG Columns() {
    for (LONG child = 1; child <= Count(); ++child) {
      VARIANT role{};
      table_->get_accRole(Child(child), &role);
      if (role.lVal != static_cast<LONG>(ROLE_SYSTEM_COLUMNHEADER)) return child - 1;
    }
    return 0;
  }
  // Where one gets from the child; 0 for nowhere.
  LONG From(LONG child, LONG direction) {
    VARIANT end{};
    const HRESULT result = table_->accNavigate(direction, Child(child), &end);
    EXPECT_EQ(result == S_OK, end.vt == VT_I4) << direction;
    return result == S_OK ? end.lVal : 0;
  }
  // Calls everything that takes a child; all of it has to give the result.
  void ExpectEverything(const VARIANT& child, HRESULT wanted) {
    Bstr text;
    VARIANT value{};
    LONG left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(table_->get_accName(child, text.Put()), wanted);
    EXPECT_EQ(table_->get_accDescription(child, text.Put()), wanted);
    EXPECT_EQ(table_->get_accRole(child, &value), wanted);
    EXPECT_EQ(table_->get_accState(child, &value), wanted);
    EXPECT_EQ(table_->get_accDefaultAction(child, text.Put()), wanted);
    EXPECT_EQ(table_->accDoDefaultAction(child), wanted);
    EXPECT_EQ(table_->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, child), wanted);
    EXPECT_EQ(table_->accLocation(&left, &top, &width, &height, child), wanted);
    for (LONG direction = -1; direction <= NAVDIR_LASTCHILD + 1; ++direction)
      EXPECT_EQ(table_->accNavigate(direction, child, &value), wanted);
    ComPtr<IDispatch> object;
    EXPECT_EQ(table_->get_accChild(child, object.PutTyped()), wanted);
  }

  DeafHost host_;
  HWND parent_ = nullptr;
  sheet::GridSheet sheet_;
  std::shared_ptr<SheetWindow> window_;
  ComPtr<AccessibleSheet> table_;
};

TEST_F(AccessibleSheetTest, RefusesChildrenThatThereAreNot) {
  for (const LONG number : {LONG{-1}, Count() + 1, std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::min()})
    ExpectEverything(Child(number), E_INVALIDARG);
}

TEST_F(AccessibleSheetTest, RefusesChildrenThatAreNoNumbers) {
  VARIANT nothing{};
  ExpectEverything(nothing, E_INVALIDARG);
  VARIANT object{};
  object.vt = VT_DISPATCH;
  ExpectEverything(object, E_INVALIDARG);
  LONG number = 1;
  VARIANT reference{};
  reference.vt = VT_BYREF | VT_I4;
  reference.plVal = &number;
  ExpectEverything(reference, E_INVALIDARG);
}

TEST_F(AccessibleSheetTest, LeadsFromCellToCellAndNowhereBeyondTheEdges) {
  const LONG columns = Columns();
  const LONG count = Count();
  ASSERT_GT(columns, 2);
  EXPECT_EQ(From(CHILDID_SELF, NAVDIR_FIRSTCHILD), 1);
  EXPECT_EQ(From(CHILDID_SELF, NAVDIR_LASTCHILD), count);
  EXPECT_EQ(From(CHILDID_SELF, NAVDIR_NEXT), 0);
  EXPECT_EQ(From(1, NAVDIR_RIGHT), 2);
  EXPECT_EQ(From(1, NAVDIR_LEFT), 0);
  EXPECT_EQ(From(1, NAVDIR_UP), 0);
  EXPECT_EQ(From(1, NAVDIR_PREVIOUS), 0);
  EXPECT_EQ(From(1, NAVDIR_DOWN), columns + 1);
  EXPECT_EQ(From(columns + 1, NAVDIR_UP), 1);
  EXPECT_EQ(From(columns, NAVDIR_RIGHT), 0);
  EXPECT_EQ(From(columns, NAVDIR_NEXT), columns + 1);
  EXPECT_EQ(From(count, NAVDIR_NEXT), 0);
  EXPECT_EQ(From(count, NAVDIR_DOWN), 0);
  EXPECT_EQ(From(count, NAVDIR_FIRSTCHILD), 0);
  EXPECT_EQ(From(count, 99), 0);
}

TEST_F(AccessibleSheetTest, FindsNothingOutsideOfTheWindow) {
  VARIANT hit{};
  for (const auto& [x, y] : {std::pair<LONG, LONG>{-5000, -5000}, {5000, 5000}, {LONG_MAX, LONG_MAX}, {LONG_MIN, 0}}) {
    EXPECT_EQ(table_->accHitTest(x, y, &hit), S_FALSE) << x;
    EXPECT_EQ(hit.vt, VT_EMPTY);
  }
}

TEST_F(AccessibleSheetTest, SelectsOneCellAndTakesTheKeyboard) {
  const LONG child = 2 * Columns() + 2;
  EXPECT_EQ(table_->accSelect(SELFLAG_TAKESELECTION, Child(child)), S_OK);
  VARIANT selected{};
  EXPECT_EQ(table_->get_accSelection(&selected), S_OK);
  EXPECT_EQ(selected.lVal, child);
  VARIANT state{};
  EXPECT_EQ(table_->get_accState(Child(child), &state), S_OK);
  EXPECT_NE(state.lVal & STATE_SYSTEM_SELECTED, 0);
  for (const LONG flags : {SELFLAG_ADDSELECTION, SELFLAG_REMOVESELECTION, SELFLAG_EXTENDSELECTION, 0x40})
    EXPECT_EQ(table_->accSelect(flags, Child(child)), E_INVALIDARG) << flags;
  EXPECT_EQ(table_->accSelect(SELFLAG_TAKESELECTION, Child(1)), E_INVALIDARG) << "a caption";
  EXPECT_EQ(table_->accSelect(SELFLAG_TAKESELECTION, Child(CHILDID_SELF)), E_INVALIDARG);
  ShowWindow(parent_, SW_SHOW);
  EXPECT_EQ(table_->accSelect(SELFLAG_TAKEFOCUS, Child(CHILDID_SELF)), S_OK);
  EXPECT_EQ(GetFocus(), window_->handle());
  VARIANT focus{};
  EXPECT_EQ(table_->get_accFocus(&focus), S_OK);
  EXPECT_EQ(focus.lVal, child);
}

TEST_F(AccessibleSheetTest, DoesNothingForADisabledTable) {
  EnableWindow(window_->handle(), FALSE);
  const auto before = sheet_.view().selection();
  EXPECT_EQ(table_->accSelect(SELFLAG_TAKESELECTION, Child(Count())), S_FALSE);
  EXPECT_EQ(table_->accDoDefaultAction(Child(Count())), S_FALSE);
  EXPECT_EQ(sheet_.view().selection().current, before.current);
}

TEST_F(AccessibleSheetTest, IsAnEmptyTableWithoutRowsAndColumns) {
  sheet_.SetRows(0);
  sheet_.SetCols(0);
  EXPECT_EQ(Count(), 0);
  EXPECT_EQ(From(CHILDID_SELF, NAVDIR_FIRSTCHILD), 0);
  EXPECT_EQ(From(CHILDID_SELF, NAVDIR_LASTCHILD), 0);
  VARIANT value{};
  EXPECT_EQ(table_->get_accSelection(&value), S_FALSE);
  EXPECT_EQ(table_->accHitTest(10, 10, &value), S_OK);
  EXPECT_EQ(value.lVal, CHILDID_SELF);
  ExpectEverything(Child(1), E_INVALIDARG);
}

TEST_F(AccessibleSheetTest, RefusesNullPointers) {
  const VARIANT self = Child(CHILDID_SELF);
  LONG number = 0;
  EXPECT_EQ(table_->get_accParent(nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accChildCount(nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accChild(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accValue(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accDescription(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accRole(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accState(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accHelp(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accHelpTopic(nullptr, self, &number), E_POINTER);
  EXPECT_EQ(table_->get_accKeyboardShortcut(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accFocus(nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accSelection(nullptr), E_POINTER);
  EXPECT_EQ(table_->get_accDefaultAction(self, nullptr), E_POINTER);
  EXPECT_EQ(table_->accLocation(nullptr, &number, &number, &number, self), E_POINTER);
  EXPECT_EQ(table_->accNavigate(NAVDIR_NEXT, self, nullptr), E_POINTER);
  EXPECT_EQ(table_->accHitTest(0, 0, nullptr), E_POINTER);
  EXPECT_EQ(table_->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

}  // namespace
}  // namespace stockbook::com
