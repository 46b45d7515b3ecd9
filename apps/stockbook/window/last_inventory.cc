// SPDX-License-Identifier: MIT
#include "stockbook/window/last_inventory.h"

#include <QDir>
#include <QFileInfo>

#include "qt/sheet/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

// Why the file cannot be opened; "" if it is open now.
QString ReasonAgainst(MainWindow& window, const QString& file) {
  try {
    window.OpenDatabase(DatabaseSource(qt::FromQString(file)), window.AskInDialog());
    return {};
  } catch (const platform::Error& error) {
    return qt::ToQString(error.what());
  }
}

}  // namespace

void OpenLastInventory(MainWindow& window, const std::function<std::string()>& sample) {
  RecentInventories& recent = window.recall()->recent();
  const QString last = recent.Last();
  const bool gone = !last.isEmpty() && !QFileInfo::exists(last);
  QString reason;
  if (!last.isEmpty() && !gone) {
    reason = ReasonAgainst(window, last);
    if (reason.isEmpty()) return;
  }
  const std::string replacement = sample();
  window.OpenDatabase(replacement);
  // The sample is made again where it has gone.
  if (last.isEmpty() || QFileInfo(qt::ToQString(replacement)).absoluteFilePath() == last) return;
  recent.Add(last);
  window.reading().strip().TellReplacement(QDir::toNativeSeparators(last), reason,
                                           [&window, last] { window.OpenFile(last); });
}

}  // namespace stockbook::app
