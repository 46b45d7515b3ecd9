// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

namespace stockbook::qt {

// Keeps an object alive while code runs that may let everybody else drop it. The last pin to go leaves the object to
// the event loop, because calls of the object may still be on the stack below: the event loop runs either inside
// another pin, which keeps the object, or outside all of them. For the user-interface thread only.
class Pin {
 public:
  explicit Pin(std::shared_ptr<void> kept) : kept_(std::move(kept)) {}
  ~Pin() {
    if (kept_.use_count() == 1) FreeLater(std::move(kept_));
  }
  Pin(const Pin&) = delete;
  Pin& operator=(const Pin&) = delete;

 private:
  static void FreeLater(std::shared_ptr<void> kept);

  std::shared_ptr<void> kept_;
};

}  // namespace stockbook::qt
