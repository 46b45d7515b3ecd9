// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <memory>

#include "qt/kept_layout.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::qt {
namespace {

// What the user hides and shows is one thing, what the program and its rights do another.
class KeptVisibility : public KeptLayout {
 protected:
  // What the program does after each layout.
  template <typename Do>
  void AfterFormatted(Do what) {
    QObject::connect(journal_.get(), &StockbookWidget::AfterFormatted, journal_.get(), what);
  }
};

TEST_F(KeptVisibility, ShowsTheTaxesOnceTheRightIsGiven) {
  journal_->SetAllowInv(true);
  Load();
  EXPECT_FALSE(IsHidden("Tax"));
  Load();
  EXPECT_FALSE(IsHidden("Tax"));
}

TEST_F(KeptVisibility, ShowsTheTaxesWhereTheRightWasGivenBefore) {
  journal_ = std::make_unique<StockbookWidget>();
  journal_->SetConn(connection_);
  journal_->SetAllowInv(true);
  journal_->RestoreLayout(settings_, Group());
  Load();
  EXPECT_FALSE(IsHidden("Tax"));
}

TEST_F(KeptVisibility, ShowsSecondQuantitiesOnceTheRightIsGiven) {
  Load();
  journal_->SetAllowQty2(true);
  Load();
  EXPECT_FALSE(IsHidden("StoQty2"));
}

TEST_F(KeptVisibility, ShowsAgainWhatTheFilterOfFieldsHid) {
  journal_->SetFieldsFilter(QStringLiteral("Price|"));
  Load();
  ASSERT_TRUE(IsHidden("Price"));
  journal_->SetFieldsFilter({});
  Load();
  EXPECT_FALSE(IsHidden("Price"));
}

TEST_F(KeptVisibility, TakesARightThatComesAndGoesForNoWishOfTheUser) {
  journal_->SetAllowInv(true);
  Load();
  journal_->SetAllowInv(false);
  EXPECT_TRUE(IsHidden("Tax"));
  journal_->SetAllowInv(true);
  Load();
  EXPECT_FALSE(IsHidden("Tax"));
}

TEST_F(KeptVisibility, OutlivesARightThatIsTakenMeanwhile) {
  journal_->SetAllowInv(true);
  Load();
  Hide("Tax");
  journal_->SetAllowInv(false);
  Load();
  EXPECT_TRUE(IsHidden("TaxPrice"));
  journal_->SetAllowInv(true);
  Load();
  EXPECT_TRUE(IsHidden("Tax")) << "the user has hidden it";
  EXPECT_FALSE(IsHidden("TaxPrice"));
}

TEST_F(KeptVisibility, ShowsNothingUsuallyHiddenThatTheProgramHides) {
  Load();
  Hide("Enterprise", false);
  Hide("Inputor", false);
  OpenAgain();
  AfterFormatted([this] { Hide("Enterprise"); });
  Load();
  EXPECT_TRUE(IsHidden("Enterprise"));
  EXPECT_FALSE(IsHidden("Inputor"));
  OpenAgain();
  EXPECT_TRUE(IsHidden("Enterprise")) << "before the program has been asked";
  Load();
  EXPECT_FALSE(IsHidden("Enterprise")) << "the user has shown it";
}

TEST_F(KeptVisibility, ShowsWhatTheProgramShows) {
  Load();
  OpenAgain();
  AfterFormatted([this] { Hide("Depot", false); });
  Load();
  EXPECT_FALSE(IsHidden("Depot"));
  Hide("Depot");
  Load();
  EXPECT_FALSE(IsHidden("Depot")) << "the program has the last word";
  OpenAgain();
  Load();
  EXPECT_TRUE(IsHidden("Depot")) << "as usual";
}

TEST_F(KeptVisibility, FollowsTheUserThereAndBack) {
  Load();
  Hide("Explain");
  Load();
  EXPECT_TRUE(IsHidden("Explain"));
  Hide("Explain", false);
  Load();
  EXPECT_FALSE(IsHidden("Explain"));
}

TEST_F(KeptVisibility, IsTheUsualOneAgainWhereTheUserWantsIt) {
  Load();
  Hide("Explain");
  Load();
  journal_->DefaultFormat();
  EXPECT_FALSE(IsHidden("Explain"));
  Load();
  EXPECT_FALSE(IsHidden("Explain"));
  OpenAgain();
  Load();
  EXPECT_FALSE(IsHidden("Explain"));
}

}  // namespace
}  // namespace stockbook::qt
