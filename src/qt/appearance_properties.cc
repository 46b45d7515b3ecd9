// SPDX-License-Identifier: MIT
#include "stockbook/qt/appearance_properties.h"

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "qt/widget_parts.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_outline.h"
#include "stockbook/qt/colour.h"
#include "stockbook/qt/picture.h"

namespace stockbook::qt {
namespace {

template <typename Value>
constexpr bool Is(int32_t here, Value of_control) {
  return here == static_cast<int32_t>(of_control);
}
static_assert(Is(AppearanceProperties::GridNone, platform::GridLineStyle::kNone));
static_assert(Is(AppearanceProperties::GridFlat, platform::GridLineStyle::kFlat));
static_assert(Is(AppearanceProperties::GridInset, platform::GridLineStyle::kInset));
static_assert(Is(AppearanceProperties::GridRaised, platform::GridLineStyle::kRaised));
static_assert(Is(AppearanceProperties::GridFlatHorz, platform::GridLineStyle::kFlatHorz));
static_assert(Is(AppearanceProperties::GridInsetHorz, platform::GridLineStyle::kInsetHorz));
static_assert(Is(AppearanceProperties::GridRaisedHorz, platform::GridLineStyle::kRaisedHorz));
static_assert(Is(AppearanceProperties::GridFlatVert, platform::GridLineStyle::kFlatVert));
static_assert(Is(AppearanceProperties::OutlineNone, platform::OutlineBarStyle::kNone));
static_assert(Is(AppearanceProperties::OutlineComplete, platform::OutlineBarStyle::kComplete));
static_assert(Is(AppearanceProperties::OutlineSimple, platform::OutlineBarStyle::kSimple));
static_assert(Is(AppearanceProperties::OutlineSymbols, platform::OutlineBarStyle::kSymbols));
static_assert(Is(AppearanceProperties::OutlineCompleteLeaf, platform::OutlineBarStyle::kCompleteLeaf));
static_assert(Is(AppearanceProperties::OutlineSimpleLeaf, platform::OutlineBarStyle::kSimpleLeaf));
static_assert(Is(AppearanceProperties::OutlineSymbolsLeaf, platform::OutlineBarStyle::kSymbolsLeaf));
static_assert(Is(AppearanceProperties::ScrollNone, platform::ScrollBarsSetting::kNone));
static_assert(Is(AppearanceProperties::ScrollHorizontal, platform::ScrollBarsSetting::kHorizontal));
static_assert(Is(AppearanceProperties::ScrollVertical, platform::ScrollBarsSetting::kVertical));
static_assert(Is(AppearanceProperties::ScrollBoth, platform::ScrollBarsSetting::kBoth));

// Throws platform::Error beyond 16 bits.
int16_t ToInteger(int number, const char* property) {
  if (number < std::numeric_limits<int16_t>::min() || number > std::numeric_limits<int16_t>::max()) {
    const std::string name = property;
    throw platform::Error("set " + name,
                          "溢出：" + name + " 必须在 -32768 与 32767 之间，收到的是 " + std::to_string(number) + "。");
  }
  return static_cast<int16_t>(number);
}

// A picture that was read and is written back keeps its identity, so that it stays sharp at every scale.
platform::PictureRef PictureOf(const QPixmap& pixmap, const platform::PictureRef& now) {
  if (now != nullptr && PixmapOf(now).cacheKey() == pixmap.cacheKey()) return now;
  return MakePicture(pixmap);
}

// A value of the control's as the toolkit has it, and back; `now` is what the control has.
template <typename Type, typename Value>
Type FromControl(const Value& value) {
  if constexpr (std::is_same_v<Type, QColor>)
    return ToQColor(value);
  else if constexpr (std::is_same_v<Type, QPixmap>)
    return PixmapOf(value);
  else
    return static_cast<Type>(value);
}

template <typename Type, typename Value>
Value ToControl(const Type& value, const Value& now, [[maybe_unused]] const char* property) {
  if constexpr (std::is_same_v<Type, QColor>)
    return FromQColor(value);
  else if constexpr (std::is_same_v<Type, QPixmap>)
    return PictureOf(value, now);
  else if constexpr (std::is_same_v<Value, int16_t>)
    return ToInteger(value, property);
  else
    return static_cast<Value>(value);
}

}  // namespace

#define APPEARANCE(Type, Name)                                                                \
  void AppearanceProperties::Set##Name(const Type& value) {                                   \
    parts_->Attempt([&] { control().Set##Name(ToControl(value, control().Name(), #Name)); }); \
  }                                                                                           \
  auto AppearanceProperties::Name() const->Type { return FromControl<Type>(control().Name()); }

APPEARANCE(QColor, BackColor)
APPEARANCE(QColor, BackColorBkg)
APPEARANCE(QColor, BackColorFixed)
APPEARANCE(QColor, BackColorFrozen)
APPEARANCE(QColor, BackColorSel)
APPEARANCE(QColor, ForeColor)
APPEARANCE(QColor, ForeColorFixed)
APPEARANCE(QColor, ForeColorFrozen)
APPEARANCE(QColor, ForeColorSel)
APPEARANCE(QColor, GridColor)
APPEARANCE(QColor, GridColorFixed)
APPEARANCE(GridLineStyle, GridLines)
APPEARANCE(GridLineStyle, GridLinesFixed)
APPEARANCE(OutlineBarStyle, Outlinebar)
APPEARANCE(float, RowHeightMin)
APPEARANCE(float, RowHeightMax)
APPEARANCE(ScrollBarsSetting, ScrollBars)
APPEARANCE(QPixmap, BillPicture)
APPEARANCE(QPixmap, BillAuditedPicture)
APPEARANCE(QPixmap, RevPicture)
APPEARANCE(QPixmap, RevAuditedPicture)
APPEARANCE(QPixmap, IssPicture)
APPEARANCE(QPixmap, IssAuditedPicture)
APPEARANCE(QPixmap, ShiftPicture)
APPEARANCE(QPixmap, ShiftAuditedPicture)
APPEARANCE(QPixmap, NodeClosedPicture)
APPEARANCE(QPixmap, NodeOpenPicture)
APPEARANCE(QColor, BackColorHot)
APPEARANCE(QColor, ForeColorHot)
APPEARANCE(QPixmap, TitleBackPicture)
APPEARANCE(QPixmap, MarkBackPicture)
APPEARANCE(int, BorderWidth)
APPEARANCE(int, ChildSpacing)
APPEARANCE(QColor, BorderColor)
APPEARANCE(QColor, SheetBorderColor)

#undef APPEARANCE

}  // namespace stockbook::qt
