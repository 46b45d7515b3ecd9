// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QBuffer>
#include <QPdfWriter>
#include <QPointer>
#include <QSignalSpy>

#include "qt/application.h"
#include "stockbook/qt/stockbook_widget.h"
#include "support/small_journal.h"

namespace stockbook::qt {
namespace {

class PrintedJournal : public WithApplication {
 protected:
  PrintedJournal() : widget_(new StockbookWidget) {
    widget_->SetConn(testing::SmallJournal());
    EXPECT_TRUE(widget_->Load(7, 0));
  }
  ~PrintedJournal() override { delete widget_; }

  QPointer<StockbookWidget> widget_;
};

TEST_F(PrintedJournal, SaysNothingWhenItIsDone) {
  QBuffer paper;
  ASSERT_TRUE(paper.open(QIODevice::WriteOnly));
  QPdfWriter pdf(&paper);
  QSignalSpy said(widget_, &StockbookWidget::Notify);
  EXPECT_TRUE(widget_->Print(pdf));
  EXPECT_EQ(said.size(), 0);
}

TEST_F(PrintedJournal, SaysThatTheDeviceDoesNotAcceptIt) {
  QPdfWriter pdf(QStringLiteral("/no such folder/journal.pdf"));
  QSignalSpy said(widget_, &StockbookWidget::Notify);
  EXPECT_FALSE(widget_->Print(pdf));
  ASSERT_EQ(said.size(), 1);
  const QString text = said[0][0].toString();
  EXPECT_TRUE(text.startsWith(QStringLiteral("没有打印完：") + widget_->Caption())) << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("请检查"))) << text.toStdString();
}

TEST_F(PrintedJournal, MayBeDeletedByASlotThatHearsOfIt) {
  QPdfWriter pdf(QStringLiteral("/no such folder/journal.pdf"));
  QObject::connect(widget_, &StockbookWidget::Notify, widget_, [this] { delete widget_; });
  EXPECT_FALSE(widget_->Print(pdf));
  EXPECT_EQ(widget_, nullptr);
}

}  // namespace
}  // namespace stockbook::qt
