// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/store/appearance.h"

namespace stockbook::app {

// Gives a journal the colours for a light or a dark desktop. The light ones are its defaults. A colour that somebody
// else has set in the meantime is kept.
class WindowColours {
 public:
  explicit WindowColours(qt::StockbookWidget& stockbook);

  // To be called at the start and whenever the window's palette changes.
  void Follow(const QPalette& palette);

 private:
  struct Scheme {
    sheet::Palette palette;
    platform::Colour back_hot = 0;
    platform::Colour fore_hot = 0;
    platform::Colour border = 0;
    platform::Colour header = 0;
  };

  static Scheme DarkScheme();
  Scheme Now() const;
  void Change(const Scheme& from, const Scheme& to);

  qt::StockbookWidget& stockbook_;
  Scheme light_;
  bool dark_ = false;
};

// A dark desktop's palette, for pictures.
QPalette DarkPalette();

}  // namespace stockbook::app
