// SPDX-License-Identifier: MIT What the window does on commands from its menus and from the control, which asks its
// host.
#include <QAction>
#include <QMenuBar>
#include <QMessageBox>

#include "stockbook/window/bill_dialog.h"
#include "stockbook/window/main_window.h"

namespace stockbook::app {

void MainWindow::BuildMenus() {
  BuildFileMenu();
  BuildJournalMenu();
}

void MainWindow::BuildFileMenu() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("文件(&F)"));
  QAction* open = file->addAction(QStringLiteral("打开数据库(&O)..."), this, &MainWindow::ChooseDatabase);
  open->setShortcut(QKeySequence::Open);
  file->addSeparator();
  QAction* quit = file->addAction(QStringLiteral("退出(&X)"), this, &QWidget::close);
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void MainWindow::BuildJournalMenu() {
  QMenu* journal = menuBar()->addMenu(QStringLiteral("台账(&J)"));
  QAction* load = journal->addAction(QStringLiteral("载入(&L)"), this, &MainWindow::Reload);
  load->setShortcut(QKeySequence(Qt::Key_F5));
  journal->addSeparator();
  QAction* find = journal->addAction(QStringLiteral("查找(&F)"), find_bar_, &FindBar::Open);
  find->setShortcut(QKeySequence::Find);
  QAction* next = journal->addAction(QStringLiteral("查找下一个(&N)"), find_bar_, &FindBar::Next);
  next->setShortcut(QKeySequence(Qt::Key_F3));
  QAction* previous = journal->addAction(QStringLiteral("查找上一个(&R)"), find_bar_, &FindBar::Previous);
  previous->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3));
  journal->addSeparator();
  QAction* bill = journal->addAction(QStringLiteral("查看单据(&B)..."), this, &MainWindow::ShowBill);
  bill->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_B));
  QAction* statistics = journal->addAction(QStringLiteral("统计(&S)..."), this, &MainWindow::ShowStatistics);
  statistics->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
}

// The control is in the middle of an event when it asks, so anything lengthy waits until it has returned.
void MainWindow::ObeyCommand(const QString& command) {
  if (command == QLatin1String("Refresh")) {
    QMetaObject::invokeMethod(this, &MainWindow::Reload, Qt::QueuedConnection);
  } else if (command == QLatin1String("Find")) {
    QMetaObject::invokeMethod(find_bar_, &FindBar::Open, Qt::QueuedConnection);
  } else if (command == QLatin1String("Bill")) {
    QMetaObject::invokeMethod(this, &MainWindow::ShowBill, Qt::QueuedConnection);
  }
}

void MainWindow::ShowBill() {
  const BillView bill = ReadBill(stockbook_->control(), stockbook_->Row());
  if (bill.lines.empty()) {
    ShowMessage(QStringLiteral("这一行不属于任何单据。"));
    return;
  }
  auto* dialog = new BillDialog(bill, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

void MainWindow::ShowStatistics() {
  const QString statistics = stockbook_->Statistics();
  // In that case the control has reported why there are none.
  if (statistics.isEmpty()) return;
  auto* box =
      new QMessageBox(QMessageBox::Information, QStringLiteral("统计"), statistics, QMessageBox::NoButton, this);
  box->setTextFormat(Qt::PlainText);
  box->addButton(QStringLiteral("关闭(&C)"), QMessageBox::AcceptRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace stockbook::app
