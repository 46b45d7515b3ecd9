// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <vector>

#include "stockbook/inventory/inventory_catalog.h"

namespace stockbook::app {

// The entries that contain every typed word, in any order and letter case.
class WordFilter : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;
  void SetText(const QString& text);

 protected:
  bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;

 private:
  QStringList words_;
};

// A chooser of subjects that can be searched by typing parts of number, name or model. If it has entries, one is always
// chosen; text that matches nothing is replaced by the previous choice.
class SubjectChooser : public QComboBox {
  Q_OBJECT

 public:
  explicit SubjectChooser(QWidget* parent = nullptr);

  void SetEntries(std::vector<CatalogEntry> entries);
  // The chosen entry, or an empty one if there is none.
  CatalogEntry Current() const;
  // Returns false and keeps the choice if there is no such entry.
  bool Choose(int32_t key, const std::string& class_code);

 signals:
  // The user chose an entry from the list, by searching or with Enter.
  void Chosen();
  // The user pressed Enter, but no entry has these words.
  void NothingFound(const QString& words);

 protected:
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void Enter();
  bool TakeTypedText();
  void ShowCurrent();

  std::vector<CatalogEntry> entries_;
  WordFilter* filter_;
};

}  // namespace stockbook::app
