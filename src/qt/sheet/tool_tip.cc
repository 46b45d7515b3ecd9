// SPDX-License-Identifier: MIT
#include "qt/sheet/tool_tip.h"

#include <QFontMetrics>
#include <QStringList>
#include <QToolTip>
#include <algorithm>

namespace stockbook::qt {
namespace {

constexpr int kWidestLine = 560;

bool FitsOnItsLines(const QString& text) {
  const QFontMetrics metrics(QToolTip::font());
  const QStringList lines = text.split(QLatin1Char('\n'));
  return std::all_of(lines.begin(), lines.end(),
                     [&](const QString& line) { return metrics.horizontalAdvance(line) <= kWidestLine; });
}

}  // namespace

QString PlainToolTip(const QString& text) {
  if (text.isEmpty()) return {};
  return QStringLiteral("<p style=\"white-space:%1\">%2</p>")
      .arg(FitsOnItsLines(text) ? QStringLiteral("pre") : QStringLiteral("pre-wrap"), text.toHtmlEscaped());
}

}  // namespace stockbook::qt
