// SPDX-License-Identifier: MIT
// A control that is put back as it was, after a load that is to leave no trace.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "control/working_control.h"
#include "stockbook/interaction/event_listener.h"

namespace stockbook::control {
namespace {

class KeptControl : public WorkingControl {
 protected:
  std::vector<std::string> Everything() {
    const Stockbook& of = control();
    std::vector<std::string> all = {of.Caption(),    of.KeyName(),     of.ProductNo(),     of.Model(),
                                    of.Standard(),   of.Measure(),     of.dpCode(),        of.SupplierTitle(),
                                    of.ColsFilter(), of.AccRestrict(), of.OutlineColKey(), of.C1EHeader().caption,
                                    of.Statistics()};
    for (const double number :
         {static_cast<double>(of.KeyID()), static_cast<double>(of.dpID()), static_cast<double>(of.JournalType()),
          static_cast<double>(of.AllowQty2()), static_cast<double>(of.AllowInv()), static_cast<double>(of.RowHeight()),
          static_cast<double>(of.RowHeightSum()), static_cast<double>(of.RowHeightTitle())})
      all.push_back(std::to_string(number));
    for (int row = 0; row < grid().Rows(); ++row) {
      for (int column = 0; column < grid().Cols(); ++column) {
        all.push_back(grid().DisplayText(row, column));
        all.push_back(std::to_string(grid().CellBackColor(row, column)));
      }
    }
    return all;
  }
  void LoadAnother() {
    control().SetSupplierTitle("another");
    control().SetAllowQty2(true);
    control().SetAllowInv(true);
    control().SetAccRestrict("True");
    control().SetdpCode("05");
    control().SetJournalType(base::SupplierJournal);
    control().Load(8, 3);
    control().SetRowHeightSum(777);
  }
};

TEST_F(KeptControl, IsAsItWasAfterAnotherJournalWasLoaded) {
  Click(3, "StoQty");
  const std::vector<std::string> before = Everything();
  const auto picture = control().C1EHeader().picture;
  const std::shared_ptr<KeptJournal> kept = control().Keep();
  sheet::GridSheet::Kept kept_grid = grid().Keep();
  LoadAnother();
  EXPECT_NE(Everything(), before);
  control().PutBack(std::move(*kept));
  grid().PutBack(std::move(kept_grid));
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(control().C1EHeader().picture, picture);
  EXPECT_EQ(control().Conn(), connection_);
}

TEST_F(KeptControl, GivesTheHotRowBackItsColoursWhenAnotherOneIsHot) {
  const auto cold = grid().CellBackColor(3, ColumnOf("StoQty"));
  Click(3, "StoQty");
  const auto hot = grid().CellBackColor(3, ColumnOf("StoQty"));
  ASSERT_NE(hot, cold);
  const std::shared_ptr<KeptJournal> kept = control().Keep();
  sheet::GridSheet::Kept kept_grid = grid().Keep();
  LoadAnother();
  control().PutBack(std::move(*kept));
  grid().PutBack(std::move(kept_grid));
  EXPECT_EQ(grid().CellBackColor(3, ColumnOf("StoQty")), hot);
  Click(4, "StoQty");
  EXPECT_EQ(grid().CellBackColor(3, ColumnOf("StoQty")), cold);
  EXPECT_EQ(grid().CellBackColor(4, ColumnOf("StoQty")), hot);
}

TEST_F(KeptControl, IsPutBackWithoutAnEventAndNotInsideOfALoad) {
  const std::shared_ptr<KeptJournal> kept = control().Keep();
  LoadAnother();
  heard_.lines.clear();
  control().PutBack(std::move(*kept));
  EXPECT_TRUE(heard_.lines.empty());
  EXPECT_EQ(control().KeyID(), 7);
  class Putting : public interaction::EventListener {
   public:
    Putting(Stockbook& of, std::shared_ptr<KeptJournal> put) : of_(of), put_(std::move(put)) {}
    void Process(int16_t) override { of_.PutBack(std::move(*put_)); }

   private:
    Stockbook& of_;
    std::shared_ptr<KeptJournal> put_;
  };
  Putting putting(control(), control().Keep());
  control().AddListener(&putting);
  EXPECT_TRUE(control().Load(8));
  EXPECT_EQ(control().KeyID(), 8);
  control().RemoveListener(&putting);
}

}  // namespace
}  // namespace stockbook::control
