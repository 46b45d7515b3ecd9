// SPDX-License-Identifier: MIT
#include "stockbook/window/subject_chooser.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QWheelEvent>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/window/subject_uses.h"

namespace stockbook::app {
namespace {

class Choosing : public WindowTest {
 protected:
  Choosing() {
    chooser_.SetEntries({{1, {}, "1001  六角螺栓  M8", "LJLS\n6901234567892"},
                         {2, {}, "1002  六角螺栓  M10", "LJLS"},
                         {3, {}, "2001  平垫圈  M10", "PDQ"},
                         {4, {}, "21001  平垫圈  M12", "PDQ"}});
    chooser_.Choose(3, {});
  }

  void Type(const QString& text) {
    chooser_.lineEdit()->selectAll();
    for (const QChar character : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
      QApplication::sendEvent(&chooser_, &press);
    }
  }
  // The list of what was found gets the keys while it is open.
  void Press(int key) {
    QAbstractItemView* list = chooser_.completer()->popup();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(list->isVisible() ? static_cast<QWidget*>(list) : &chooser_, &press);
  }
  void Leave(Qt::FocusReason reason) {
    QFocusEvent out(QEvent::FocusOut, reason);
    QApplication::sendEvent(&chooser_, &out);
    Settle();
  }
  std::string Shown() const { return chooser_.currentText().toStdString(); }

  SubjectChooser chooser_;
};

TEST_F(Choosing, EscapeGivesBackWhatWasChosenAndTabThenTakesNothing) {
  QSignalSpy chosen(&chooser_, &SubjectChooser::Chosen);
  Type(QStringLiteral("1001"));
  Press(Qt::Key_Escape);
  EXPECT_EQ(Shown(), "2001  平垫圈  M10");
  Leave(Qt::TabFocusReason);
  EXPECT_EQ(chooser_.Current().key, 3);
  EXPECT_EQ(Shown(), "2001  平垫圈  M10");
  EXPECT_EQ(chosen.size(), 0);
}

TEST_F(Choosing, TabTakesWhatWasTypedAndAsksForItsJournal) {
  QSignalSpy chosen(&chooser_, &SubjectChooser::Chosen);
  Type(QStringLiteral("螺栓 m10"));
  chooser_.completer()->popup()->hide();
  Leave(Qt::TabFocusReason);
  EXPECT_EQ(chooser_.Current().key, 2);
  EXPECT_EQ(Shown(), "1002  六角螺栓  M10");
  EXPECT_EQ(chosen.size(), 1) << "what is chosen is loaded";
}

TEST_F(Choosing, AClickElsewhereGivesBackWhatWasChosen) {
  QSignalSpy chosen(&chooser_, &SubjectChooser::Chosen);
  Type(QStringLiteral("1001"));
  chooser_.completer()->popup()->hide();
  Leave(Qt::MouseFocusReason);
  EXPECT_EQ(chooser_.Current().key, 3);
  EXPECT_EQ(Shown(), "2001  平垫圈  M10");
  EXPECT_EQ(chosen.size(), 0);
}

TEST_F(Choosing, AnotherWindowInFrontLeavesWhatWasTyped) {
  Type(QStringLiteral("1001"));
  chooser_.completer()->popup()->hide();
  Leave(Qt::ActiveWindowFocusReason);
  EXPECT_EQ(Shown(), "1001");
}

TEST_F(Choosing, FindsByTextsThatAreNotShown) {
  Type(QStringLiteral("6901234"));
  ASSERT_EQ(chooser_.completer()->completionModel()->rowCount(), 1);
  Press(Qt::Key_Tab);
  EXPECT_EQ(chooser_.Current().key, 1);
}

TEST_F(Choosing, AWholeNumberGoesBeforeANumberThatHoldsIt) {
  chooser_.SetEntries({{4, {}, "21001  平垫圈"}, {1, {}, "1001  六角螺栓"}});
  Type(QStringLiteral("1001"));
  chooser_.completer()->popup()->hide();
  EXPECT_TRUE(chooser_.TakeTypedText());
  EXPECT_EQ(chooser_.Current().key, 1);
}

TEST_F(Choosing, OffersWhatWasChosenMostOftenFirst) {
  const QTemporaryDir folder;
  QSettings settings(folder.filePath(QStringLiteral("uses.ini")), QSettings::IniFormat);
  SubjectUses uses;
  uses.KeepIn(&settings, QStringLiteral("a"));
  const std::vector<CatalogEntry> entries{{1, {}, "1001  螺栓"}, {2, {}, "1002  螺栓"}, {3, {}, "1003  螺栓"}};
  uses.Count(QStringLiteral("product"), entries[2]);
  uses.Count(QStringLiteral("product"), entries[2]);
  uses.Count(QStringLiteral("product"), entries[1]);
  EXPECT_EQ(uses.Of(QStringLiteral("customer"), entries[2]), 0) << "another table has keys of its own";
  chooser_.SetEntries(entries, [&](const CatalogEntry& entry) { return uses.Of(QStringLiteral("product"), entry); });
  Type(QStringLiteral("螺栓"));
  const QAbstractItemModel& found = *chooser_.completer()->completionModel();
  ASSERT_EQ(found.rowCount(), 3);
  EXPECT_EQ(found.index(0, 0).data().toString().toStdString(), "1003  螺栓");
  EXPECT_EQ(found.index(1, 0).data().toString().toStdString(), "1002  螺栓");
  EXPECT_EQ(chooser_.itemText(0).toStdString(), "1001  螺栓") << "the whole list stays in the order of the numbers";
}

TEST_F(Choosing, ShowsASubjectThatTheInventoryLacksAsSuch) {
  chooser_.Show(99, {});
  EXPECT_EQ(chooser_.Current().key, 99);
  EXPECT_EQ(Shown(), "（没有编号 99）");
}

TEST_F(Choosing, ListsWhatWasFoundInFullWidth) {
  const QString longest = QStringLiteral("3001  内六角圆柱头螺钉  M12×40  GB/T 70.1  不锈钢");
  chooser_.SetEntries({{1, {}, "1001  六角螺栓  M8", "LJLS"}, {2, {}, longest.toStdString(), "NLJ"}});
  chooser_.resize(120, chooser_.sizeHint().height());
  chooser_.show();
  Type(QStringLiteral("m"));
  const QAbstractItemView& found = *chooser_.completer()->popup();
  ASSERT_TRUE(found.isVisible());
  EXPECT_GE(found.viewport()->width(), found.fontMetrics().horizontalAdvance(longest));
  Press(Qt::Key_Escape);
  chooser_.showPopup();
  EXPECT_GE(chooser_.view()->viewport()->width(), chooser_.fontMetrics().horizontalAdvance(longest));
  chooser_.hidePopup();
}

TEST_F(Choosing, TheWheelChangesNothing) {
  QWheelEvent turned({5, 5}, {5, 5}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&chooser_, &turned);
  EXPECT_EQ(chooser_.Current().key, 3);
}

class Bar : public WindowTest {
 protected:
  template <typename Part>
  Part* PartOf() {
    return window_->bar().findChild<Part*>();
  }
};

TEST_F(Bar, ShowsTheSubjectOfTheJournalAgainWhenAnotherOneCannotBeLoaded) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  JournalOptions failing;
  failing.journal_type = 1;
  failing.key_id = 1;
  failing.dp_code = "no such";
  EXPECT_FALSE(window_->LoadJournal(failing).loaded);
  EXPECT_EQ(window_->bar().Options().journal_type, 0);
  EXPECT_EQ(window_->bar().Options().key_id, stockbook().control().KeyID());
  EXPECT_EQ(window_->bar().Options().dp_code, "");
}

TEST_F(Bar, NamesTheProductOfTheJournalWhateverWasTypedAndGivenUp) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  auto* product = window_->bar().findChildren<SubjectChooser*>().front();
  const QString shown = product->currentText();
  const auto press = [](QWidget* widget, int key, const QString& text = {}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(widget, &event);
  };
  product->setFocus(Qt::TabFocusReason);
  product->lineEdit()->selectAll();
  for (const char digit : {'0', '2', '0'}) press(product->lineEdit(), Qt::Key_0, QString(QLatin1Char(digit)));
  ASSERT_EQ(product->currentText().toStdString(), "020");
  QWidget* list = QApplication::activePopupWidget();
  press(list != nullptr ? list : product, Qt::Key_Escape);
  press(product, Qt::Key_Tab);
  Settle();
  EXPECT_EQ(product->currentText(), shown);
  EXPECT_EQ(window_->bar().Options().key_id, stockbook().control().KeyID());
  for (QComboBox* type : window_->bar().findChildren<QComboBox*>()) {
    if (type->accessibleName() != QStringLiteral("台账类型")) continue;
    type->setCurrentIndex(3);
    emit type->activated(3);
  }
  Settle();
  EXPECT_EQ(window_->bar().Options().key_id, 1) << "the next type is of the same product";
}

TEST_F(Bar, LeavesTheWindowRoomOnASmallScreen) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  window_->views().range_bar().Open();
  window_->find_bar().Open();
  window_->resize(1024, 600);
  Settle();
  EXPECT_LE(window_->width(), 1024);
  EXPECT_LE(window_->height(), 600);
  EXPECT_LE(window_->minimumSizeHint().width(), 1024 * 4 / 5) << "at scale 1.25, too";
  EXPECT_LE(window_->minimumSizeHint().height(), 600 * 4 / 5);
  EXPECT_GT(stockbook().height(), 200);
}

TEST_F(Bar, FoldsWhereItHasNoRoom) {
  Open();
  JournalBar& bar = window_->bar();
  window_->resize(1280, 700);
  Settle();
  EXPECT_EQ(bar.fold(), JournalBar::Fold::kNone);
  window_->resize(window_->minimumSizeHint().width(), 400);
  Settle();
  EXPECT_EQ(bar.fold(), JournalBar::Fold::kTwoRows);
  EXPECT_LE(bar.minimumSizeHint().width(), 512) << "half of 1024 pixels";
  for (QWidget* part : bar.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!part->isVisible()) continue;
    EXPECT_TRUE(bar.rect().contains(part->geometry())) << part->metaObject()->className();
  }
  window_->resize(1280, 700);
  Settle();
  EXPECT_EQ(bar.fold(), JournalBar::Fold::kNone);
}

TEST_F(Bar, OffersItsBoxesInAMenuWhenTheyAreFolded) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  window_->resize(window_->minimumSizeHint().width(), 400);
  Settle();
  QMenu* menu = PartOf<QToolButton>()->menu();
  ASSERT_NE(menu, nullptr);
  emit menu->aboutToShow();
  ASSERT_EQ(menu->actions().size(), 3);
  menu->actions()[0]->trigger();
  EXPECT_TRUE(window_->bar().Options().allow_qty2);
  EXPECT_TRUE(stockbook().control().AllowQty2()) << "the journal was loaded with it";
  menu->actions()[2]->trigger();
  emit menu->aboutToShow();
  EXPECT_FALSE(menu->actions()[1]->isEnabled()) << "no tax columns with hidden amounts";
}

}  // namespace
}  // namespace stockbook::app
