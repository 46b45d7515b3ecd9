// SPDX-License-Identifier: MIT
// The window in English: none of its own texts is Chinese, and the choice of the language is kept.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <iostream>
#include <sstream>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/command/command_line.h"
#include "stockbook/command/open_command.h"
#include "stockbook/inventory/inventory_bill.h"
#include "stockbook/journal/amount_texts.h"
#include "stockbook/window/bill_view.h"
#include "stockbook/window/host_language.h"
#include "stockbook/window/host_translator.h"
#include "stockbook/window/language_menu.h"
#include "stockbook/window/subject_chooser.h"

namespace stockbook::app {
namespace {

class Languages : public WindowTest {
 protected:
  void SetUp() override {
    if (!HostTranslator().LoadEnglish()) GTEST_SKIP() << "this program was built without its English texts";
    session_.Speak(HostLanguage::kEnglish);
    settings_ = std::make_unique<QSettings>(QString::fromStdString(PathOf("settings.ini")), QSettings::IniFormat);
    window_ = std::make_unique<MainWindow>();
    window_->Remember(*settings_);
  }
  void TearDown() override { window_.reset(); }

  static bool IsChinese(const QString& text) {
    static const QRegularExpression han(QStringLiteral("[\\x{4e00}-\\x{9fff}]"));
    // The menu of languages is for whoever cannot read the rest.
    const bool is_for_them = text.contains(QStringLiteral("anguage")) || text.startsWith(QStringLiteral("中文"));
    return text.contains(han) && !is_for_them;
  }
  void Look(const QObject& where, const QString& text) {
    if (IsChinese(text)) found_.push_back(where.metaObject()->className() + (": " + text.toStdString()));
  }
  // Whether the widget shows what the control or the inventory says.
  bool ShowsData(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
      if (widget == &stockbook() || qobject_cast<const SubjectChooser*>(widget) != nullptr) return true;
    }
    return false;
  }
  void LookAtWidgets(QWidget& top) {
    for (const QAction* action : top.findChildren<QAction*>()) {
      Look(*action, action->text());
      Look(*action, action->toolTip());
    }
    for (QWidget* widget : top.findChildren<QWidget*>()) {
      if (ShowsData(widget)) continue;
      Look(*widget, widget->toolTip());
      Look(*widget, widget->accessibleName());
      Look(*widget, widget->accessibleDescription());
      if (const auto* label = qobject_cast<QLabel*>(widget)) Look(*widget, label->text());
      if (const auto* button = qobject_cast<QAbstractButton*>(widget)) Look(*widget, button->text());
      if (const auto* line = qobject_cast<QLineEdit*>(widget)) Look(*widget, line->placeholderText());
      if (const auto* menu = qobject_cast<QMenu*>(widget)) Look(*widget, menu->title());
      if (const auto* choice = qobject_cast<QComboBox*>(widget)) {
        for (int item = 0; item < choice->count(); ++item) Look(*widget, choice->itemText(item));
      }
    }
  }
  std::string Found() const {
    std::ostringstream list;
    for (const std::string& text : found_) list << text << "\n";
    return list.str();
  }

  std::vector<std::string> found_;
  std::unique_ptr<QSettings> settings_;
};

// Without an inventory, whose names are in all kinds of places.
TEST_F(Languages, TheWindowSaysNothingOfItsOwnInChinese) {
  window_->show();
  window_->find_bar().Open();
  QApplication::processEvents();
  LookAtWidgets(*window_);
  EXPECT_TRUE(found_.empty()) << Found();
}

TEST(ToolkitTexts, AreChineseInAChineseWindow) {
  if (!QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_zh_CN.qm")))
    GTEST_SKIP() << "the toolkit's translations are not installed";
  const GuiSession session(GuiNeed::kPicture);
  const QDialogButtonBox box(QDialogButtonBox::Cancel);
  EXPECT_TRUE(box.button(QDialogButtonBox::Cancel)->text().contains(QStringLiteral("取消")))
      << box.button(QDialogButtonBox::Cancel)->text().toStdString();
}

TEST_F(Languages, TheControlGoesOnInChinese) {
  Open();
  ASSERT_TRUE(window_->LoadFirstJournal().loaded);
  EXPECT_EQ(grid().TextMatrix(0, grid().ColIndex("Explain")), "摘要");
}

TEST_F(Languages, ChoosersCallAllSubjectsInTheWindowsLanguage) {
  Open();
  JournalOptions options;
  options.journal_type = 1;
  ASSERT_TRUE(window_->LoadJournal(options).loaded);
  QStringList all;
  for (SubjectChooser* chooser : window_->bar().findChildren<SubjectChooser*>()) all += chooser->itemText(0);
  EXPECT_TRUE(all.contains(QStringLiteral("All suppliers"))) << all.join(u'|').toStdString();
  EXPECT_TRUE(all.contains(QStringLiteral("All products"))) << all.join(u'|').toStdString();
}

TEST_F(Languages, BillsHaveEnglishCaptions) {
  InventoryBill bill;
  bill.date = "2025-01-02";
  bill.lines.resize(1);
  bill.lines[0].product_no = "1001";
  bill.lines[0].quantity = 3;
  const BillView view = ViewOfBill(bill, journal::AmountTexts::kShown);
  ASSERT_EQ(view.columns.size(), 2U);
  EXPECT_EQ(view.columns[1].caption.toStdString(), "Quantity");
  EXPECT_EQ(view.facts.at(0).first.toStdString(), "Date");
  EXPECT_EQ(view.totals.at(0).at(0).toStdString(), "Total");
}

TEST_F(Languages, ATextIsTranslatedWhereverItStands) {
  HostTranslator translator;
  ASSERT_TRUE(translator.LoadEnglish());
  EXPECT_EQ(translator.translate("AnyClass", "关闭(&C)").toStdString(), "&Close");
  EXPECT_TRUE(translator.translate("QPlatformTheme", "OK").isNull()) << "the toolkit's texts are not the host's";
}

TEST_F(Languages, TheChoiceInTheMenuIsKeptForTheNextStart) {
  EXPECT_EQ(RememberedLanguage(*settings_), std::nullopt);
  const auto choose = [&](const QString& name) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->text() == name) return action->trigger();
    }
    ADD_FAILURE() << name.toStdString() << " is not there";
  };
  choose(QStringLiteral("&English"));
  EXPECT_EQ(RememberedLanguage(*settings_), HostLanguage::kEnglish);
  EXPECT_FALSE(window_->message().Message().isEmpty()) << "and that is told";
  choose(QStringLiteral("中文(&C)"));
  EXPECT_EQ(RememberedLanguage(*settings_), HostLanguage::kChinese);
  choose(QStringLiteral("As the &system"));
  EXPECT_EQ(RememberedLanguage(*settings_), std::nullopt);
}

TEST(LanguageOption, IsChineseOrEnglish) {
  EXPECT_EQ(LanguageNamed("zh"), HostLanguage::kChinese);
  EXPECT_EQ(LanguageNamed("en"), HostLanguage::kEnglish);
  EXPECT_EQ(LanguageNamed("fr"), std::nullopt);
  std::istringstream in;
  std::ostringstream out;
  Terminal terminal{in, out, out};
  try {
    OpenCommand().run({"--language", "fr"}, terminal);
    FAIL();
  } catch (const UsageError& error) {
    EXPECT_STREQ(error.what(), "The option --language must be zh or en, not 'fr'.");
  }
}

}  // namespace
}  // namespace stockbook::app
