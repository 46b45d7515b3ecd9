// SPDX-License-Identifier: MIT
#include "com/window/fonts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "com/automation/text.h"

namespace stockbook::com {
namespace {

constexpr double kDotsPerPoint = 96.0 / 72.0;
constexpr double kPointsPerInch = 72.0;
constexpr wchar_t kSampleCharacter = L'库';

// Faces made for Simplified Chinese, the most expected ones first.
constexpr std::array kChineseFaces{
    L"Microsoft YaHei UI", L"Microsoft YaHei",    L"SimSun",       L"NSimSun",
    L"Noto Sans CJK SC",   L"Source Han Sans SC", L"Noto Sans SC",
};

void SetFace(LOGFONTW& font, const std::wstring& face) {
  const size_t length = std::min<size_t>(face.size(), LF_FACESIZE - 1);
  std::copy_n(face.begin(), length, font.lfFaceName);
  font.lfFaceName[length] = L'\0';
}

LOGFONTW MessageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != 0) return metrics.lfMessageFont;
  LOGFONTW font{};
  GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
  return font;
}

// The face that the system really takes for the font, and whether that one has the sample character.
class TriedFont {
 public:
  explicit TriedFont(const LOGFONTW& wanted)
      : dc_(CreateCompatibleDC(nullptr)), font_(CreateFontIndirectW(&wanted)), old_(SelectObject(dc_, font_)) {}
  ~TriedFont() {
    SelectObject(dc_, old_);
    DeleteObject(font_);
    DeleteDC(dc_);
  }
  TriedFont(const TriedFont&) = delete;
  TriedFont& operator=(const TriedFont&) = delete;

  bool HasChinese() const {
    constexpr WORD kMissing = 0xFFFF;
    WORD glyph = kMissing;
    return GetGlyphIndicesW(dc_, &kSampleCharacter, 1, &glyph, GGI_MARK_NONEXISTING_GLYPHS) == 1 && glyph != kMissing;
  }

 private:
  HDC dc_;
  HFONT font_;
  HGDIOBJ old_;
};

int CALLBACK TakeFace(const LOGFONTW* font, const TEXTMETRICW* /*metrics*/, DWORD /*type*/, LPARAM found) {
  // A face with "@" lies on its side.
  if (font->lfFaceName[0] == L'@') return 1;
  *reinterpret_cast<std::wstring*>(found) = font->lfFaceName;
  return 0;
}

// The name of an installed face of that name and character set; empty if there is none. An empty name means any.
std::wstring InstalledFace(const wchar_t* face, BYTE charset) {
  LOGFONTW wanted{};
  wanted.lfCharSet = charset;
  SetFace(wanted, face);
  std::wstring found;
  const HDC dc = CreateCompatibleDC(nullptr);
  EnumFontFamiliesExW(dc, &wanted, TakeFace, reinterpret_cast<LPARAM>(&found), 0);
  DeleteDC(dc);
  return found;
}

std::wstring ChineseFace() {
  for (const wchar_t* face : kChineseFaces) {
    if (std::wstring found = InstalledFace(face, DEFAULT_CHARSET); !found.empty()) return face;
  }
  return InstalledFace(L"", GB2312_CHARSET);
}

}  // namespace

LOGFONTW LogFontOf(const platform::Font& font, double scale) {
  LOGFONTW result{};
  if (font.name.empty()) {
    result = MessageFont();
  } else {
    SetFace(result, ToWide(font.name));
    result.lfCharSet = DEFAULT_CHARSET;
  }
  const double size_px = font.size_pt * kDotsPerPoint * scale;
  constexpr double kMostPixels = 16000;
  result.lfHeight = -std::max(1L, std::lround(std::isfinite(size_px) ? std::min(size_px, kMostPixels) : 12));
  result.lfWidth = 0;
  result.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  result.lfItalic = font.italic ? 1 : 0;
  result.lfQuality = CLEARTYPE_QUALITY;
  return result;
}

platform::Font SystemFont() {
  const LOGFONTW font = MessageFont();
  const HDC screen = GetDC(nullptr);
  const double dots = std::max(1, GetDeviceCaps(screen, LOGPIXELSY));
  ReleaseDC(nullptr, screen);
  const double size_pt = std::abs(static_cast<double>(font.lfHeight)) * kPointsPerInch / dots;
  return {FromWide(font.lfFaceName), size_pt > 0 ? size_pt : 9.0, font.lfWeight >= FW_BOLD, font.lfItalic != 0};
}

platform::Font GridFontFor(const platform::Font& wanted) {
  if (TriedFont(LogFontOf(wanted, 1)).HasChinese()) return wanted;
  platform::Font font = wanted;
  if (const std::wstring face = ChineseFace(); !face.empty()) font.name = FromWide(face);
  return font;
}

platform::Font DefaultGridFont() { return GridFontFor(SystemFont()); }

}  // namespace stockbook::com
