// SPDX-License-Identifier: MIT
// A whole program around the journal: main_window DATABASE. It picks the journal and the product, prints, tells of a
// bill that is double clicked, and keeps the window and the journal's layout from one day to the next.
#include <QtWidgets>

#include <stockbook/databases/providers/open_connection.h>
#include <stockbook/platform/error.h>
#include <stockbook/qt/stockbook_widget.h>

using stockbook::qt::StockbookWidget;

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  QSettings settings("Stockbook examples", "main_window");
  QMainWindow window;
  auto* journal = new StockbookWidget(&window);
  window.setCentralWidget(journal);
  window.setWindowTitle("库存帐");
  if (!window.restoreGeometry(settings.value("geometry").toByteArray())) window.resize(1000, 600);
  journal->RestoreLayout(settings, "journal");

  auto* type = new QComboBox;
  type->addItems({"库存明细", "供应商明细", "客户明细", "项目明细"});
  auto* product = new QSpinBox;
  product->setMaximum(999999);
  QToolBar* bar = window.addToolBar("帐");
  for (QWidget* field : {static_cast<QWidget*>(type), static_cast<QWidget*>(product)}) bar->addWidget(field);
  const auto load = [=] {
    journal->SetJournalType(static_cast<StockbookWidget::tqJournalTypeContants>(type->currentIndex()));
    journal->SetdpCode("");
    journal->Load(product->value(), 0);
  };
  QObject::connect(type, &QComboBox::currentIndexChanged, journal, load);
  QObject::connect(product, &QSpinBox::valueChanged, journal, load);
  QObject::connect(bar->addAction("打印到 PDF…"), &QAction::triggered, journal, [&window, journal] {
    const QString file = QFileDialog::getSaveFileName(&window, "打印到 PDF", "journal.pdf", "PDF (*.pdf)");
    if (file.isEmpty()) return;
    QPdfWriter pdf(file);
    if (journal->Print(pdf)) window.statusBar()->showMessage(file);  // what is wrong is told by Notify
  });
  QObject::connect(journal, &StockbookWidget::Notify, window.statusBar(), [&window](const QString& text) {
    if (!text.isEmpty()) window.statusBar()->showMessage(text);  // most rows have nothing to say
  });
  QObject::connect(journal, &StockbookWidget::CommandExecute, &window, [&window, journal](const QString& command) {
    if (command == "Bill") QMessageBox::information(&window, "单据", QString("单据 %1").arg(journal->BillID()));
  });
  window.show();
  try {
    journal->SetConn(
        stockbook::databases::OpenConnection(std::string("Data Source=") + (count > 1 ? arguments[1] : "")));
    product->setValue(1);
  } catch (const stockbook::platform::Error& error) {
    QMessageBox::warning(&window, "库存帐", error.what());
  }
  const int result = QApplication::exec();
  settings.setValue("geometry", window.saveGeometry());
  journal->SaveLayout(settings, "journal");
  return result;
}
