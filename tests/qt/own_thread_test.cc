// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QBuffer>
#include <QPdfWriter>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "qt/application.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/journal_rows.h"

namespace stockbook::qt {
namespace {

using testing::AnswerJournal;
using testing::FakeConnection;
using testing::JournalLine;

class OtherThreads : public WithApplication {
 protected:
  OtherThreads() : connection_(std::make_shared<FakeConnection>()) {
    AnswerJournal(*connection_, {JournalLine{}, JournalLine{}});
    widget_.SetConn(connection_);
  }

  // Calls on another thread, and returns what Notify said on the widget's own.
  std::vector<std::string> SaidAfter(const std::function<void()>& call) {
    QSignalSpy said(&widget_, &StockbookWidget::Notify);
    std::thread(call).join();
    EXPECT_EQ(said.size(), 0) << "said on the other thread";
    QApplication::processEvents();
    std::vector<std::string> texts;
    for (const auto& arguments : said) texts.push_back(arguments[0].toString().toStdString());
    return texts;
  }

  std::shared_ptr<FakeConnection> connection_;
  StockbookWidget widget_;
};

TEST_F(OtherThreads, LoadNothingAndTheWidgetsOwnSaysSo) {
  bool loaded = true;
  const auto said = SaidAfter([&] { loaded = widget_.Load(7, 0); });
  EXPECT_FALSE(loaded);
  EXPECT_TRUE(connection_->Sent().empty());
  EXPECT_EQ(said, std::vector<std::string>{
                      "没有执行 Load：它在别的线程上被调用。请在控件所在的线程上调用；要在后台读取数据库，请把 "
                      "ThreadedConnection 交给 SetConn。"});
  EXPECT_TRUE(widget_.Load(7, 0)) << "on its own thread";
}

TEST_F(OtherThreads, FindFormatCountAndPrintNothing) {
  ASSERT_TRUE(widget_.Load(7, 0));
  QSignalSpy found(&widget_, &StockbookWidget::FindMsg);
  QSignalSpy formatted(&widget_, &StockbookWidget::AfterFormatted);
  QString statistics = QStringLiteral("untouched");
  bool printed = true;
  QBuffer paper;
  ASSERT_TRUE(paper.open(QIODevice::WriteOnly));
  QPdfWriter pdf(&paper);
  const auto said = SaidAfter([&] {
    widget_.Find(QStringLiteral("入库单"));
    widget_.DefaultFormat();
    statistics = widget_.Statistics();
    widget_.DoCommand(QStringLiteral("SetColFont"));
    printed = widget_.Print(pdf);
  });
  ASSERT_EQ(said.size(), 5U);
  const std::vector<std::string> functions{"Find", "DefaultFormat", "Statistics", "DoCommand", "Print"};
  for (size_t index = 0; index < functions.size(); ++index)
    EXPECT_EQ(said[index].find("没有执行 " + functions[index] + "："), 0U) << said[index];
  EXPECT_EQ(found.size(), 0);
  EXPECT_EQ(formatted.size(), 0);
  EXPECT_EQ(statistics, QString());
  EXPECT_FALSE(printed);
}

TEST_F(OtherThreads, PromptOnTheWidgetsOwn) {
  EXPECT_EQ(SaidAfter([&] { widget_.Prompt(QStringLiteral("盘点完成")); }), std::vector<std::string>{"盘点完成"});
}

TEST_F(OtherThreads, NeitherSaveNorRestoreNorAskForTheSelection) {
  ASSERT_TRUE(widget_.Load(7, 0));
  widget_.sheet().SelectRange(1, 3, 2, 4);
  ASSERT_TRUE(widget_.IsRangeSelected());
  QTemporaryDir folder;
  QSettings settings(folder.filePath(QStringLiteral("looks.ini")), QSettings::IniFormat);
  settings.setValue(QStringLiteral("BackColor"), 255);
  bool selected = true;
  const auto said = SaidAfter([&] {
    selected = widget_.IsRangeSelected();
    widget_.RestoreLayout(settings, {});
    widget_.RestoreProperties(settings, {});
    widget_.SaveLayout(settings, {});
    widget_.SaveProperties(settings, {});
  });
  ASSERT_EQ(said.size(), 5U);
  const std::vector<std::string> functions{"IsRangeSelected", "RestoreLayout", "RestoreProperties", "SaveLayout",
                                           "SaveProperties"};
  for (size_t index = 0; index < functions.size(); ++index)
    EXPECT_EQ(said[index].find("没有执行 " + functions[index] + "："), 0U) << said[index];
  EXPECT_FALSE(selected);
  EXPECT_EQ(settings.allKeys(), QStringList{QStringLiteral("BackColor")});
}

}  // namespace
}  // namespace stockbook::qt
