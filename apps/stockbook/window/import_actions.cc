// SPDX-License-Identifier: MIT
#include "stockbook/window/import_actions.h"

#include <QFileDialog>
#include <QFileInfo>

#include "qt/text.h"
#include "stockbook/window/import_dialog.h"

namespace stockbook::app {

bool ImportActions::IsTable(const QString& path) {
  static const QStringList suffixes{QStringLiteral("csv"), QStringLiteral("tsv"), QStringLiteral("txt"),
                                    QStringLiteral("xlsx")};
  QString name = QFileInfo(path).fileName().toLower();
  if (name.endsWith(QLatin1String(".gz"))) name.chop(3);
  return suffixes.contains(QFileInfo(name).suffix());
}

void ImportActions::Choose(const QString& folder) {
  const QString path = QFileDialog::getOpenFileName(&window_, tr("导入表格"), folder,
                                                    tr("表格 (*.csv *.tsv *.txt *.xlsx *.csv.gz);;所有文件 (*)"));
  if (!path.isEmpty()) Import(path);
}

void ImportActions::Import(const QString& path) {
  const auto inventory = ImportDialog::Run(&window_, qt::FromQString(path));
  if (inventory.has_value()) emit Imported(qt::ToQString(inventory->file), inventory->message);
}

}  // namespace stockbook::app
