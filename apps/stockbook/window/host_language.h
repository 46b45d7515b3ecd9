// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <array>
#include <optional>
#include <string_view>

namespace stockbook::app {

// The languages of the host's own texts. The control's captions and messages are Chinese in each.
enum class HostLanguage { kChinese, kEnglish };

inline constexpr std::array<std::string_view, 2> kLanguageNames = {"zh", "en"};

// By its name; nothing for another one.
std::optional<HostLanguage> LanguageNamed(std::string_view name);

// What the desktop speaks: English, unless that is Chinese or says nothing.
HostLanguage LanguageOfDesktop();

// What the user has chosen; nothing means that the window follows the desktop.
std::optional<HostLanguage> RememberedLanguage(const QSettings& settings);
void RememberLanguage(QSettings& settings, std::optional<HostLanguage> language);

}  // namespace stockbook::app
