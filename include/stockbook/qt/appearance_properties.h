// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPixmap>
#include <cstdint>

#include "stockbook/base/api.h"
#include "stockbook/qt/journal_properties.h"

namespace stockbook::qt {

// The control's appearance as properties of the toolkit, with the names and in the order of the interface. All of them
// are saved; each write raises PropertyChanged. Heights are in twips. A picture that was set reads back unchanged; one
// that the control drew itself reads back as an image of its usual size.
class STOCKBOOK_API AppearanceProperties : public JournalProperties {
  Q_OBJECT

// A property of the toolkit over the control's property of that name.
#define STOCKBOOK_APPEARANCE(Type, Name)                                   \
  Q_PROPERTY(Type Name READ Name WRITE Set##Name NOTIFY AppearanceChanged) \
 public:                                                                   \
  void Set##Name(const Type& value);                                       \
  Type Name() const;

// A height is of single precision for code, and of double for Qt Designer and QUiLoader, which know no other.
#define STOCKBOOK_HEIGHT(Name)                                                 \
  Q_PROPERTY(double Name READ Name WRITE Write##Name NOTIFY AppearanceChanged) \
 public:                                                                       \
  void Set##Name(const float& value);                                          \
  float Name() const;                                                          \
                                                                               \
 private:                                                                      \
  void Write##Name(double value) { Set##Name(static_cast<float>(value)); }     \
                                                                               \
 public:
 public:
  // platform::GridLineStyle for the toolkit.
  enum GridLineStyle : int32_t {
    GridNone = 0,
    GridFlat = 1,
    GridInset = 2,
    GridRaised = 3,
    GridFlatHorz = 4,
    GridInsetHorz = 5,
    GridRaisedHorz = 6,
    GridFlatVert = 7,
  };
  Q_ENUM(GridLineStyle)
  // platform::OutlineBarStyle for the toolkit.
  enum OutlineBarStyle : int32_t {
    OutlineNone = 0,
    OutlineComplete = 1,
    OutlineSimple = 2,
    OutlineSymbols = 3,
    OutlineCompleteLeaf = 4,
    OutlineSimpleLeaf = 5,
    OutlineSymbolsLeaf = 6,
  };
  Q_ENUM(OutlineBarStyle)
  // platform::ScrollBarsSetting for the toolkit.
  enum ScrollBarsSetting : int32_t {
    ScrollNone = 0,
    ScrollHorizontal = 1,
    ScrollVertical = 2,
    ScrollBoth = 3,
  };
  Q_ENUM(ScrollBarsSetting)

  // These are the colours of a light ledger unless set (sheet::Palette). An invalid colour is black.
  STOCKBOOK_APPEARANCE(QColor, BackColor)
  STOCKBOOK_APPEARANCE(QColor, BackColorBkg)
  STOCKBOOK_APPEARANCE(QColor, BackColorFixed)
  STOCKBOOK_APPEARANCE(QColor, BackColorFrozen)
  STOCKBOOK_APPEARANCE(QColor, BackColorSel)
  STOCKBOOK_APPEARANCE(QColor, ForeColor)
  STOCKBOOK_APPEARANCE(QColor, ForeColorFixed)
  STOCKBOOK_APPEARANCE(QColor, ForeColorFrozen)
  STOCKBOOK_APPEARANCE(QColor, ForeColorSel)
  STOCKBOOK_APPEARANCE(QColor, GridColor)
  STOCKBOOK_APPEARANCE(QColor, GridColorFixed)
  // Both are GridFlat unless set.
  STOCKBOOK_APPEARANCE(GridLineStyle, GridLines)
  STOCKBOOK_APPEARANCE(GridLineStyle, GridLinesFixed)
  // OutlineComplete unless set. Its key in the settings is OutlineBar.
  STOCKBOOK_APPEARANCE(OutlineBarStyle, Outlinebar)
  // Both are 0 unless set; below 0 counts as 0, above 144000 as 144000. Where they contradict each other, the least
  // height wins. The settings keep whole twips.
  STOCKBOOK_HEIGHT(RowHeightMin)
  STOCKBOOK_HEIGHT(RowHeightMax)
  // ScrollBoth unless set. A bar shows only while not all cells fit.
  STOCKBOOK_APPEARANCE(ScrollBarsSetting, ScrollBars)
  // These stand in the column BillKind from the next load on; unless set they are icons of 16 pixels. A null pixmap is
  // none.
  STOCKBOOK_APPEARANCE(QPixmap, BillPicture)
  STOCKBOOK_APPEARANCE(QPixmap, BillAuditedPicture)
  STOCKBOOK_APPEARANCE(QPixmap, RevPicture)
  STOCKBOOK_APPEARANCE(QPixmap, RevAuditedPicture)
  STOCKBOOK_APPEARANCE(QPixmap, IssPicture)
  STOCKBOOK_APPEARANCE(QPixmap, IssAuditedPicture)
  STOCKBOOK_APPEARANCE(QPixmap, ShiftPicture)
  STOCKBOOK_APPEARANCE(QPixmap, ShiftAuditedPicture)
  // Both are null unless set; the grid draws signs of its own then.
  STOCKBOOK_APPEARANCE(QPixmap, NodeClosedPicture)
  STOCKBOOK_APPEARANCE(QPixmap, NodeOpenPicture)
  // #C7D2E2 unless set.
  STOCKBOOK_APPEARANCE(QColor, BackColorHot)
  // The ForeColor that the control began with, unless set.
  STOCKBOOK_APPEARANCE(QColor, ForeColorHot)
  // Both are null unless set, which is none. Every cell shows the picture stretched, from the next load or
  // RestoreProperties on.
  STOCKBOOK_APPEARANCE(QPixmap, TitleBackPicture)
  STOCKBOOK_APPEARANCE(QPixmap, MarkBackPicture)
  // 0 unless set, without the line until it is set or restored; below 0 counts as 0. Beyond 16 bits the old value stays
  // and Notify tells of it.
  STOCKBOOK_APPEARANCE(int, BorderWidth)
  // 0 unless set; below 0 counts as 0. Beyond 16 bits the old value stays and Notify tells of it.
  STOCKBOOK_APPEARANCE(int, ChildSpacing)
  // White unless set.
  STOCKBOOK_APPEARANCE(QColor, BorderColor)
  // #BEC4CC unless set.
  STOCKBOOK_APPEARANCE(QColor, SheetBorderColor)

 Q_SIGNALS:
  // One of these properties has another value than before: a setter was called, or they were restored.
  void AppearanceChanged();

 protected:
  using JournalProperties::JournalProperties;
};

#undef STOCKBOOK_APPEARANCE
#undef STOCKBOOK_HEIGHT

}  // namespace stockbook::qt
