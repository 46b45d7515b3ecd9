// SPDX-License-Identifier: MIT
#include "com/grid/look_members.h"

#include <olectl.h>

#include "com/automation/colour.h"

namespace stockbook::com {
namespace {

using platform::GridColour;

template <GridColour which>
Variant ReadColour(const MemberCall& call) {
  return Variant(static_cast<int32_t>(call.grid().ColourOf(which)));
}

// The row that has the hot colours gets them anew.
template <GridColour which>
void WriteColour(const MemberCall& call) {
  const platform::Colour colour = PlainColour(ToBits(call.Value()));
  const auto aside = call.control().SetHotRowAside();
  call.grid().SetColour(which, colour);
}

template <GridColour which>
constexpr LateMember ColourMember(const wchar_t* name) {
  return {name, 0, 0, ReadColour<which>, WriteColour<which>};
}

constexpr LateMember kLooks[] = {
    ColourMember<GridColour::kBackColor>(L"BackColor"),
    ColourMember<GridColour::kBackColorBkg>(L"BackColorBkg"),
    ColourMember<GridColour::kBackColorFixed>(L"BackColorFixed"),
    ColourMember<GridColour::kBackColorFrozen>(L"BackColorFrozen"),
    ColourMember<GridColour::kBackColorSel>(L"BackColorSel"),
    ColourMember<GridColour::kForeColor>(L"ForeColor"),
    ColourMember<GridColour::kForeColorFixed>(L"ForeColorFixed"),
    ColourMember<GridColour::kForeColorFrozen>(L"ForeColorFrozen"),
    ColourMember<GridColour::kForeColorSel>(L"ForeColorSel"),
    ColourMember<GridColour::kGridColor>(L"GridColor"),
    ColourMember<GridColour::kGridColorFixed>(L"GridColorFixed"),
    ColourMember<GridColour::kSheetBorder>(L"SheetBorder"),

    {L"GridLines", 0, 0, [](const MemberCall& call) { return Variant(static_cast<int32_t>(call.grid().GridLines())); },
     [](const MemberCall& call) {
       call.grid().SetGridLines(static_cast<platform::GridLineStyle>(call.Code("GridLines", 7)));
     }},
    {L"GridLinesFixed", 0, 0,
     [](const MemberCall& call) { return Variant(static_cast<int32_t>(call.grid().GridLinesFixed())); },
     [](const MemberCall& call) {
       call.grid().SetGridLinesFixed(static_cast<platform::GridLineStyle>(call.Code("GridLinesFixed", 7)));
     }},
    {L"OutlineBar", 0, 0,
     [](const MemberCall& call) { return Variant(static_cast<int32_t>(call.grid().OutlineBar())); },
     [](const MemberCall& call) {
       call.grid().SetOutlineBar(static_cast<platform::OutlineBarStyle>(call.Code("OutlineBar", 6)));
     }},
    {L"ScrollBars", 0, 0,
     [](const MemberCall& call) { return Variant(static_cast<int32_t>(call.grid().ScrollBars())); },
     [](const MemberCall& call) {
       call.grid().SetScrollBars(static_cast<platform::ScrollBarsSetting>(call.Code("ScrollBars", 3)));
     }},
    {L"NodeOpenPicture", 0, 0,
     [](const MemberCall& call) { return Variant(call.pictures().ObjectOf(call.grid().NodeOpenPicture()).get()); },
     [](const MemberCall& call) {
       call.grid().SetNodeOpenPicture(call.pictures().PictureOf(ToDispatch(call.Value()).get()));
     }},
    {L"NodeClosedPicture", 0, 0,
     [](const MemberCall& call) { return Variant(call.pictures().ObjectOf(call.grid().NodeClosedPicture()).get()); },
     [](const MemberCall& call) {
       call.grid().SetNodeClosedPicture(call.pictures().PictureOf(ToDispatch(call.Value()).get()));
     }},
    {L"FontName", 0, 0, [](const MemberCall& call) { return Variant(call.grid().GridFont().name); },
     [](const MemberCall& call) {
       platform::Font font = call.grid().GridFont();
       font.name = ToText(call.Value());
       call.grid().SetGridFont(font);
     }},
    {L"FontSize", 0, 0,
     [](const MemberCall& call) { return Variant(static_cast<float>(call.grid().GridFont().size_pt)); },
     [](const MemberCall& call) {
       platform::Font font = call.grid().GridFont();
       font.size_pt = ToSingle(call.Value());
       if (!(font.size_pt >= 1 && font.size_pt <= 1000))
         throw AutomationError(CTL_E_INVALIDPROPERTYVALUE, "FontSize 须在 1 与 1000 磅之间。");
       call.grid().SetGridFont(font);
     }},
};

}  // namespace

std::span<const LateMember> LookMembers() { return kLooks; }

}  // namespace stockbook::com
