// SPDX-License-Identifier: MIT
#include "com/window/high_contrast.h"

#include <windows.h>

namespace stockbook::com {

using platform::GridColour;

sheet::Palette SystemPalette() {
  sheet::Palette palette;
  const platform::Colour window = GetSysColor(COLOR_WINDOW);
  const platform::Colour text = GetSysColor(COLOR_WINDOWTEXT);
  const platform::Colour face = GetSysColor(COLOR_BTNFACE);
  const platform::Colour face_text = GetSysColor(COLOR_BTNTEXT);
  palette.Of(GridColour::kBackColor) = window;
  palette.Of(GridColour::kBackColorBkg) = window;
  palette.Of(GridColour::kBackColorFixed) = face;
  palette.Of(GridColour::kBackColorFrozen) = window;
  palette.Of(GridColour::kBackColorSel) = GetSysColor(COLOR_HIGHLIGHT);
  palette.Of(GridColour::kForeColor) = text;
  palette.Of(GridColour::kForeColorFixed) = face_text;
  palette.Of(GridColour::kForeColorFrozen) = text;
  palette.Of(GridColour::kForeColorSel) = GetSysColor(COLOR_HIGHLIGHTTEXT);
  palette.Of(GridColour::kGridColor) = text;
  palette.Of(GridColour::kGridColorFixed) = face_text;
  palette.Of(GridColour::kSheetBorder) = text;
  palette.node_back = face;
  // The minus sign says it as well.
  palette.negative_fore.reset();
  palette.light = face;
  palette.accent = GetSysColor(COLOR_HIGHLIGHT);
  return palette;
}

bool IsHighContrast() {
  HIGHCONTRASTW setting{};
  setting.cbSize = sizeof setting;
  const bool known = SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) != 0;
  return known && (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

std::optional<sheet::Appearance> HighContrastLooks(const sheet::Appearance& looks) {
  if (!IsHighContrast()) return std::nullopt;
  sheet::Appearance turned = looks;
  turned.Turn(sheet::Palette(), SystemPalette());
  return turned;
}

}  // namespace stockbook::com
