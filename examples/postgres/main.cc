// SPDX-License-Identifier: MIT
// The journal of an inventory on a PostgreSQL server: postgres 'Host=127.0.0.1;Database=stock;User=clerk' PRODUCT. The
// password comes from the environment (PGPASSWORD) or ~/.pgpass, as for the server's own programs.
#include <QApplication>
#include <QMainWindow>
#include <QStatusBar>

#include <stockbook/databases/postgres/postgres_connection.h>
#include <stockbook/platform/error.h>
#include <stockbook/qt/stockbook_widget.h>

#include <cstdio>

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  if (count < 2) {
    std::fprintf(stderr, "usage: postgres 'Host=...;Database=...;User=...' [PRODUCT]\n");
    return 2;
  }
  QMainWindow window;
  auto* journal = new stockbook::qt::StockbookWidget(&window);
  QObject::connect(journal, &stockbook::qt::StockbookWidget::Notify, window.statusBar(),
                   [&window](const QString& text) {
                     if (!text.isEmpty()) window.statusBar()->showMessage(text);  // most rows have nothing to say
                   });
  window.setCentralWidget(journal);
  window.resize(1000, 600);
  try {
    journal->SetConn(stockbook::databases::OpenPostgres(std::string("Provider=Postgres;") + arguments[1]));
  } catch (const stockbook::platform::Error& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  if (!journal->Load(count > 2 ? std::atoi(arguments[2]) : 1, 0)) return 1;
  window.show();
  return QApplication::exec();
}
