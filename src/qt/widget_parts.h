// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "qt/header_band.h"
#include "qt/kept_layouts.h"
#include "qt/menu.h"
#include "qt/signal_raiser.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/menu.h"
#include "stockbook/qt/clipboard.h"
#include "stockbook/qt/images.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/qt/text_metrics.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::qt {

class StockbookWidget;

// Everything that the widget composes, in order of dependency. The widget shares its parts with the pins of the calls
// in progress: if it is deleted inside one of its own signals or events, or while its menu is open, the parts stay,
// hidden and silent, until those calls have returned.
class WidgetParts : public std::enable_shared_from_this<WidgetParts>,
                    private platform::ControlSite,
                    private platform::Menu {
 public:
  explicit WidgetParts(StockbookWidget& widget);
  ~WidgetParts() override;
  WidgetParts(const WidgetParts&) = delete;
  WidgetParts& operator=(const WidgetParts&) = delete;

  // The widget is being deleted and gives up its share.
  static void Leave(std::shared_ptr<WidgetParts> parts);

  // Performs an action on the control and reports its errors, and those of its listeners, through Notify. A listener
  // may delete the widget meanwhile.
  void Attempt(const std::function<void()>& call);

  // Raises RowChanged if the current row or the number of rows is another than when this was last called.
  void TellRow();

  // The grid follows the widget's font until somebody sets another one.
  void FollowFont();

  sheet::GridSheet& fg() { return fg_; }
  control::Stockbook& control() { return control_; }
  HeaderBand& header_band() { return *header_band_; }
  SheetWidget& view() { return *view_; }
  KeptLayouts& layouts() { return layouts_; }
  void SetMenuHints(std::map<std::string, QString> hints) { menu_.SetHints(std::move(hints)); }
  std::optional<platform::Colour>& header_colour() { return header_colour_; }

 private:
  // platform::ControlSite
  void PropertyChanged(std::string_view key) override;
  void FrameChanged() override;
  void AppearanceChanged() override;
  void JournalChanged() override;
  // platform::Menu
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override;
  platform::MenuChoice PopUpToTick(const platform::MenuItem& menu, const platform::MenuTick& tick) override;

  // The control lays out at once, which measures the grid's font.
  control::Surroundings Surroundings();

  // What the properties of the current row are read from.
  struct RowValues {
    int row = 0;
    int rows = 0;
    int16_t flag = 0;
    bool operator==(const RowValues&) const = default;
  };
  RowValues ReadRow() const;
  // Raises a signal of the widget, if there is one.
  template <typename Signal>
  void Raise(Signal signal);

  StockbookWidget* widget_;  // null once it is deleted
  sheet::GridSheet fg_;
  sheet::GridSheet fg1_;
  platform::Font followed_font_;
  std::optional<platform::Colour> header_colour_;
  QtTextMetrics text_metrics_;
  QtImages images_;
  QtMenu menu_;
  QtClipboard clipboard_;
  SignalRaiser raiser_;
  // Children of the widget, but destroyed earlier, because the view borrows the sheet.
  std::unique_ptr<HeaderBand> header_band_;
  std::unique_ptr<SheetWidget> view_;
  control::Stockbook control_;
  KeptLayouts layouts_{control_};
  RowValues told_row_;
};

}  // namespace stockbook::qt
