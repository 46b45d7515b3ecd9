// SPDX-License-Identifier: MIT
#include "end_to_end/recomputed_journal.h"

#include <algorithm>
#include <cmath>

#include "end_to_end/inventory_maker.h"

namespace stockbook::end_to_end {
namespace {

double Price(const Measures& measures) {
  if (measures.quantity == 0 || !std::isfinite(measures.quantity)) return 0;
  const double price = AsDouble(measures.amount) / measures.quantity;
  return std::isfinite(price) ? price : 0;
}

// The first four characters and the last two.
std::string PeriodCaption(const std::string& period, const char* word) {
  std::vector<size_t> starts;
  for (size_t at = 0; at < period.size(); ++at) {
    if ((static_cast<unsigned char>(period[at]) & 0xC0) != 0x80) starts.push_back(at);
  }
  const std::string year = starts.size() > 4 ? period.substr(0, starts[4]) : period;
  const std::string month = starts.size() > 2 ? period.substr(starts[starts.size() - 2]) : period;
  return year + "年" + month + "月" + word;
}

void PutStock(Cells& cells, const Measures& measures) {
  cells[PlaceOf("StoQty")] = NumberText(measures.quantity);
  cells[PlaceOf("StoQty2")] = NumberText(measures.quantity2);
  cells[PlaceOf("StoAcc")] = AmountText(measures.amount);
  cells[PlaceOf("StoPrice")] = NumberText(Price(measures));
}

// The sums of a period, or of all lines up to here.
struct Sums {
  Measures net;
  Measures receipt;
  Measures issue;

  void Add(const MovementLine& line) {
    net.Add(line.net, 1);
    receipt.Add(line.receipt, 1);
    issue.Add(line.issue, 1);
  }
  bool Fit() const { return FitsMoney(net.amount) && FitsMoney(receipt.amount) && FitsMoney(issue.amount); }
};

JournalRow TotalRow(const std::string& period, const Sums& in_period, const Sums& in_all) {
  JournalRow row{RowKind::kTotal, {}};
  row.cells[PlaceOf("BillNo")] = PeriodCaption(period, "合计");
  const auto put = [&](const char* key, const char* format, const auto& text_of) {
    row.cells[PlaceOf(key)] = Shown(text_of(in_period), format) + "\n" + Shown(text_of(in_all), format);
  };
  const auto put_all = [&](const char* quantity, const char* quantity2, const char* amount, Measures Sums::*which) {
    put(quantity, "#,##0.00", [&](const Sums& sums) { return NumberText((sums.*which).quantity); });
    put(quantity2, "", [&](const Sums& sums) { return NumberText((sums.*which).quantity2); });
    put(amount, "#,##0.00", [&](const Sums& sums) { return AmountText((sums.*which).amount); });
  };
  put_all("Quantity", "Quantity2", "Account", &Sums::net);
  put_all("RevQty", "RevQty2", "RevAcc", &Sums::receipt);
  put_all("IssQty", "IssQty2", "IssAcc", &Sums::issue);
  return row;
}

}  // namespace

// Receipts or issues: their tables.
struct RecomputedJournal::Side {
  int flag;
  std::string records;
  std::string bills;
  std::string partners;
};

struct RecomputedJournal::Sources {
  const BaseTables& tables;
  const Side& side;
  size_t record;
  size_t bill;
  std::optional<size_t> depot, partner, project, product;

  const Stored& OfRecord(const char* column) const { return tables[side.records].At(record, column); }
  const Stored& OfBill(const char* column) const { return tables[side.bills].At(bill, column); }
  Stored OfMaster(const std::string& table, std::optional<size_t> row, const char* column) const {
    return row ? tables[table].At(*row, column) : Stored();
  }
};

RecomputedJournal::RecomputedJournal(const BaseTables& tables, const app::JournalOptions& options,
                                     app::SqlDialect dialect)
    : tables_(tables), options_(options), server_(dialect == app::SqlDialect::kServer) {
  latest_ = tables.FirstText("SELECT AccPeriod FROM tqAccPeriod ORDER BY AccPeriod DESC").value_or("");
  CompleteCode();
  ReadSecondKeys();
  cannot_run_ = cannot_run_ || (server_ && options.journal_type != kMaterial);
  if (cannot_run_) return;
  if (options.journal_type != kCustomer) AddSide({0, "入库记录", "入库目录", "厂商资料"});
  if (options.journal_type != kSupplier) AddSide({1, "出库记录", "出库目录", "客户资料"});
  std::stable_sort(lines_.begin(), lines_.end(),
                   [](const auto& left, const auto& right) { return left.order < right.order; });
  opening_ = OpeningOf(tables, options_);
}

// Without a class code the second key's own one counts.
void RecomputedJournal::CompleteCode() {
  if (!options_.dp_code.empty() || options_.key_id < 1 || !IsPartner(options_.journal_type)) return;
  const char* masters = options_.journal_type == kSupplier ? "厂商资料" : "客户资料";
  const std::string of_key =
      std::string("SELECT ClassCode FROM ") + masters + " WHERE KSID = " + std::to_string(options_.dp_id);
  options_.dp_code = tables_.FirstText(of_key).value_or("");
}

void RecomputedJournal::ReadSecondKeys() {
  const std::string code = options_.dp_code;
  if (options_.dp_id >= 1) {
    second_keys_ = std::to_string(options_.dp_id);
  } else if (options_.journal_type == kProject) {
    if (!code.empty())
      second_keys_ =
          tables_.KeyList("SELECT 项目ID FROM 项目设置 WHERE ClassCode = " + Quoted(code) + " COLLATE NOCASE");
  } else if (options_.journal_type != kMaterial) {
    // The customer journal asks for the class whose code is the second key's number.
    const bool supplier = options_.journal_type == kSupplier;
    second_keys_ =
        tables_.KeyList(std::string("SELECT KSID FROM ") + (supplier ? "厂商资料" : "客户资料") +
                        " WHERE ClassCode LIKE '" + (supplier ? code : std::to_string(options_.dp_id)) + "%'");
    cannot_run_ = !second_keys_;
  }
}

std::string RecomputedJournal::LinesWanted() const {
  const int type = options_.journal_type;
  std::string wanted = "b.AccPeriod <= " + Quoted(latest_) + " COLLATE NOCASE";
  if (!IsPartner(type) || options_.key_id >= 1) wanted += " AND r.pdID = " + std::to_string(options_.key_id);
  const char* second = type == kMaterial ? "r.dpID" : IsPartner(type) ? "r.ksID" : "r.pjID";
  return second_keys_ ? wanted + " AND " + second + " IN (" + *second_keys_ + ")" : wanted;
}

void RecomputedJournal::AddSide(const Side& side) {
  const bool is_union = !IsPartner(options_.journal_type);
  const bool names_products = options_.journal_type != kMaterial;
  struct Key {
    const char* name;
    const std::string& table;
    const char* column;
  };
  // Texts are equal whatever their case, where no column is declared to hold numbers.
  const auto equal = [&](const Key& key, const Key& other) {
    const bool numbers = tables_[key.table].IsOfNumbers(key.column) || tables_[other.table].IsOfNumbers(other.column);
    return std::string(key.name) + "." + key.column + " = " + other.name + "." + other.column +
           (numbers ? "" : " COLLATE NOCASE");
  };
  const auto join = [&](const Key& key, const Key& master) {
    return " LEFT JOIN " + master.table + " " + master.name + " ON " + equal(key, master);
  };
  const std::string from = side.records + " r JOIN " + side.bills + " b ON " +
                           equal({"r", side.records, "BillID"}, {"b", side.bills, "BillID"}) +
                           join({"r", side.records, "dpID"}, {"d", "仓库设置", "dpID"}) +
                           join({"b", side.bills, "ksID"}, {"k", side.partners, "KSID"}) +
                           join({"b", side.bills, "pjID"}, {"p", "项目设置", "项目ID"}) +
                           (names_products ? join({"r", side.records, "pdID"}, {"g", "商品设置", "pdID"}) : "");
  const auto found =
      tables_.Query("SELECT r.rowid, b.rowid, d.rowid, k.rowid, p.rowid, " +
                    std::string(names_products ? "g.rowid" : "NULL") + " FROM " + from + " WHERE " + LinesWanted());
  for (const auto& numbers : found) {
    const auto place = [&](size_t column, const std::string& table) {
      const Stored& number = numbers[column];
      return number.IsNull() ? std::nullopt : std::optional(tables_[table].RowOf(number.integer));
    };
    const Sources at{tables_,
                     side,
                     *place(0, side.records),
                     *place(1, side.bills),
                     place(2, "仓库设置"),
                     place(3, side.partners),
                     place(4, "项目设置"),
                     place(5, "商品设置")};
    MovementLine line;
    FillCells(side, at, line);
    FillAmounts(side, at, line);
    ComposeName(line.cells);
    const auto same = [&](const MovementLine& other) { return other.identity == line.identity; };
    if (!is_union || std::none_of(lines_.begin(), lines_.end(), same)) lines_.push_back(std::move(line));
  }
}

void RecomputedJournal::FillCells(const Side& side, const Sources& at, MovementLine& line) const {
  const auto put = [&](const char* key, const Stored& value) {
    line.cells[PlaceOf(key)] = value.Cell();
    line.identity += value.Identity() + "\n";
  };
  constexpr const char* kOfBill[][2] = {{"Period", "AccPeriod"},  {"BillDate", "BillDate"},  {"BillKind", "类型"},
                                        {"Explain", "说明"},      {"Inputor", "录入员"},     {"InputDate", "录入日期"},
                                        {"Auditor", "审核员"},    {"AuditDate", "审核日期"}, {"BillID", "BillID"},
                                        {"dpID", "dpID"},         {"ksID", "ksID"},          {"pjID", "pjID"},
                                        {"BillName", "单据类型"}, {"BillNo", "单据编号"}};
  constexpr const char* kOfRecord[][2] = {
      {"Price", "除税单价"},  {"Ratio", "税率"},    {"Tax", "税额"},        {"TaxPrice", "单价"},
      {"TaxAccount", "金额"}, {"Field0", "经手人"}, {"Field1", "交接人"},   {"Field2", "包装"},
      {"Field3", "货位"},     {"Field4", "期限"},   {"Field5", "SerialNo"}, {"Field6", "ProductDate"},
      {"DQty", "数量"},       {"RecID", "RecID"},   {"OtherID", "OtherID"}, {"pdID", "pdID"}};
  constexpr const char* kOfProduct[][2] = {{"ProductName", "商品名称"}, {"ProductNo", "商品编号"},
                                           {"Model", "规格"},           {"Standard", "型号"},
                                           {"Measure", "计量单位"},     {"Measure2", "计量2"}};
  for (const auto& [key, column] : kOfBill) put(key, at.OfBill(column));
  for (const auto& [key, column] : kOfRecord) put(key, at.OfRecord(column));
  put("Depot", at.OfMaster("仓库设置", at.depot, "仓库名称"));
  put("Enterprise", at.OfMaster(side.partners, at.partner, "企业名称"));
  put("Project", at.OfMaster("项目设置", at.project, "项目名称"));
  put("ProjNo", at.OfMaster("项目设置", at.project, "项目编号"));
  for (const auto& [key, column] : kOfProduct) {
    if (options_.journal_type != kMaterial) put(key, at.OfMaster("商品设置", at.product, column));
  }
  for (const char* key : {"InputDate", "AuditDate", "Field6"}) {
    std::string& date = line.cells[PlaceOf(key)];
    if (DateText(date) == "1899-12-30" || NumberOf(date) == 0) date.clear();
  }
  line.cells[PlaceOf("DStoQty")] = "0";
  line.cells[PlaceOf("Flag")] = std::to_string(side.flag);
  line.identity += std::to_string(side.flag);
  FillBillNo(side, at, line);
}

void RecomputedJournal::FillBillNo(const Side& side, const Sources& at, MovementLine& line) const {
  const auto of_bill = [&](const char* column) -> const Stored& { return at.OfBill(column); };
  Stored bill_no;
  bill_no.kind = Stored::Kind::kText;
  const std::string date = of_bill("BillDate").Raw();
  const std::string kind = of_bill("单据类型").Raw();
  const std::string number = of_bill("单据编号").Raw();
  if (server_) {
    const bool unknown =
        of_bill("BillDate").Identity() == "null" || of_bill("单据类型").IsNull() || of_bill("单据编号").IsNull();
    std::string ten = date.substr(0, 10);
    ten.resize(10, ' ');
    if (!unknown) bill_no.text = ten + kind + " " + number;
  } else {
    bill_no.text = date + " " + kind + " " + number;
  }
  line.cells[PlaceOf("BillNo")] = bill_no.Cell();
  const std::string day = of_bill("BillDate").Order();
  if (options_.journal_type == kMaterial)
    line.order = {day, side.flag, bill_no.text};
  else if (options_.journal_type == kProject)
    line.order = {day, side.flag, ""};
  else
    line.order = {day, 0, kind + number};
}

void RecomputedJournal::FillAmounts(const Side& side, const Sources& at, MovementLine& line) const {
  const bool receipt = side.flag == 0;
  const auto measures = [](const Stored& quantity, const Stored& quantity2, const Stored& amount) {
    return Measures{quantity.Number(), quantity2.Number(), amount.MoneyAmount()};
  };
  const Stored moved[] = {at.OfRecord("数量"), at.OfRecord("Qty2"), at.OfRecord("除税金额")};
  (receipt ? line.receipt : line.issue) = measures(moved[0], moved[1], moved[2]);
  const Stored net[] = {receipt ? moved[0] : Negative(moved[0]), receipt ? moved[1] : Negative(moved[1]),
                        receipt ? moved[2] : Negative(moved[2])};
  line.net = measures(net[0], net[1], net[2]);
  line.fits = FitsMoney(line.net.amount) && FitsMoney(moved[2].MoneyAmount()) &&
              (receipt || std::none_of(std::begin(moved), std::end(moved), [](const Stored& value) {
                 return value.cls != ColumnClass::kMoney && value.Whole() == INT64_MIN;
               }));
  constexpr const char* kKeys[][3] = {
      {"Quantity", "RevQty", "IssQty"}, {"Quantity2", "RevQty2", "IssQty2"}, {"Account", "RevAcc", "IssAcc"}};
  for (size_t measure = 0; measure < 3; ++measure) {
    line.identity += "\n" + moved[measure].Identity();
    line.cells[PlaceOf(kKeys[measure][0])] = net[measure].Cell();
    line.cells[PlaceOf(kKeys[measure][1])] = receipt ? moved[measure].Cell() : "0";
    line.cells[PlaceOf(kKeys[measure][2])] = receipt ? "0" : moved[measure].Cell();
  }
  Blank(line, side.flag);
}

void RecomputedJournal::Blank(MovementLine& line, int flag) const {
  for (const char* key : {flag == 0 ? "RevQty" : "IssQty", flag == 0 ? "RevAcc" : "IssAcc"}) {
    std::string& cell = line.cells[PlaceOf(key)];
    if (NumberOf(cell) == 0) cell.clear();
  }
}

std::optional<std::vector<JournalRow>> RecomputedJournal::Rows(const std::vector<size_t>& order) const {
  std::vector<JournalRow> rows;
  Measures running = opening_.measures;
  rows.push_back({RowKind::kOpening, {}});
  rows.back().cells[PlaceOf("Period")] = opening_.period;
  rows.back().cells[PlaceOf("BillNo")] = opening_.period.empty() ? "期初" : PeriodCaption(opening_.period, "期初");
  PutStock(rows.back().cells, running);
  const size_t period_place = PlaceOf("Period");
  const int type = options_.journal_type;
  Sums in_period;
  Sums in_all;
  bool fits = FitsMoney(running.amount);
  for (size_t at = 0; at < order.size(); ++at) {
    const MovementLine& line = lines_[order[at]];
    const std::string& period = line.cells[period_place];
    if (at == 0 || lines_[order[at - 1]].cells[period_place] != period) {
      in_period = {};
      rows.push_back({RowKind::kNode, {}});
      rows.back().cells[PlaceOf("BillNo")] = period;
    }
    if (type != kCustomer) running.Add(line.receipt, 1);
    if (type != kSupplier) running.Add(line.issue, type == kCustomer ? 1 : -1);
    in_period.Add(line);
    in_all.Add(line);
    fits = fits && line.fits && FitsMoney(running.amount) && in_period.Fit() && in_all.Fit();
    rows.push_back({RowKind::kLine, line.cells});
    PutStock(rows.back().cells, running);
    if (options_.acc_restrict) {
      for (const char* key : {"Price", "Account", "RevAcc", "IssAcc", "StoPrice", "StoAcc"})
        rows.back().cells[PlaceOf(key)] = "-";
    }
    if (at + 1 == order.size() || lines_[order[at + 1]].cells[period_place] != period)
      rows.push_back(TotalRow(period, in_period, in_all));
  }
  if (!fits) return std::nullopt;
  return rows;
}

}  // namespace stockbook::end_to_end
