// SPDX-License-Identifier: MIT
// The 35 appearance properties that a host's property bag keeps.
#include <cmath>
#include <limits>
#include <variant>

#include "base/scope_exit.h"
#include "control/stockbook.h"
#include "platform/error.h"

namespace stockbook::control {

using platform::BagValue;
using platform::Colour;
using platform::GridColour;
using platform::PictureRef;

namespace {

template <typename Type>
Type As(const BagValue& value) {
  if (const auto* held = std::get_if<Type>(&value)) return *held;
  throw platform::Error("read properties", "类型不匹配：属性包返回了另一类型的值。", 13);
}

// Without its fraction.
int32_t WholeNumber(float number) {
  constexpr auto kBeyond = static_cast<float>(std::numeric_limits<int32_t>::max());
  return std::abs(number) < kBeyond ? static_cast<int32_t>(number) : 0;
}

}  // namespace

// The table of the saved properties, in the order in which they are read and written. Each reads its target and stores
// into it without telling anybody: unlike the public writers, reading a bag is no change that the host has to save.
class Stockbook::SavedProperties {
 public:
  struct Property {
    std::string_view key;
    BagValue (*value_of)(const Stockbook& control);
    void (*store)(Stockbook& control, const BagValue& value);
    // Whether the target holds more than the bag can.
    bool (*has_fraction)(const Stockbook& control) = [](const Stockbook&) { return false; };
  };

  // The body's border is derived once the frames' own values are there.
  static constexpr size_t kFrames = 3;
  static constexpr size_t kCount = 35;
  static const std::array<Property, kCount>& All();

  static void Read(Stockbook& control, const Property& property, platform::PropertyBag& bag) {
    const BagValue now = property.value_of(control);
    const BagValue value = bag.Read(property.key, now);
    // An absent key leaves a fraction alone; only another fallback tells it from a key that holds the whole part.
    if (value == now && property.has_fraction(control)) {
      const BagValue other = As<int32_t>(now) == 0 ? 1 : 0;
      if (bag.Read(property.key, other) == other) return;
    }
    property.store(control, value);
  }

 private:
  template <auto frame, auto member>
  static constexpr Property OfFrame(std::string_view key) {
    return {key, [](const Stockbook& control) -> BagValue { return control.*frame.*member; },
            [](Stockbook& control, const BagValue& value) { control.*frame.*member = As<int16_t>(value); }};
  }

  template <PictureRef grid::Pictures::*member>
  static constexpr Property OfPicture(std::string_view key) {
    return {key, [](const Stockbook& control) -> BagValue { return control.pictures_.*member; },
            [](Stockbook& control, const BagValue& value) { control.pictures_.*member = As<PictureRef>(value); }};
  }

  template <GridColour which>
  static constexpr Property OfGridColour(std::string_view key) {
    return {key, [](const Stockbook& control) -> BagValue { return Long(control.fg_.ColourOf(which)); },
            [](Stockbook& control, const BagValue& value) { control.fg_.SetColour(which, ColourOf(value)); }};
  }

  template <Colour Stockbook::*member>
  static constexpr Property OfColour(std::string_view key) {
    return {key, [](const Stockbook& control) -> BagValue { return Long(control.*member); },
            [](Stockbook& control, const BagValue& value) { control.*member = ColourOf(value); }};
  }

  template <typename Setting, auto read, auto write>
  static constexpr Property OfSetting(std::string_view key) {
    return {key, [](const Stockbook& control) -> BagValue { return static_cast<int32_t>((control.fg_.*read)()); },
            [](Stockbook& control, const BagValue& value) {
              (control.fg_.*write)(static_cast<Setting>(As<int32_t>(value)));
            }};
  }

  template <auto read, auto write>
  static constexpr Property OfHeight(std::string_view key) {
    return {
        key, [](const Stockbook& control) -> BagValue { return WholeNumber((control.fg_.*read)()); },
        [](Stockbook& control, const BagValue& value) { (control.fg_.*write)(static_cast<float>(As<int32_t>(value))); },
        [](const Stockbook& control) {
          const float height = (control.fg_.*read)();
          return static_cast<float>(WholeNumber(height)) != height;
        }};
  }

  // Colours keep their bits: those above 0x7FFFFFFF are negative in the bag.
  static int32_t Long(Colour colour) { return static_cast<int32_t>(colour); }
  static Colour ColourOf(const BagValue& value) { return static_cast<Colour>(As<int32_t>(value)); }
};

const std::array<Stockbook::SavedProperties::Property, Stockbook::SavedProperties::kCount>&
Stockbook::SavedProperties::All() {
  using grid::Pictures;
  using platform::Grid;
  static constexpr std::array<Property, kCount> kAll = {
      OfFrame<&Stockbook::c1e_desk_, &Container::border_width>("BorderWidth"),
      OfFrame<&Stockbook::c1e_desk_, &Container::child_spacing>("ChildSpacing"),
      Property{"BorderColor", [](const Stockbook& control) -> BagValue { return Long(control.c1e_body_.back_color); },
               [](Stockbook& control, const BagValue& value) { control.c1e_body_.back_color = ColourOf(value); }},
      OfPicture<&Pictures::node_closed>("NodeClosedPicture"),
      OfPicture<&Pictures::node_open>("NodeOpenPicture"),
      OfPicture<&Pictures::bill>("BillPicture"),
      OfPicture<&Pictures::bill_audited>("BillAuditedPicture"),
      OfPicture<&Pictures::rev>("RevPicture"),
      OfPicture<&Pictures::rev_audited>("RevAuditedPicture"),
      OfPicture<&Pictures::iss>("IssPicture"),
      OfPicture<&Pictures::iss_audited>("IssAuditedPicture"),
      OfPicture<&Pictures::shift>("ShiftPicture"),
      OfPicture<&Pictures::shift_audited>("ShiftAuditedPicture"),
      OfGridColour<GridColour::kSheetBorder>("SheetBorderColor"),
      OfGridColour<GridColour::kBackColor>("BackColor"),
      OfGridColour<GridColour::kBackColorBkg>("BackColorBkg"),
      OfGridColour<GridColour::kBackColorFixed>("BackColorFixed"),
      OfGridColour<GridColour::kBackColorFrozen>("BackColorFrozen"),
      OfGridColour<GridColour::kBackColorSel>("BackColorSel"),
      OfGridColour<GridColour::kForeColor>("ForeColor"),
      OfGridColour<GridColour::kForeColorFixed>("ForeColorFixed"),
      OfGridColour<GridColour::kForeColorFrozen>("ForeColorFrozen"),
      OfGridColour<GridColour::kForeColorSel>("ForeColorSel"),
      OfGridColour<GridColour::kGridColor>("GridColor"),
      OfGridColour<GridColour::kGridColorFixed>("GridColorFixed"),
      OfSetting<platform::GridLineStyle, &Grid::GridLines, &Grid::SetGridLines>("GridLines"),
      OfSetting<platform::GridLineStyle, &Grid::GridLinesFixed, &Grid::SetGridLinesFixed>("GridLinesFixed"),
      OfSetting<platform::OutlineBarStyle, &Grid::OutlineBar, &Grid::SetOutlineBar>("OutlineBar"),
      OfSetting<platform::ScrollBarsSetting, &Grid::ScrollBars, &Grid::SetScrollBars>("ScrollBars"),
      OfPicture<&Pictures::title_back>("TitleBackPicture"),
      OfPicture<&Pictures::mark_back>("MarkBackPicture"),
      OfHeight<&Grid::RowHeightMin, &Grid::SetRowHeightMin>("RowHeightMin"),
      OfHeight<&Grid::RowHeightMax, &Grid::SetRowHeightMax>("RowHeightMax"),
      OfColour<&Stockbook::back_color_hot_>("BackColorHot"),
      OfColour<&Stockbook::fore_color_hot_>("ForeColorHot"),
  };
  return kAll;
}

void Stockbook::ReadProperties(platform::PropertyBag& bag) {
  const base::ScopeExit told([this] { site_.FrameChanged(); });
  const auto aside = SetHotRowAside();
  const auto& properties = SavedProperties::All();
  for (size_t index = 0; index < properties.size(); ++index) {
    if (index == SavedProperties::kFrames) c1e_body_.border_width = c1e_desk_.border_width <= 0 ? 1 : 0;
    SavedProperties::Read(*this, properties[index], bag);
  }
  ApplyBackPictures();
}

void Stockbook::WriteProperties(platform::PropertyBag& bag) const {
  for (const auto& property : SavedProperties::All()) bag.Write(property.key, property.value_of(*this));
}

}  // namespace stockbook::control
