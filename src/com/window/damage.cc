// SPDX-License-Identifier: MIT
#include "com/window/damage.h"

#include <cstddef>
#include <cstring>

#include "com/window/rectangle.h"

namespace stockbook::com {
namespace {

// If there are more pieces than this, the rectangle around them is painted.
constexpr size_t kMostPieces = 8;

class OwnedRegion {
 public:
  explicit OwnedRegion(const sheet::Rect& rect) : handle_(CreateRectRgn(rect.x, rect.y, rect.right(), rect.bottom())) {}
  ~OwnedRegion() { DeleteObject(handle_); }
  OwnedRegion(const OwnedRegion&) = delete;
  OwnedRegion& operator=(const OwnedRegion&) = delete;

  HRGN handle() const { return handle_; }

 private:
  HRGN handle_;
};

}  // namespace

void Damage::Add(const sheet::Rect& area) {
  if (area.IsEmpty()) return;
  CombineRgn(region_, region_, OwnedRegion(area).handle(), RGN_OR);
}

void Damage::Move(const sheet::Rect& part, int dx, int dy) {
  const OwnedRegion whole(part);
  const OwnedRegion moved(part);
  CombineRgn(moved.handle(), region_, whole.handle(), RGN_AND);
  OffsetRgn(moved.handle(), dx, dy);
  CombineRgn(moved.handle(), moved.handle(), whole.handle(), RGN_AND);
  CombineRgn(region_, region_, whole.handle(), RGN_DIFF);
  CombineRgn(region_, region_, moved.handle(), RGN_OR);
}

std::vector<sheet::Rect> Damage::Take() {
  std::vector<std::byte> room(GetRegionData(region_, 0, nullptr));
  std::vector<sheet::Rect> pieces;
  if (room.size() < sizeof(RGNDATAHEADER)) return pieces;
  GetRegionData(region_, static_cast<DWORD>(room.size()), reinterpret_cast<RGNDATA*>(room.data()));
  RGNDATAHEADER header{};
  std::memcpy(&header, room.data(), sizeof header);
  for (size_t index = 0; index < header.nCount; ++index) {
    RECT rect{};
    std::memcpy(&rect, room.data() + sizeof header + index * sizeof rect, sizeof rect);
    pieces.push_back(FromRECT(rect));
  }
  if (pieces.size() > kMostPieces) pieces.assign(1, FromRECT(header.rcBound));
  SetRectRgn(region_, 0, 0, 0, 0);
  return pieces;
}

}  // namespace stockbook::com
