// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "stockbook/control/stockbook.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_ports.h"

namespace stockbook::testing {

// A control over the real sheet with everything else faked; the sheet starts with a 9 point font.
struct ControlOverFakes {
  ControlOverFakes() : control(std::make_unique<control::Stockbook>(Around())) {}
  control::Surroundings Around() {
    platform::Font font = fg.GridFont();
    font.size_pt = 9;
    fg.SetGridFont(font);
    return {fg, fg1, metrics, images, menu, clipboard, site};
  }

  sheet::GridSheet fg;
  sheet::GridSheet fg1;
  FakeTextMetrics metrics;
  FakeImages images;
  FakeMenu menu;
  FakeClipboard clipboard;
  FakeSite site;
  std::unique_ptr<control::Stockbook> control;
};

}  // namespace stockbook::testing
