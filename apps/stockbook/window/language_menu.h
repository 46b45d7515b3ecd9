// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSettings>
#include <optional>

#include "stockbook/window/host_language.h"
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// The menu in which the user chooses the language of the window: that of the desktop, Chinese or English. The choice is
// kept in the settings and holds from the next start on. Each language is called by its own name.
class LanguageMenu : public QObject {
  Q_OBJECT

 public:
  LanguageMenu(QSettings& settings, WindowMenus& menus, QObject* parent = nullptr);

 signals:
  // A message for the user, in both languages.
  void Told(const QString& message);

 private:
  void Choose(std::optional<HostLanguage> language);

  QSettings& settings_;
};

}  // namespace stockbook::app
