// SPDX-License-Identifier: MIT
#include "com/grid/grid_members.h"

#include "com/grid/cell_members.h"
#include "com/grid/frame_object.h"
#include "com/grid/look_members.h"
#include "com/grid/place_members.h"

namespace stockbook::com {
namespace {

Variant FrameOf(const MemberCall& call, FrameName frame) { return Variant(NewFrameObject(call.link(), frame).get()); }

constexpr LateMember kFrames[] = {
    {L"C1EDesk", 0, 0, [](const MemberCall& call) { return FrameOf(call, FrameName::kDesk); }, nullptr},
    {L"C1EBody", 0, 0, [](const MemberCall& call) { return FrameOf(call, FrameName::kBody); }, nullptr},
    {L"C1EHeader", 0, 0, [](const MemberCall& call) { return FrameOf(call, FrameName::kHeader); }, nullptr},
};

std::vector<LateMember> Joined() {
  std::vector<LateMember> all;
  for (const std::span<const LateMember> part : {CellMembers(), PlaceMembers(), LookMembers()})
    all.insert(all.end(), part.begin(), part.end());
  all.insert(all.end(), std::begin(kFrames), std::end(kFrames));
  return all;
}

}  // namespace

std::span<const LateMember> GridMembers() {
  static const std::vector<LateMember> all = Joined();
  return all;
}

}  // namespace stockbook::com
