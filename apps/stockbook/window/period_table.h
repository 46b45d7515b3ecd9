// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "stockbook/base/journal_type.h"
#include "stockbook/platform/grid.h"
#include "stockbook/range/period_summary.h"

namespace stockbook::app {

// The lines of the period summary for a table: what was there, what came and went, what is there then, in quantity and
// amount, and the average price, in the formats of the journal's columns. The supplier journal has no issues and the
// customer journal no receipts.
class PeriodTable : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit PeriodTable(QObject* parent = nullptr);

  // The grid gives the formats and is not kept.
  void SetLines(std::vector<PeriodLine> lines, base::tqJournalTypeContants type, const platform::Grid& grid);
  const std::vector<PeriodLine>& lines() const { return lines_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Line {
    QStringList texts;
    bool is_whole = true;
  };

  std::vector<PeriodLine> lines_;
  QStringList captions_;
  std::vector<Line> shown_;
};

}  // namespace stockbook::app
