// SPDX-License-Identifier: MIT
// What operations on the whole grid do to it while they run, and leave behind.
#include <gtest/gtest.h>

#include <algorithm>

#include "stockbook/base/value.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"
#include "support/small_journal.h"

namespace stockbook::control {
namespace {

class BulkOperations : public ::testing::Test {
 protected:
  BulkOperations() {
    sheet_.view().SetSize({900, 700}, 1.0);
    control_.SetConn(testing::SmallJournal());
    EXPECT_TRUE(control_.Load(7, 0));
  }
  void Do(const char* command, const char* parameter) {
    std::vector<base::Value> parameters = {testing::Text(parameter)};
    control_.DoCommand(command, parameters);
  }
  // Whether the grid redrew at each of these calls, as a row of + and -.
  std::string RedrawAt(const char* wanted, const std::function<void()>& operation) {
    std::string redraw;
    calls_.on_call = [&](const std::string& call) {
      if (call == wanted) redraw += sheet_.Redraw() ? '+' : '-';
    };
    operation();
    calls_.on_call = nullptr;
    return redraw;
  }
  int Column(const char* key) const { return sheet_.ColIndex(key); }

  testing::Faults calls_;
  testing::ControlOverFakes fakes_;
  sheet::GridSheet sheet_;
  testing::FaultyGrid grid_{sheet_, calls_};
  Stockbook control_{{grid_, fakes_.fg1, fakes_.metrics, fakes_.images, fakes_.menu, fakes_.clipboard, fakes_.site}};
};

TEST_F(BulkOperations, RefreshNamesAndSetFontsWithoutRedrawing) {
  EXPECT_EQ(RedrawAt("ReplaceLoadedText", [&] { Do("ColChanged", "Model"); }), "-");
  const std::string fonts = RedrawAt("SetCellFontName", [&] { Do("SetColFont", ""); });
  EXPECT_FALSE(fonts.empty());
  EXPECT_EQ(fonts.find('+'), std::string::npos) << fonts;
  EXPECT_TRUE(sheet_.Redraw());
}

TEST_F(BulkOperations, LayOutAndGiveThePointerBackThatTheGridChanged) {
  calls_.on_call = [&](const std::string& call) {
    if (call == "SetCols") sheet_.SetPointer(platform::MousePointer::kHourglass);
  };
  control_.DefaultFormat();
  EXPECT_EQ(sheet_.Pointer(), platform::MousePointer::kDefault);
}

TEST_F(BulkOperations, ForgetTheColoursOfTheHotRowWhenARowOfAnotherJournalTakesItsPlace) {
  constexpr platform::Colour kRed = 0x000000FF;
  sheet_.SetCellColors({5, 1, 6, sheet_.Cols()}, kRed, 0);
  control_.SetRow(5);
  ASSERT_TRUE(control_.Load(7, 0));
  control_.SetRow(4);
  EXPECT_NE(sheet_.CellBackColor(5, Column("BillNo")), kRed);
}

TEST_F(BulkOperations, WriteNamesAnewForEachOfTheirPartsAndForNoOtherColumn) {
  for (const char* part : {"Model", "Standard", "Measure"})
    EXPECT_EQ(RedrawAt("ReplaceLoadedText", [&] { Do("ColChanged", part); }), "-") << part;
  for (const char* other : {"ProductNo", "Explain", "Measure2", "Depot"})
    EXPECT_EQ(RedrawAt("ReplaceLoadedText", [&] { Do("ColChanged", other); }), "") << other;
}

}  // namespace
}  // namespace stockbook::control
