// SPDX-License-Identifier: MIT
// The letters behind '&': in a menu each chooses one item.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <map>
#include <memory>

#include "app/window_fixture.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {
namespace {

class MenuKeys : public WindowTest {
 protected:
  void TearDown() override { window_.reset(); }

  void OpenIn(HostLanguage language) {
    session_.Speak(language);
    settings_ = std::make_unique<QSettings>(QString::fromStdString(PathOf("settings.ini")), QSettings::IniFormat);
    window_ = std::make_unique<MainWindow>();
    window_->Remember(*settings_);
  }

  static void ExpectOneItemForEach(const QList<QAction*>& items, const std::string& menu) {
    std::map<QString, std::string> taken;
    for (const QAction* item : items) {
      const QString key = QKeySequence::mnemonic(item->text()).toString();
      if (item->menu() != nullptr) ExpectOneItemForEach(item->menu()->actions(), item->text().toStdString());
      if (key.isEmpty() || !item->isVisible()) continue;
      const auto [at, is_first] = taken.emplace(key, item->text().toStdString());
      EXPECT_TRUE(is_first) << menu << ": " << key.toStdString() << " is " << at->second << " and "
                            << item->text().toStdString();
    }
  }

  // Of the window itself with all its bars and panels, whatever the journal.
  void ExpectOneWidgetForEach() {
    Open();
    window_->views().range_bar().Open();
    window_->find_bar().Open();
    window_->views().periods().show();
    window_->views().plot().show();
    for (int type = 0; type < 4; ++type) {
      JournalOptions options;
      options.journal_type = type;
      options.key_id = 1;
      window_->LoadJournal(options);
      Settle();
      std::map<QString, std::string> taken;
      const auto take = [&](const QString& text) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty()) return;
        const auto [at, is_first] = taken.emplace(key, text.toStdString());
        EXPECT_TRUE(is_first) << key.toStdString() << " is " << at->second << " and " << text.toStdString();
      };
      for (const QAction* menu : window_->menuBar()->actions()) take(menu->text());
      for (const QLabel* label : window_->findChildren<QLabel*>())
        if (label->isVisible() && label->buddy() != nullptr) take(label->text());
      for (const QAbstractButton* button : window_->findChildren<QAbstractButton*>())
        if (button->isVisible()) take(button->text());
    }
  }

  std::unique_ptr<QSettings> settings_;
};

TEST_F(MenuKeys, ChooseOneItemEachInChinese) {
  OpenIn(HostLanguage::kChinese);
  ASSERT_FALSE(window_->menuBar()->actions().isEmpty());
  ExpectOneItemForEach(window_->menuBar()->actions(), "menu bar");
}

TEST_F(MenuKeys, ChooseOneItemEachInEnglish) {
  if (!HostTranslator().LoadEnglish()) GTEST_SKIP() << "this program was built without its English texts";
  OpenIn(HostLanguage::kEnglish);
  ExpectOneItemForEach(window_->menuBar()->actions(), "menu bar");
}

// A letter that two share only moves the focus from one to the other.
TEST_F(MenuKeys, ReachOnePartOfTheWindowEachInChinese) {
  OpenIn(HostLanguage::kChinese);
  ExpectOneWidgetForEach();
}

TEST_F(MenuKeys, ReachOnePartOfTheWindowEachInEnglish) {
  if (!HostTranslator().LoadEnglish()) GTEST_SKIP() << "this program was built without its English texts";
  OpenIn(HostLanguage::kEnglish);
  ExpectOneWidgetForEach();
}

}  // namespace
}  // namespace stockbook::app
