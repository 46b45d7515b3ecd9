// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <memory>

#include "app/window_fixture.h"

namespace stockbook::app {

// Runs of the program one after the other, each with a window of its own over the same settings.
class RunTest : public WindowTest {
 protected:
  QString SettingsFile() const { return QString::fromStdString(PathOf("window.ini")); }

  // The window of a new run, in which nothing is open yet.
  void Begin() {
    window_.reset();
    settings_ = std::make_unique<QSettings>(SettingsFile(), QSettings::IniFormat);
    window_ = std::make_unique<MainWindow>();
    window_->Remember(*settings_);
  }
  // The same with the first journal in it.
  void Start() {
    Begin();
    ShowFirst();
  }
  void ShowFirst() {
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    Settle();
  }
  // The user closes the window.
  void End() {
    window_->close();
    window_.reset();
    settings_.reset();
  }

  std::unique_ptr<QSettings> settings_;
};

}  // namespace stockbook::app
