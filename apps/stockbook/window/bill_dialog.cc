// SPDX-License-Identifier: MIT
#include "stockbook/window/bill_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "stockbook/window/bill_paper.h"

namespace stockbook::app {
namespace {

constexpr int kMargin = 16;
constexpr int kSpacing = 10;
constexpr int kFactsInARow = 4;
constexpr int kLeastRows = 3;  // the dialog has room for at least this many
constexpr int kMostRows = 12;
constexpr int kLeastWidth = 520;
constexpr int kCellPadding = 18;

QLabel* MakeLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* MakeTitle(const BillView& bill) {
  // The number usually contains the kind already.
  const bool named = bill.number.contains(bill.kind);
  QLabel* title = MakeLabel(named ? bill.number : bill.kind + QStringLiteral("　") + bill.number);
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
    QLabel* label = MakeLabel(caption);
    label->setForegroundRole(QPalette::PlaceholderText);
    QLabel* value = MakeLabel(text);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setBuddy(value);
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

BillDialog::BillDialog(BillView bill, QWidget* parent)
    : QDialog(parent),
      bill_(std::move(bill)),
      lines_(new QTableWidget),
      journal_(new QPushButton(tr("该商品的台账(&J)"))) {
  setWindowTitle(tr("查看单据 — %1").arg(bill_.kind));
  FillLines();
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  rows->setSpacing(kSpacing);
  rows->addWidget(MakeTitle(bill_));
  rows->addLayout(MakeFacts(bill_));
  rows->addWidget(lines_, 1);
  rows->addLayout(MakeFoot());
  FitSize();
  GoToLine(0);
  lines_->setFocus();
}

QLayout* BillDialog::MakeFoot() {
  auto* count = MakeLabel(tr("共 %L1 行").arg(bill_.lines.size()));
  count->setForegroundRole(QPalette::PlaceholderText);
  auto* print = new QPushButton(tr("打印(&P)..."));
  auto* close = new QPushButton(tr("关闭(&C)"));
  journal_->setToolTip(tr("转到所选行的商品台账（Enter）；之后可以返回这张单据"));
  // The table leaves Enter to the default button.
  journal_->setDefault(true);
  for (QPushButton* button : {print, close}) button->setAutoDefault(false);
  connect(journal_, &QPushButton::clicked, this, &BillDialog::AskForJournal);
  connect(lines_, &QTableWidget::cellDoubleClicked, this, &BillDialog::AskForJournal);
  connect(lines_, &QTableWidget::currentCellChanged, this, [this] { journal_->setEnabled(Line() >= 0); });
  connect(print, &QPushButton::clicked, this, &BillDialog::Print);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  auto* foot = new QHBoxLayout;
  foot->addWidget(count);
  foot->addStretch(1);
  for (QPushButton* button : {journal_, print, close}) foot->addWidget(button);
  return foot;
}

int BillDialog::Line() const {
  const int row = lines_->currentRow();
  return row < static_cast<int>(bill_.lines.size()) ? row : -1;
}

void BillDialog::GoToLine(int line) { lines_->setCurrentCell(line, 0); }

void BillDialog::AskForJournal() {
  const int line = Line();
  if (line >= 0 && bill_.lines[static_cast<size_t>(line)].record.product_id > 0) emit JournalWanted(line);
}

void BillDialog::Print() {
  QPrinter printer(QPrinter::HighResolution);
  // The dialog proposes it as the name of a file, too.
  QString name = bill_.kind + QLatin1Char(' ') + bill_.number;
  printer.setDocName(name.replace(QLatin1Char('/'), QLatin1Char('-')));
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() == QDialog::Accepted) PrintBill(bill_, printer);
}

void BillDialog::FillRow(int row, const std::vector<QString>& texts) {
  const bool is_total = row >= static_cast<int>(bill_.lines.size());
  for (int column = 0; column < lines_->columnCount(); ++column) {
    const auto at = static_cast<size_t>(column);
    auto* item = new QTableWidgetItem(texts[at]);
    item->setTextAlignment((bill_.columns[at].is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (is_total) {
      QFont font = lines_->font();
      font.setBold(true);
      item->setFont(font);
    }
    lines_->setItem(row, column, item);
  }
}

void BillDialog::FillLines() {
  lines_->setColumnCount(static_cast<int>(bill_.columns.size()));
  lines_->setRowCount(static_cast<int>(bill_.lines.size() + bill_.totals.size()));
  for (int column = 0; column < lines_->columnCount(); ++column) {
    const BillView::Column& told = bill_.columns[static_cast<size_t>(column)];
    auto* caption = new QTableWidgetItem(told.caption);
    caption->setTextAlignment((told.is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    lines_->setHorizontalHeaderItem(column, caption);
  }
  int row = 0;
  for (const BillView::Line& line : bill_.lines) FillRow(row++, line.texts);
  for (const std::vector<QString>& total : bill_.totals) FillRow(row++, total);
  lines_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  lines_->setSelectionBehavior(QAbstractItemView::SelectRows);
  lines_->setSelectionMode(QAbstractItemView::SingleSelection);
  lines_->setTabKeyNavigation(false);
  lines_->setWordWrap(false);
  lines_->setAlternatingRowColors(true);
  lines_->setAccessibleName(tr("单据的行"));
  FitColumns();
}

void BillDialog::FitColumns() {
  lines_->verticalHeader()->hide();
  lines_->horizontalHeader()->setHighlightSections(false);
  lines_->resizeColumnsToContents();
  for (int column = 0; column < lines_->columnCount(); ++column)
    lines_->setColumnWidth(column, lines_->columnWidth(column) + kCellPadding);
  columns_width_ = lines_->horizontalHeader()->length();
  // The names get what room there is; number columns stay together.
  lines_->horizontalHeader()->setStretchLastSection(false);
}

void BillDialog::FitSize() {
  const int frame = 2 * lines_->frameWidth();
  const int rows = std::clamp(lines_->rowCount(), kLeastRows, kMostRows);
  const int height =
      lines_->horizontalHeader()->sizeHint().height() + rows * lines_->verticalHeader()->defaultSectionSize() + frame;
  const int rest = sizeHint().height() - lines_->sizeHint().height();
  const int bar = lines_->rowCount() > kMostRows ? lines_->verticalScrollBar()->sizeHint().width() : 0;
  const int wanted = std::max(columns_width_ + frame + 2 * kMargin + bar, sizeHint().width());
  const QSize most = screen()->availableGeometry().size() * 9 / 10;
  const int width = std::min(std::max(wanted, kLeastWidth), most.width());
  const int below = width < wanted ? lines_->horizontalScrollBar()->sizeHint().height() : 0;
  resize(width, std::min(rest + height + below, most.height()));
}

}  // namespace stockbook::app
