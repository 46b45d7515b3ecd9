// SPDX-License-Identifier: MIT
#include "stockbook/window/window_style.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPolygonF>
#include <QStyleOption>
#include <cstdlib>

#include "stockbook/qt/colour.h"

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
    case QStyle::SP_TitleBarCloseButton:
    case QStyle::SP_TitleBarNormalButton:
    case QStyle::SP_DockWidgetCloseButton:
      return true;
    default:
      return false;
  }
}

int Blend(int first, int second, int percent) { return (first * (100 - percent) + second * percent) / 100; }

// `percent` of the ink on the paper, opaque: a transparent one is painted by as many threads as the machine has.
QColor Shade(const QColor& paper, const QColor& ink, int percent) {
  return {Blend(paper.red(), ink.red(), percent), Blend(paper.green(), ink.green(), percent),
          Blend(paper.blue(), ink.blue(), percent)};
}

// Level areas, which are painted in no time, in the place of gradients and transparent lines: a scroll bar is painted
// with every row that a journal is scrolled by.
void DrawScrollBar(const QStyle& style, const QStyleOptionSlider& bar, QPainter& painter, const QWidget* widget) {
  const bool level = bar.orientation == Qt::Horizontal;
  const QColor paper = bar.palette.color(QPalette::Window);
  const QColor ink = bar.palette.color(QPalette::WindowText);
  painter.fillRect(bar.rect, Shade(paper, ink, 6));
  const QRect edge(bar.rect.topLeft(), level ? QSize(bar.rect.width(), 1) : QSize(1, bar.rect.height()));
  painter.fillRect(edge, Shade(paper, ink, 18));
  const bool enabled = bar.state.testFlag(QStyle::State_Enabled) && bar.maximum > bar.minimum;
  const auto strength = [&](QStyle::SubControl part, int usual) {
    if (!enabled) return usual / 2;
    if (!bar.activeSubControls.testFlag(part)) return usual;
    return usual + (bar.state.testFlag(QStyle::State_Sunken) ? 30 : 15);
  };
  if (enabled) {
    const QRect slider = style.subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, widget);
    painter.fillRect(level ? slider.adjusted(0, 4, 0, -3) : slider.adjusted(4, 0, -3, 0),
                     Shade(paper, ink, strength(QStyle::SC_ScrollBarSlider, 35)));
  }
  for (const QStyle::SubControl part : {QStyle::SC_ScrollBarSubLine, QStyle::SC_ScrollBarAddLine}) {
    const QRect place = style.subControlRect(QStyle::CC_ScrollBar, &bar, part, widget);
    if (place.isEmpty()) continue;
    const bool back = part == QStyle::SC_ScrollBarSubLine;
    const QColor colour = Shade(paper, ink, strength(part, 60));
    // A triangle, row by row.
    constexpr int kHalf = 4;
    const QPoint middle = place.center();
    for (int step = 0; step < kHalf; ++step) {
      const int out = back == (level && bar.direction == Qt::RightToLeft) ? kHalf / 2 - 1 - step : step - kHalf / 2;
      const QPoint from = level ? middle + QPoint(out, -step) : middle + QPoint(-step, out);
      painter.fillRect(QRect(from, level ? QSize(1, 2 * step + 1) : QSize(2 * step + 1, 1)), colour);
    }
  }
}

// Two hooks one behind the other, to the right or downwards, in the colour of the buttons' texts.
class MoreSign : public QIconEngine {
 public:
  explicit MoreSign(bool downwards) : downwards_(downwards) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State /*state*/) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    constexpr double kSides = 16.0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(place.center() + QPointF(0.5, 0.5));
    painter->scale(place.width() / kSides, place.height() / kSides);
    if (downwards_) painter->rotate(90);
    painter->setPen(QPen(QApplication::palette().color(group, QPalette::ButtonText), 1.6, Qt::SolidLine, Qt::RoundCap,
                         Qt::RoundJoin));
    for (const double left : {-4.0, 1.0})
      painter->drawPolyline(QPolygonF({{left, -3.5}, {left + 3.5, 0}, {left, 3.5}}));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return picture;
  }

  QIconEngine* clone() const override { return new MoreSign(downwards_); }

 private:
  bool downwards_;
};

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

int WindowStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* result) const {
  // In columns side by side a menu covers the window, itself included, and may be wider than the screen.
  return hint == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(hint, option, widget, result);
}

void WindowStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  const bool line = element == CE_MenuItem && item != nullptr &&
                    item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty();
  const QPalette& palette = option->palette;
  if (!line || baseStyle()->name() != QLatin1String("fusion") || !qt::IsDark(palette.color(QPalette::Window)))
    return QProxyStyle::drawControl(element, option, painter, widget);
  constexpr int kMargin = 5;
  constexpr int kPercent = 35;
  painter->fillRect(QRect(item->rect.left() + kMargin, item->rect.center().y(), item->rect.width() - 2 * kMargin, 1),
                    Shade(palette.color(QPalette::Window), palette.color(QPalette::WindowText), kPercent));
}

void WindowStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                     const QWidget* widget) const {
  const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control != CC_ScrollBar || bar == nullptr || baseStyle()->name() != QLatin1String("fusion"))
    return QProxyStyle::drawComplexControl(control, option, painter, widget);
  DrawScrollBar(*this, *bar, *painter, widget);
}

QIcon WindowStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  if (icon == SP_ToolBarHorizontalExtensionButton || icon == SP_ToolBarVerticalExtensionButton)
    return QIcon(new MoreSign(icon == SP_ToolBarVerticalExtensionButton));
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
