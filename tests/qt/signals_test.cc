// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTimer>
#include <string>
#include <vector>

#include "interaction/events.h"
#include "qt/application.h"
#include "qt/widget_parts.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/journal_rows.h"

namespace stockbook::qt {
namespace {

using testing::AnswerJournal;
using testing::FakeConnection;
using testing::JournalLine;

class Signals : public WithApplication {
 protected:
  Signals() : connection_(std::make_shared<FakeConnection>()) {
    AnswerJournal(*connection_, {JournalLine{}, JournalLine{}});
    widget_.SetConn(connection_);
  }

  std::shared_ptr<FakeConnection> connection_;
  StockbookWidget widget_;
};

TEST_F(Signals, AreTheNineEventsInTheirOrderWithTheirArguments) {
  std::vector<std::string> told;
  const QMetaObject& meta = *widget_.metaObject();
  for (int index = JournalEvents::staticMetaObject.methodOffset(); index < meta.methodCount(); ++index) {
    const QMetaMethod method = meta.method(index);
    if (method.methodType() != QMetaMethod::Signal) continue;
    std::string text = method.name().toStdString() + "(";
    const QList<QByteArray> names = method.parameterNames();
    for (int at = 0; at < names.size(); ++at)
      text += (at == 0 ? "" : ", ") + method.parameterTypes()[at].toStdString() + " " + names[at].toStdString();
    told.push_back(text + ")");
  }
  const std::string integer = "stockbook::qt::IntegerReference ";
  const std::string single = "stockbook::qt::SingleReference ";
  EXPECT_EQ(told, (std::vector<std::string>{
                      "Process(int Indicator)", "AfterLoaded()", "AfterFormatted()",
                      "CommandExecute(QString CommandName, stockbook::qt::BooleanReference Cancel)",
                      "Notify(QString Msg)", "AfterRowChanged()", "AfterRangeSelected()",
                      "MouseUp(" + integer + "Button, " + integer + "Shift, " + single + "X, " + single + "Y)",
                      "FindMsg(QString rMsg)", "PropertyChanged(QString Key)", "JournalChanged()", "RowChanged()",
                      "AppearanceChanged()"}));
}

TEST_F(Signals, ThatAreConnectedByNameMayWriteTheirArguments) {
  StockbookWidget other;
  const char* signal = SIGNAL(CommandExecute(QString, stockbook::qt::BooleanReference));
  ASSERT_TRUE(QObject::connect(&widget_, signal, &other, signal));
  QObject::connect(&other, &StockbookWidget::CommandExecute,
                   [](const QString&, const BooleanReference& cancel) { cancel.SetValue(true); });
  EXPECT_FALSE(widget_.Load(7, 0));
  EXPECT_EQ(widget_.Rows(), 1);
}

TEST_F(Signals, WriteTheirArgumentsThroughTheMetaObject) {
  QObject::connect(&widget_, &StockbookWidget::CommandExecute, [](const QString&, const BooleanReference& cancel) {
    QVariant argument = QVariant::fromValue(cancel);
    const QMetaObject* meta = argument.metaType().metaObject();
    ASSERT_NE(meta, nullptr);
    const QMetaProperty value = meta->property(meta->indexOfProperty("value"));
    EXPECT_FALSE(value.readOnGadget(argument.constData()).toBool());
    EXPECT_TRUE(value.writeOnGadget(argument.data(), true));
  });
  EXPECT_FALSE(widget_.Load(7, 0));
}

TEST_F(Signals, KeepWhatTheyCarriedForASpy) {
  QSignalSpy spy(&widget_, &StockbookWidget::CommandExecute);
  QObject::connect(&widget_, &StockbookWidget::CommandExecute,
                   [](const QString&, const BooleanReference& cancel) { cancel.SetValue(true); });
  widget_.Load(7, 0);
  ASSERT_EQ(spy.size(), 1);
  EXPECT_EQ(spy[0][0].toString().toStdString(), "Load");
  EXPECT_TRUE(spy[0][1].value<BooleanReference>().Value()) << "shared with what the slot wrote";
}

TEST_F(Signals, GiveAllOfAMouseButtonToBeWritten) {
  SignalRaiser raiser(widget_);
  QObject::connect(&widget_, &StockbookWidget::MouseUp,
                   [](const IntegerReference& button, const IntegerReference& shift, const SingleReference& x,
                      const SingleReference& y) {
                     EXPECT_EQ(button.Value(), 1);
                     EXPECT_EQ(shift.Value(), 2);
                     EXPECT_EQ(x.Value(), 30.5F);
                     EXPECT_EQ(y.Value(), 45.0F);
                     button.SetValue(4);
                     shift.SetValue(-1);
                     x.SetValue(1.5F);
                     y.SetValue(2.5F);
                   });
  int16_t button = 1;
  int16_t shift = 2;
  float x = 30.5F;
  float y = 45.0F;
  raiser.MouseUp(button, shift, x, y);
  EXPECT_EQ(button, 4);
  EXPECT_EQ(shift, -1);
  EXPECT_EQ(x, 1.5F);
  EXPECT_EQ(y, 2.5F);
  raiser.Silence();
  raiser.MouseUp(button, shift, x, y);
  EXPECT_EQ(button, 4) << "nobody was asked";
}

TEST_F(Signals, GoToEverySlotThatIsConnected) {
  QSignalSpy first(&widget_, &StockbookWidget::Notify);
  QSignalSpy second(&widget_, &StockbookWidget::Notify);
  widget_.Prompt(QString());
  ASSERT_EQ(first.size(), 1);
  EXPECT_EQ(second.size(), 1);
  EXPECT_EQ(first[0][0].toString().toStdString(), "");
}

TEST_F(Signals, LetASlotLoadOnceMore) {
  int asked = 0;
  const auto load = [&] {
    ++asked;
    EXPECT_FALSE(widget_.Load(7, 0)) << "a load is under way";
  };
  QObject::connect(&widget_, &StockbookWidget::AfterLoaded, load);
  QObject::connect(&widget_, &StockbookWidget::Process, load);
  QObject::connect(&widget_, &StockbookWidget::AfterFormatted, load);
  EXPECT_TRUE(widget_.Load(7, 0));
  EXPECT_GT(asked, 3);
  EXPECT_EQ(widget_.Rows(), 1 + 1 + 2 + 2);
}

TEST_F(Signals, LetASlotLoadWhenTheRowChanges) {
  ASSERT_TRUE(widget_.Load(7, 0));
  int loaded = 0;
  QObject::connect(&widget_, &StockbookWidget::AfterRowChanged, [&] {
    if (loaded++ > 0) return;
    EXPECT_TRUE(widget_.Load(7, 0));
  });
  widget_.SetRow(3);
  EXPECT_GT(loaded, 0);
  EXPECT_EQ(widget_.Rows(), 1 + 1 + 2 + 2);
  EXPECT_TRUE(widget_.sheet().Redraw());
  EXPECT_EQ(widget_.sheet().Tag(), "");
}

using Methods = Signals;

TEST_F(Methods, AreThoseOfTheInterfaceInItsOrder) {
  std::vector<std::string> told;
  const QMetaObject& meta = *widget_.metaObject();
  for (int index = JournalEvents::staticMetaObject.methodOffset(); index < meta.methodCount(); ++index) {
    const QMetaMethod method = meta.method(index);
    const bool shorter = (method.attributes() & QMetaMethod::Cloned) != 0;  // for the defaults of arguments
    if (method.methodType() == QMetaMethod::Slot && !shorter)
      told.push_back(std::string(method.typeName()) + " " + method.methodSignature().toStdString());
  }
  EXPECT_EQ(told, (std::vector<std::string>{"bool Load(int,int,QString)", "void Prompt(QString)",
                                            "bool Find(QString,int)", "bool IsRangeSelected()", "void DefaultFormat()",
                                            "QString Statistics()", "QVariant DoCommand(QString,QVariantList)",
                                            // The widget's own come after them.
                                            "void FitColumns()"}));
}

TEST_F(Methods, MayBeCalledByNameWithoutTheirOptionalArguments) {
  bool loaded = false;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "Load", Q_RETURN_ARG(bool, loaded), Q_ARG(int, 7), Q_ARG(int, 0)));
  EXPECT_TRUE(loaded);
  loaded = false;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "Load", Q_RETURN_ARG(bool, loaded)));
  EXPECT_TRUE(loaded) << "the keys are kept";
  bool range = true;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "IsRangeSelected", Q_RETURN_ARG(bool, range)));
  EXPECT_FALSE(range);
  QString statistics;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "Statistics", Q_RETURN_ARG(QString, statistics)));
  EXPECT_EQ(statistics.toStdString(), widget_.control().Statistics());
  QSignalSpy formatted(&widget_, &StockbookWidget::AfterFormatted);
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "DefaultFormat"));
  EXPECT_EQ(formatted.size(), 1);
}

TEST_F(Methods, StatisticsOfTooManyBillsSayWhyTheyAreEmpty) {
  sheet::GridSheet& sheet = widget_.sheet();
  const int bills = 32768;
  sheet.SetRows(1 + bills);
  for (int row = 1; row <= bills; ++row) {
    sheet.SetTextMatrix(row, sheet.ColIndex("BillID"), "1");
    sheet.SetTextMatrix(row, sheet.ColIndex("BillName"), "入库单");
  }
  QSignalSpy said(&widget_, &StockbookWidget::Notify);
  EXPECT_EQ(widget_.Statistics(), QString());
  ASSERT_EQ(said.size(), 1);
  EXPECT_NE(said[0][0].toString().indexOf(QStringLiteral("32767")), -1);
}

TEST_F(Methods, ACommandHasNoResult) {
  QVariant result = 5;
  ASSERT_TRUE(QMetaObject::invokeMethod(&widget_, "DoCommand", Q_RETURN_ARG(QVariant, result),
                                        Q_ARG(QString, QStringLiteral("SetColFont"))));
  EXPECT_FALSE(result.isValid());
  EXPECT_FALSE(widget_.DoCommand(QStringLiteral("ColChanged"), {QStringLiteral("Standard")}).isValid());
  EXPECT_FALSE(widget_.DoCommand(QStringLiteral("no such command"), {1, 2.5, QVariant(), true}).isValid());
}

TEST_F(Methods, ACommandWithoutItsArgumentSaysSo) {
  QSignalSpy said(&widget_, &StockbookWidget::Notify);
  EXPECT_FALSE(widget_.DoCommand(QStringLiteral("ColChanged")).isValid());
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0][0].toString().toStdString(), "命令“ColChanged”缺少第一个参数：请给出列的键。");
}

}  // namespace
}  // namespace stockbook::qt
