// SPDX-License-Identifier: MIT
// The field chooser of the widget, by the mouse and by keys.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "qt/application.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_connection.h"
#include "support/journal_rows.h"

namespace stockbook::qt {
namespace {

class FieldChooser : public WithApplication {
 protected:
  FieldChooser() : connection_(std::make_shared<testing::FakeConnection>()) {
    testing::AnswerJournal(*connection_, {testing::JournalLine{}, testing::JournalLine{}});
    widget_.resize(900, 400);
    widget_.control().SetConn(connection_);
    QObject::connect(&widget_, &StockbookWidget::CommandExecute,
                     [this](const QString& command) { commands_ += command; });
  }

  // Opens the menu of a caption with its fields beside it, and passes both to `act`. The menu waits for a choice in an
  // event loop of its own.
  void Open(const std::function<void(QMenu& menu, QMenu& fields)>& act) {
    widget_.show();
    ASSERT_TRUE(widget_.Load(7, 0));
    Take();
    QApplication::processEvents();
    bool opened = false;
    QTimer::singleShot(0, [&] {
      const QPointer<QMenu> menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      menu->setActiveAction(menu->actions().last());
      QMenu* fields = menu->actions().last()->menu();
      ASSERT_NE(fields, nullptr);
      ASSERT_TRUE(fields->isVisible());
      opened = true;
      act(*menu, *fields);
      if (menu != nullptr) menu->close();
    });
    const sheet::Rect rect = sheet().view().geometry().VisibleCellRect(0, sheet().ColIndex("Explain"));
    const QPointF at(rect.x + rect.width / 2.0, rect.y + rect.height / 2.0);
    QMouseEvent press(QEvent::MouseButtonPress, at, widget_.viewport()->mapToGlobal(at), Qt::RightButton,
                      Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(widget_.viewport(), &press);
    EXPECT_TRUE(opened);
  }
  QAction* FieldOf(const QMenu& fields, const char* key) {
    const QString caption = QString::fromStdString(sheet().TextMatrix(0, sheet().ColIndex(key)));
    for (QAction* field : fields.actions()) {
      if (field->text() == caption) return field;
    }
    return nullptr;
  }
  bool IsShown(const char* key) { return !sheet().ColHidden(sheet().ColIndex(key)); }
  QStringList Take() { return std::exchange(commands_, {}); }
  sheet::GridSheet& sheet() { return widget_.sheet(); }

  static void ClickAt(QMenu& menu, QAction* field) {
    QTest::mouseMove(&menu, menu.actionGeometry(field).center());
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(field).center());
    QApplication::processEvents();
  }
  static void Key(QMenu& menu, Qt::Key key) {
    QTest::keyClick(&menu, key);
    QApplication::processEvents();
  }

  std::shared_ptr<testing::FakeConnection> connection_;
  StockbookWidget widget_;
  QStringList commands_;
};

const QStringList kOneField{QStringLiteral("AfterFieldShow")};

TEST_F(FieldChooser, StaysOpenWhileFieldsAreClickedAndEachTakesEffectAtOnce) {
  Open([&](QMenu& menu, QMenu& fields) {
    for (const char* key : {"Explain", "BillKind", "Explain", "Depot"}) {
      const bool shown = IsShown(key);
      QAction* field = FieldOf(fields, key);
      ASSERT_NE(field, nullptr) << key;
      EXPECT_EQ(field->isChecked(), shown) << key;
      ClickAt(fields, field);
      EXPECT_EQ(IsShown(key), !shown) << key;
      EXPECT_EQ(field->isChecked(), !shown) << key;
      EXPECT_EQ(Take(), kOneField) << key;
      EXPECT_TRUE(menu.isVisible() && fields.isVisible()) << key;
    }
  });
  EXPECT_TRUE(Take().isEmpty()) << "the menu was closed without a choice";
  EXPECT_FALSE(IsShown("BillKind"));
}

TEST_F(FieldChooser, StaysOpenForSpaceAndEnterAndClosesForEscape) {
  Open([&](QMenu& menu, QMenu& fields) {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
      fields.setActiveAction(FieldOf(fields, "Explain"));
      const bool shown = IsShown("Explain");
      Key(fields, key);
      EXPECT_EQ(IsShown("Explain"), !shown) << key;
      EXPECT_EQ(Take(), kOneField) << key;
      EXPECT_TRUE(fields.isVisible()) << key;
    }
    Key(fields, Qt::Key_Escape);
    EXPECT_FALSE(fields.isVisible());
    EXPECT_TRUE(menu.isVisible()) << "as with any submenu";
    Key(menu, Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
  });
  EXPECT_TRUE(Take().isEmpty());
}

TEST_F(FieldChooser, ClosesForAClickElsewhere) {
  Open([&](QMenu& menu, QMenu& fields) {
    ClickAt(fields, FieldOf(fields, "Explain"));
    EXPECT_EQ(Take(), kOneField);
    QTest::mouseClick(&fields, Qt::LeftButton, {}, fields.rect().bottomRight() + QPoint(200, 100));
    EXPECT_FALSE(fields.isVisible());
    EXPECT_FALSE(menu.isVisible());
  });
  EXPECT_TRUE(Take().isEmpty());
}

TEST_F(FieldChooser, KeepsTheTickOfTheOutlineColumn) {
  QStringList told;
  QObject::connect(&widget_, &StockbookWidget::Notify, [&](const QString& text) { told += text; });
  Open([&](QMenu& menu, QMenu& fields) {
    QAction* bill = FieldOf(fields, "BillNo");
    told.clear();
    ClickAt(fields, bill);
    EXPECT_TRUE(bill->isChecked());
    EXPECT_EQ(told, QStringList{QString()});
    EXPECT_TRUE(menu.isVisible());
  });
  EXPECT_TRUE(IsShown("BillNo"));
  EXPECT_TRUE(Take().isEmpty());
}

TEST_F(FieldChooser, TellsOfTicksThatItIsClosedUponBeforeItsChoice) {
  Open([&](QMenu& menu, QMenu& fields) {
    FieldOf(fields, "Explain")->trigger();
    FieldOf(fields, "BillKind")->trigger();
    menu.setActiveAction(menu.actions()[1]);
    QTest::keyClick(&menu, Qt::Key_Return);
  });
  EXPECT_EQ(Take(), kOneField + kOneField + kOneField) << "the third hides the column, which is hidden already";
  EXPECT_FALSE(IsShown("Explain"));
  EXPECT_FALSE(IsShown("BillKind"));
}

}  // namespace
}  // namespace stockbook::qt
