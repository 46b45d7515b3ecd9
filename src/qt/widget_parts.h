// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <memory>
#include <optional>

#include "control/stockbook.h"
#include "platform/control_site.h"
#include "qt/clipboard.h"
#include "qt/grid_view.h"
#include "qt/header_band.h"
#include "qt/images.h"
#include "qt/menu.h"
#include "qt/text_metrics.h"
#include "sheet/sheet.h"

namespace stockbook::qt {

class StockbookWidget;

// Raises the control's events as the signals of a widget, as long as there is one.
class SignalRaiser : public interaction::EventListener {
 public:
  explicit SignalRaiser(StockbookWidget& widget) : widget_(&widget) {}
  void Silence() { widget_ = nullptr; }

  void Process(int16_t Indicator) override;
  void AfterLoaded() override;
  void AfterFormatted() override;
  void CommandExecute(const std::string& CommandName, bool& Cancel) override;
  void Notify(const std::string& Msg) override;
  void AfterRowChanged() override;
  void AfterRangeSelected() override;
  void MouseUp(int16_t& Button, int16_t& Shift, float& X, float& Y) override;
  void FindMsg(const std::string& rMsg) override;

 private:
  StockbookWidget* widget_;
};

// Everything that the widget composes, in the order in which it needs each other. Where the widget is deleted inside of
// one of its own signals or while its menu is open, the control and the view have their calls under way still: the
// parts then stay for themselves, out of sight and silent, until those have come back.
class WidgetParts : private platform::ControlSite {
 public:
  explicit WidgetParts(StockbookWidget& widget);
  ~WidgetParts() override;
  WidgetParts(const WidgetParts&) = delete;
  WidgetParts& operator=(const WidgetParts&) = delete;

  // The widget goes away: frees the parts now, or as soon as nothing of them is under way, at the latest with the
  // application.
  static void Leave(std::unique_ptr<WidgetParts> parts);
  bool IsInUse() const;

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
  int telling_ = 0;  // PropertyChanged signals under way
  // Children of the widget, but they go first: the view borrows the sheet.
  std::unique_ptr<HeaderBand> header_band_;
  std::unique_ptr<GridView> view_;
  control::Stockbook control_;
};

}  // namespace stockbook::qt
