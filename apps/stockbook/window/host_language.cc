// SPDX-License-Identifier: MIT
#include "stockbook/window/host_language.h"

#include <QLocale>
#include <algorithm>

#include "qt/sheet/text.h"

namespace stockbook::app {
namespace {

QString LanguageKey() { return QStringLiteral("language"); }

}  // namespace

std::optional<HostLanguage> LanguageNamed(std::string_view name) {
  const auto found = std::find(kLanguageNames.begin(), kLanguageNames.end(), name);
  if (found == kLanguageNames.end()) return std::nullopt;
  return static_cast<HostLanguage>(found - kLanguageNames.begin());
}

HostLanguage LanguageOfDesktop() {
  const QLocale::Language language = QLocale::system().language();
  return language == QLocale::Chinese || language == QLocale::C ? HostLanguage::kChinese : HostLanguage::kEnglish;
}

std::optional<HostLanguage> RememberedLanguage(const QSettings& settings) {
  return LanguageNamed(qt::FromQString(settings.value(LanguageKey()).toString()));
}

void RememberLanguage(QSettings& settings, std::optional<HostLanguage> language) {
  if (language) {
    settings.setValue(LanguageKey(), qt::ToQString(kLanguageNames[static_cast<size_t>(*language)]));
  } else {
    settings.remove(LanguageKey());
  }
}

}  // namespace stockbook::app
