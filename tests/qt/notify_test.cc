// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QColor>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPixmap>
#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <limits>
#include <memory>

#include "qt/application.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/stockbook_widget.h"
#include "support/small_journal.h"

namespace stockbook::qt {
namespace {

using testing::SmallJournal;

class Notice : public WithApplication {
 protected:
  // The properties of the widget that its toolkit does not have.
  template <typename Look>
  void ForEachProperty(Look look) {
    const QMetaObject& meta = *widget_.metaObject();
    for (int index = QWidget::staticMetaObject.propertyCount(); index < meta.propertyCount(); ++index)
      look(meta.property(index));
  }

  StockbookWidget widget_;
};

// Another value than the property has.
QVariant Other(const QMetaProperty& property, const QVariant& now) {
  if (property.isEnumType()) return now.toInt() == 2 ? 1 : 2;
  switch (now.typeId()) {
    case QMetaType::Bool:
      return !now.toBool();
    case QMetaType::Int:
      return now.toInt() + 3;
    case QMetaType::Double:
      return now.toDouble() + 30;
    case QMetaType::QColor:
      return QColor(now.value<QColor>() == QColor(1, 2, 3) ? Qt::white : QColor(1, 2, 3));
    case QMetaType::QPixmap: {
      QPixmap pixmap(3, 3);
      pixmap.fill(Qt::red);
      return pixmap;
    }
    default:
      return QLatin1String(property.name()) == QLatin1String("AccRestrict") ? QStringLiteral("true")
                                                                            : now.toString() + QStringLiteral("|");
  }
}

TEST_F(Notice, EveryPropertyHasASignalThatTellsOfItsChange) {
  ForEachProperty([](const QMetaProperty& property) { EXPECT_TRUE(property.hasNotifySignal()) << property.name(); });
}

TEST_F(Notice, IsGivenOnceWhenAPropertyIsWrittenAndNotWhenItIsWrittenAgain) {
  ForEachProperty([&](const QMetaProperty& property) {
    if (!property.isWritable() || QLatin1String(property.name()) == QLatin1String("Row")) return;
    const QVariant value = Other(property, property.read(&widget_));
    QSignalSpy told(&widget_, property.notifySignal());
    ASSERT_TRUE(property.write(&widget_, value)) << property.name();
    EXPECT_EQ(told.size(), 1) << property.name();
    property.write(&widget_, value);
    EXPECT_EQ(told.size(), 1) << property.name() << " has the value already";
  });
}

TEST_F(Notice, IsNotGivenForAValueThatTheControlRefuses) {
  QSignalSpy journal(&widget_, &StockbookWidget::JournalChanged);
  widget_.SetdpID(40000);
  widget_.SetAccRestrict(QStringLiteral("perhaps"));
  EXPECT_EQ(journal.size(), 0);
}

TEST_F(Notice, EndsWhenAHeightThatIsNoNumberWasWritten) {
  widget_.SetRowHeight(std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(widget_.RowHeight(), 0);
  QSignalSpy journal(&widget_, &StockbookWidget::JournalChanged);
  widget_.SetCaption(QStringLiteral("账"));
  widget_.SetCaption(QStringLiteral("账"));
  EXPECT_EQ(journal.size(), 1);
}

TEST_F(Notice, IsGivenOnceAtTheEndOfALoadThatFindsOtherTexts) {
  widget_.SetConn(SmallJournal());
  QSignalSpy journal(&widget_, &StockbookWidget::JournalChanged);
  QSignalSpy row(&widget_, &StockbookWidget::RowChanged);
  QString name;
  QObject::connect(&widget_, &StockbookWidget::JournalChanged, &widget_, [&] { name = widget_.KeyName(); });
  ASSERT_TRUE(widget_.Load(7, 0));
  EXPECT_EQ(journal.size(), 1);
  EXPECT_EQ(name, QStringLiteral("六角螺栓"));
  EXPECT_GE(row.size(), 1) << "there are rows now";
  ASSERT_TRUE(widget_.Load(7, 0));
  EXPECT_EQ(journal.size(), 1) << "the same journal";
}

TEST_F(Notice, IsGivenOfTheCurrentRowWhoeverMovesIt) {
  widget_.SetConn(SmallJournal());
  ASSERT_TRUE(widget_.Load(7, 0));
  widget_.SetRow(3);
  QSignalSpy row(&widget_, &StockbookWidget::RowChanged);
  widget_.SetRow(4);
  EXPECT_EQ(row.size(), 1);
  widget_.SetRow(4);
  EXPECT_EQ(row.size(), 1);
  widget_.Grid().Select(5, 1);
  EXPECT_EQ(row.size(), 2);
  widget_.Grid().Select(5, 2);
  EXPECT_EQ(row.size(), 2) << "another cell of the same row";
}

TEST_F(Notice, IsGivenOnceWhenLooksAreRestoredUnlessNoneWereSaved) {
  const QTemporaryDir folder;
  QSettings settings(folder.filePath(QStringLiteral("looks.ini")), QSettings::IniFormat);
  widget_.SaveProperties(settings, QStringLiteral("looks"));
  widget_.SetBackColor(Qt::yellow);
  widget_.SetBackColorSel(Qt::blue);
  QSignalSpy looks(&widget_, &StockbookWidget::AppearanceChanged);
  widget_.RestoreProperties(settings, QStringLiteral("none"));
  EXPECT_EQ(looks.size(), 0);
  widget_.RestoreProperties(settings, QStringLiteral("looks"));
  EXPECT_EQ(looks.size(), 1);
  EXPECT_NE(widget_.BackColor(), QColor(Qt::yellow));
}

TEST_F(Notice, ReachesASlotThatDeletesTheWidget) {
  auto* widget = new StockbookWidget;
  QObject::connect(widget, &StockbookWidget::JournalChanged, widget, [widget] { delete widget; });
  widget->SetCaption(QStringLiteral("账"));
  auto* other = new StockbookWidget;
  QObject::connect(other, &StockbookWidget::AppearanceChanged, other, [other] { delete other; });
  other->SetBackColor(Qt::red);
  auto* third = new StockbookWidget;
  const QPointer<StockbookWidget> alive(third);
  QObject::connect(third, &StockbookWidget::JournalChanged, third, [third] { delete third; });
  third->setFont(QFont(third->font().family(), 30));
  EXPECT_EQ(alive, nullptr) << "heights follow the font";
}

}  // namespace
}  // namespace stockbook::qt
