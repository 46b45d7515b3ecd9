// SPDX-License-Identifier: MIT
// The 35 appearance properties that a host's property bag keeps.
#include <array>
#include <cassert>
#include <cmath>
#include <limits>
#include <string_view>
#include <type_traits>
#include <variant>

#include "control/control_state.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/error.h"

namespace stockbook::control {

using platform::BagValue;
using platform::Colour;
using platform::GridColour;
using platform::GridLineStyle;
using platform::OutlineBarStyle;
using platform::PictureRef;
using platform::ScrollBarsSetting;

namespace {

// Drops the fraction.
int32_t WholeNumber(float number) {
  constexpr auto kBeyond = static_cast<float>(std::numeric_limits<int32_t>::max());
  return std::abs(number) < kBeyond ? static_cast<int32_t>(number) : 0;
}

// A bag stores 16-bit numbers and pictures unchanged and everything else in 32 bits. Colours keep their bits: those
// above 0x7FFFFFFF are negative there.
template <typename Type>
using Held = std::conditional_t<std::is_same_v<Type, int16_t> || std::is_same_v<Type, PictureRef>, Type, int32_t>;

template <typename Type>
BagValue ToBag(const Type& value) {
  if constexpr (std::is_same_v<Type, float>)
    return WholeNumber(value);
  else
    return static_cast<Held<Type>>(value);
}

template <typename Type>
Type FromBag(const BagValue& value) {
  if (const auto* held = std::get_if<Held<Type>>(&value)) return static_cast<Type>(*held);
  throw platform::Error("read properties", "类型不匹配：属性包返回了另一类型的值。", 13);
}

}  // namespace

// The table of the saved properties, in the order in which they are read from a bag and written to it.
class Stockbook::State::SavedProperties {
 public:
  template <typename Type>
  struct Property {
    std::string_view key;
    Type (Stockbook::*read)() const;
    void (*store)(State& state, const Type& value);
    // Also done by a public writer, but not when reading a bag.
    void (*apply)(State& state, const Type& value) = [](State&, const Type&) {};
  };
  using AnyProperty = std::variant<Property<int16_t>, Property<float>, Property<Colour>, Property<PictureRef>,
                                   Property<GridLineStyle>, Property<OutlineBarStyle>, Property<ScrollBarsSetting>>;

  // The first of them belong to the frames, which are redrawn when one is written; once all of these have been read the
  // body's border is derived.
  static constexpr size_t kFrames = 3;
  static constexpr size_t kCount = 35;
  static const std::array<AnyProperty, kCount>& All();

  // Raises no notice: unlike a public writer, reading a bag makes no change that the host has to save. Returns whether
  // the property has another value than before.
  template <typename Type>
  static bool Read(State& state, const Property<Type>& property, platform::PropertyBag& bag) {
    const Type current = (state.control.*property.read)();
    const BagValue now = ToBag(current);
    const BagValue value = bag.Read(property.key, now);
    // An absent key keeps the fraction. A second fallback distinguishes it from a key that holds the whole part.
    if (value == now && FromBag<Type>(now) != current) {
      const BagValue other = now == BagValue(int32_t{0}) ? int32_t{1} : int32_t{0};
      if (bag.Read(property.key, other) == other) return false;
    }
    property.store(state, FromBag<Type>(value));
    return (state.control.*property.read)() != current;
  }

 private:
  template <GridColour which>
  static void StoreGridColour(State& state, const Colour& colour) {
    const auto aside = state.handlers->hot_row().SetAside();
    state.fg.SetColour(which, colour);
  }

  template <Colour State::*member>
  static void StoreHotColour(State& state, const Colour& colour) {
    const auto aside = state.handlers->hot_row().SetAside();
    state.*member = colour;
  }

  template <auto frame, auto member, typename Type>
  static void StoreInFrame(State& state, const Type& value) {
    state.*frame.*member = value;
  }

  template <PictureRef grid::Pictures::*member>
  static void StorePicture(State& state, const PictureRef& picture) {
    state.pictures.*member = picture;
  }

  template <auto write, typename Type>
  static void StoreInGrid(State& state, const Type& value) {
    (state.fg.*write)(value);
  }
};

const std::array<Stockbook::State::SavedProperties::AnyProperty, Stockbook::State::SavedProperties::kCount>&
Stockbook::State::SavedProperties::All() {
  using grid::Pictures;
  using platform::Grid;
  using Control = Stockbook;
  using Colours = Property<Colour>;
  using Picture = Property<PictureRef>;
  static constexpr std::array<AnyProperty, kCount> kAll = {
      Property<int16_t>{"BorderWidth", &Control::BorderWidth, StoreInFrame<&State::c1e_desk, &Container::border_width>,
                        [](State& state, const int16_t& pixels) { state.c1e_body.border_width = pixels == 0 ? 1 : 0; }},
      Property<int16_t>{"ChildSpacing", &Control::ChildSpacing,
                        StoreInFrame<&State::c1e_desk, &Container::child_spacing>},
      Colours{"BorderColor", &Control::BorderColor, StoreInFrame<&State::c1e_body, &Container::back_color>},
      Picture{"NodeClosedPicture", &Control::NodeClosedPicture, StorePicture<&Pictures::node_closed>,
              StoreInGrid<&Grid::SetNodeClosedPicture>},
      Picture{"NodeOpenPicture", &Control::NodeOpenPicture, StorePicture<&Pictures::node_open>,
              StoreInGrid<&Grid::SetNodeOpenPicture>},
      Picture{"BillPicture", &Control::BillPicture, StorePicture<&Pictures::bill>},
      Picture{"BillAuditedPicture", &Control::BillAuditedPicture, StorePicture<&Pictures::bill_audited>},
      Picture{"RevPicture", &Control::RevPicture, StorePicture<&Pictures::rev>},
      Picture{"RevAuditedPicture", &Control::RevAuditedPicture, StorePicture<&Pictures::rev_audited>},
      Picture{"IssPicture", &Control::IssPicture, StorePicture<&Pictures::iss>},
      Picture{"IssAuditedPicture", &Control::IssAuditedPicture, StorePicture<&Pictures::iss_audited>},
      Picture{"ShiftPicture", &Control::ShiftPicture, StorePicture<&Pictures::shift>},
      Picture{"ShiftAuditedPicture", &Control::ShiftAuditedPicture, StorePicture<&Pictures::shift_audited>},
      Colours{"SheetBorderColor", &Control::SheetBorderColor, StoreGridColour<GridColour::kSheetBorder>},
      Colours{"BackColor", &Control::BackColor, StoreGridColour<GridColour::kBackColor>},
      Colours{"BackColorBkg", &Control::BackColorBkg, StoreGridColour<GridColour::kBackColorBkg>},
      Colours{"BackColorFixed", &Control::BackColorFixed, StoreGridColour<GridColour::kBackColorFixed>},
      Colours{"BackColorFrozen", &Control::BackColorFrozen, StoreGridColour<GridColour::kBackColorFrozen>},
      Colours{"BackColorSel", &Control::BackColorSel, StoreGridColour<GridColour::kBackColorSel>},
      Colours{"ForeColor", &Control::ForeColor, StoreGridColour<GridColour::kForeColor>},
      Colours{"ForeColorFixed", &Control::ForeColorFixed, StoreGridColour<GridColour::kForeColorFixed>},
      Colours{"ForeColorFrozen", &Control::ForeColorFrozen, StoreGridColour<GridColour::kForeColorFrozen>},
      Colours{"ForeColorSel", &Control::ForeColorSel, StoreGridColour<GridColour::kForeColorSel>},
      Colours{"GridColor", &Control::GridColor, StoreGridColour<GridColour::kGridColor>},
      Colours{"GridColorFixed", &Control::GridColorFixed, StoreGridColour<GridColour::kGridColorFixed>},
      Property<GridLineStyle>{"GridLines", &Control::GridLines, StoreInGrid<&Grid::SetGridLines>},
      Property<GridLineStyle>{"GridLinesFixed", &Control::GridLinesFixed, StoreInGrid<&Grid::SetGridLinesFixed>},
      // The saved key has a capital B, unlike the property; both spellings stay.
      Property<OutlineBarStyle>{"OutlineBar", &Control::Outlinebar, StoreInGrid<&Grid::SetOutlineBar>},
      Property<ScrollBarsSetting>{"ScrollBars", &Control::ScrollBars, StoreInGrid<&Grid::SetScrollBars>},
      Picture{"TitleBackPicture", &Control::TitleBackPicture, StorePicture<&Pictures::title_back>},
      Picture{"MarkBackPicture", &Control::MarkBackPicture, StorePicture<&Pictures::mark_back>},
      Property<float>{"RowHeightMin", &Control::RowHeightMin, StoreInGrid<&Grid::SetRowHeightMin>},
      Property<float>{"RowHeightMax", &Control::RowHeightMax, StoreInGrid<&Grid::SetRowHeightMax>},
      Colours{"BackColorHot", &Control::BackColorHot, StoreHotColour<&State::back_color_hot>},
      Colours{"ForeColorHot", &Control::ForeColorHot, StoreHotColour<&State::fore_color_hot>},
  };
  return kAll;
}

template <typename Type>
void Stockbook::State::Change(Type (Stockbook::*read)() const, std::type_identity_t<Type> value) {
  const auto& all = SavedProperties::All();
  for (size_t index = 0; index < all.size(); ++index) {
    const auto* property = std::get_if<SavedProperties::Property<Type>>(&all[index]);
    if (property == nullptr || property->read != read) continue;
    const Type before = (control.*read)();
    property->apply(*this, value);
    property->store(*this, value);
    const bool changed = (control.*read)() != before;
    site.PropertyChanged(property->key);
    if (index < SavedProperties::kFrames) site.FrameChanged();
    if (changed) site.AppearanceChanged();
    return;
  }
  assert(false && "a property without a row in the table");
}

template void Stockbook::State::Change(int16_t (Stockbook::*)() const, int16_t);
template void Stockbook::State::Change(float (Stockbook::*)() const, float);
template void Stockbook::State::Change(Colour (Stockbook::*)() const, Colour);
template void Stockbook::State::Change(PictureRef (Stockbook::*)() const, PictureRef);
template void Stockbook::State::Change(GridLineStyle (Stockbook::*)() const, GridLineStyle);
template void Stockbook::State::Change(OutlineBarStyle (Stockbook::*)() const, OutlineBarStyle);
template void Stockbook::State::Change(ScrollBarsSetting (Stockbook::*)() const, ScrollBarsSetting);

void Stockbook::ReadProperties(platform::PropertyBag& bag) {
  bool changed = false;
  const base::ScopeExit told([&] {
    state_->site.FrameChanged();
    if (changed) state_->site.AppearanceChanged();
  });
  const auto aside = state_->handlers->hot_row().SetAside();
  const auto& all = State::SavedProperties::All();
  for (size_t index = 0; index < all.size(); ++index) {
    if (index == State::SavedProperties::kFrames)
      state_->c1e_body.border_width = state_->c1e_desk.border_width <= 0 ? 1 : 0;
    std::visit([&](const auto& property) { changed |= State::SavedProperties::Read(*state_, property, bag); },
               all[index]);
  }
  state_->ApplyBackPictures();
}

void Stockbook::WriteProperties(platform::PropertyBag& bag) const {
  for (const auto& any : State::SavedProperties::All()) {
    std::visit([&](const auto& property) { bag.Write(property.key, ToBag((this->*property.read)())); }, any);
  }
}

}  // namespace stockbook::control
