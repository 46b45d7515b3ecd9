// SPDX-License-Identifier: MIT
// The appearance: every writer goes through the table of the saved properties (saved_properties.cc).
#include <utility>

#include "control/control_state.h"

namespace stockbook::control {

void Stockbook::SetBackColor(platform::Colour colour) { state_->Change(&Stockbook::BackColor, colour); }
platform::Colour Stockbook::BackColor() const { return state_->fg.ColourOf(platform::GridColour::kBackColor); }
void Stockbook::SetBackColorBkg(platform::Colour colour) { state_->Change(&Stockbook::BackColorBkg, colour); }
platform::Colour Stockbook::BackColorBkg() const { return state_->fg.ColourOf(platform::GridColour::kBackColorBkg); }
void Stockbook::SetBackColorFixed(platform::Colour colour) { state_->Change(&Stockbook::BackColorFixed, colour); }
platform::Colour Stockbook::BackColorFixed() const {
  return state_->fg.ColourOf(platform::GridColour::kBackColorFixed);
}
void Stockbook::SetBackColorFrozen(platform::Colour colour) { state_->Change(&Stockbook::BackColorFrozen, colour); }
platform::Colour Stockbook::BackColorFrozen() const {
  return state_->fg.ColourOf(platform::GridColour::kBackColorFrozen);
}
void Stockbook::SetBackColorSel(platform::Colour colour) { state_->Change(&Stockbook::BackColorSel, colour); }
platform::Colour Stockbook::BackColorSel() const { return state_->fg.ColourOf(platform::GridColour::kBackColorSel); }
void Stockbook::SetForeColor(platform::Colour colour) { state_->Change(&Stockbook::ForeColor, colour); }
platform::Colour Stockbook::ForeColor() const { return state_->fg.ColourOf(platform::GridColour::kForeColor); }
void Stockbook::SetForeColorFixed(platform::Colour colour) { state_->Change(&Stockbook::ForeColorFixed, colour); }
platform::Colour Stockbook::ForeColorFixed() const {
  return state_->fg.ColourOf(platform::GridColour::kForeColorFixed);
}
void Stockbook::SetForeColorFrozen(platform::Colour colour) { state_->Change(&Stockbook::ForeColorFrozen, colour); }
platform::Colour Stockbook::ForeColorFrozen() const {
  return state_->fg.ColourOf(platform::GridColour::kForeColorFrozen);
}
void Stockbook::SetForeColorSel(platform::Colour colour) { state_->Change(&Stockbook::ForeColorSel, colour); }
platform::Colour Stockbook::ForeColorSel() const { return state_->fg.ColourOf(platform::GridColour::kForeColorSel); }
void Stockbook::SetGridColor(platform::Colour colour) { state_->Change(&Stockbook::GridColor, colour); }
platform::Colour Stockbook::GridColor() const { return state_->fg.ColourOf(platform::GridColour::kGridColor); }
void Stockbook::SetGridColorFixed(platform::Colour colour) { state_->Change(&Stockbook::GridColorFixed, colour); }
platform::Colour Stockbook::GridColorFixed() const {
  return state_->fg.ColourOf(platform::GridColour::kGridColorFixed);
}
void Stockbook::SetGridLines(platform::GridLineStyle style) { state_->Change(&Stockbook::GridLines, style); }
platform::GridLineStyle Stockbook::GridLines() const { return state_->fg.GridLines(); }
void Stockbook::SetGridLinesFixed(platform::GridLineStyle style) { state_->Change(&Stockbook::GridLinesFixed, style); }
platform::GridLineStyle Stockbook::GridLinesFixed() const { return state_->fg.GridLinesFixed(); }
void Stockbook::SetOutlinebar(platform::OutlineBarStyle style) { state_->Change(&Stockbook::Outlinebar, style); }
platform::OutlineBarStyle Stockbook::Outlinebar() const { return state_->fg.OutlineBar(); }
void Stockbook::SetRowHeightMin(float twips) { state_->Change(&Stockbook::RowHeightMin, twips); }
float Stockbook::RowHeightMin() const { return state_->fg.RowHeightMin(); }
void Stockbook::SetRowHeightMax(float twips) { state_->Change(&Stockbook::RowHeightMax, twips); }
float Stockbook::RowHeightMax() const { return state_->fg.RowHeightMax(); }
void Stockbook::SetScrollBars(platform::ScrollBarsSetting setting) { state_->Change(&Stockbook::ScrollBars, setting); }
platform::ScrollBarsSetting Stockbook::ScrollBars() const { return state_->fg.ScrollBars(); }
void Stockbook::SetBillPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::BillPicture, std::move(picture));
}
platform::PictureRef Stockbook::BillPicture() const { return state_->pictures.bill; }
void Stockbook::SetBillAuditedPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::BillAuditedPicture, std::move(picture));
}
platform::PictureRef Stockbook::BillAuditedPicture() const { return state_->pictures.bill_audited; }
void Stockbook::SetRevPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::RevPicture, std::move(picture));
}
platform::PictureRef Stockbook::RevPicture() const { return state_->pictures.rev; }
void Stockbook::SetRevAuditedPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::RevAuditedPicture, std::move(picture));
}
platform::PictureRef Stockbook::RevAuditedPicture() const { return state_->pictures.rev_audited; }
void Stockbook::SetIssPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::IssPicture, std::move(picture));
}
platform::PictureRef Stockbook::IssPicture() const { return state_->pictures.iss; }
void Stockbook::SetIssAuditedPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::IssAuditedPicture, std::move(picture));
}
platform::PictureRef Stockbook::IssAuditedPicture() const { return state_->pictures.iss_audited; }
void Stockbook::SetShiftPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::ShiftPicture, std::move(picture));
}
platform::PictureRef Stockbook::ShiftPicture() const { return state_->pictures.shift; }
void Stockbook::SetShiftAuditedPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::ShiftAuditedPicture, std::move(picture));
}
platform::PictureRef Stockbook::ShiftAuditedPicture() const { return state_->pictures.shift_audited; }
void Stockbook::SetNodeClosedPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::NodeClosedPicture, std::move(picture));
}
platform::PictureRef Stockbook::NodeClosedPicture() const { return state_->pictures.node_closed; }
void Stockbook::SetNodeOpenPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::NodeOpenPicture, std::move(picture));
}
platform::PictureRef Stockbook::NodeOpenPicture() const { return state_->pictures.node_open; }
void Stockbook::SetBackColorHot(platform::Colour colour) { state_->Change(&Stockbook::BackColorHot, colour); }
platform::Colour Stockbook::BackColorHot() const { return state_->back_color_hot; }
void Stockbook::SetForeColorHot(platform::Colour colour) { state_->Change(&Stockbook::ForeColorHot, colour); }
platform::Colour Stockbook::ForeColorHot() const { return state_->fore_color_hot; }
void Stockbook::SetTitleBackPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::TitleBackPicture, std::move(picture));
}
platform::PictureRef Stockbook::TitleBackPicture() const { return state_->pictures.title_back; }
void Stockbook::SetMarkBackPicture(platform::PictureRef picture) {
  state_->Change(&Stockbook::MarkBackPicture, std::move(picture));
}
platform::PictureRef Stockbook::MarkBackPicture() const { return state_->pictures.mark_back; }
void Stockbook::SetBorderWidth(int16_t pixels) { state_->Change(&Stockbook::BorderWidth, pixels); }
int16_t Stockbook::BorderWidth() const { return state_->c1e_desk.border_width; }
void Stockbook::SetChildSpacing(int16_t pixels) { state_->Change(&Stockbook::ChildSpacing, pixels); }
int16_t Stockbook::ChildSpacing() const { return state_->c1e_desk.child_spacing; }
void Stockbook::SetBorderColor(platform::Colour colour) { state_->Change(&Stockbook::BorderColor, colour); }
platform::Colour Stockbook::BorderColor() const { return state_->c1e_body.back_color; }
void Stockbook::SetSheetBorderColor(platform::Colour colour) { state_->Change(&Stockbook::SheetBorderColor, colour); }
platform::Colour Stockbook::SheetBorderColor() const { return state_->fg.ColourOf(platform::GridColour::kSheetBorder); }

}  // namespace stockbook::control
