// SPDX-License-Identifier: MIT
#include "stockbook/window/language_menu.h"

#include <QActionGroup>
#include <QMenu>

namespace stockbook::app {

LanguageMenu::LanguageMenu(QSettings& settings, WindowMenus& menus, QObject* parent)
    : QObject(parent), settings_(settings) {
  // Whoever cannot read the rest of the window finds this.
  QMenu* menu = menus.AddMenu(MenuPlace::kViewMemory, tr("语言 / Language(&G)"));
  auto* group = new QActionGroup(menu);
  const std::optional<HostLanguage> chosen = RememberedLanguage(settings);
  const auto add = [&](const QString& name, std::optional<HostLanguage> language) {
    QAction* action = menu->addAction(name);
    action->setCheckable(true);
    action->setChecked(language == chosen);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, language] { Choose(language); });
  };
  add(tr("跟随系统(&S)"), std::nullopt);
  // The names of languages in themselves are not translated.
  add(QString::fromUtf8("中文(&C)"), HostLanguage::kChinese);
  add(QStringLiteral("&English"), HostLanguage::kEnglish);
}

void LanguageMenu::Choose(std::optional<HostLanguage> language) {
  RememberLanguage(settings_, language);
  emit Told(tr("下次打开窗口时使用所选的语言。The language is used from the next start on."));
}

}  // namespace stockbook::app
