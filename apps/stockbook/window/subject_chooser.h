// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <vector>

#include "stockbook/inventory/inventory_catalog.h"

namespace stockbook::app {

// The entries that contain every word that was typed, in any order and letter case.
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

// A chooser of subjects that can be searched by typing pieces of number, name or model. It always has a choice when it
// has entries; text that chooses nothing gives way to the choice there was.
class SubjectChooser : public QComboBox {
  Q_OBJECT

 public:
  explicit SubjectChooser(QWidget* parent = nullptr);

  void SetEntries(std::vector<CatalogEntry> entries);
  // The chosen entry, or one that means nothing when there is none.
  CatalogEntry Current() const;
  // False when there is no such entry; the choice stays then.
  bool Choose(int32_t key, const std::string& class_code);

 signals:
  // The user chose, by list, by search or by Enter.
  void Chosen();
  // The user pressed Enter, and no entry has these words.
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
