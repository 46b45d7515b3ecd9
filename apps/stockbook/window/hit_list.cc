// SPDX-License-Identifier: MIT
#include "stockbook/window/hit_list.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "qt/sheet/text.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/platform/grid.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

enum HitColumn : int { kHitPeriod, kHitBill, kHitCell, kHitColumns };

constexpr int kHitsAtATime = 500;
constexpr int kShownHits = 7;
constexpr int kLeastHits = 2;
constexpr int kShareOfWindow = 22;  // of a hundred
constexpr int kLowWindow = 340;
constexpr char16_t kWideCharacter = u'单';
constexpr int kPeriodWidth = 6;  // in full-width characters
constexpr int kBillWidth = 17;
constexpr int kHitRowPadding = 6;

}  // namespace

HitModel::HitModel(qt::StockbookWidget& stockbook, const JournalFinder& finder)
    : stockbook_(stockbook), finder_(finder) {
  connect(&finder, &JournalFinder::Changed, this, &HitModel::Reset);
}

void HitModel::Reset() {
  beginResetModel();
  offered_ = std::min(kHitsAtATime, static_cast<int>(finder_.hits()));
  endResetModel();
}

int HitModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : offered_; }

int HitModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kHitColumns; }

bool HitModel::canFetchMore(const QModelIndex& parent) const {
  return !parent.isValid() && offered_ < static_cast<int>(finder_.hits());
}

void HitModel::fetchMore(const QModelIndex& parent) {
  if (canFetchMore(parent)) FetchUpTo(offered_ + kHitsAtATime - 1);
}

void HitModel::FetchUpTo(int hit) {
  const int wanted = std::min(hit + 1, static_cast<int>(finder_.hits()));
  if (wanted <= offered_) return;
  beginInsertRows({}, offered_, wanted - 1);
  offered_ = wanted;
  endInsertRows();
}

QVariant HitModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kHitPeriod:
      return tr("期间");
    case kHitBill:
      return tr("单据");
    default:
      return tr("找到的内容");
  }
}

QVariant HitModel::data(const QModelIndex& index, int role) const {
  const bool is_text = role == Qt::DisplayRole || role == Qt::ToolTipRole;
  if (!is_text || !index.isValid() || index.row() >= static_cast<int>(finder_.hits())) return {};
  const int row = finder_.rows()[static_cast<size_t>(index.row())];
  switch (index.column()) {
    case kHitPeriod:
      return PeriodOf(row);
    case kHitBill:
      return BillOf(row);
    default:
      return CellOf(row);
  }
}

// Of a period's own rows only the lines below the node or above the total know which period it is.
QString HitModel::PeriodOf(int row) const {
  const platform::Grid& grid = stockbook_.Grid();
  const int column = grid.ColIndex(keys::kPeriod);
  if (grid.RecordOfRow(row) < 0) {
    const bool governs = row + 1 < grid.Rows() && grid.RecordOfRow(row + 1) >= 0 &&
                         grid.RowOutlineLevel(row + 1) > grid.RowOutlineLevel(row);
    row = governs ? row + 1 : row - 1;
    if (grid.RecordOfRow(row) < 0) return {};
  }
  return qt::ToQString(grid.TextMatrix(row, column));
}

QString HitModel::BillOf(int row) const {
  const platform::Grid& grid = stockbook_.Grid();
  return qt::ToQString(base::OneLine(grid.DisplayText(row, grid.OutlineCol()), " "));
}

QString HitModel::CellOf(int row) const {
  const platform::Grid& grid = stockbook_.Grid();
  const int column = finder_.FirstColumnWithAWord(row);
  if (column < 0) return {};
  const std::string caption = base::OneLine(grid.TextMatrix(0, column), "");
  return qt::ToQString(caption + "：" + base::OneLine(grid.DisplayText(row, column), " / "));
}

HitList::HitList(qt::StockbookWidget& stockbook, JournalFinder& finder, QWidget* parent)
    : QuietTable(parent), finder_(finder), hits_(new HitModel(stockbook, finder)) {
  hits_->setParent(this);
  setModel(hits_);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setAlternatingRowColors(true);
  setShowGrid(false);
  setAccessibleName(tr("查找结果"));
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kHitRowPadding);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setStretchLastSection(true);
  const int character = fontMetrics().horizontalAdvance(QChar(kWideCharacter));
  setColumnWidth(kHitPeriod, kPeriodWidth * character);
  setColumnWidth(kHitBill, kBillWidth * character);
  connect(this, &QuietTable::activated, this, &HitList::Chosen);
}

int HitList::HeightOf(int rows) const {
  const int captions = horizontalHeader()->isHidden() ? 0 : horizontalHeader()->sizeHint().height();
  return captions + rows * verticalHeader()->defaultSectionSize() + 2 * frameWidth();
}

void HitList::FollowWindow() {
  horizontalHeader()->setVisible(window()->height() >= kLowWindow);
  updateGeometry();
}

int HitList::ShownRows() const {
  const int room = window()->height() * kShareOfWindow / 100 - HeightOf(0);
  return std::clamp(room / verticalHeader()->defaultSectionSize(), kLeastHits, kShownHits);
}

QSize HitList::sizeHint() const { return {QuietTable::sizeHint().width(), HeightOf(ShownRows())}; }

QSize HitList::minimumSizeHint() const { return {1, HeightOf(kLeastHits)}; }

void HitList::showEvent(QShowEvent* event) {
  QuietTable::showEvent(event);
  window()->installEventFilter(this);
  FollowWindow();
}

bool HitList::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window() && event->type() == QEvent::Resize) FollowWindow();
  return QuietTable::eventFilter(watched, event);
}

void HitList::ShowPlace() {
  if (isHidden()) return;
  const int hit = static_cast<int>(finder_.place()) - 1;
  const bool nested = std::exchange(showing_place_, true);
  hits_->FetchUpTo(hit);
  setCurrentIndex(hits_->index(hit, 0));
  showing_place_ = nested;
}

void HitList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QuietTable::currentChanged(current, previous);
  if (showing_place_ || !current.isValid() || current.row() == previous.row()) return;
  finder_.GoTo(static_cast<size_t>(current.row()));
  emit Went();
}

void HitList::keyPressEvent(QKeyEvent* event) {
  const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enters && currentIndex().isValid()) {
    emit Chosen();
    return;
  }
  QuietTable::keyPressEvent(event);
}

}  // namespace stockbook::app
