// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/control/stockbook.h"
#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/images.h"
#include "stockbook/platform/menu.h"
#include "stockbook/platform/text_metrics.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {

// The control over a sheet for commands that only need the texts of the rows: what nobody sees has no pictures, and its
// rows are as high as may be. Without a toolkit, which takes as long to start as loading some ten thousand lines.
class PlainDesk : private platform::TextMetrics,
                  private platform::Images,
                  private platform::Menu,
                  private platform::Clipboard,
                  private platform::ControlSite {
 public:
  PlainDesk() : control_({fg_, fg1_, *this, *this, *this, *this, *this}) {}

  control::Stockbook& control() { return control_; }
  const sheet::GridSheet& sheet() const { return fg_; }

 private:
  double TextHeightTwips(std::string_view /*text*/, const platform::Font& font) const override;
  double TwipsPerPixelY() const override { return 15; }
  platform::PictureRef Find(std::string_view /*key*/) const override { return nullptr; }
  platform::MenuChoice PopUp(const platform::MenuItem& /*menu*/) override { return {}; }
  void Clear() override {}
  void SetText(std::string /*text*/) override {}
  void PropertyChanged(std::string_view /*key*/) override {}
  void FrameChanged() override {}

  sheet::GridSheet fg_;
  sheet::GridSheet fg1_;
  control::Stockbook control_;
};

}  // namespace stockbook::app
