// SPDX-License-Identifier: MIT
#include "end_to_end/journal_columns.h"

#include <cstdlib>
#include <stdexcept>

namespace stockbook::end_to_end {
namespace {

// The journals in which a column is shown.
enum class Seen {
  kShown,
  kHidden,
  kStock,    // material and project
  kPartner,  // supplier and customer
  kSupplier,
  kCustomer,
  kStockQty2,  // the same, but only with the second unit
  kSupplierQty2,
  kCustomerQty2,
  kQty2,
  kTax,
};

struct Column {
  const char* key;
  const char* caption;  // stock|cumulative if they differ
  Seen seen;
  int type;
  const char* format;
  int width_twips;
};

constexpr std::array<Column, kColumnCount> kColumns{{
    {"SeqNo", "", Seen::kShown, 3, "", 200},
    {"Period", "Period", Seen::kHidden, 8, "", 900},
    {"BillDate", "Period", Seen::kHidden, 8, "", 900},
    {"BillNo", "单据", Seen::kShown, 8, "", 2800},
    {"BillKind", "类型", Seen::kShown, 8, "", 600},
    {"Explain", "摘要", Seen::kShown, 8, "", 1000},
    {"ProductName", "商品名称", Seen::kPartner, 8, "", 1200},
    {"ProductNo", "商品编号", Seen::kHidden, 8, "", 1000},
    {"Model", "规格", Seen::kHidden, 8, "", 600},
    {"Standard", "型号", Seen::kHidden, 8, "", 600},
    {"Measure", "单位", Seen::kHidden, 8, "", 500},
    {"Measure2", "单位2", Seen::kHidden, 8, "", 500},
    {"Price", "单价", Seen::kShown, 5, "#,##0.00", 1200},
    {"Quantity", "入库/出库\n数量", Seen::kStock, 5, "#,##0.00", 1400},
    {"Quantity2", "入库/出库\n数量2", Seen::kStockQty2, 5, "", 1400},
    {"Account", "入库/出库\n金额", Seen::kStock, 6, "#,##0.00", 1400},
    {"RevQty", "入库数量", Seen::kSupplier, 5, "#,##0.00", 1400},
    {"RevQty2", "入库数量2", Seen::kSupplierQty2, 5, "", 1400},
    {"RevAcc", "入库金额", Seen::kSupplier, 6, "#,##0.00", 1400},
    {"IssQty", "出库数量", Seen::kCustomer, 5, "#,##0.00", 1400},
    {"IssQty2", "出库数量2", Seen::kCustomerQty2, 5, "", 1400},
    {"IssAcc", "出库金额", Seen::kCustomer, 6, "#,##0.00", 1400},
    {"StoPrice", "库存单价|累计均价", Seen::kShown, 5, "#,##0.00", 1200},
    {"StoQty", "库存数量|累计数量", Seen::kShown, 5, "#,##0.00", 1400},
    {"StoQty2", "库存数量2|累计数量2", Seen::kQty2, 5, "", 1400},
    {"StoAcc", "库存金额|累计金额", Seen::kShown, 6, "#,##0.00", 1400},
    {"Ratio", "税率", Seen::kTax, 5, "#0.00%", 900},
    {"Tax", "税额", Seen::kTax, 5, "#,##0.00", 1000},
    {"TaxPrice", "含税单价", Seen::kTax, 5, "#,##0.00", 1200},
    {"TaxAccount", "含税金额", Seen::kTax, 5, "#,##0.00", 1400},
    {"Field0", "经手人", Seen::kHidden, 8, "", 1400},
    {"Field1", "交接人", Seen::kHidden, 8, "", 1400},
    {"Field2", "包装", Seen::kHidden, 8, "", 1400},
    {"Field3", "货位", Seen::kHidden, 8, "", 1400},
    {"Field4", "期限", Seen::kHidden, 8, "", 1400},
    {"Field5", "序列号", Seen::kHidden, 8, "", 1400},
    {"Field6", "生产日期", Seen::kHidden, 8, "yyyy-MM-dd", 1400},
    {"Depot", "仓库名称", Seen::kHidden, 8, "", 1400},
    {"Enterprise", "单位名称", Seen::kHidden, 8, "", 1400},
    {"Project", "项目名称", Seen::kHidden, 8, "", 1400},
    {"ProjNo", "项目编号", Seen::kHidden, 8, "", 1400},
    {"Inputor", "录入员", Seen::kHidden, 8, "", 1400},
    {"InputDate", "录入日期", Seen::kHidden, 7, "yyyy-MM-dd", 1400},
    {"Auditor", "审核员", Seen::kHidden, 8, "", 1400},
    {"AuditDate", "审核日期", Seen::kHidden, 7, "yyyy-MM-dd", 1400},
    {"DQty", "D库存数量", Seen::kHidden, 5, "#,##0.00", 1400},
    {"DStoQty", "D库存数量", Seen::kHidden, 5, "#,##0.00", 1400},
    {"BillID", "BillID", Seen::kHidden, 3, "", 400},
    {"RecID", "RecID", Seen::kHidden, 3, "", 400},
    {"dpID", "dpID", Seen::kHidden, 3, "", 400},
    {"ksID", "ksID", Seen::kHidden, 3, "", 400},
    {"pjID", "pjID", Seen::kHidden, 3, "", 400},
    {"OtherID", "OtherID", Seen::kHidden, 3, "", 400},
    {"pdID", "pdID", Seen::kHidden, 3, "", 400},
    {"Flag", "Flag", Seen::kHidden, 3, "", 400},
    {"BillName", "单据名称", Seen::kHidden, 8, "", 400},
}};

bool IsSeen(Seen seen, int type, bool qty2, bool tax) {
  const bool stock = type == 0 || type == 3;
  switch (seen) {
    case Seen::kShown:
      return true;
    case Seen::kHidden:
      return false;
    case Seen::kStock:
      return stock;
    case Seen::kPartner:
      return !stock;
    case Seen::kSupplier:
      return type == 1;
    case Seen::kCustomer:
      return type == 2;
    case Seen::kStockQty2:
      return stock && qty2;
    case Seen::kSupplierQty2:
      return type == 1 && qty2;
    case Seen::kCustomerQty2:
      return type == 2 && qty2;
    case Seen::kQty2:
      return qty2;
    case Seen::kTax:
      return tax;
  }
  return false;
}

std::string CaptionOf(const Column& column, int type) {
  const std::string caption = column.caption;
  const size_t bar = caption.find('|');
  if (bar == std::string::npos) return caption;
  return type == 0 || type == 3 ? caption.substr(0, bar) : caption.substr(bar + 1);
}

}  // namespace

std::array<ColumnDescription, kColumnCount> ColumnsOf(int journal_type, bool qty2, bool tax) {
  std::array<ColumnDescription, kColumnCount> columns;
  for (size_t place = 0; place < kColumnCount; ++place) {
    const Column& column = kColumns[place];
    columns[place] = {column.key,
                      CaptionOf(column, journal_type),
                      !IsSeen(column.seen, journal_type, qty2, tax),
                      column.type,
                      column.format,
                      column.width_twips};
  }
  return columns;
}

size_t PlaceOf(std::string_view key) {
  for (size_t place = 0; place < kColumnCount; ++place) {
    if (kColumns[place].key == key) return place;
  }
  throw std::out_of_range("there is no column " + std::string(key));
}

void ComposeName(Cells& line) {
  const std::string& model = line[PlaceOf("Model")];
  const std::string& standard = line[PlaceOf("Standard")];
  const std::string& measure = line[PlaceOf("Measure")];
  std::string parts = model;
  if (!standard.empty()) parts += "[" + standard + "]";
  if (!measure.empty()) parts += "(" + measure + ")";
  const bool has_product = std::strtod(line[PlaceOf("pdID")].c_str(), nullptr) > 0;
  if (has_product && !parts.empty()) line[PlaceOf("ProductName")] += " " + parts;
}

}  // namespace stockbook::end_to_end
