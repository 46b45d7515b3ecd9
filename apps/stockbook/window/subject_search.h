// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QStandardItemModel>
#include <vector>

#include "stockbook/command/journal_options.h"
#include "stockbook/inventory/inventory_catalog.h"
#include "stockbook/platform/connection.h"
#include "stockbook/window/subject_chooser.h"
#include "stockbook/window/subject_uses.h"

namespace stockbook::app {

// Searches all products, suppliers, customers and projects of an inventory at once, by any of their texts, while one
// types; those that were chosen most often come first. Enter asks for the journal of the current one. The arrows move
// in the list while the field keeps the focus.
class SubjectSearch : public QDialog {
  Q_OBJECT

 public:
  // A project's journal is of one product, `product`. `uses` may be null; otherwise it outlives the dialog. Throws
  // platform::Error if the inventory cannot be read.
  SubjectSearch(platform::Connection& connection, SubjectUses* uses, int32_t product, QWidget* parent = nullptr);

  QLineEdit& words() { return *words_; }
  QListView& found() { return *found_; }

 signals:
  void Chosen(const stockbook::app::JournalOptions& options);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Subject {
    JournalOptions options;
    QString kind;  // of the uses
    CatalogEntry entry;
  };

  void Add(const QString& what, Subject subject);
  void AddAll(const InventoryCatalog& catalog, int32_t product);
  void Search(const QString& words);
  void Take();

  SubjectUses* uses_;
  std::vector<Subject> subjects_;  // by row of the model
  QStandardItemModel model_;
  WordFilter filter_;
  QLineEdit* words_;
  QListView* found_;
};

}  // namespace stockbook::app
