// SPDX-License-Identifier: MIT
#include "stockbook/window/bill_view.h"

#include <QCoreApplication>
#include <algorithm>
#include <functional>
#include <set>
#include <string>

#include "base/number.h"
#include "qt/sheet/text.h"
#include "sheet/format/cell_format.h"

namespace stockbook::app {
namespace {

using journal::AmountTexts;

// What the texts of a bill are called to whoever translates them.
QString BillText(const char* text) { return QCoreApplication::translate("Bill", text); }

// One column of lines: its text of a line, and of a total where it has one.
struct BillColumn {
  const char* caption;
  bool is_number = false;
  std::function<QString(const BillLine&)> text;
  std::function<QString(const std::vector<const BillLine*>&)> total = {};
};

QString Formatted(const base::Value& value, platform::DataType type) {
  std::string text;
  if (!sheet::CellFormat("#,##0.00").Append(type, value, text)) text = value.Text();
  return qt::ToQString(text);
}

QString BillNumber(double number) {
  return number == 0 ? QString() : Formatted(base::Value(number), platform::DataType::kDouble);
}

QString BillAmount(base::Money amount) {
  return amount == base::Money() ? QString() : Formatted(base::Value(amount), platform::DataType::kCurrency);
}

QString BillPercent(double share) {
  return share == 0 ? QString() : qt::ToQString(base::NumberText(share * 100)) + QLatin1Char('%');
}

BillColumn TextColumn(const char* caption, std::string BillLine::*field) {
  return {caption, false, [field](const BillLine& line) { return qt::ToQString(line.*field); }};
}

BillColumn NumberColumn(const char* caption, double BillLine::*field) {
  return {caption, true, [field](const BillLine& line) { return BillNumber(line.*field); }};
}

// Pieces and metres are not added up: only a bill of one unit has a total of quantities.
BillColumn QuantityColumn(const char* caption, double BillLine::*field) {
  BillColumn column = NumberColumn(caption, field);
  column.total = [field](const std::vector<const BillLine*>& lines) {
    double sum = 0;
    for (const BillLine* line : lines) {
      if (line->measure != lines.front()->measure) return QString();
      sum += line->*field;
    }
    return BillNumber(sum);
  };
  return column;
}

BillColumn AmountColumn(const char* caption, base::Money BillLine::*field) {
  BillColumn column{caption, true, [field](const BillLine& line) { return BillAmount(line.*field); }};
  column.total = [field](const std::vector<const BillLine*>& lines) {
    base::Money sum;
    for (const BillLine* line : lines) sum = sum + line->*field;
    return BillAmount(sum);
  };
  return column;
}

// Where amounts are hidden there is a mask for each one, and nothing to add up.
BillColumn Masked(BillColumn column) {
  column.text = [](const BillLine&) { return QString::fromUtf8(journal::kAmountMask); };
  if (column.total) {
    column.total = [](const std::vector<const BillLine*>&) { return QString::fromUtf8(journal::kAmountMask); };
  }
  return column;
}

std::vector<BillColumn> MoneyColumns() {
  return {NumberColumn(QT_TRANSLATE_NOOP("Bill", "单价"), &BillLine::price),
          AmountColumn(QT_TRANSLATE_NOOP("Bill", "金额"), &BillLine::amount),
          {QT_TRANSLATE_NOOP("Bill", "税率"), true, [](const BillLine& line) { return BillPercent(line.tax_rate); }},
          AmountColumn(QT_TRANSLATE_NOOP("Bill", "税额"), &BillLine::tax),
          NumberColumn(QT_TRANSLATE_NOOP("Bill", "含税单价"), &BillLine::tax_price),
          AmountColumn(QT_TRANSLATE_NOOP("Bill", "含税金额"), &BillLine::tax_amount)};
}

void AddDetails(std::vector<BillColumn>& columns) {
  constexpr const char* kDetails[] = {QT_TRANSLATE_NOOP("Bill", "经手人"),  QT_TRANSLATE_NOOP("Bill", "交接人"),
                                      QT_TRANSLATE_NOOP("Bill", "包装"),    QT_TRANSLATE_NOOP("Bill", "货位"),
                                      QT_TRANSLATE_NOOP("Bill", "期限"),    QT_TRANSLATE_NOOP("Bill", "序列号"),
                                      QT_TRANSLATE_NOOP("Bill", "生产日期")};
  size_t index = 0;
  for (const char* caption : kDetails) {
    columns.push_back({caption, false, [index](const BillLine& line) {
                         return index < line.details.size() ? qt::ToQString(line.details[index]) : QString();
                       }});
    ++index;
  }
}

std::vector<BillColumn> BillColumnsOf(AmountTexts amounts) {
  std::vector<BillColumn> columns = {TextColumn(QT_TRANSLATE_NOOP("Bill", "编号"), &BillLine::product_no),
                                     TextColumn(QT_TRANSLATE_NOOP("Bill", "名称"), &BillLine::product_name),
                                     TextColumn(QT_TRANSLATE_NOOP("Bill", "规格"), &BillLine::model),
                                     TextColumn(QT_TRANSLATE_NOOP("Bill", "型号"), &BillLine::standard),
                                     {QT_TRANSLATE_NOOP("Bill", "方向"), false,
                                      [](const BillLine& line) {
                                        return line.side == BillSide::kReceipt
                                                   ? BillText(QT_TRANSLATE_NOOP("Bill", "入库"))
                                                   : BillText(QT_TRANSLATE_NOOP("Bill", "出库"));
                                      }},
                                     TextColumn(QT_TRANSLATE_NOOP("Bill", "仓库"), &BillLine::depot),
                                     TextColumn(QT_TRANSLATE_NOOP("Bill", "单位"), &BillLine::measure),
                                     QuantityColumn(QT_TRANSLATE_NOOP("Bill", "数量"), &BillLine::quantity),
                                     NumberColumn(QT_TRANSLATE_NOOP("Bill", "数量2"), &BillLine::quantity2)};
  for (BillColumn& column : MoneyColumns()) {
    if (amounts == AmountTexts::kShown) columns.push_back(std::move(column));
  }
  if (amounts == AmountTexts::kMasked) {
    columns.push_back(Masked(NumberColumn(QT_TRANSLATE_NOOP("Bill", "单价"), &BillLine::price)));
    columns.push_back(Masked(AmountColumn(QT_TRANSLATE_NOOP("Bill", "金额"), &BillLine::amount)));
  }
  AddDetails(columns);
  return columns;
}

std::vector<QString> TotalOf(const std::vector<BillColumn>& columns, const std::vector<const BillLine*>& lines,
                             const QString& word) {
  std::vector<QString> texts;
  for (const BillColumn& column : columns) texts.push_back(column.total ? column.total(lines) : QString());
  if (!texts.empty() && texts.front().isEmpty()) texts.front() = word;
  return texts;
}

void AddTotals(const InventoryBill& bill, const std::vector<BillColumn>& columns, BillView& view) {
  std::vector<const BillLine*> sides[2];
  for (const BillLine& line : bill.lines) sides[line.side == BillSide::kReceipt ? 1 : 0].push_back(&line);
  const bool is_transfer = !sides[0].empty() && !sides[1].empty();
  for (const auto& lines : sides) {
    if (lines.empty()) continue;
    const QString word = !is_transfer      ? BillText(QT_TRANSLATE_NOOP("Bill", "合计"))
                         : &lines == sides ? BillText(QT_TRANSLATE_NOOP("Bill", "出库合计"))
                                           : BillText(QT_TRANSLATE_NOOP("Bill", "入库合计"));
    view.totals.push_back(TotalOf(columns, lines, word));
  }
}

void AddFacts(const InventoryBill& bill, BillView& view) {
  const std::pair<const char*, const std::string&> facts[] = {
      {QT_TRANSLATE_NOOP("Bill", "日期"), bill.date},        {QT_TRANSLATE_NOOP("Bill", "期间"), bill.period},
      {QT_TRANSLATE_NOOP("Bill", "往来单位"), bill.partner}, {QT_TRANSLATE_NOOP("Bill", "项目"), bill.project},
      {QT_TRANSLATE_NOOP("Bill", "录入员"), bill.inputor},   {QT_TRANSLATE_NOOP("Bill", "录入日期"), bill.input_date},
      {QT_TRANSLATE_NOOP("Bill", "审核员"), bill.auditor},   {QT_TRANSLATE_NOOP("Bill", "审核日期"), bill.audit_date},
      {QT_TRANSLATE_NOOP("Bill", "摘要"), bill.explain}};
  for (const auto& [label, text] : facts) {
    if (!text.empty()) view.facts.emplace_back(BillText(label), qt::ToQString(text));
  }
}

// The direction says nothing where all lines have the same.
bool SaysSomething(const BillColumn& column, const InventoryBill& bill, bool is_direction) {
  std::set<QString> texts;
  for (const BillLine& line : bill.lines) texts.insert(column.text(line));
  if (is_direction) return texts.size() > 1;
  return texts.size() > 1 || (texts.size() == 1 && !texts.begin()->isEmpty());
}

}  // namespace

BillView ViewOfBill(const InventoryBill& bill, AmountTexts amounts) {
  BillView view;
  view.kind = qt::ToQString(bill.kind);
  view.number = qt::ToQString(bill.number);
  view.amounts = amounts;
  AddFacts(bill, view);
  std::vector<BillColumn> columns;
  for (BillColumn& column : BillColumnsOf(amounts)) {
    const bool is_direction = std::string_view(column.caption) == "方向";
    if (SaysSomething(column, bill, is_direction)) columns.push_back(std::move(column));
  }
  for (const BillColumn& column : columns) view.columns.push_back({BillText(column.caption), column.is_number});
  for (const BillLine& line : bill.lines) {
    BillView::Line shown{line, {}};
    for (const BillColumn& column : columns) shown.texts.push_back(column.text(line));
    view.lines.push_back(std::move(shown));
  }
  AddTotals(bill, columns, view);
  return view;
}

}  // namespace stockbook::app
