// SPDX-License-Identifier: MIT
// Keys, mouse and a host that does anything at any time, over a sheet with its view: the invariants hold.
#include <memory>

#include "fuzzed_bytes.h"
#include "sheet/gesture_world.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  stockbook::fuzz::FuzzedBytes bytes(data, size);
  const auto records = static_cast<int>(bytes.Below(300));
  const auto periods = static_cast<int>(1 + bytes.Below(12));
  stockbook::sheet::test::GestureWorld world([&bytes] { return bytes.Take<uint16_t>(); }, records, periods);
  while (!bytes.IsEmpty()) {
    world.Act();
    const auto holds = world.Holds();
    stockbook::fuzz::Require(holds, "the invariants hold", holds.message());
  }
  const auto paints = world.PaintsWithinTheView();
  stockbook::fuzz::Require(paints, "everything painted lies within the view", paints.message());
  return 0;
}
