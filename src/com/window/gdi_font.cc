// SPDX-License-Identifier: MIT
#include "com/window/gdi_font.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "com/window/fonts.h"

namespace stockbook::com {
namespace {

constexpr size_t kMostFonts = 16;
constexpr wchar_t kEllipsis = L'…';
constexpr int16_t kUnknownAdvance = -1;

struct UnitRange {
  wchar_t first;
  wchar_t last;
};

// Characters that look the same whatever their neighbours: Latin, Greek, Cyrillic, punctuation and symbols, Chinese,
// Japanese and Korean. In ascending order.
constexpr UnitRange kStandingAlone[] = {
    {0x0000, 0x02FF}, {0x0370, 0x0482}, {0x048A, 0x052F}, {0x1E00, 0x1FFF}, {0x2010, 0x2027},
    {0x2030, 0x205E}, {0x2070, 0x20CF}, {0x2100, 0x2DFF}, {0x2E80, 0x3029}, {0x3030, 0x3098},
    {0x309B, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF}, {0xFE30, 0xFE4F}, {0xFF00, 0xFFFD},
};

bool StandsAlone(wchar_t unit) {
  if (unit < 0x300) return true;
  const auto* range = std::upper_bound(std::begin(kStandingAlone), std::end(kStandingAlone), unit,
                                       [](wchar_t at, const UnitRange& in) { return at < in.first; });
  return unit <= std::prev(range)->last;
}

// Into the room that `wide` already has. A malformed byte becomes U+FFFD.
void Widen(std::string_view text, std::wstring& wide) {
  wide.resize(text.size());  // no text has more units than bytes
  if (text.empty()) return;
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                                         static_cast<int>(wide.size()));
  wide.resize(static_cast<size_t>(length));
}

bool IsBlankUnit(wchar_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

}  // namespace

GdiFont::GdiFont(const platform::Font& font, double scale)
    : font_(font), scale_(scale), dc_(CreateCompatibleDC(nullptr)) {
  const LOGFONTW wanted = LogFontOf(font, scale);
  handle_ = CreateFontIndirectW(&wanted);
  old_ = SelectObject(dc_, handle_);
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc_, &metrics);
  line_height_ = static_cast<int>(std::max(1L, metrics.tmHeight));
}

GdiFont::~GdiFont() {
  SelectObject(dc_, old_);
  DeleteObject(handle_);
  DeleteDC(dc_);
}

int GdiFont::Measure(std::wstring_view units) const {
  SIZE size{};
  GetTextExtentPoint32W(dc_, units.data(), static_cast<int>(units.size()), &size);
  return static_cast<int>(size.cx);
}

int GdiFont::Advance(wchar_t unit) {
  std::unique_ptr<Page>& page = pages_[unit / kPageSize];
  if (page == nullptr) {
    page = std::make_unique<Page>();
    page->fill(kUnknownAdvance);
  }
  int16_t& advance = (*page)[unit % kPageSize];
  if (advance == kUnknownAdvance)
    advance = static_cast<int16_t>(std::clamp(Measure({&unit, 1}), 0, int{std::numeric_limits<int16_t>::max()}));
  return advance;
}

void GdiFont::Lay(std::string_view text, LaidText& laid) {
  Widen(text, laid.units);
  for (wchar_t& unit : laid.units) {
    if (IsBlankUnit(unit)) unit = L' ';
  }
  laid.advances.clear();
  laid.width = 0;
  if (!std::all_of(laid.units.begin(), laid.units.end(), StandsAlone)) {
    laid.width = Measure(laid.units);
    return;
  }
  for (const wchar_t unit : laid.units) {
    laid.advances.push_back(Advance(unit));
    laid.width += laid.advances.back();
  }
}

int GdiFont::Width(std::string_view line) {
  Lay(line, measured_);
  return measured_.width;
}

void GdiFont::ShortenToFit(LaidText& laid, int most) {
  const bool placed = laid.IsPlaced();
  const int ellipsis = Advance(kEllipsis);
  int width = laid.width;
  while (!laid.units.empty() && width + ellipsis > most) {
    // Never half a pair.
    const bool pair = laid.units.size() > 1 && IS_LOW_SURROGATE(laid.units.back());
    laid.units.resize(laid.units.size() - (pair ? 2 : 1));
    if (placed) {
      width -= laid.advances.back();
      laid.advances.pop_back();
    } else {
      width = Measure(laid.units);
    }
  }
  laid.units += kEllipsis;
  if (placed) laid.advances.push_back(ellipsis);
  laid.width = width + ellipsis;
}

GdiFont& GdiFonts::Find(const platform::Font& font, double scale) {
  for (const auto& known : fonts_) {
    if (known->scale() == scale && known->font() == font) return *known;
  }
  if (fonts_.size() == kMostFonts) fonts_.erase(fonts_.begin());
  return *fonts_.emplace_back(std::make_unique<GdiFont>(font, scale));
}

}  // namespace stockbook::com
