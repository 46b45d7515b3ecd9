// SPDX-License-Identifier: MIT
#include "stockbook/window/column_actions.h"

namespace stockbook::app {

ColumnActions::ColumnActions(qt::StockbookWidget& stockbook, JournalColumns& columns, WindowMenus& menus)
    : stockbook_(stockbook), columns_(columns) {
  AddColumnItems(menus);
  AddPeriodItems(menus);
  connect(&columns_, &JournalColumns::Changed, this, &ColumnActions::Follow);
  Follow();
}

void ColumnActions::AddColumnItems(WindowMenus& menus) {
  undo_ = menus.Add(MenuPlace::kEditUndo, tr("撤销列布局(&U)"), QKeySequence(Qt::CTRL | Qt::Key_Z), &columns_,
                    &JournalColumns::Undo);
  redo_ = menus.Add(MenuPlace::kEditUndo, tr("重做列布局(&Y)"), QKeySequence(Qt::CTRL | Qt::Key_Y), &columns_,
                    &JournalColumns::Redo);
  menus.Add(MenuPlace::kViewColumns, tr("列设置(&C)..."), QKeySequence(Qt::CTRL | Qt::Key_L), this,
            &ColumnActions::OpenDialog);
  menus.Add(MenuPlace::kViewColumns, tr("冻结到当前列(&Z)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F), this,
            [this] { columns_.FreezeUpTo(stockbook_.Grid().Col()); });
  unfreeze_ = menus.Add(MenuPlace::kViewColumns, tr("取消冻结(&U)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_U),
                        &columns_, &JournalColumns::Unfreeze);
  menus.Add(MenuPlace::kViewColumns, tr("隐藏当前列(&H)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H), this,
            [this] { columns_.Hide(stockbook_.Grid().Col()); });
  menus.Add(MenuPlace::kViewColumns, tr("列宽适应内容(&W)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W), &columns_,
            &JournalColumns::FitToContents);
  menus.Add(MenuPlace::kViewColumns, tr("默认格式(&D)"), {}, &columns_, &JournalColumns::LayOutAnew);
}

void ColumnActions::AddPeriodItems(WindowMenus& menus) {
  menus.Add(MenuPlace::kViewPeriods, tr("展开全部(&E)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), this,
            [this] { stockbook_.Grid().ExpandAll(); });
  menus.Add(MenuPlace::kViewPeriods, tr("折叠全部(&A)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L), this,
            [this] { stockbook_.Grid().CollapseAll(); });
}

void ColumnActions::Follow() {
  undo_->setEnabled(columns_.CanUndo());
  redo_->setEnabled(columns_.CanRedo());
  unfreeze_->setEnabled(columns_.Now().frozen > 0);
}

void ColumnActions::OpenDialog() {
  if (dialog_ == nullptr) {
    dialog_ = new ColumnDialog(stockbook_, columns_, stockbook_.window());
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
  }
  dialog_->show();
  dialog_->raise();
  dialog_->activateWindow();
}

}  // namespace stockbook::app
