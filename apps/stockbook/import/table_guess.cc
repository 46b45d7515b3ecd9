// SPDX-License-Identifier: MIT
#include "stockbook/import/table_guess.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include "base/text.h"
#include "stockbook/import/csv_reader.h"
#include "stockbook/import/import_number.h"

namespace stockbook::app {
namespace {

constexpr size_t kLinesTried = 20;
constexpr std::array kDelimiters{',', ';', '\t', '|'};

class FrontSource : public ByteSource {
 public:
  explicit FrontSource(std::string_view text) : text_(text) {}
  size_t Read(char* buffer, size_t size) override {
    const size_t count = std::min(size, text_.size());
    std::memcpy(buffer, text_.data(), count);
    text_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view text_;
};

// How many fields the lines have; 0 if they do not all have as many as the first one.
size_t FieldsBy(char delimiter, std::string_view front) {
  FrontSource source(front);
  CsvReader reader(source, delimiter);
  CsvRecord record;
  size_t fields = 0;
  for (size_t line = 0; line < kLinesTried && reader.Next(record); ++line) {
    if (record.IsBlank() || record.fault != CsvFault::None) continue;
    if (fields == 0) fields = record.fields.size();
    if (record.fields.size() != fields) return 0;
  }
  return fields;
}

// The words of each field in the order of ImportField, the likeliest ones first.
constexpr std::array<std::string_view, kImportFieldCount> kFieldWords{
    "商品编号|产品编号|物料编号|物料编码|存货编码|商品编码|货号|品号|编号|编码|料号|stockcode|productcode|itemno|"
    "itemcode|"
    "sku|product|code|item",
    "商品名称|产品名称|物料名称|存货名称|品名|货品名称|名称|商品|产品|description|productname|itemname|name",
    "单据编号|单据号|单号|发票号|发票号码|凭证号|出库单号|入库单号|订单号|单据|invoiceno|invoice|billno|bill|"
    "documentno|"
    "orderno|voucher",
    "日期|单据日期|业务日期|出库日期|入库日期|发票日期|开票日期|时间|invoicedate|date|billdate|day|time",
    "数量|出库数量|入库数量|销售数量|采购数量|实发数量|实收数量|件数|quantity|qty|amountofpieces|pieces|units",
    "单价|不含税单价|除税单价|销售单价|采购单价|价格|unitprice|price|rate|cost",
    "客户|客户名称|供应商|供应商名称|往来单位|单位名称|厂商|购货单位|供货单位|customerid|customer|supplier|vendor|"
    "partner|"
    "client",
    "项目|项目名称|工程|工程名称|工地|项目编号|project|job|site|country"};

std::string Simplified(std::string_view name) {
  std::string simple = base::AsciiLower(NarrowText(TrimWideBlanks(base::TrimBlanks(name))));
  simple.erase(std::remove_if(simple.begin(), simple.end(),
                              [](char c) { return c == ' ' || c == '_' || c == '-' || c == '.' || c == '\n'; }),
               simple.end());
  return simple;
}

// How well a name fits a field: 0 not at all. An exact word is better than one within the name, an earlier one better
// than a later one.
int Fit(std::string_view name, size_t field) {
  constexpr int kExact = 1000;
  constexpr int kWithin = 500;
  constexpr size_t kLeastWithin =
      4;  // two Chinese characters have six bytes, and short English words are in many others
  int place = 0;
  for (const std::string_view word : base::Split(kFieldWords[field], '|')) {
    if (name == word) return kExact - place;
    ++place;
  }
  place = 0;
  for (const std::string_view word : base::Split(kFieldWords[field], '|')) {
    if (word.size() >= kLeastWithin && name.find(word) != std::string_view::npos) return kWithin - place;
    ++place;
  }
  return 0;
}

// Where no column is called a number of products, one that is called just 商品 (product) tells them apart, and
// otherwise their names do.
void FindProduct(const std::vector<std::string_view>& header, const std::vector<bool>& taken,
                 ImportMapping::Positions& positions) {
  auto& product = positions[static_cast<size_t>(ImportField::Product)];
  if (product) return;
  for (size_t column = 0; column < header.size() && !product; ++column) {
    const std::string name = Simplified(header[column]);
    if (!taken[column] && (name == "商品" || name == "产品")) product = column;
  }
  if (!product) product = std::exchange(positions[static_cast<size_t>(ImportField::Name)], std::nullopt);
}

}  // namespace

char GuessDelimiter(std::string_view front) {
  // The last line may be cut off.
  const size_t end = front.find_last_of("\r\n");
  const std::string_view lines = end == std::string_view::npos ? front : front.substr(0, end + 1);
  char best = ',';
  size_t most = 1;
  for (const char delimiter : kDelimiters) {
    const size_t fields = FieldsBy(delimiter, lines);
    if (fields > most) most = fields, best = delimiter;
  }
  return best;
}

ImportMapping::Positions GuessMapping(const std::vector<std::string_view>& header) {
  ImportMapping::Positions positions;
  std::vector<bool> taken(header.size());
  // The best pair first, then the best one of what is left.
  for (size_t round = 0; round < kImportFieldCount; ++round) {
    int best = 0;
    size_t best_field = 0;
    size_t best_column = 0;
    for (size_t field = 0; field < kImportFieldCount; ++field) {
      for (size_t column = 0; column < header.size() && !positions[field]; ++column) {
        const int fit = taken[column] ? 0 : Fit(Simplified(header[column]), field);
        if (fit > best) best = fit, best_field = field, best_column = column;
      }
    }
    if (best == 0) break;
    positions[best_field] = best_column;
    taken[best_column] = true;
  }
  FindProduct(header, taken, positions);
  return positions;
}

}  // namespace stockbook::app
