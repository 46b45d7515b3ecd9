// SPDX-License-Identifier: MIT
#include "qt/appearance_properties.h"

#include <limits>
#include <string>

#include "platform/error.h"
#include "qt/colour.h"
#include "qt/picture.h"

namespace stockbook::qt {
namespace {

int16_t ToInteger(int number, const std::string& property) {
  if (number < std::numeric_limits<int16_t>::min() || number > std::numeric_limits<int16_t>::max()) {
    throw platform::Error("set " + property, "溢出：" + property + " 必须在 -32768 与 32767 之间，收到的是 " +
                                                 std::to_string(number) + "。");
  }
  return static_cast<int16_t>(number);
}

// A picture that was read and is written back keeps its identity, so that it stays sharp at every scale.
platform::PictureRef PictureOf(const QPixmap& pixmap, const platform::PictureRef& now) {
  if (now != nullptr && PixmapOf(now).cacheKey() == pixmap.cacheKey()) return now;
  return MakePicture(pixmap);
}

}  // namespace

void AppearanceProperties::SetBackColor(const QColor& colour) {
  Attempt([&] { control().SetBackColor(FromQColor(colour)); });
}
QColor AppearanceProperties::BackColor() const { return ToQColor(control().BackColor()); }
void AppearanceProperties::SetBackColorBkg(const QColor& colour) {
  Attempt([&] { control().SetBackColorBkg(FromQColor(colour)); });
}
QColor AppearanceProperties::BackColorBkg() const { return ToQColor(control().BackColorBkg()); }
void AppearanceProperties::SetBackColorFixed(const QColor& colour) {
  Attempt([&] { control().SetBackColorFixed(FromQColor(colour)); });
}
QColor AppearanceProperties::BackColorFixed() const { return ToQColor(control().BackColorFixed()); }
void AppearanceProperties::SetBackColorFrozen(const QColor& colour) {
  Attempt([&] { control().SetBackColorFrozen(FromQColor(colour)); });
}
QColor AppearanceProperties::BackColorFrozen() const { return ToQColor(control().BackColorFrozen()); }
void AppearanceProperties::SetBackColorSel(const QColor& colour) {
  Attempt([&] { control().SetBackColorSel(FromQColor(colour)); });
}
QColor AppearanceProperties::BackColorSel() const { return ToQColor(control().BackColorSel()); }
void AppearanceProperties::SetForeColor(const QColor& colour) {
  Attempt([&] { control().SetForeColor(FromQColor(colour)); });
}
QColor AppearanceProperties::ForeColor() const { return ToQColor(control().ForeColor()); }
void AppearanceProperties::SetForeColorFixed(const QColor& colour) {
  Attempt([&] { control().SetForeColorFixed(FromQColor(colour)); });
}
QColor AppearanceProperties::ForeColorFixed() const { return ToQColor(control().ForeColorFixed()); }
void AppearanceProperties::SetForeColorFrozen(const QColor& colour) {
  Attempt([&] { control().SetForeColorFrozen(FromQColor(colour)); });
}
QColor AppearanceProperties::ForeColorFrozen() const { return ToQColor(control().ForeColorFrozen()); }
void AppearanceProperties::SetForeColorSel(const QColor& colour) {
  Attempt([&] { control().SetForeColorSel(FromQColor(colour)); });
}
QColor AppearanceProperties::ForeColorSel() const { return ToQColor(control().ForeColorSel()); }
void AppearanceProperties::SetGridColor(const QColor& colour) {
  Attempt([&] { control().SetGridColor(FromQColor(colour)); });
}
QColor AppearanceProperties::GridColor() const { return ToQColor(control().GridColor()); }
void AppearanceProperties::SetGridColorFixed(const QColor& colour) {
  Attempt([&] { control().SetGridColorFixed(FromQColor(colour)); });
}
QColor AppearanceProperties::GridColorFixed() const { return ToQColor(control().GridColorFixed()); }
void AppearanceProperties::SetGridLines(GridLineStyle style) {
  Attempt([&] { control().SetGridLines(static_cast<platform::GridLineStyle>(style)); });
}
AppearanceProperties::GridLineStyle AppearanceProperties::GridLines() const {
  return static_cast<GridLineStyle>(control().GridLines());
}
void AppearanceProperties::SetGridLinesFixed(GridLineStyle style) {
  Attempt([&] { control().SetGridLinesFixed(static_cast<platform::GridLineStyle>(style)); });
}
AppearanceProperties::GridLineStyle AppearanceProperties::GridLinesFixed() const {
  return static_cast<GridLineStyle>(control().GridLinesFixed());
}
void AppearanceProperties::SetOutlinebar(OutlineBarStyle style) {
  Attempt([&] { control().SetOutlinebar(static_cast<platform::OutlineBarStyle>(style)); });
}
AppearanceProperties::OutlineBarStyle AppearanceProperties::Outlinebar() const {
  return static_cast<OutlineBarStyle>(control().Outlinebar());
}
void AppearanceProperties::SetRowHeightMin(float twips) {
  Attempt([&] { control().SetRowHeightMin(twips); });
}
float AppearanceProperties::RowHeightMin() const { return control().RowHeightMin(); }
void AppearanceProperties::SetRowHeightMax(float twips) {
  Attempt([&] { control().SetRowHeightMax(twips); });
}
float AppearanceProperties::RowHeightMax() const { return control().RowHeightMax(); }
void AppearanceProperties::SetScrollBars(ScrollBarsSetting setting) {
  Attempt([&] { control().SetScrollBars(static_cast<platform::ScrollBarsSetting>(setting)); });
}
AppearanceProperties::ScrollBarsSetting AppearanceProperties::ScrollBars() const {
  return static_cast<ScrollBarsSetting>(control().ScrollBars());
}
void AppearanceProperties::SetBillPicture(const QPixmap& picture) {
  Attempt([&] { control().SetBillPicture(PictureOf(picture, control().BillPicture())); });
}
QPixmap AppearanceProperties::BillPicture() const { return PixmapOf(control().BillPicture()); }
void AppearanceProperties::SetBillAuditedPicture(const QPixmap& picture) {
  Attempt([&] { control().SetBillAuditedPicture(PictureOf(picture, control().BillAuditedPicture())); });
}
QPixmap AppearanceProperties::BillAuditedPicture() const { return PixmapOf(control().BillAuditedPicture()); }
void AppearanceProperties::SetRevPicture(const QPixmap& picture) {
  Attempt([&] { control().SetRevPicture(PictureOf(picture, control().RevPicture())); });
}
QPixmap AppearanceProperties::RevPicture() const { return PixmapOf(control().RevPicture()); }
void AppearanceProperties::SetRevAuditedPicture(const QPixmap& picture) {
  Attempt([&] { control().SetRevAuditedPicture(PictureOf(picture, control().RevAuditedPicture())); });
}
QPixmap AppearanceProperties::RevAuditedPicture() const { return PixmapOf(control().RevAuditedPicture()); }
void AppearanceProperties::SetIssPicture(const QPixmap& picture) {
  Attempt([&] { control().SetIssPicture(PictureOf(picture, control().IssPicture())); });
}
QPixmap AppearanceProperties::IssPicture() const { return PixmapOf(control().IssPicture()); }
void AppearanceProperties::SetIssAuditedPicture(const QPixmap& picture) {
  Attempt([&] { control().SetIssAuditedPicture(PictureOf(picture, control().IssAuditedPicture())); });
}
QPixmap AppearanceProperties::IssAuditedPicture() const { return PixmapOf(control().IssAuditedPicture()); }
void AppearanceProperties::SetShiftPicture(const QPixmap& picture) {
  Attempt([&] { control().SetShiftPicture(PictureOf(picture, control().ShiftPicture())); });
}
QPixmap AppearanceProperties::ShiftPicture() const { return PixmapOf(control().ShiftPicture()); }
void AppearanceProperties::SetShiftAuditedPicture(const QPixmap& picture) {
  Attempt([&] { control().SetShiftAuditedPicture(PictureOf(picture, control().ShiftAuditedPicture())); });
}
QPixmap AppearanceProperties::ShiftAuditedPicture() const { return PixmapOf(control().ShiftAuditedPicture()); }
void AppearanceProperties::SetNodeClosedPicture(const QPixmap& picture) {
  Attempt([&] { control().SetNodeClosedPicture(PictureOf(picture, control().NodeClosedPicture())); });
}
QPixmap AppearanceProperties::NodeClosedPicture() const { return PixmapOf(control().NodeClosedPicture()); }
void AppearanceProperties::SetNodeOpenPicture(const QPixmap& picture) {
  Attempt([&] { control().SetNodeOpenPicture(PictureOf(picture, control().NodeOpenPicture())); });
}
QPixmap AppearanceProperties::NodeOpenPicture() const { return PixmapOf(control().NodeOpenPicture()); }
void AppearanceProperties::SetBackColorHot(const QColor& colour) {
  Attempt([&] { control().SetBackColorHot(FromQColor(colour)); });
}
QColor AppearanceProperties::BackColorHot() const { return ToQColor(control().BackColorHot()); }
void AppearanceProperties::SetForeColorHot(const QColor& colour) {
  Attempt([&] { control().SetForeColorHot(FromQColor(colour)); });
}
QColor AppearanceProperties::ForeColorHot() const { return ToQColor(control().ForeColorHot()); }
void AppearanceProperties::SetTitleBackPicture(const QPixmap& picture) {
  Attempt([&] { control().SetTitleBackPicture(PictureOf(picture, control().TitleBackPicture())); });
}
QPixmap AppearanceProperties::TitleBackPicture() const { return PixmapOf(control().TitleBackPicture()); }
void AppearanceProperties::SetMarkBackPicture(const QPixmap& picture) {
  Attempt([&] { control().SetMarkBackPicture(PictureOf(picture, control().MarkBackPicture())); });
}
QPixmap AppearanceProperties::MarkBackPicture() const { return PixmapOf(control().MarkBackPicture()); }
void AppearanceProperties::SetBorderWidth(int pixels) {
  Attempt([&] { control().SetBorderWidth(ToInteger(pixels, "BorderWidth")); });
}
int AppearanceProperties::BorderWidth() const { return control().BorderWidth(); }
void AppearanceProperties::SetChildSpacing(int pixels) {
  Attempt([&] { control().SetChildSpacing(ToInteger(pixels, "ChildSpacing")); });
}
int AppearanceProperties::ChildSpacing() const { return control().ChildSpacing(); }
void AppearanceProperties::SetBorderColor(const QColor& colour) {
  Attempt([&] { control().SetBorderColor(FromQColor(colour)); });
}
QColor AppearanceProperties::BorderColor() const { return ToQColor(control().BorderColor()); }
void AppearanceProperties::SetSheetBorderColor(const QColor& colour) {
  Attempt([&] { control().SetSheetBorderColor(FromQColor(colour)); });
}
QColor AppearanceProperties::SheetBorderColor() const { return ToQColor(control().SheetBorderColor()); }

}  // namespace stockbook::qt
