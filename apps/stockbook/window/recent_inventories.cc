// SPDX-License-Identifier: MIT
#include "stockbook/window/recent_inventories.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace stockbook::app {
namespace {

constexpr qsizetype kMostRecent = 9;

QString RecentName() { return QStringLiteral("recent"); }

}  // namespace

RecentInventories::RecentInventories(WindowMemory& memory, QMenu& menu) : memory_(memory), menu_(menu) {
  // A file may have gone since the menu was last open.
  connect(&menu, &QMenu::aboutToShow, this, &RecentInventories::Refill);
  Refill();
}

void RecentInventories::Add(const QString& file) {
  if (file.isEmpty()) return;
  const QString path = QFileInfo(file).absoluteFilePath();
  QStringList files = memory_.OfWindow(RecentName()).toStringList();
  if (files.value(0) == path) return;
  files.removeAll(path);
  files.prepend(path);
  memory_.SetOfWindow(RecentName(), QStringList(files.mid(0, kMostRecent)));
  Refill();
}

QString RecentInventories::Last() const { return memory_.OfWindow(RecentName()).toStringList().value(0); }

void RecentInventories::Refill() {
  menu_.clear();
  const QStringList files = memory_.OfWindow(RecentName()).toStringList();
  int number = 0;
  for (const QString& file : files) {
    QString shown = QDir::toNativeSeparators(file);
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    QAction* item = menu_.addAction(QStringLiteral("&%1  %2").arg(++number).arg(shown));
    item->setEnabled(QFileInfo::exists(file));
    // Opening the file fills the menu again, which must have done with this item.
    connect(
        item, &QAction::triggered, this, [this, file] { emit Chosen(file); }, Qt::QueuedConnection);
  }
  menu_.setEnabled(!files.isEmpty());
}

}  // namespace stockbook::app
