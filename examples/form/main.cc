// SPDX-License-Identifier: MIT
// A form (.ui) that holds the journal: form DATABASE PRODUCT. Look at journal_form.ui for what was set
// there.
#include <QApplication>

#include <stockbook/databases/providers/open_connection.h>
#include <stockbook/platform/error.h>

#include "ui_journal_form.h"

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  QWidget window;
  Ui::JournalForm form;
  form.setupUi(&window);
  QObject::connect(form.journal, &stockbook::qt::StockbookWidget::Notify, form.status, [&form](const QString& text) {
    if (!text.isEmpty()) form.status->setText(text);  // most rows have nothing to say
  });
  QObject::connect(form.product, &QSpinBox::valueChanged, form.journal,
                   [&form](int product) { form.journal->Load(product); });
  window.show();
  if (count < 2) {
    form.status->setText("form DATABASE [PRODUCT]");
    return QApplication::exec();
  }
  try {
    form.journal->SetConn(stockbook::databases::OpenConnection(std::string("Data Source=") + arguments[1]));
  } catch (const stockbook::platform::Error& error) {
    form.status->setText(error.what());
    return QApplication::exec();
  }
  form.product->setValue(count > 2 ? std::atoi(arguments[2]) : 1);
  return QApplication::exec();
}
