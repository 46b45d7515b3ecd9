// SPDX-License-Identifier: MIT
// What the control says to a host that does not listen.
#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <thread>

#include "qt/application.h"
#include "qt/logged_notices.h"
#include "stockbook/qt/stockbook_widget.h"
#include "support/small_journal.h"

namespace stockbook::qt {
namespace {

class UnheardNotices : public WithApplication {
 protected:
  LoggedNotices log_;
  StockbookWidget widget_;
};

TEST_F(UnheardNotices, GoToTheLog) {
  EXPECT_FALSE(widget_.Load(7, 0));
  ASSERT_FALSE(log_.Texts().isEmpty());
  EXPECT_EQ(log_.Texts().back().toStdString(), "没有数据库连接：请先设置 Conn，再载入。");
}

TEST_F(UnheardNotices, AreNoneWhereASlotIsConnected) {
  int heard = 0;
  const auto connection =
      QObject::connect(&widget_, &StockbookWidget::Notify, &widget_, [&heard](const QString&) { ++heard; });
  widget_.Prompt(QStringLiteral("消息"));
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(log_.Texts(), QStringList());
  QObject::disconnect(connection);
  widget_.Prompt(QStringLiteral("消息"));
  EXPECT_EQ(log_.Texts().size(), 1) << "as soon as it is not";
}

TEST_F(UnheardNotices, OfARowThatHasNothingToSayAreNotLogged) {
  widget_.Prompt(QString());
  EXPECT_EQ(log_.Texts(), QStringList());
}

TEST_F(UnheardNotices, OfACallOnAnotherThreadAreLoggedOnce) {
  std::thread([this] { widget_.Load(7, 0); }).join();
  QApplication::processEvents();
  ASSERT_EQ(log_.Texts().size(), 1);
  EXPECT_TRUE(log_.Texts()[0].startsWith(QStringLiteral("没有执行 Load："))) << log_.Texts()[0].toStdString();
  EXPECT_EQ(log_.Others(), QStringList()) << "nothing beside it";
}

}  // namespace
}  // namespace stockbook::qt
