// SPDX-License-Identifier: MIT
#include "stockbook/window/bill_trail.h"

#include <algorithm>
#include <string>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/journal/amount_texts.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid.h"
#include "stockbook/window/row_sight.h"

namespace stockbook::app {
namespace {

std::string TrailText(const platform::Grid& grid, int row, const char* key) {
  const int column = grid.ColIndex(key);
  return column < 0 ? std::string() : grid.TextMatrix(row, column);
}

}  // namespace

BillTrail::BillTrail(Host host, QWidget* window) : QObject(window), host_(std::move(host)), window_(window) {}

BillSide BillTrail::SideOf(int row) const {
  return TrailText(host_.stockbook.Grid(), row, base::keys::kFlag) == "1" ? BillSide::kIssue : BillSide::kReceipt;
}

void BillTrail::Show() {
  const control::Stockbook& control = host_.stockbook.control();
  const int row = host_.stockbook.Row();
  const int32_t bill_id = control.BillID(row);
  if (bill_id <= 0 || host_.connection() == nullptr || !host_.shown()) {
    emit Told(tr("这一行不属于任何单据。"));
    return;
  }
  const BillSide side = SideOf(row);
  const std::string record = TrailText(host_.stockbook.Grid(), row, base::keys::kRecID);
  const auto bill = Read(side, bill_id);
  if (!bill) return;
  int line = 0;
  for (size_t index = 0; index < bill->lines.size(); ++index) {
    const BillLine& each = bill->lines[index];
    if (each.side == side && std::to_string(each.record_id) == record) line = static_cast<int>(index);
  }
  Open(*bill, line);
}

std::optional<InventoryBill> BillTrail::Read(BillSide side, int32_t bill_id) {
  try {
    auto bill = ReadInventoryBill(*host_.connection(), side, bill_id);
    if (!bill) emit Told(tr("库存中已经没有这张单据，请重新载入台账（F5）。"));
    return bill;
  } catch (const platform::Error& error) {
    emit Told(tr("单据没有读出：%1").arg(qt::ToQString(error.what())));
  }
  return std::nullopt;
}

void BillTrail::Open(const InventoryBill& bill, int line) {
  const auto shown = host_.shown();
  const bool masked = shown && shown->acc_restrict;
  delete dialog_;
  dialog_ =
      new BillDialog(ViewOfBill(bill, masked ? journal::AmountTexts::kMasked : journal::AmountTexts::kShown), window_);
  shown_side_ = bill.side;
  shown_id_ = bill.bill_id;
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  dialog_->GoToLine(line);
  // The dialog is still in the middle of its event.
  connect(dialog_, &BillDialog::JournalWanted, this, &BillTrail::FollowLine, Qt::QueuedConnection);
  dialog_->open();
}

int BillTrail::FindLine(const BillView& bill, const BillLine& line) const {
  const platform::Grid& grid = host_.stockbook.Grid();
  const std::string record = std::to_string(line.record_id);
  const std::string kind = qt::FromQString(bill.kind);
  for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
    if (TrailText(grid, row, base::keys::kRecID) == record && TrailText(grid, row, base::keys::kBillName) == kind &&
        SideOf(row) == line.side) {
      return row;
    }
  }
  return -1;
}

void BillTrail::FollowLine(int line) {
  const auto shown = host_.shown();
  if (dialog_ == nullptr || !shown) return;
  const BillView bill = dialog_->bill();
  const BillLine record = bill.lines[static_cast<size_t>(line)].record;
  const ReadingPlace place(host_.stockbook.sheet());
  dialog_->close();
  JournalOptions options = *shown;
  options.journal_type = base::MaterialJournal;
  options.key_id = record.product_id;
  options.dp_id = 0;
  options.dp_code.clear();
  if (!host_.load(options).loaded) return;
  // From a journal that was itself reached from a bill the way still leads back to the first one.
  if (!came_from_) came_from_.emplace(Origin{*shown, place, shown_side_, shown_id_, bill.number, line});
  sheet::GridSheet& sheet = host_.stockbook.sheet();
  if (const int row = FindLine(bill, record); row >= 0)
    BringIntoSight(sheet, row, std::max(sheet.Col(), sheet.FixedCols()));
  host_.bar.Tell(tr("刚才看的是单据 %1。").arg(came_from_->number), {tr("返回单据(&Z)"), [this] { GoBack(); }});
}

void BillTrail::GoBack() {
  if (!came_from_) return;
  const Origin origin = *std::exchange(came_from_, std::nullopt);
  host_.bar.Dismiss();
  if (!host_.load(origin.journal).loaded) {
    came_from_ = origin;
    return;
  }
  origin.place.GoBack(host_.stockbook.sheet());
  // Others may have changed it meanwhile.
  if (const auto bill = Read(origin.side, origin.bill_id))
    Open(*bill, std::min(origin.line, static_cast<int>(bill->lines.size()) - 1));
}

void BillTrail::Forget() {
  came_from_.reset();
  host_.bar.Dismiss();
  if (dialog_ != nullptr) dialog_->close();
}

}  // namespace stockbook::app
