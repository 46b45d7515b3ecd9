// SPDX-License-Identifier: MIT
// The journal of objects that the program holds itself, without a database: row_source. A button receives ten boxes,
// another one issues three, and the journal shows it at once.
#include <QtWidgets>

#include <stockbook/databases/rows/row_source.h>
#include <stockbook/qt/dates.h>
#include <stockbook/qt/stockbook_widget.h>

#include <memory>
#include <string>
#include <vector>

namespace sb = stockbook;
// What this program calls a movement; it knows nothing of the journal.
struct Movement {
  QDate day;
  int article;  // its place in kArticles
  int pieces;   // below zero: sold
};

constexpr const char* kArticles[] = {"六角螺栓 M8×30", "平垫圈 8", "弹簧垫圈 8"};
constexpr double kPrice = 0.35;

class Shop : public sb::databases::RowSource {
 public:
  std::vector<Movement> movements;

  void Receipts(const sb::databases::RowFilter& filter, const TakeLine& take) override { Give(filter, take, 1); }
  void Issues(const sb::databases::RowFilter& filter, const TakeLine& take) override { Give(filter, take, -1); }
  void Products(const sb::databases::RowFilter&, const Take<sb::databases::Product>& take) override {
    for (int64_t id = 1; const char* article : kArticles) take({.id = id++, .name = article, .unit = "盒"});
  }

 private:
  // Those of one direction. Rows that were not asked for would do no harm, but why make them?
  void Give(const sb::databases::RowFilter& filter, const TakeLine& take, int sign) const {
    int64_t id = 0;
    for (const Movement& movement : movements) {
      ++id;
      const int64_t product = movement.article + 1;
      if (movement.pieces * sign <= 0 || !filter.Has(filter.products, product)) continue;
      const double pieces = movement.pieces * sign;
      take({.id = id,
            .date = sb::qt::FromQDate(movement.day),
            .type = sign > 0 ? "入库单" : "出库单",
            .number = std::to_string(id)},
           {.id = id,
            .product = product,
            .quantity = pieces,
            .price = kPrice,
            .amount = sb::base::Money::FromDouble(pieces * kPrice)});
    }
  }
};

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  const auto shop = std::make_shared<Shop>();
  for (int month = 1; month <= 3; ++month)
    for (int day = 1; day <= 20; ++day)
      shop->movements.push_back({QDate(2025, month, day), day % 3, day % 4 == 1 ? 40 : -9});

  QWidget window;
  window.setWindowTitle("自己的数据");
  window.resize(960, 560);
  auto* rows = new QVBoxLayout(&window);
  auto* head = new QHBoxLayout;
  auto* article = new QComboBox;
  for (const char* each : kArticles) article->addItem(each);
  auto* status = new QLabel;
  auto* journal = new sb::qt::StockbookWidget;
  const auto load = [=] { journal->Load(article->currentIndex() + 1, 0); };
  head->addWidget(article, 1);
  for (const int pieces : {10, -3}) {
    auto* button = new QPushButton(pieces > 0 ? "入库 10 盒" : "出库 3 盒");
    QObject::connect(button, &QPushButton::clicked, journal, [=] {
      shop->movements.push_back({QDate(2025, 3, 31), article->currentIndex(), pieces});
      load();
    });
    head->addWidget(button);
  }
  rows->addLayout(head);
  rows->addWidget(journal, 1);
  rows->addWidget(status);
  QObject::connect(article, &QComboBox::currentIndexChanged, journal, load);
  QObject::connect(journal, &sb::qt::StockbookWidget::Notify, status, [status](const QString& text) {
    if (!text.isEmpty()) status->setText(text);  // most rows have nothing to say
  });
  journal->SetConn(sb::databases::OpenRowSource(shop));
  load();
  window.show();
  return QApplication::exec();
}
