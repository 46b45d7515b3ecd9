// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QFont>
#include <memory>

#include "qt/kept_layout.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::qt {
namespace {

class KeptHeights : public KeptLayout {
 protected:
  void SetPointSize(double points) {
    QFont font = journal_->font();
    font.setPointSizeF(points);
    journal_->setFont(font);
  }
};

TEST_F(KeptHeights, AreNotThoseOfAFontThatHasChanged) {
  Load();
  const float usual = journal_->RowHeight();
  SetPointSize(30);
  EXPECT_GT(journal_->Grid().RowHeight(1), usual);
  OpenAgain();
  EXPECT_FALSE(settings_.contains(QStringLiteral("journal/Heights0")));
  Load();
  EXPECT_EQ(journal_->RowHeight(), usual);
}

TEST_F(KeptHeights, AreOnlyThoseThatTheUserHasChanged) {
  Load();
  const float title = journal_->RowHeightTitle();
  const float sum = journal_->RowHeightSum();
  journal_->SetRowHeight(777);
  OpenAgain();
  SetPointSize(30);
  Load();
  EXPECT_EQ(journal_->RowHeight(), 777);
  EXPECT_GT(journal_->RowHeightTitle(), title);
  EXPECT_GT(journal_->RowHeightSum(), sum);
}

TEST_F(KeptHeights, StayTheUsersWhenTheFontChanges) {
  Load();
  journal_->SetRowHeightSum(999);
  SetPointSize(30);
  Load();
  EXPECT_EQ(journal_->RowHeightSum(), 999);
}

TEST_F(KeptHeights, AreNotSavedWhereNobodyChangedOrKeptThem) {
  journal_ = std::make_unique<StockbookWidget>();
  journal_->SetConn(connection_);
  Load();
  journal_->SaveLayout(settings_, Group());
  EXPECT_FALSE(settings_.contains(QStringLiteral("journal/Heights0")));
  SetPointSize(30);
  journal_->DefaultFormat();
  journal_->SaveLayout(settings_, Group());
  EXPECT_FALSE(settings_.contains(QStringLiteral("journal/Heights0")));
  journal_->SetRowHeightTitle(888);
  journal_->SaveLayout(settings_, Group());
  EXPECT_TRUE(settings_.contains(QStringLiteral("journal/Heights0")));
}

}  // namespace
}  // namespace stockbook::qt
