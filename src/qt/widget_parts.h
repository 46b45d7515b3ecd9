// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <memory>
#include <optional>

#include "control/stockbook.h"
#include "platform/control_site.h"
#include "platform/menu.h"
#include "qt/clipboard.h"
#include "qt/grid_view.h"
#include "qt/header_band.h"
#include "qt/images.h"
#include "qt/menu.h"
#include "qt/signal_raiser.h"
#include "qt/text_metrics.h"
#include "sheet/sheet.h"

namespace stockbook::qt {

class StockbookWidget;

// Everything that the widget composes, in the order in which it needs each other. The widget shares its parts with the
// pins of the calls under way: where it is deleted inside one of its own signals or events, or while its menu is open,
// the parts stay, out of sight and silent, until those calls have come back.
class WidgetParts : public std::enable_shared_from_this<WidgetParts>,
                    private platform::ControlSite,
                    private platform::Menu {
 public:
  explicit WidgetParts(StockbookWidget& widget);
  ~WidgetParts() override;
  WidgetParts(const WidgetParts&) = delete;
  WidgetParts& operator=(const WidgetParts&) = delete;

  // The widget goes away and leaves its share.
  static void Leave(std::shared_ptr<WidgetParts> parts);

  // The grid has the widget's font as long as nobody gives it another one.
  void FollowFont();

  sheet::Sheet& fg() { return fg_; }
  control::Stockbook& control() { return control_; }
  HeaderBand& header_band() { return *header_band_; }
  GridView& view() { return *view_; }
  std::optional<platform::Colour>& header_colour() { return header_colour_; }

 private:
  // platform::ControlSite
  void PropertyChanged(std::string_view key) override;
  void FrameChanged() override;
  // platform::Menu
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override;

  // The layout that the control makes at once measures the grid's font.
  control::Surroundings Surroundings();
  void SetDefaultPictures();

  StockbookWidget* widget_;  // nothing once it is gone
  sheet::Sheet fg_;
  sheet::Sheet fg1_;
  platform::Font followed_font_;
  std::optional<platform::Colour> header_colour_;
  QtTextMetrics text_metrics_;
  QtImages images_;
  QtMenu menu_;
  QtClipboard clipboard_;
  SignalRaiser raiser_;
  // Children of the widget, but they go first: the view borrows the sheet.
  std::unique_ptr<HeaderBand> header_band_;
  std::unique_ptr<GridView> view_;
  control::Stockbook control_;
};

}  // namespace stockbook::qt
