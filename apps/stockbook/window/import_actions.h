// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QWidget>

namespace stockbook::app {

// Makes an inventory of a table that the user chooses, or that comes from elsewhere, by ImportDialog.
class ImportActions : public QObject {
  Q_OBJECT

 public:
  explicit ImportActions(QWidget& window) : QObject(&window), window_(window) {}

  // Whether the file is a table to import by its name, and not an inventory to open.
  static bool IsTable(const QString& path);

  // Where somebody who has the inventory open looks for a table first; "" for an inventory that is no file.
  static QString FolderOfTables(const QString& inventory);

  // Asks for the table.
  void Choose(const QString& inventory);
  void Import(const QString& path);

 signals:
  // The inventory is written; the message says how much was imported and skipped.
  void Imported(const QString& file, const QString& message);

 private:
  QWidget& window_;
};

}  // namespace stockbook::app
