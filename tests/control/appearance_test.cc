// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "stockbook/platform/error.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_outline.h"
#include "support/fake_surroundings.h"

namespace stockbook::control {
namespace {

using platform::Colour;
using platform::GridColour;
using platform::PictureRef;
using testing::ControlOverFakes;
using testing::MakePicture;

struct ColourProperty {
  const char* name;
  void (Stockbook::*write)(Colour);
  Colour (Stockbook::*read)() const;
  GridColour grid_colour;
};

TEST(Appearance, ColoursLiveInTheGridAndTellTheirOwnName) {
  const ColourProperty properties[] = {
      {"BackColor", &Stockbook::SetBackColor, &Stockbook::BackColor, GridColour::kBackColor},
      {"BackColorBkg", &Stockbook::SetBackColorBkg, &Stockbook::BackColorBkg, GridColour::kBackColorBkg},
      {"BackColorFixed", &Stockbook::SetBackColorFixed, &Stockbook::BackColorFixed, GridColour::kBackColorFixed},
      {"BackColorFrozen", &Stockbook::SetBackColorFrozen, &Stockbook::BackColorFrozen, GridColour::kBackColorFrozen},
      {"BackColorSel", &Stockbook::SetBackColorSel, &Stockbook::BackColorSel, GridColour::kBackColorSel},
      {"ForeColor", &Stockbook::SetForeColor, &Stockbook::ForeColor, GridColour::kForeColor},
      {"ForeColorFixed", &Stockbook::SetForeColorFixed, &Stockbook::ForeColorFixed, GridColour::kForeColorFixed},
      {"ForeColorFrozen", &Stockbook::SetForeColorFrozen, &Stockbook::ForeColorFrozen, GridColour::kForeColorFrozen},
      {"ForeColorSel", &Stockbook::SetForeColorSel, &Stockbook::ForeColorSel, GridColour::kForeColorSel},
      {"GridColor", &Stockbook::SetGridColor, &Stockbook::GridColor, GridColour::kGridColor},
      {"GridColorFixed", &Stockbook::SetGridColorFixed, &Stockbook::GridColorFixed, GridColour::kGridColorFixed},
      {"SheetBorderColor", &Stockbook::SetSheetBorderColor, &Stockbook::SheetBorderColor, GridColour::kSheetBorder},
  };
  ControlOverFakes fakes;
  Colour colour = 0x00010203;
  for (const ColourProperty& property : properties) {
    fakes.site.changed.clear();
    (fakes.control.get()->*property.write)(++colour);
    EXPECT_EQ(fakes.site.changed, (std::vector<std::string>{property.name}));
    EXPECT_EQ(fakes.fg.ColourOf(property.grid_colour), colour) << property.name;
    fakes.fg.SetColour(property.grid_colour, ++colour);
    EXPECT_EQ((fakes.control.get()->*property.read)(), colour) << property.name << " holds no copy";
  }
}

struct PictureProperty {
  const char* name;
  void (Stockbook::*write)(PictureRef);
  PictureRef (Stockbook::*read)() const;
};

TEST(Appearance, PicturesAreReadBackAsTheSameObject) {
  const PictureProperty properties[] = {
      {"BillPicture", &Stockbook::SetBillPicture, &Stockbook::BillPicture},
      {"BillAuditedPicture", &Stockbook::SetBillAuditedPicture, &Stockbook::BillAuditedPicture},
      {"RevPicture", &Stockbook::SetRevPicture, &Stockbook::RevPicture},
      {"RevAuditedPicture", &Stockbook::SetRevAuditedPicture, &Stockbook::RevAuditedPicture},
      {"IssPicture", &Stockbook::SetIssPicture, &Stockbook::IssPicture},
      {"IssAuditedPicture", &Stockbook::SetIssAuditedPicture, &Stockbook::IssAuditedPicture},
      {"ShiftPicture", &Stockbook::SetShiftPicture, &Stockbook::ShiftPicture},
      {"ShiftAuditedPicture", &Stockbook::SetShiftAuditedPicture, &Stockbook::ShiftAuditedPicture},
      {"NodeClosedPicture", &Stockbook::SetNodeClosedPicture, &Stockbook::NodeClosedPicture},
      {"NodeOpenPicture", &Stockbook::SetNodeOpenPicture, &Stockbook::NodeOpenPicture},
      {"TitleBackPicture", &Stockbook::SetTitleBackPicture, &Stockbook::TitleBackPicture},
      {"MarkBackPicture", &Stockbook::SetMarkBackPicture, &Stockbook::MarkBackPicture},
  };
  ControlOverFakes fakes;
  std::vector<PictureRef> pictures;
  for (const PictureProperty& property : properties) {
    fakes.site.changed.clear();
    pictures.push_back(MakePicture(property.name));
    (fakes.control.get()->*property.write)(pictures.back());
    EXPECT_EQ(fakes.site.changed, (std::vector<std::string>{property.name}));
  }
  for (size_t at = 0; at < pictures.size(); ++at) {
    EXPECT_EQ((fakes.control.get()->*properties[at].read)(), pictures[at]) << properties[at].name;
  }
  fakes.control->SetBillPicture(nullptr);
  EXPECT_EQ(fakes.control->BillPicture(), nullptr);
}

TEST(Appearance, LinesBarsAndLimitsLiveInTheGrid) {
  ControlOverFakes fakes;
  Stockbook& control = *fakes.control;
  control.SetGridLines(platform::GridLineStyle::kInset);
  control.SetGridLinesFixed(platform::GridLineStyle::kRaisedHorz);
  control.SetOutlinebar(platform::OutlineBarStyle::kSymbolsLeaf);
  control.SetScrollBars(platform::ScrollBarsSetting::kVertical);
  control.SetRowHeightMin(150.5F);
  control.SetRowHeightMax(900);
  EXPECT_EQ(fakes.site.changed, (std::vector<std::string>{"GridLines", "GridLinesFixed", "OutlineBar", "ScrollBars",
                                                          "RowHeightMin", "RowHeightMax"}));
  EXPECT_EQ(fakes.fg.GridLines(), platform::GridLineStyle::kInset);
  EXPECT_EQ(fakes.fg.GridLinesFixed(), platform::GridLineStyle::kRaisedHorz);
  EXPECT_EQ(fakes.fg.OutlineBar(), platform::OutlineBarStyle::kSymbolsLeaf);
  EXPECT_EQ(fakes.fg.ScrollBars(), platform::ScrollBarsSetting::kVertical);
  EXPECT_EQ(fakes.fg.RowHeightMin(), 150.5F);
  EXPECT_EQ(control.RowHeightMin(), 150.5F);
  fakes.fg.SetRowHeightMax(800);
  EXPECT_EQ(control.RowHeightMax(), 800) << "the control holds no copy";
}

TEST(Appearance, HotColoursAndFramesAreTheControlsOwn) {
  ControlOverFakes fakes;
  Stockbook& control = *fakes.control;
  control.SetBackColorHot(0x010203);
  control.SetForeColorHot(0x040506);
  control.SetChildSpacing(7);
  control.SetBorderColor(0x070809);
  EXPECT_EQ(fakes.site.changed,
            (std::vector<std::string>{"BackColorHot", "ForeColorHot", "ChildSpacing", "BorderColor"}));
  EXPECT_EQ(control.BackColorHot(), 0x010203U);
  EXPECT_EQ(control.ForeColorHot(), 0x040506U);
  EXPECT_EQ(control.C1EDesk().child_spacing, 7);
  EXPECT_EQ(control.C1EBody().back_color, 0x070809U);
  control.SetBorderWidth(3);
  EXPECT_EQ(control.BorderWidth(), 3);
  EXPECT_EQ(control.C1EDesk().border_width, 3);
}

TEST(Appearance, LimitsOfRowHeightsHoldForTheLayoutToo) {
  ControlOverFakes fakes;
  fakes.control->SetRowHeightMin(500);
  fakes.control->DefaultFormat();
  EXPECT_EQ(fakes.fg.RowHeight(0), 710) << "the text height and the limit that row 0 had";
  EXPECT_EQ(fakes.control->RowHeightSum(), 1000) << "twice the height that row 0 had";
}

TEST(Appearance, AnotherGridFontChangesAllThreeHeightsWithTheNextLayout) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(4);
  fakes.fg.SetIsSubtotal(2, true);
  platform::Font font = fakes.fg.GridFont();
  font.size_pt = 18;
  fakes.fg.SetGridFont(font);
  EXPECT_EQ(fakes.fg.RowHeight(1), 270) << "not before the layout";
  fakes.control->DefaultFormat();
  EXPECT_EQ(fakes.fg.RowHeight(1), 421 + 60);
  EXPECT_EQ(fakes.fg.RowHeight(0), 421 + 481);
  EXPECT_EQ(fakes.fg.RowHeight(2), 2 * 481);
  EXPECT_EQ(fakes.control->RowHeightSum(), 2 * 481);
}

TEST(Appearance, RowsFollowTheToolkitsFontUnlessSomebodySetTheirHeights) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(4);
  fakes.fg.SetIsSubtotal(2, true);
  fakes.fg.SetRowHeight(2, 540);
  fakes.fg.SetIsSubtotal(3, true);
  platform::Font font = fakes.fg.GridFont();
  font.size_pt = 18;
  fakes.control->FollowFont(font);
  EXPECT_EQ(fakes.fg.GridFont().size_pt, 18);
  EXPECT_EQ(fakes.fg.RowHeight(1), 421 + 60);
  EXPECT_EQ(fakes.fg.RowHeight(0), 421 + 481);
  EXPECT_EQ(fakes.fg.RowHeight(2), 2 * 481);
  EXPECT_EQ(fakes.fg.RowHeight(3), 481) << "a node that was as high as the lines";
  EXPECT_EQ(fakes.control->RowHeightSum(), 2 * 481);
  fakes.control->SetRowHeight(700);
  font.size_pt = 27;
  fakes.control->FollowFont(font);
  EXPECT_EQ(fakes.fg.GridFont().size_pt, 27);
  EXPECT_EQ(fakes.fg.RowHeight(1), 700);
  fakes.fg.SetRows(0);
  EXPECT_NO_THROW(fakes.control->FollowFont(font));
}

TEST(Appearance, AHeightBelowZeroIsRefusedBeforeAnythingIsStored) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(3);
  fakes.fg.SetIsSubtotal(2, true);
  const auto said_of = [&](void (Stockbook::*write)(float), float twips) -> std::string {
    try {
      (*fakes.control.*write)(twips);
    } catch (const platform::Error& error) {
      return error.what();
    }
    return "nothing";
  };
  fakes.control->SetRowHeightTitle(410);
  fakes.control->SetRowHeightSum(620);
  fakes.control->SetRowHeight(310);
  EXPECT_EQ(said_of(&Stockbook::SetRowHeight, -300),
            "高度不能是负数：RowHeight 收到的是 -300，原来的高度没有改变。请给出 0 或更大的缇数（1440 缇为 1 英寸）。");
  EXPECT_NE(said_of(&Stockbook::SetRowHeightTitle, -0.5F).find("RowHeightTitle 收到的是 -0.5"), std::string::npos);
  EXPECT_NE(said_of(&Stockbook::SetRowHeightSum, -1).find("RowHeightSum 收到的是 -1"), std::string::npos);
  EXPECT_EQ(fakes.control->RowHeight(), 310);
  EXPECT_EQ(fakes.control->RowHeightTitle(), 410);
  EXPECT_EQ(fakes.control->RowHeightSum(), 620);
  EXPECT_EQ(fakes.fg.RowHeight(0), 410);
  EXPECT_EQ(fakes.fg.RowHeight(1), 310);
  EXPECT_EQ(fakes.fg.RowHeight(2), 620);
  fakes.control->SetRowHeightMin(-5);
  EXPECT_EQ(fakes.control->RowHeightMin(), 0) << "a limit below 0 is none";
}

TEST(Appearance, AHeightThatIsNoNumberIsZeroAndAHugeOneIsAsLargeAsCanBe) {
  ControlOverFakes fakes;
  fakes.fg.SetRows(3);
  EXPECT_NO_THROW(fakes.control->SetRowHeightTitle(std::numeric_limits<float>::quiet_NaN()));
  EXPECT_EQ(fakes.fg.RowHeight(0), 0);
  EXPECT_NO_THROW(fakes.control->SetRowHeight(1e30F));
  EXPECT_GT(fakes.fg.RowHeight(1), 1440);
}

}  // namespace
}  // namespace stockbook::control
