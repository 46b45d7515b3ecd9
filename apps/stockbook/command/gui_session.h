// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QTranslator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace stockbook::app {

// There is no display to open a window on, or none that works.
class NoDisplay : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class GuiNeed { kWindow, kPicture };

// The toolkit's application for the time of one command. Where one runs already (a test's), it is used. For pictures it
// needs no display; without one for a window, the constructor throws NoDisplay. The toolkit's own messages, which speak
// to its developers, stay unsaid.
class GuiSession {
 public:
  // `scale` is device pixels per logical pixel, of pictures only.
  explicit GuiSession(GuiNeed need, double scale = 1.0);
  ~GuiSession();
  GuiSession(const GuiSession&) = delete;
  GuiSession& operator=(const GuiSession&) = delete;

  int Run();

 private:
  // What the application reads as its command line; it keeps the pointers.
  int argument_count_ = 1;
  std::string program_ = "stockbook";
  std::vector<char*> arguments_;
  std::unique_ptr<QApplication> application_;
  QTranslator translator_;  // of the toolkit's own dialogs, where its translations are installed
};

}  // namespace stockbook::app
