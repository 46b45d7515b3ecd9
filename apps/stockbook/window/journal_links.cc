// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_links.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "stockbook/base/column_keys.h"
#include "stockbook/window/row_sight.h"

namespace stockbook::app {
namespace {

constexpr const char* kTransferBill = "调拨单";
constexpr int64_t kReceiptFlag = 0;
constexpr int64_t kIssueFlag = 1;

}  // namespace

JournalLinks::JournalLinks(qt::StockbookWidget& stockbook, ShownJournal& journal, WindowMenus& menus, LoadJournal load)
    : stockbook_(stockbook), journal_(journal), load_(std::move(load)) {
  menus.Add(MenuPlace::kGoRow, tr("来源入库(&S)"), QKeySequence(Qt::CTRL | Qt::Key_J), this, &JournalLinks::GoToSource);
  menus.Add(MenuPlace::kGoRow, tr("调拨的另一方(&T)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_J), this,
            &JournalLinks::GoToOtherSide);
  menus.Add(MenuPlace::kGoRow, tr("该行的商品台账(&P)"), QKeySequence(Qt::CTRL | Qt::Key_1), this,
            &JournalLinks::GoToProduct);
  menus.Add(MenuPlace::kGoRow, tr("该行的往来单位台账(&U)"), QKeySequence(Qt::CTRL | Qt::Key_2), this,
            &JournalLinks::GoToPartner);
  menus.Add(MenuPlace::kGoRow, tr("该行的项目台账(&J)"), QKeySequence(Qt::CTRL | Qt::Key_3), this,
            &JournalLinks::GoToProject);
}

std::string JournalLinks::CurrentText(const char* key) const {
  const platform::Grid& grid = stockbook_.Grid();
  const int column = grid.ColIndex(key);
  return column < 0 || grid.Row() < grid.FixedRows() ? std::string() : grid.TextMatrix(grid.Row(), column);
}

int64_t JournalLinks::CurrentNumber(const char* key) const {
  const platform::Grid& grid = stockbook_.Grid();
  const int column = grid.ColIndex(key);
  return column < 0 || grid.Row() < grid.FixedRows() ? 0 : static_cast<int64_t>(grid.ValueMatrix(grid.Row(), column));
}

// The row of the line, or -1. O(records).
int JournalLinks::Find(const Line& wanted) const {
  namespace keys = base::keys;
  const platform::Grid& grid = stockbook_.Grid();
  const int flag = grid.ColIndex(keys::kFlag);
  const int record = grid.ColIndex(keys::kRecID);
  const auto holds = [&](int row, const char* key, const std::string& text) {
    return text.empty() || grid.TextMatrix(row, grid.ColIndex(key)) == text;
  };
  for (size_t index = 0; index < grid.RecordCount(); ++index) {
    const int row = grid.RowOfRecord(index);
    if (static_cast<int64_t>(grid.ValueMatrix(row, flag)) != wanted.flag) continue;
    if (wanted.record != 0 && static_cast<int64_t>(grid.ValueMatrix(row, record)) != wanted.record) continue;
    if (static_cast<int64_t>(grid.ValueMatrix(row, grid.ColIndex(keys::kPdID))) != wanted.product) continue;
    if (holds(row, keys::kBillName, wanted.bill_name) && holds(row, keys::kBillNo, wanted.bill_no) &&
        holds(row, keys::kDQty, wanted.quantity))
      return row;
  }
  return -1;
}

void JournalLinks::GoTo(const Line& wanted, const QString& missing) {
  int row = Find(wanted);
  if (row < 0 && journal_.options().has_value()) {
    JournalOptions everywhere = *journal_.options();
    const bool is_everywhere = everywhere.journal_type == base::MaterialJournal && everywhere.dp_id < 1;
    if (!is_everywhere && wanted.product > 0) {
      if (!Load(base::MaterialJournal, wanted.product, 0)) return;
      row = Find(wanted);
    }
  }
  if (row < 0) {
    emit Told(missing);
  } else {
    BringIntoSight(stockbook_.sheet(), row, std::max(stockbook_.sheet().Col(), stockbook_.sheet().FixedCols()));
  }
}

void JournalLinks::GoToSource() {
  const int64_t source = CurrentNumber(base::keys::kOtherID);
  if (source == 0) {
    emit Told(tr("这一行没有记录库存来源。"));
  } else if (source < 0) {
    emit Told(tr("这一行的库存来自期初结存，没有入库单。"));
  } else {
    GoTo({source, kReceiptFlag, CurrentNumber(base::keys::kPdID), {}, {}, {}},
         tr("台账中没有这一行的来源入库（记录号 %1）。").arg(source));
  }
}

void JournalLinks::GoToOtherSide() {
  namespace keys = base::keys;
  if (CurrentText(keys::kBillName) != kTransferBill) {
    emit Told(tr("这一行不是调拨单。"));
    return;
  }
  const int64_t other = CurrentNumber(keys::kFlag) == kReceiptFlag ? kIssueFlag : kReceiptFlag;
  GoTo({0, other, CurrentNumber(keys::kPdID), kTransferBill, CurrentText(keys::kBillNo), CurrentText(keys::kDQty)},
       tr("台账中没有这张调拨单的另一方。"));
}

void JournalLinks::GoToProduct() {
  const int64_t product = CurrentNumber(base::keys::kPdID);
  if (product <= 0) {
    emit Told(tr("这一行没有商品。"));
  } else {
    Load(base::MaterialJournal, product, 0);
  }
}

void JournalLinks::GoToPartner() {
  const int64_t partner = CurrentNumber(base::keys::kKsID);
  if (partner <= 0) {
    emit Told(tr("这一行没有往来单位。"));
  } else {
    const bool receipt = CurrentNumber(base::keys::kFlag) == kReceiptFlag;
    Load(receipt ? base::SupplierJournal : base::CustomerJournal, 0, partner);
  }
}

void JournalLinks::GoToProject() {
  const int64_t project = CurrentNumber(base::keys::kPjID);
  if (project <= 0) {
    emit Told(tr("这一行没有项目。"));
  } else {
    Load(base::ProjectJournal, CurrentNumber(base::keys::kPdID), project);
  }
}

// What the journal shows besides (second quantity, tax) stays as it is.
bool JournalLinks::Load(int journal_type, int64_t key, int64_t second) {
  constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
  if (key > kMost || second > kMost) return false;
  JournalOptions options = journal_.options().value_or(JournalOptions());
  options.journal_type = journal_type;
  options.key_id = static_cast<int32_t>(key);
  options.dp_id = static_cast<int32_t>(second);
  options.dp_code.clear();
  return load_(options).loaded;
}

}  // namespace stockbook::app
