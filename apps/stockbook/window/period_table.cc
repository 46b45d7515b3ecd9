// SPDX-License-Identifier: MIT
#include "stockbook/window/period_table.h"

#include "qt/sheet/text.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/value.h"
#include "stockbook/window/host_translator.h"

namespace stockbook::app {
namespace {

// A column with a quantity and one with its amount.
struct FigureColumns {
  QString quantity;
  QString amount;
  StockFigures PeriodLine::*figures;
};

std::vector<FigureColumns> FigureColumnsOf(base::tqJournalTypeContants type) {
  const FigureColumns in{HostText("收入数量"), HostText("收入金额"), &PeriodLine::in};
  const FigureColumns out{HostText("发出数量"), HostText("发出金额"), &PeriodLine::out};
  if (type == base::SupplierJournal || type == base::CustomerJournal) {
    return {{HostText("期初累计数量"), HostText("期初累计金额"), &PeriodLine::opening},
            type == base::SupplierJournal ? in : out,
            {HostText("期末累计数量"), HostText("期末累计金额"), &PeriodLine::closing}};
  }
  return {{HostText("期初数量"), HostText("期初金额"), &PeriodLine::opening},
          in,
          out,
          {HostText("期末数量"), HostText("期末金额"), &PeriodLine::closing}};
}

QString InFormat(const platform::Grid& grid, const char* key, const base::Value& value) {
  const int column = grid.ColIndex(key);
  return qt::ToQString(column < 0 ? value.Text() : grid.FormatValue(column, value));
}

QStringList TextsOfPeriod(const PeriodLine& line, const std::vector<FigureColumns>& columns,
                          const platform::Grid& grid) {
  namespace keys = base::keys;
  QStringList texts{HostText(line.caption)};
  if (!line.is_whole) texts.front() += HostText("（部分）");
  for (const FigureColumns& column : columns) {
    const StockFigures& figures = line.*column.figures;
    texts << InFormat(grid, keys::kStoQty, base::Value(figures.quantity));
    texts << (figures.amount ? InFormat(grid, keys::kStoAcc, base::Value(*figures.amount)) : QStringLiteral("-"));
  }
  texts << (line.price ? InFormat(grid, keys::kStoPrice, base::Value(*line.price)) : QStringLiteral("-"));
  return texts;
}

}  // namespace

PeriodTable::PeriodTable(QObject* parent) : QAbstractTableModel(parent) {}

void PeriodTable::SetLines(std::vector<PeriodLine> lines, base::tqJournalTypeContants type,
                           const platform::Grid& grid) {
  beginResetModel();
  lines_ = std::move(lines);
  const std::vector<FigureColumns> columns = FigureColumnsOf(type);
  captions_ = QStringList{HostText("期间")};
  for (const FigureColumns& column : columns) captions_ << column.quantity << column.amount;
  captions_ << HostText("均价");
  shown_.clear();
  for (const PeriodLine& line : lines_) shown_.push_back({TextsOfPeriod(line, columns, grid), line.is_whole});
  endResetModel();
}

int PeriodTable::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int PeriodTable::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(captions_.size());
}

QVariant PeriodTable::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Line& line = shown_.at(static_cast<size_t>(index.row()));
  switch (role) {
    case Qt::DisplayRole:
      return line.texts.at(index.column());
    case Qt::ToolTipRole:
      return line.is_whole ? QVariant() : QVariant(HostText("区间只含这一期间的一部分，各数只计显示的行"));
    case Qt::TextAlignmentRole:
      return index.column() == 0 ? QVariant(Qt::AlignLeft | Qt::AlignVCenter)
                                 : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant PeriodTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= captions_.size()) return {};
  if (role == Qt::DisplayRole) return captions_.at(section);
  if (role == Qt::TextAlignmentRole && section > 0) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

}  // namespace stockbook::app
