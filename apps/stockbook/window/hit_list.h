// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>

#include "stockbook/window/journal_finder.h"
#include "stockbook/window/quiet_table.h"

namespace stockbook::app {

// The hits of a search as a table: the period, the bill, and the first cell with a word. It reads rows only when they
// are shown, and offers so many at a time that a million hits cost no more than a hundred.
class HitModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  HitModel(qt::StockbookWidget& stockbook, const JournalFinder& finder);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

  // Offers the hit, too, if it exists.
  void FetchUpTo(int hit);

 private:
  void Reset();
  QString PeriodOf(int row) const;
  QString BillOf(int row) const;
  QString CellOf(int row) const;

  qt::StockbookWidget& stockbook_;
  const JournalFinder& finder_;
  int offered_ = 0;
};

// The table that shows them: going from hit to hit in it goes there in the journal.
class HitList : public QuietTable {
  Q_OBJECT

 public:
  HitList(qt::StockbookWidget& stockbook, JournalFinder& finder, QWidget* parent = nullptr);

  // Makes the finder's place the current line, without going anywhere; does nothing while the list is hidden.
  void ShowPlace();
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  // The user went to a hit.
  void Went();
  // Enter was pressed on a hit, or it was double-clicked.
  void Chosen();

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // In a low window hits go without captions.
  void FollowWindow();
  // What the window has room for beside the journal.
  int ShownRows() const;
  int HeightOf(int rows) const;

  JournalFinder& finder_;
  HitModel* hits_;
  bool showing_place_ = false;
};

}  // namespace stockbook::app
