// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <functional>
#include <vector>

#include "stockbook/inventory/inventory_catalog.h"

namespace stockbook::app {

// The entries that contain every typed word, in any order and letter case, among all their texts; those that the user
// has chosen most often come first.
class WordFilter : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  // What the entries of the source model carry beside the text that is shown.
  static constexpr int kWordsRole = Qt::UserRole;
  static constexpr int kUsesRole = Qt::UserRole + 1;

  using QSortFilterProxyModel::QSortFilterProxyModel;
  void SetText(const QString& text);

 protected:
  bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

 private:
  QStringList words_;
};

// A chooser of subjects that can be searched by typing parts of any of their texts. If it has entries, one is always
// chosen, and it shows that one except while somebody types: Enter and Tab take what was typed, Esc and a click
// elsewhere give back what was chosen.
class SubjectChooser : public QComboBox {
  Q_OBJECT

 public:
  // How often the user has chosen an entry.
  using Uses = std::function<int(const CatalogEntry&)>;

  explicit SubjectChooser(QWidget* parent = nullptr);

  void SetEntries(std::vector<CatalogEntry> entries, const Uses& uses = {});
  // Ranks the entries anew.
  void Rank(const Uses& uses);
  // The chosen entry, or an empty one if there is none.
  CatalogEntry Current() const;
  // Returns false and keeps the choice if there is no such entry.
  bool Choose(int32_t key, const std::string& class_code);
  // Chooses the entry; one that the inventory does not have is added and says so.
  void Show(int32_t key, const std::string& class_code);
  // Chooses the best entry with the typed words; returns false and gives back what was chosen if no entry has them.
  bool TakeTypedText();
  void showPopup() override;

 signals:
  // The user chose an entry from the list, by searching or with Enter.
  void Chosen();
  // The user pressed Enter, but no entry has these words.
  void NothingFound(const QString& words);

 protected:
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // What is searched, made for the first search.
  WordFilter& Filter();
  void Search(const QString& text);
  void Enter();
  int BestFound() const;
  void ShowCurrent();
  // As wide as the entries, as far as the screen reaches.
  void WidenList(QAbstractItemView& list) const;

  std::vector<CatalogEntry> entries_;
  WordFilter* filter_ = nullptr;
  bool typed_ = false;  // the text is what somebody types, not the choice
};

}  // namespace stockbook::app
