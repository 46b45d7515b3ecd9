// SPDX-License-Identifier: MIT
#include "stockbook/window/window_colours.h"

#include "stockbook/control/stockbook.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/qt/colour.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

using sheet::Palette;

// Colours equal to those of the old scheme become those of the new one.
template <typename Value>
bool Turn(Value& value, const Value& from, const Value& to) {
  if (value != from || from == to) return false;
  value = to;
  return true;
}

}  // namespace

WindowColours::WindowColours(qt::StockbookWidget& stockbook) : stockbook_(stockbook), light_(Now()) {}

WindowColours::Scheme WindowColours::DarkScheme() {
  const Palette dark = Palette::Dark();
  return {dark, 0x00604A36, dark.Of(platform::GridColour::kForeColorSel), dark.Of(platform::GridColour::kSheetBorder),
          dark.Of(platform::GridColour::kBackColorFrozen)};
}

WindowColours::Scheme WindowColours::Now() const {
  const control::Stockbook& control = stockbook_.control();
  return {stockbook_.sheet().appearance().palette(), control.BackColorHot(), control.ForeColorHot(),
          control.BorderColor(), stockbook_.HeaderColor()};
}

void WindowColours::Follow(const QPalette& palette) {
  const bool dark = qt::IsDark(palette.color(QPalette::Window));
  if (dark == dark_) return;
  dark_ = dark;
  const Scheme dark_scheme = DarkScheme();
  Change(dark ? light_ : dark_scheme, dark ? dark_scheme : light_);
}

void WindowColours::Change(const Scheme& from, const Scheme& to) {
  const auto aside = stockbook_.control().SetHotRowAside();
  sheet::Appearance looks = stockbook_.sheet().appearance();
  looks.Turn(from.palette, to.palette);
  stockbook_.sheet().SetAppearance(looks);
  control::Stockbook& control = stockbook_.control();
  Scheme now = Now();
  if (Turn(now.back_hot, from.back_hot, to.back_hot)) control.SetBackColorHot(now.back_hot);
  if (Turn(now.fore_hot, from.fore_hot, to.fore_hot)) control.SetForeColorHot(now.fore_hot);
  if (Turn(now.border, from.border, to.border)) control.SetBorderColor(now.border);
  if (Turn(now.header, from.header, to.header)) stockbook_.SetHeaderColor(now.header);
}

QPalette DarkPalette() {
  QPalette palette(QColor(0x46, 0x4A, 0x4F), QColor(0x34, 0x37, 0x3B));
  const QColor text(0xE6, 0xE8, 0xEA);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, QColor(0x84, 0x88, 0x8C));
  }
  palette.setColor(QPalette::Base, QColor(0x1E, 0x1F, 0x22));
  palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2B));
  palette.setColor(QPalette::ToolTipBase, QColor(0x32, 0x35, 0x39));
  palette.setColor(QPalette::PlaceholderText, QColor(0x90, 0x94, 0x98));
  palette.setColor(QPalette::Highlight, QColor(0x3A, 0x6E, 0xA5));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x7A, 0xB4, 0xF0));
  return palette;
}

}  // namespace stockbook::app
