// SPDX-License-Identifier: MIT
#include "com/grid/frame_object.h"

#include <olectl.h>

#include "com/automation/colour.h"
#include "com/grid/late_object.h"

namespace stockbook::com {
namespace {

const control::Container& FrameCalled(const MemberCall& call) {
  switch (call.frame()) {
    case FrameName::kBody:
      return call.control().C1EBody();
    case FrameName::kHeader:
      return call.control().C1EHeader();
    case FrameName::kDesk:
      break;
  }
  return call.control().C1EDesk();
}

void ExpectFrame(const MemberCall& call, FrameName frame) {
  if (call.frame() != frame) throw AutomationError(CTL_E_SETNOTSUPPORTED, "这个属性由控件自己决定，不能设置。");
}

constexpr LateMember kFrameMembers[] = {
    {L"BorderWidth", 0, 0, [](const MemberCall& call) { return Variant(FrameCalled(call).border_width); },
     [](const MemberCall& call) {
       ExpectFrame(call, FrameName::kDesk);
       call.control().SetBorderWidth(ToShort(call.Value()));
     }},
    {L"ChildSpacing", 0, 0, [](const MemberCall& call) { return Variant(FrameCalled(call).child_spacing); },
     [](const MemberCall& call) {
       ExpectFrame(call, FrameName::kDesk);
       call.control().SetChildSpacing(ToShort(call.Value()));
     }},
    {L"BackColor", 0, 0,
     [](const MemberCall& call) { return Variant(static_cast<int32_t>(FrameCalled(call).back_color)); },
     [](const MemberCall& call) {
       ExpectFrame(call, FrameName::kBody);
       call.control().SetBorderColor(PlainColour(ToBits(call.Value())));
     }},
    {L"Caption", 0, 0, [](const MemberCall& call) { return Variant(std::string_view(FrameCalled(call).caption)); },
     [](const MemberCall& call) {
       ExpectFrame(call, FrameName::kHeader);
       call.control().SetCaption(ToText(call.Value()));
     }},
};

}  // namespace

ComPtr<IDispatch> NewFrameObject(ControlLinkRef link, FrameName frame) {
  return NewLateObject(std::move(link), frame, kFrameMembers);
}

}  // namespace stockbook::com
