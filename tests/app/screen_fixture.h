// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

#include "app/window_fixture.h"

namespace stockbook::app {

// The window on a screen of some size, which is not there to be seen.
class ScreenTest : public WindowTest {
 protected:
  explicit ScreenTest(QSize size) : WindowTest(Begin(size)) {}
  ~ScreenTest() override {
    window_.reset();
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }

  // As large as the program makes it at its first start.
  void OpenJournal(QSize frame = {0, 11}) {
    window_->resize(QSize(1280, 800).boundedTo(window_->screen()->availableSize() - frame));
    Open();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    Settle();
  }

 private:
  static GuiNeed Begin(QSize size) {
    static QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("screen.json")));
    const QString text = QStringLiteral(
        "{\"screens\": [{\"name\": \"small\", \"x\": 0, \"y\": 0, \"width\": %1, \"height\": %2, \"logicalDpi\": 96, "
        "\"logicalBaseDpi\": 96, \"dpr\": 1}]}");
    if (file.open(QIODevice::WriteOnly)) file.write(text.arg(size.width()).arg(size.height()).toUtf8());
    file.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
    qputenv("QT_SCALE_FACTOR", "1");
    return GuiNeed::kWindow;
  }
};

}  // namespace stockbook::app
