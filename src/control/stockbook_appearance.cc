// SPDX-License-Identifier: MIT
#include "control/stockbook.h"

namespace stockbook::control {

void Stockbook::SetGridColour(platform::GridColour which, platform::Colour colour, std::string_view key) {
  {
    const auto aside = SetHotRowAside();
    fg_.SetColour(which, colour);
  }
  site_.PropertyChanged(key);
}

void Stockbook::ChangePicture(platform::PictureRef& field, platform::PictureRef picture, std::string_view key) {
  field = std::move(picture);
  site_.PropertyChanged(key);
}

void Stockbook::SetGridLines(platform::GridLineStyle style) {
  fg_.SetGridLines(style);
  site_.PropertyChanged("GridLines");
}

void Stockbook::SetGridLinesFixed(platform::GridLineStyle style) {
  fg_.SetGridLinesFixed(style);
  site_.PropertyChanged("GridLinesFixed");
}

// The saved key has a capital B, the property has not; both spellings stay.
void Stockbook::SetOutlinebar(platform::OutlineBarStyle style) {
  fg_.SetOutlineBar(style);
  site_.PropertyChanged("OutlineBar");
}

void Stockbook::SetRowHeightMin(float twips) {
  fg_.SetRowHeightMin(twips);
  site_.PropertyChanged("RowHeightMin");
}

void Stockbook::SetRowHeightMax(float twips) {
  fg_.SetRowHeightMax(twips);
  site_.PropertyChanged("RowHeightMax");
}

void Stockbook::SetScrollBars(platform::ScrollBarsSetting setting) {
  fg_.SetScrollBars(setting);
  site_.PropertyChanged("ScrollBars");
}

void Stockbook::SetBillPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.bill, std::move(picture), "BillPicture");
}

void Stockbook::SetBillAuditedPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.bill_audited, std::move(picture), "BillAuditedPicture");
}

void Stockbook::SetRevPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.rev, std::move(picture), "RevPicture");
}

void Stockbook::SetRevAuditedPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.rev_audited, std::move(picture), "RevAuditedPicture");
}

void Stockbook::SetIssPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.iss, std::move(picture), "IssPicture");
}

void Stockbook::SetIssAuditedPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.iss_audited, std::move(picture), "IssAuditedPicture");
}

void Stockbook::SetShiftPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.shift, std::move(picture), "ShiftPicture");
}

void Stockbook::SetShiftAuditedPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.shift_audited, std::move(picture), "ShiftAuditedPicture");
}

void Stockbook::SetNodeClosedPicture(platform::PictureRef picture) {
  fg_.SetNodeClosedPicture(picture);
  ChangePicture(pictures_.node_closed, std::move(picture), "NodeClosedPicture");
}

void Stockbook::SetNodeOpenPicture(platform::PictureRef picture) {
  fg_.SetNodeOpenPicture(picture);
  ChangePicture(pictures_.node_open, std::move(picture), "NodeOpenPicture");
}

void Stockbook::SetBackColorHot(platform::Colour colour) {
  {
    const auto aside = SetHotRowAside();
    back_color_hot_ = colour;
  }
  site_.PropertyChanged("BackColorHot");
}

void Stockbook::SetForeColorHot(platform::Colour colour) {
  {
    const auto aside = SetHotRowAside();
    fore_color_hot_ = colour;
  }
  site_.PropertyChanged("ForeColorHot");
}

void Stockbook::SetTitleBackPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.title_back, std::move(picture), "TitleBackPicture");
}

void Stockbook::SetMarkBackPicture(platform::PictureRef picture) {
  ChangePicture(pictures_.mark_back, std::move(picture), "MarkBackPicture");
}

void Stockbook::SetBorderWidth(int16_t pixels) {
  c1e_desk_.border_width = pixels;
  c1e_body_.border_width = pixels == 0 ? 1 : 0;
  site_.PropertyChanged("BorderWidth");
  site_.FrameChanged();
}

void Stockbook::SetChildSpacing(int16_t pixels) {
  c1e_desk_.child_spacing = pixels;
  site_.PropertyChanged("ChildSpacing");
  site_.FrameChanged();
}

void Stockbook::SetBorderColor(platform::Colour colour) {
  c1e_body_.back_color = colour;
  site_.PropertyChanged("BorderColor");
  site_.FrameChanged();
}

}  // namespace stockbook::control
