// SPDX-License-Identifier: MIT
#include "stockbook/window/window_style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>
#include <cstdlib>

#include "qt/colour.h"

namespace stockbook::app {

namespace {

// Whether one can read the ink, which may be half transparent, on the paper.
bool CanBeRead(const QColor& ink, const QColor& paper) {
  constexpr int kLeastContrast = 50;  // of 255
  constexpr int kOpaque = 255;
  return std::abs(qGray(ink.rgb()) - qGray(paper.rgb())) * ink.alpha() >= kLeastContrast * kOpaque;
}

constexpr int kSignSide = 16;

// Signs that the usual styles draw in black or grey, whatever the colours are.
bool IsPlainSign(QStyle::StandardPixmap icon) {
  switch (icon) {
    case QStyle::SP_ToolBarHorizontalExtensionButton:
    case QStyle::SP_ToolBarVerticalExtensionButton:
    case QStyle::SP_TitleBarCloseButton:
    case QStyle::SP_TitleBarNormalButton:
    case QStyle::SP_DockWidgetCloseButton:
      return true;
    default:
      return false;
  }
}

}  // namespace

void WindowStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  const QColor hint = palette.color(QPalette::Active, QPalette::PlaceholderText);
  if (CanBeRead(hint, palette.color(QPalette::Active, QPalette::Base))) return;
  constexpr int kWeak = 150;  // of 255
  QColor ink = palette.color(QPalette::Active, QPalette::Text);
  ink.setAlpha(kWeak);
  palette.setColor(QPalette::PlaceholderText, ink);
}

void WindowStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
  const bool menu = element == PE_PanelMenu || element == PE_FrameMenu;
  if (!(box || menu) || !qt::IsDark(option->palette.color(QPalette::Window))) return;
  QColor ink = option->palette.color(QPalette::WindowText);
  constexpr int kPale = 150;  // of 255: weaker than a text
  ink.setAlpha(box && option->state.testFlag(State_Enabled) ? kPale : kPale / 2);
  painter->save();
  painter->setPen(ink);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
  painter->restore();
}

QIcon WindowStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  const QIcon usual = QProxyStyle::standardIcon(icon, option, widget);
  const QPalette palette = widget == nullptr ? QApplication::palette() : widget->palette();
  if (!IsPlainSign(icon) || usual.isNull() || !qt::IsDark(palette.color(QPalette::Window))) return usual;
  QList<QSize> sizes = usual.availableSizes();
  if (sizes.isEmpty()) sizes.append({kSignSide, kSignSide});
  QIcon signs;
  for (const QSize& size : sizes) {
    // As many pixels as it says, however many of them make one of the display.
    QPixmap sign = usual.pixmap(size, 1);
    QPainter painter(&sign);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(sign.rect(), palette.color(QPalette::ButtonText));
    painter.end();
    signs.addPixmap(sign);
  }
  return signs;
}

}  // namespace stockbook::app
