// SPDX-License-Identifier: MIT
#include "stockbook/window/period_table.h"

#include "base/column_keys.h"
#include "qt/text.h"

namespace stockbook::app {
namespace {

// A column with a quantity and one with its amount.
struct FigureColumns {
  const char* word;
  StockFigures PeriodLine::*figures;
};

std::vector<FigureColumns> FigureColumnsOf(base::tqJournalTypeContants type) {
  if (type == base::SupplierJournal)
    return {{"期初累计", &PeriodLine::opening}, {"收入", &PeriodLine::in}, {"期末累计", &PeriodLine::closing}};
  if (type == base::CustomerJournal)
    return {{"期初累计", &PeriodLine::opening}, {"发出", &PeriodLine::out}, {"期末累计", &PeriodLine::closing}};
  return {{"期初", &PeriodLine::opening},
          {"收入", &PeriodLine::in},
          {"发出", &PeriodLine::out},
          {"期末", &PeriodLine::closing}};
}

QString InFormat(const platform::Grid& grid, const char* key, const base::Value& value) {
  const int column = grid.ColIndex(key);
  return qt::ToQString(column < 0 ? value.Text() : grid.FormatValue(column, value));
}

QStringList TextsOfPeriod(const PeriodLine& line, const std::vector<FigureColumns>& columns,
                          const platform::Grid& grid) {
  namespace keys = base::keys;
  QStringList texts{qt::ToQString(line.caption)};
  if (!line.is_whole) texts.front() += QStringLiteral("（部分）");
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
  captions_ = QStringList{QStringLiteral("期间")};
  for (const FigureColumns& column : columns) {
    captions_ << QString::fromUtf8(column.word) + QStringLiteral("数量");
    captions_ << QString::fromUtf8(column.word) + QStringLiteral("金额");
  }
  captions_ << QStringLiteral("均价");
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
      return line.is_whole ? QVariant() : QVariant(QStringLiteral("区间只含这一期间的一部分，各数只计显示的行"));
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
