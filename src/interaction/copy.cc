// SPDX-License-Identifier: MIT
#include "interaction/copy.h"

namespace stockbook::interaction {
namespace {

class BusyPointer {
 public:
  explicit BusyPointer(platform::GridView& grid) : grid_(grid) {
    grid_.SetPointer(platform::MousePointer::kArrowHourglass);
  }
  ~BusyPointer() {
    try {
      grid_.SetPointer(platform::MousePointer::kDefault);
    } catch (...) {
      // A grid that cannot be told stays as it is.
    }
  }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

 private:
  platform::GridView& grid_;
};

}  // namespace

void CopySelection(platform::Grid& grid, platform::Clipboard& clipboard) {
  const BusyPointer pointer(grid);
  clipboard.Clear();
  clipboard.TakeText(grid.SelectionText());
}

}  // namespace stockbook::interaction
