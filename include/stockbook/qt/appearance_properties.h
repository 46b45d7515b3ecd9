// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPixmap>
#include <type_traits>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_outline.h"
#include "stockbook/qt/colour.h"
#include "stockbook/qt/journal_properties.h"
#include "stockbook/qt/picture.h"

namespace stockbook::qt {

// The control's appearance as properties of the toolkit, with the names and in the order of the interface. All of them
// are saved; each write raises PropertyChanged. Heights are in twips. A picture that was set reads back unchanged; one
// that the control drew itself reads back as an image of its usual size.
class STOCKBOOK_API AppearanceProperties : public JournalProperties {
  Q_OBJECT

// A property of the toolkit over the control's property of that name.
#define APPEARANCE(Type, Name)                                                        \
  Q_PROPERTY(Type Name READ Name WRITE Set##Name)                                     \
  void Set##Name(const Type& value) {                                                 \
    Attempt([&] { control().Set##Name(ToControl(value, control().Name(), #Name)); }); \
  }                                                                                   \
  Type Name() const { return FromControl<Type>(control().Name()); }

 public:
  enum GridLineStyle : int32_t {
    GridNone = static_cast<int32_t>(platform::GridLineStyle::kNone),
    GridFlat = static_cast<int32_t>(platform::GridLineStyle::kFlat),
    GridInset = static_cast<int32_t>(platform::GridLineStyle::kInset),
    GridRaised = static_cast<int32_t>(platform::GridLineStyle::kRaised),
    GridFlatHorz = static_cast<int32_t>(platform::GridLineStyle::kFlatHorz),
    GridInsetHorz = static_cast<int32_t>(platform::GridLineStyle::kInsetHorz),
    GridRaisedHorz = static_cast<int32_t>(platform::GridLineStyle::kRaisedHorz),
    GridFlatVert = static_cast<int32_t>(platform::GridLineStyle::kFlatVert),
  };
  Q_ENUM(GridLineStyle)
  enum OutlineBarStyle : int32_t {
    OutlineNone = static_cast<int32_t>(platform::OutlineBarStyle::kNone),
    OutlineComplete = static_cast<int32_t>(platform::OutlineBarStyle::kComplete),
    OutlineSimple = static_cast<int32_t>(platform::OutlineBarStyle::kSimple),
    OutlineSymbols = static_cast<int32_t>(platform::OutlineBarStyle::kSymbols),
    OutlineCompleteLeaf = static_cast<int32_t>(platform::OutlineBarStyle::kCompleteLeaf),
    OutlineSimpleLeaf = static_cast<int32_t>(platform::OutlineBarStyle::kSimpleLeaf),
    OutlineSymbolsLeaf = static_cast<int32_t>(platform::OutlineBarStyle::kSymbolsLeaf),
  };
  Q_ENUM(OutlineBarStyle)
  enum ScrollBarsSetting : int32_t {
    ScrollNone = static_cast<int32_t>(platform::ScrollBarsSetting::kNone),
    ScrollHorizontal = static_cast<int32_t>(platform::ScrollBarsSetting::kHorizontal),
    ScrollVertical = static_cast<int32_t>(platform::ScrollBarsSetting::kVertical),
    ScrollBoth = static_cast<int32_t>(platform::ScrollBarsSetting::kBoth),
  };
  Q_ENUM(ScrollBarsSetting)

  using JournalProperties::JournalProperties;

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

 private:
  static platform::PictureRef PictureOf(const QPixmap& pixmap, const platform::PictureRef& now);
  // Throws platform::Error beyond 16 bits.
  static int16_t ToInteger(int number, const char* property);

  // A value of the control's as the toolkit has it, and back; `now` is what the control has.
  template <typename Type, typename Value>
  static Type FromControl(const Value& value) {
    if constexpr (std::is_same_v<Type, QColor>)
      return ToQColor(value);
    else if constexpr (std::is_same_v<Type, QPixmap>)
      return PixmapOf(value);
    else
      return static_cast<Type>(value);
  }
  template <typename Type, typename Value>
  static Value ToControl(const Type& value, const Value& now, const char* property) {
    if constexpr (std::is_same_v<Type, QColor>)
      return FromQColor(value);
    else if constexpr (std::is_same_v<Type, QPixmap>)
      return PictureOf(value, now);
    else if constexpr (std::is_same_v<Value, int16_t>)
      return ToInteger(value, property);
    else
      return static_cast<Value>(value);
  }
};

#undef APPEARANCE

}  // namespace stockbook::qt
