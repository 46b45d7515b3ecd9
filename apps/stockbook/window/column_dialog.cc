// SPDX-License-Identifier: MIT
#include "stockbook/window/column_dialog.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "qt/sheet/text.h"
#include "sheet/geometry/scale.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/window/screen_fit.h"

namespace stockbook::app {
namespace {

enum ListPart { kCaptionPart, kWidthPart, kFrozenPart };
constexpr int kColumnKeyRole = Qt::UserRole;
constexpr int kLeastColumnPx = 4;
constexpr int kMostColumnPx = 4000;
constexpr QSize kColumnDialogSize(380, 460);

int WidthInPixels(int twips) { return static_cast<int>(std::lround(twips / sheet::kTwipsPerPixel)); }
int WidthFromPixels(int pixels) { return static_cast<int>(std::lround(pixels * sheet::kTwipsPerPixel)); }

std::string KeyOfItem(const QTreeWidgetItem& item) {
  return qt::FromQString(item.data(kCaptionPart, kColumnKeyRole).toString());
}

}  // namespace

ColumnDialog::ColumnDialog(qt::StockbookWidget& stockbook, JournalColumns& columns, QWidget* parent)
    : QDialog(parent), stockbook_(stockbook), columns_(columns), list_(new QTreeWidget) {
  setWindowTitle(tr("列设置"));
  list_->setHeaderLabels({tr("字段"), tr("宽度（像素）"), tr("冻结")});
  list_->setRootIsDecorated(false);
  list_->setAccessibleName(tr("台账的列"));
  list_->setDragDropMode(QAbstractItemView::InternalMove);
  list_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  list_->header()->setSectionResizeMode(kCaptionPart, QHeaderView::Stretch);
  list_->header()->setStretchLastSection(false);
  list_->viewport()->installEventFilter(this);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(list_, 1);
  BuildButtons(*rows);
  connect(list_, &QTreeWidget::itemChanged, this, &ColumnDialog::TakeItem);
  // Not in the middle of an edit of the list.
  connect(&columns_, &JournalColumns::Changed, this, &ColumnDialog::Refill, Qt::QueuedConnection);
  ResizeWithinScreen(*this, kColumnDialogSize);
  Refill();
}

void ColumnDialog::BuildButtons(QVBoxLayout& rows) {
  auto* places = new QGridLayout;
  int count = 0;
  const auto add = [&](const QString& text, const QKeySequence& key, auto&& action) {
    auto* button = new QPushButton(text);
    button->setAutoDefault(false);
    if (!key.isEmpty()) {
      button->setShortcut(key);
      button->setToolTip(key.toString(QKeySequence::NativeText));
    }
    connect(button, &QPushButton::clicked, this, action);
    places->addWidget(button, count / 3, count % 3);
    ++count;
  };
  add(tr("上移"), QKeySequence(Qt::ALT | Qt::Key_Up), [this] { MoveCurrent(-1); });
  add(tr("下移"), QKeySequence(Qt::ALT | Qt::Key_Down), [this] { MoveCurrent(1); });
  add(tr("适应内容(&W)"), {}, [this] { columns_.FitToContents(); });
  add(tr("冻结到此列(&Z)"), {}, [this] { FreezeUpToCurrent(); });
  add(tr("取消冻结(&U)"), {}, [this] { columns_.Unfreeze(); });
  add(tr("默认格式(&F)"), {}, [this] { columns_.LayOutAnew(); });
  add(tr("撤销"), QKeySequence::Undo, [this] { columns_.Undo(); });
  add(tr("重做"), QKeySequence::Redo, [this] { columns_.Redo(); });
  add(tr("关闭(&C)"), {}, [this] { close(); });
  rows.addLayout(places);
}

// Columns that the control does not let the user see are not in the list.
void ColumnDialog::Refill() {
  const std::string current = CurrentKey();
  const QSignalBlocker quiet(list_);
  const platform::Grid& grid = stockbook_.Grid();
  const std::string kept = stockbook_.control().ColsFilter();
  list_->clear();
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    const std::string key = grid.ColKey(column);
    if (IsKept(kept, key)) continue;
    auto* item = new QTreeWidgetItem(list_);
    QString caption = qt::ToQString(grid.TextMatrix(0, column));
    item->setText(kCaptionPart, caption.replace(QLatin1Char('\n'), QLatin1Char(' ')));
    item->setData(kCaptionPart, kColumnKeyRole, qt::ToQString(key));
    item->setText(kWidthPart, QString::number(WidthInPixels(grid.ColWidth(column))));
    item->setText(kFrozenPart, column <= grid.FrozenCols() ? tr("是") : QString());
    item->setCheckState(kCaptionPart, grid.ColHidden(column) ? Qt::Unchecked : Qt::Checked);
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled;
    // The column of the tree cannot be hidden.
    if (column != grid.OutlineCol()) flags |= Qt::ItemIsUserCheckable;
    item->setFlags(flags);
  }
  MakeCurrent(current);
}

void ColumnDialog::TakeItem(QTreeWidgetItem* item, int part) {
  if (item == nullptr) return;
  const std::string key = KeyOfItem(*item);
  ColumnArrangement wanted = columns_.Now();
  const auto column = std::find_if(wanted.columns.begin(), wanted.columns.end(),
                                   [&](const ColumnArrangement::Column& each) { return each.key == key; });
  if (column == wanted.columns.end()) return;
  if (part == kCaptionPart) column->hidden = item->checkState(kCaptionPart) == Qt::Unchecked;
  if (part == kWidthPart) {
    bool number = false;
    const int pixels = item->text(kWidthPart).toInt(&number);
    if (number) column->width_twips = WidthFromPixels(std::clamp(pixels, kLeastColumnPx, kMostColumnPx));
  }
  columns_.Arrange(wanted);
  // A caption that was edited, or a width that is no number, shows again what is so.
  QMetaObject::invokeMethod(this, &ColumnDialog::Refill, Qt::QueuedConnection);
}

// The list itself has moved the row that was dropped; what it shows is taken for the order.
bool ColumnDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Drop) QMetaObject::invokeMethod(this, &ColumnDialog::TakeOrder, Qt::QueuedConnection);
  return QDialog::eventFilter(watched, event);
}

// Columns that are not in the list keep their places.
void ColumnDialog::TakeOrder() {
  ColumnArrangement wanted = columns_.Now();
  const std::vector<ColumnArrangement::Column> before = wanted.columns;
  const std::string kept = stockbook_.control().ColsFilter();
  int row = 0;
  for (ColumnArrangement::Column& column : wanted.columns) {
    if (IsKept(kept, column.key) || row >= list_->topLevelItemCount()) continue;
    const std::string key = KeyOfItem(*list_->topLevelItem(row++));
    const auto found = std::find_if(before.begin(), before.end(),
                                    [&](const ColumnArrangement::Column& each) { return each.key == key; });
    if (found != before.end()) column = *found;
  }
  columns_.Arrange(wanted);
  Refill();
}

void ColumnDialog::MoveCurrent(int by) {
  const int row = list_->indexOfTopLevelItem(list_->currentItem());
  const int target = row + by;
  if (row < 0 || target < 0 || target >= list_->topLevelItemCount()) return;
  {
    const QSignalBlocker quiet(list_);
    QTreeWidgetItem* item = list_->takeTopLevelItem(row);
    list_->insertTopLevelItem(target, item);
    list_->setCurrentItem(item);
  }
  TakeOrder();
}

void ColumnDialog::FreezeUpToCurrent() { columns_.FreezeUpTo(stockbook_.Grid().ColIndex(CurrentKey())); }

std::string ColumnDialog::CurrentKey() const {
  return list_->currentItem() != nullptr ? KeyOfItem(*list_->currentItem()) : std::string();
}

void ColumnDialog::MakeCurrent(const std::string& key) {
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    if (KeyOfItem(*list_->topLevelItem(row)) == key) return list_->setCurrentItem(list_->topLevelItem(row));
  }
  if (list_->topLevelItemCount() > 0) list_->setCurrentItem(list_->topLevelItem(0));
}

}  // namespace stockbook::app
