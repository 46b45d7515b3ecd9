// SPDX-License-Identifier: MIT
#include "stockbook/qt/fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QRawFont>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>

#include "qt/sheet/text.h"

namespace stockbook::qt {
namespace {

constexpr double kPixelsPerPoint = 96.0 / 72.0;
constexpr char32_t kSampleCharacter = U'库';

// Faces made for Simplified Chinese, the most expected ones first.
constexpr std::array kPreferredFamilies{
    "Microsoft YaHei UI", "Microsoft YaHei",    "PingFang SC",         "Noto Sans CJK SC",
    "Noto Sans SC",       "Source Han Sans SC", "WenQuanYi Micro Hei", "SimSun",
};

double PointSize(const QFont& font) {
  if (font.pointSizeF() > 0) return font.pointSizeF();
  return font.pixelSize() > 0 ? font.pixelSize() / kPixelsPerPoint : 9.0;
}

}  // namespace

QFont ToQFont(const platform::Font& font, double scale) {
  QFont result = font.name.empty() ? QGuiApplication::font() : QFont(ToQString(font.name));
  result.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size_pt * kPixelsPerPoint * scale))));
  result.setBold(font.bold);
  result.setItalic(font.italic);
  return result;
}

int LineHeight(const QFont& font) {
  const QFontMetricsF metrics(font);
  return static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()));
}

platform::Font DefaultGridFont() { return GridFontFor(QGuiApplication::font()); }

platform::Font GridFontFor(const QFont& wanted) {
  platform::Font font{FromQString(wanted.family()), PointSize(wanted), wanted.bold(), wanted.italic()};
  if (QRawFont::fromFont(wanted).supportsCharacter(kSampleCharacter)) return font;
  const QStringList installed = QFontDatabase::families(QFontDatabase::SimplifiedChinese);
  const auto* found = std::find_if(kPreferredFamilies.begin(), kPreferredFamilies.end(),
                                   [&](const char* family) { return installed.contains(QLatin1String(family)); });
  if (found != kPreferredFamilies.end()) font.name = *found;
  return font;
}

}  // namespace stockbook::qt
