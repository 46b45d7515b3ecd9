// SPDX-License-Identifier: MIT
// Every product's journal in one PDF each, without a display: print_all DATABASE FOLDER. What it says is in the order
// in which it works; it ends with 1 if one of them could not be printed.
#include <QApplication>
#include <QDir>
#include <QPageLayout>
#include <QPdfWriter>

#include <stockbook/databases/providers/open_connection.h>
#include <stockbook/platform/connection.h>
#include <stockbook/platform/error.h>
#include <stockbook/qt/stockbook_widget.h>

#include <cstdio>

int main(int count, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, arguments);
  if (count != 3) {
    std::fprintf(stderr, "usage: print_all DATABASE FOLDER\n");
    return 2;
  }
  const QDir folder(arguments[2]);
  bool all_well = folder.mkpath(".");
  try {
    const std::shared_ptr<stockbook::platform::Connection> inventory =
        stockbook::databases::OpenConnection(std::string("Data Source=") + arguments[1]);
    stockbook::qt::StockbookWidget journal;
    QObject::connect(&journal, &stockbook::qt::StockbookWidget::Notify,
                     [](const QString& text) { std::printf("%s\n", qUtf8Printable(text)); });
    journal.SetConn(inventory);
    auto products = inventory->Execute("Select pdID, 商品名称 As Name From 商品设置 Order By pdID");
    for (; !products.AtEnd(); products.MoveNext()) {
      const int product = static_cast<int>(products.FieldValue("pdID").AsInteger().value_or(0));
      if (!journal.Load(product, 0)) {
        all_well = false;
        continue;
      }
      QPdfWriter pdf(folder.filePath(QString("%1.pdf").arg(product)));
      pdf.setPageOrientation(QPageLayout::Landscape);
      pdf.setTitle(journal.KeyName());
      all_well = journal.Print(pdf) && all_well;
    }
  } catch (const stockbook::platform::Error& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return all_well ? 0 : 1;
}
