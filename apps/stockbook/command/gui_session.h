// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QTranslator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "stockbook/window/host_language.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {

// There is no display to open a window on, or none that works.
class NoDisplay : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class GuiNeed { kWindow, kPicture };

// The toolkit's application for the duration of one command. If one is already running (in a test), it is used.
// Pictures need no display; a window does, and without one the constructor throws NoDisplay. The toolkit's own
// messages, which are for developers, are suppressed.
class GuiSession {
 public:
  // `scale` is device pixels per logical pixel, for pictures only.
  explicit GuiSession(GuiNeed need, double scale = 1.0);
  ~GuiSession();
  GuiSession(const GuiSession&) = delete;
  GuiSession& operator=(const GuiSession&) = delete;

  // The language of windows that are made from now on. A program without the English texts speaks Chinese.
  void Speak(HostLanguage language);

  int Run();

 private:
  // The application's command line; it keeps pointers to this.
  int argument_count_ = 1;
  std::string program_ = "stockbook";
  std::vector<char*> arguments_;
  std::unique_ptr<QApplication> application_;
  QTranslator translator_;  // for the toolkit's own dialogs, if its translations are installed
  HostTranslator host_texts_;
};

}  // namespace stockbook::app
