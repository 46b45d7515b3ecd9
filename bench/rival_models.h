// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <QSet>
#include <algorithm>
#include <vector>

#include "qt/sheet/text.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::bench {

// The shown texts of a sheet's lines, produced in advance: the lightest possible model for the toolkit's views. Equal
// texts share their memory.
class ShownTexts {
 public:
  explicit ShownTexts(const sheet::GridSheet& sheet) {
    for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
      if (!sheet.ColHidden(column)) columns_.push_back(column);
    }
    for (const int column : columns_) {
      right_.push_back(sheet.ColAlignment(column) == platform::Alignment::kRightCenter);
      captions_.push_back(qt::ToQString(sheet.TextMatrix(0, column)));
    }
    rows_ = sheet.Rows() - sheet.FixedRows();
    texts_.reserve(static_cast<size_t>(rows_) * columns_.size());
    QSet<QString> known;
    for (int row = sheet.FixedRows(); row < sheet.Rows(); ++row) {
      for (const int column : columns_) texts_.push_back(*known.insert(qt::ToQString(sheet.DisplayText(row, column))));
    }
  }

  int rows() const { return rows_; }
  const std::vector<int>& columns() const { return columns_; }
  QVariant Data(int row, int column, int role) const {
    const auto at = static_cast<size_t>(column);
    if (role == Qt::DisplayRole) return texts_[static_cast<size_t>(row) * columns_.size() + at];
    if (role == Qt::TextAlignmentRole)
      return static_cast<int>(Qt::AlignVCenter | (right_[at] ? Qt::AlignRight : Qt::AlignLeft));
    return {};
  }
  QVariant Caption(int column, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return captions_[static_cast<size_t>(column)];
  }

 private:
  int rows_ = 0;
  std::vector<int> columns_;
  std::vector<bool> right_;
  std::vector<QString> captions_;
  std::vector<QString> texts_;
};

class TableModel : public QAbstractTableModel {
 public:
  explicit TableModel(const ShownTexts& texts) : texts_(texts) {}

  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : texts_.rows(); }
  int columnCount(const QModelIndex& /*parent*/) const override { return static_cast<int>(texts_.columns().size()); }
  QVariant data(const QModelIndex& index, int role) const override {
    return texts_.Data(index.row(), index.column(), role);
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    return texts_.Caption(section, orientation, role);
  }

 private:
  const ShownTexts& texts_;
};

// The first `rows` lines in the given number of groups of equal size.
class TreeModel : public QAbstractItemModel {
 public:
  TreeModel(const ShownTexts& texts, int groups, int rows)
      : texts_(texts), groups_(groups), each_(std::min(rows, texts.rows()) / groups) {}

  QModelIndex index(int row, int column, const QModelIndex& parent) const override {
    return createIndex(row, column, static_cast<quintptr>(parent.isValid() ? parent.row() + 1 : 0));
  }
  QModelIndex parent(const QModelIndex& index) const override {
    return index.internalId() == 0 ? QModelIndex()
                                   : createIndex(static_cast<int>(index.internalId()) - 1, 0, quintptr{0});
  }
  int rowCount(const QModelIndex& parent) const override {
    if (!parent.isValid()) return groups_;
    return parent.internalId() == 0 && parent.column() == 0 ? each_ : 0;
  }
  int columnCount(const QModelIndex& /*parent*/) const override { return static_cast<int>(texts_.columns().size()); }
  QVariant data(const QModelIndex& index, int role) const override {
    const int group = static_cast<int>(index.internalId());
    const int row = group == 0 ? index.row() * each_ : (group - 1) * each_ + index.row();
    return texts_.Data(row, index.column(), role);
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    return texts_.Caption(section, orientation, role);
  }

 private:
  const ShownTexts& texts_;
  int groups_;
  int each_;
};

}  // namespace stockbook::bench
