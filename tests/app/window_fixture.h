// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <memory>
#include <string>

#include "app/inventory_fixture.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/sample/sample_inventory.h"
#include "stockbook/window/main_window.h"

namespace stockbook::app {

// The window on the sample inventory, without a screen.
class WindowTest : public InventoryTest {
 protected:
  explicit WindowTest(GuiNeed need = GuiNeed::kPicture) : session_(need) {
    WriteSampleInventory(PathOf("sample.db"), {});
    window_ = std::make_unique<MainWindow>();
  }

  void Open() {
    window_->OpenDatabase(PathOf("sample.db"));
    window_->show();
    QApplication::processEvents();
  }
  // Until what was put off by one event, and what that puts off, has happened.
  static void Settle() {
    constexpr int kPasses = 4;
    for (int pass = 0; pass < kPasses; ++pass) QApplication::processEvents();
  }
  qt::StockbookWidget& stockbook() { return window_->stockbook(); }
  platform::Grid& grid() { return stockbook().Grid(); }
  std::string Title() const { return window_->windowTitle().toStdString(); }

  GuiSession session_;
  std::unique_ptr<MainWindow> window_;
};

}  // namespace stockbook::app
