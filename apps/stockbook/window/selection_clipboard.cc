// SPDX-License-Identifier: MIT
#include "stockbook/window/selection_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "qt/sheet/text.h"
#include "stockbook/platform/grid.h"
#include "stockbook/selection/selection_forms.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

QByteArray Bytes(const std::string& text) { return {text.data(), static_cast<qsizetype>(text.size())}; }

}  // namespace

SelectionClipboard::SelectionClipboard(qt::StockbookWidget& stockbook) : stockbook_(stockbook) {
  connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &SelectionClipboard::ClipboardChanged);
}

// While the control copies, its pointer is an arrow with an hourglass. The clipboard is being changed now, so the forms
// are added afterwards.
void SelectionClipboard::ClipboardChanged() {
  const bool copying = stockbook_.Grid().Pointer() == platform::MousePointer::kArrowHourglass;
  if (!copying || adds_forms_) return;
  adds_forms_ = true;
  QMetaObject::invokeMethod(this, &SelectionClipboard::AddForms, Qt::QueuedConnection);
}

void SelectionClipboard::AddForms() {
  adds_forms_ = false;
  QClipboard* clipboard = QGuiApplication::clipboard();
  const QMimeData* copied = clipboard->mimeData();
  if (copied == nullptr || !copied->hasText() || copied->hasHtml()) return;
  const sheet::Selection selection = stockbook_.sheet().view().selection();
  const platform::CellRange range = selection.Range();
  if (int64_t{range.row2 - range.row1} * (range.column2 - range.column1) > kMostCells) {
    emit Said(tr("选中的内容超过 %L1 格，剪贴板上只有纯文本。").arg(kMostCells));
    return;
  }
  const SelectionForms forms = SelectionForms::Of(stockbook_.sheet(), selection);
  if (forms.html.empty()) return;
  auto* data = new QMimeData;  // the clipboard owns it
  data->setText(copied->text());
  data->setHtml(qt::ToQString(forms.html));
  data->setData(QStringLiteral("text/csv"), Bytes(forms.csv));
  data->setData(QStringLiteral("text/tab-separated-values"), Bytes(forms.tab_separated));
  clipboard->setMimeData(data);
}

void SelectionClipboard::CopyCell() {
  const platform::Grid& grid = stockbook_.Grid();
  if (grid.Row() < grid.FixedRows() || grid.Col() < 0) {
    emit Said(tr("没有选中单元格：请先点一下要复制的那一格。"));
    return;
  }
  QGuiApplication::clipboard()->setText(qt::ToQString(grid.DisplayText(grid.Row(), grid.Col())));
}

}  // namespace stockbook::app
