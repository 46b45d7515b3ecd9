// SPDX-License-Identifier: MIT
#include "stockbook/window/bill_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "qt/text.h"

namespace stockbook::app {
namespace {

constexpr int kMargin = 16;
constexpr int kSpacing = 10;
constexpr int kFactsInARow = 4;
constexpr int kLeastRows = 3;  // the dialog has room for at least this many
constexpr int kMostRows = 16;
constexpr int kLeastWidth = 520;
constexpr int kCellPadding = 18;

QLabel* MakeLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* MakeTitle(const BillView& bill) {
  // The number usually contains the kind already.
  const bool named = bill.number.find(bill.kind) != std::string::npos;
  const QString kind = named ? QString() : qt::ToQString(bill.kind) + QStringLiteral("　");
  QLabel* title = MakeLabel(kind + qt::ToQString(bill.number));
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * 1.3);
  font.setBold(true);
  title->setFont(font);
  title->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return title;
}

QGridLayout* MakeFacts(const BillView& bill) {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(kSpacing);
  grid->setVerticalSpacing(kSpacing / 2);
  int index = 0;
  for (const auto& [caption, text] : bill.facts) {
    QLabel* label = MakeLabel(qt::ToQString(caption));
    label->setForegroundRole(QPalette::PlaceholderText);
    QLabel* value = MakeLabel(qt::ToQString(text));
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    const int column = index % kFactsInARow * 3;
    grid->addWidget(label, index / kFactsInARow, column);
    grid->addWidget(value, index / kFactsInARow, column + 1);
    grid->setColumnMinimumWidth(column + 2, kMargin);
    ++index;
  }
  grid->setColumnStretch(kFactsInARow * 3, 1);
  return grid;
}

}  // namespace

BillDialog::BillDialog(const BillView& bill, QWidget* parent) : QDialog(parent), lines_(new QTableWidget) {
  setWindowTitle(QStringLiteral("查看单据 — %1").arg(qt::ToQString(bill.kind)));
  FillLines(bill);
  auto* count = MakeLabel(QStringLiteral("本台账中有该单据 %L1 行").arg(bill.lines.size()));
  count->setForegroundRole(QPalette::PlaceholderText);
  auto* buttons = new QDialogButtonBox;
  QPushButton* close = buttons->addButton(QStringLiteral("关闭(&C)"), QDialogButtonBox::RejectRole);
  close->setDefault(true);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* foot = new QHBoxLayout;
  foot->addWidget(count);
  foot->addWidget(buttons, 1);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  rows->setSpacing(kSpacing);
  rows->addWidget(MakeTitle(bill));
  rows->addLayout(MakeFacts(bill));
  rows->addWidget(lines_, 1);
  rows->addLayout(foot);
  FitSize();
}

void BillDialog::FillLines(const BillView& bill) {
  lines_->setColumnCount(static_cast<int>(bill.columns.size()));
  lines_->setRowCount(static_cast<int>(bill.lines.size()));
  for (int column = 0; column < lines_->columnCount(); ++column) {
    const BillView::Column& told = bill.columns[static_cast<size_t>(column)];
    const Qt::Alignment alignment = (told.is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    auto* caption = new QTableWidgetItem(qt::ToQString(told.caption));
    caption->setTextAlignment(alignment);
    lines_->setHorizontalHeaderItem(column, caption);
    for (int row = 0; row < lines_->rowCount(); ++row) {
      const auto& line = bill.lines[static_cast<size_t>(row)];
      auto* item = new QTableWidgetItem(qt::ToQString(line[static_cast<size_t>(column)]));
      item->setTextAlignment(alignment);
      lines_->setItem(row, column, item);
    }
  }
  lines_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  lines_->setSelectionBehavior(QAbstractItemView::SelectRows);
  lines_->setTabKeyNavigation(false);
  lines_->setWordWrap(false);
  lines_->setAlternatingRowColors(true);
  lines_->verticalHeader()->hide();
  lines_->horizontalHeader()->setHighlightSections(false);
  lines_->resizeColumnsToContents();
  for (int column = 0; column < lines_->columnCount(); ++column)
    lines_->setColumnWidth(column, lines_->columnWidth(column) + kCellPadding);
  columns_width_ = lines_->horizontalHeader()->length();
  // Text columns share the remaining width; number columns stay together.
  const auto text =
      std::find_if(bill.columns.begin(), bill.columns.end(), [](const auto& told) { return !told.is_number; });
  if (text != bill.columns.end()) {
    lines_->horizontalHeader()->setSectionResizeMode(static_cast<int>(text - bill.columns.begin()),
                                                     QHeaderView::Stretch);
  }
}

void BillDialog::FitSize() {
  const int frame = 2 * lines_->frameWidth();
  const int rows = std::clamp(lines_->rowCount(), kLeastRows, kMostRows);
  const int height =
      lines_->horizontalHeader()->sizeHint().height() + rows * lines_->verticalHeader()->defaultSectionSize() + frame;
  const int rest = sizeHint().height() - lines_->sizeHint().height();
  const int bar = lines_->rowCount() > kMostRows ? lines_->verticalScrollBar()->sizeHint().width() : 0;
  const int wanted = std::max(columns_width_ + frame + 2 * kMargin + bar, sizeHint().width());
  const int most = screen()->availableGeometry().width() * 9 / 10;
  resize(std::clamp(wanted, kLeastWidth, std::max(kLeastWidth, most)), rest + height);
}

}  // namespace stockbook::app
