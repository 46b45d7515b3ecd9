// SPDX-License-Identifier: MIT
#include "stockbook/window/import_actions.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include "qt/sheet/text.h"
#include "stockbook/window/import_dialog.h"

namespace stockbook::app {

bool ImportActions::IsTable(const QString& path) {
  static const QStringList suffixes{QStringLiteral("csv"), QStringLiteral("tsv"), QStringLiteral("txt"),
                                    QStringLiteral("xlsx")};
  QString name = QFileInfo(path).fileName().toLower();
  if (name.endsWith(QLatin1String(".gz"))) name.chop(3);
  return suffixes.contains(QFileInfo(name).suffix());
}

// The sample lies in a hidden folder of the program's own, where nobody has a table.
QString ImportActions::FolderOfTables(const QString& inventory) {
  const QDir own(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
  const QDir beside(QFileInfo(inventory).absolutePath());
  return inventory.isEmpty() || beside == own ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                                              : beside.path();
}

void ImportActions::Choose(const QString& inventory) {
  const QString path = QFileDialog::getOpenFileName(&window_, tr("导入表格"), FolderOfTables(inventory),
                                                    tr("表格 (*.csv *.tsv *.txt *.xlsx *.csv.gz);;所有文件 (*)"));
  if (!path.isEmpty()) Import(path);
}

void ImportActions::Import(const QString& path) {
  const auto inventory = ImportDialog::Run(&window_, qt::FromQString(path));
  if (!inventory.has_value()) return;
  // With the dialog above it another one may have closed, and not every desktop gives the focus back then.
  window_.activateWindow();
  emit Imported(qt::ToQString(inventory->file), inventory->message);
}

}  // namespace stockbook::app
