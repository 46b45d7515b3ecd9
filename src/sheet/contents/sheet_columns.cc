// SPDX-License-Identifier: MIT
// Sheet as platform::GridColumns.
#include <algorithm>

#include "sheet/contents/kept_sheet.h"
#include "sheet/store/store.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::sheet {
namespace {

constexpr int kMostColumns = 10000;
constexpr int kMostWidth = 1440 * 100;  // twips: 100 inches

}  // namespace

using platform::Alignment;
using platform::DataType;
using platform::Error;

void Sheet::SetCols(int count) {
  if (count < 0 || count > kMostColumns) {
    throw Error("Cols", "Cols: " + std::to_string(count) + " is no number of columns; use 0 to " +
                            std::to_string(kMostColumns) + ".");
  }
  if (count == Cols()) return;
  Renew(revisions_.rows);
  fixed_cols_ = std::min(fixed_cols_, count);
  Telling([&] { store_.columns().SetCount(count); }, [&] { ColumnsChanged(); });
}

void Sheet::SetFixedCols(int count) {
  if (count < 0 || count > Cols()) {
    throw Error("FixedCols", "FixedCols: " + std::to_string(count) + " columns cannot be fixed; the grid has " +
                                 std::to_string(Cols()) + ".");
  }
  Renew(revisions_.rows);
  fixed_cols_ = count;
  ColumnsChanged();
}

void Sheet::SetFrozenCols(int count) {
  if (count < 0 || (count >= Cols() && count > 0)) {
    throw Error("FrozenCols", "FrozenCols: there is no column " + std::to_string(count) +
                                  " to freeze up to; the grid has columns 0 to " + std::to_string(Cols() - 1) + ".");
  }
  frozen_cols_ = count;
  ColumnsChanged();
}

int Sheet::ColIndex(std::string_view key) const { return store_.columns().IndexOf(key); }

std::string Sheet::ColKey(int column) const {
  CheckColumn("ColKey", column);
  return store_.columns().At(column).key;
}

void Sheet::SetColKey(int column, std::string_view key) {
  CheckColumn("ColKey", column);
  Renew(revisions_.columns);
  store_.columns().SetKey(column, key);
}

void Sheet::SetColPosition(int column, int position) {
  CheckColumn("ColPosition", column);
  CheckColumn("ColPosition", position);
  if (column == position) return;
  Renew(revisions_.rows);
  store_.columns().Move(column, position);
  ColumnsChanged();
}

bool Sheet::ColHidden(int column) const {
  CheckColumn("ColHidden", column);
  return store_.columns().At(column).hidden;
}

void Sheet::SetColHidden(int column, bool hidden) {
  CheckColumn("ColHidden", column);
  if (store_.columns().At(column).hidden == hidden) return;
  Renew(revisions_.columns);
  store_.columns().At(column).hidden = hidden;
  ColumnsChanged();
}

DataType Sheet::ColDataType(int column) const {
  CheckColumn("ColDataType", column);
  return store_.columns().At(column).type();
}

void Sheet::SetColDataType(int column, DataType type) {
  CheckColumn("ColDataType", column);
  store_.columns().At(column).SetType(type);
  LooksChanged();
}

std::string Sheet::ColFormat(int column) const {
  CheckColumn("ColFormat", column);
  return store_.columns().At(column).format().text();
}

void Sheet::SetColFormat(int column, std::string_view format) {
  CheckColumn("ColFormat", column);
  SheetColumn& target = store_.columns().At(column);
  if (target.format().text() == format) return;
  target.SetFormat(format);
  LooksChanged();
}

int Sheet::ColWidth(int column) const {
  CheckColumn("ColWidth", column);
  return store_.columns().At(column).width_twips;
}

void Sheet::SetColWidth(int column, int twips) {
  CheckColumn("ColWidth", column);
  if (twips < 0) {
    throw Error("ColWidth", "ColWidth: " + std::to_string(twips) + " is no width; use 0 or more twips.");
  }
  SheetColumn& target = store_.columns().At(column);
  if (target.width_twips == std::min(twips, kMostWidth)) return;
  target.width_twips = std::min(twips, kMostWidth);
  ColumnsChanged();
}

Alignment Sheet::ColAlignment(int column) const {
  CheckColumn("ColAlignment", column);
  return store_.columns().At(column).alignment;
}

void Sheet::SetColAlignment(int column, Alignment alignment) {
  if (column == -1) {
    for (int each = 0; each < Cols(); ++each) store_.columns().At(each).alignment = alignment;
  } else {
    CheckColumn("ColAlignment", column);
    store_.columns().At(column).alignment = alignment;
  }
  LooksChanged();
}

}  // namespace stockbook::sheet
