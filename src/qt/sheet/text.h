// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace stockbook::qt {

// Texts are UTF-8 inside and UTF-16 in the toolkit; they are converted here and nowhere else. Malformed bytes become
// U+FFFD.
inline QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQString(const QString& text) { return text.toStdString(); }

}  // namespace stockbook::qt
