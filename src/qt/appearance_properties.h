// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPixmap>

#include "platform/grid_appearance.h"
#include "platform/grid_outline.h"
#include "qt/journal_properties.h"

namespace stockbook::qt {

// The control's appearance as properties of the toolkit, with the names and in the order of the interface. All of them
// are saved; each write raises PropertyChanged. Heights are in twips. A picture that was set reads back unchanged; one
// that the control drew itself reads back as an image of its usual size.
class AppearanceProperties : public JournalProperties {
  Q_OBJECT
  Q_PROPERTY(QColor BackColor READ BackColor WRITE SetBackColor)
  Q_PROPERTY(QColor BackColorBkg READ BackColorBkg WRITE SetBackColorBkg)
  Q_PROPERTY(QColor BackColorFixed READ BackColorFixed WRITE SetBackColorFixed)
  Q_PROPERTY(QColor BackColorFrozen READ BackColorFrozen WRITE SetBackColorFrozen)
  Q_PROPERTY(QColor BackColorSel READ BackColorSel WRITE SetBackColorSel)
  Q_PROPERTY(QColor ForeColor READ ForeColor WRITE SetForeColor)
  Q_PROPERTY(QColor ForeColorFixed READ ForeColorFixed WRITE SetForeColorFixed)
  Q_PROPERTY(QColor ForeColorFrozen READ ForeColorFrozen WRITE SetForeColorFrozen)
  Q_PROPERTY(QColor ForeColorSel READ ForeColorSel WRITE SetForeColorSel)
  Q_PROPERTY(QColor GridColor READ GridColor WRITE SetGridColor)
  Q_PROPERTY(QColor GridColorFixed READ GridColorFixed WRITE SetGridColorFixed)
  Q_PROPERTY(GridLineStyle GridLines READ GridLines WRITE SetGridLines)
  Q_PROPERTY(GridLineStyle GridLinesFixed READ GridLinesFixed WRITE SetGridLinesFixed)
  Q_PROPERTY(OutlineBarStyle Outlinebar READ Outlinebar WRITE SetOutlinebar)
  Q_PROPERTY(float RowHeightMin READ RowHeightMin WRITE SetRowHeightMin)
  Q_PROPERTY(float RowHeightMax READ RowHeightMax WRITE SetRowHeightMax)
  Q_PROPERTY(ScrollBarsSetting ScrollBars READ ScrollBars WRITE SetScrollBars)
  Q_PROPERTY(QPixmap BillPicture READ BillPicture WRITE SetBillPicture)
  Q_PROPERTY(QPixmap BillAuditedPicture READ BillAuditedPicture WRITE SetBillAuditedPicture)
  Q_PROPERTY(QPixmap RevPicture READ RevPicture WRITE SetRevPicture)
  Q_PROPERTY(QPixmap RevAuditedPicture READ RevAuditedPicture WRITE SetRevAuditedPicture)
  Q_PROPERTY(QPixmap IssPicture READ IssPicture WRITE SetIssPicture)
  Q_PROPERTY(QPixmap IssAuditedPicture READ IssAuditedPicture WRITE SetIssAuditedPicture)
  Q_PROPERTY(QPixmap ShiftPicture READ ShiftPicture WRITE SetShiftPicture)
  Q_PROPERTY(QPixmap ShiftAuditedPicture READ ShiftAuditedPicture WRITE SetShiftAuditedPicture)
  Q_PROPERTY(QPixmap NodeClosedPicture READ NodeClosedPicture WRITE SetNodeClosedPicture)
  Q_PROPERTY(QPixmap NodeOpenPicture READ NodeOpenPicture WRITE SetNodeOpenPicture)
  Q_PROPERTY(QColor BackColorHot READ BackColorHot WRITE SetBackColorHot)
  Q_PROPERTY(QColor ForeColorHot READ ForeColorHot WRITE SetForeColorHot)
  Q_PROPERTY(QPixmap TitleBackPicture READ TitleBackPicture WRITE SetTitleBackPicture)
  Q_PROPERTY(QPixmap MarkBackPicture READ MarkBackPicture WRITE SetMarkBackPicture)
  Q_PROPERTY(int BorderWidth READ BorderWidth WRITE SetBorderWidth)
  Q_PROPERTY(int ChildSpacing READ ChildSpacing WRITE SetChildSpacing)
  Q_PROPERTY(QColor BorderColor READ BorderColor WRITE SetBorderColor)
  Q_PROPERTY(QColor SheetBorderColor READ SheetBorderColor WRITE SetSheetBorderColor)

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

  void SetBackColor(const QColor& colour);
  QColor BackColor() const;
  void SetBackColorBkg(const QColor& colour);
  QColor BackColorBkg() const;
  void SetBackColorFixed(const QColor& colour);
  QColor BackColorFixed() const;
  void SetBackColorFrozen(const QColor& colour);
  QColor BackColorFrozen() const;
  void SetBackColorSel(const QColor& colour);
  QColor BackColorSel() const;
  void SetForeColor(const QColor& colour);
  QColor ForeColor() const;
  void SetForeColorFixed(const QColor& colour);
  QColor ForeColorFixed() const;
  void SetForeColorFrozen(const QColor& colour);
  QColor ForeColorFrozen() const;
  void SetForeColorSel(const QColor& colour);
  QColor ForeColorSel() const;
  void SetGridColor(const QColor& colour);
  QColor GridColor() const;
  void SetGridColorFixed(const QColor& colour);
  QColor GridColorFixed() const;
  void SetGridLines(GridLineStyle style);
  GridLineStyle GridLines() const;
  void SetGridLinesFixed(GridLineStyle style);
  GridLineStyle GridLinesFixed() const;
  void SetOutlinebar(OutlineBarStyle style);
  OutlineBarStyle Outlinebar() const;
  void SetRowHeightMin(float twips);
  float RowHeightMin() const;
  void SetRowHeightMax(float twips);
  float RowHeightMax() const;
  void SetScrollBars(ScrollBarsSetting setting);
  ScrollBarsSetting ScrollBars() const;
  void SetBillPicture(const QPixmap& picture);
  QPixmap BillPicture() const;
  void SetBillAuditedPicture(const QPixmap& picture);
  QPixmap BillAuditedPicture() const;
  void SetRevPicture(const QPixmap& picture);
  QPixmap RevPicture() const;
  void SetRevAuditedPicture(const QPixmap& picture);
  QPixmap RevAuditedPicture() const;
  void SetIssPicture(const QPixmap& picture);
  QPixmap IssPicture() const;
  void SetIssAuditedPicture(const QPixmap& picture);
  QPixmap IssAuditedPicture() const;
  void SetShiftPicture(const QPixmap& picture);
  QPixmap ShiftPicture() const;
  void SetShiftAuditedPicture(const QPixmap& picture);
  QPixmap ShiftAuditedPicture() const;
  void SetNodeClosedPicture(const QPixmap& picture);
  QPixmap NodeClosedPicture() const;
  void SetNodeOpenPicture(const QPixmap& picture);
  QPixmap NodeOpenPicture() const;
  void SetBackColorHot(const QColor& colour);
  QColor BackColorHot() const;
  void SetForeColorHot(const QColor& colour);
  QColor ForeColorHot() const;
  void SetTitleBackPicture(const QPixmap& picture);
  QPixmap TitleBackPicture() const;
  void SetMarkBackPicture(const QPixmap& picture);
  QPixmap MarkBackPicture() const;
  void SetBorderWidth(int pixels);
  int BorderWidth() const;
  void SetChildSpacing(int pixels);
  int ChildSpacing() const;
  void SetBorderColor(const QColor& colour);
  QColor BorderColor() const;
  void SetSheetBorderColor(const QColor& colour);
  QColor SheetBorderColor() const;
};

}  // namespace stockbook::qt
