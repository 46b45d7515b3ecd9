// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/platform/text_metrics.h"

namespace stockbook::com {

// A line of text ready for the system: its units, and how far each moves the pen. Texts whose characters depend on
// their neighbours (combining marks, joining and right-to-left scripts) have no advances: the system has to place them.
struct LaidText {
  std::wstring units;
  std::vector<int> advances;
  int width = 0;

  bool IsPlaced() const { return advances.size() == units.size(); }
};

// One font at one size, which measures every character only once. Advances are whole pixels, so digits line up in
// columns.
class GdiFont {
 public:
  // `scale` is device pixels per pixel of 1/96 inch.
  GdiFont(const platform::Font& font, double scale);
  ~GdiFont();
  GdiFont(const GdiFont&) = delete;
  GdiFont& operator=(const GdiFont&) = delete;

  const platform::Font& font() const { return font_; }
  double scale() const { return scale_; }
  HFONT handle() const { return handle_; }
  int line_height() const { return line_height_; }

  void Lay(std::string_view text, LaidText& laid);
  int Width(std::string_view line);
  // Drops characters from the end until the rest and an ellipsis are at most so wide.
  void ShortenToFit(LaidText& laid, int most);

 private:
  static constexpr size_t kPageSize = 256;
  using Page = std::array<int16_t, kPageSize>;

  int Advance(wchar_t unit);
  int Measure(std::wstring_view units) const;

  platform::Font font_;
  double scale_;
  HDC dc_;
  HFONT handle_;
  HGDIOBJ old_;
  int line_height_ = 0;
  std::array<std::unique_ptr<Page>, 0x10000 / kPageSize> pages_;  // of advances; -1 for one that is not known yet
  LaidText measured_;
};

// The fonts in use, by size, shared by the frames of a view. Only a few are kept: changing the scale or the fonts drops
// the others.
class GdiFonts {
 public:
  GdiFont& Find(const platform::Font& font, double scale);
  // To be called after the system's fonts have changed.
  void Clear() { fonts_.clear(); }

 private:
  std::vector<std::unique_ptr<GdiFont>> fonts_;
};

}  // namespace stockbook::com
