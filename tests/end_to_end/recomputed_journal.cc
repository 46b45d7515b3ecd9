// SPDX-License-Identifier: MIT
#include "end_to_end/recomputed_journal.h"

#include <algorithm>
#include <cmath>

namespace stockbook::end_to_end {
namespace {

enum JournalTypes : int { kMaterial, kSupplier, kCustomer, kProject };

bool IsPartner(int type) { return type == kSupplier || type == kCustomer; }

std::vector<std::string> Periods(const BaseTables& tables) {
  const BaseTable& table = tables["tqAccPeriod"];
  std::vector<std::string> periods;
  for (size_t row = 0; row < table.size(); ++row) periods.push_back(table.At(row, "AccPeriod").Plain());
  std::sort(periods.begin(), periods.end());
  return periods;
}

// Members of a class: the code equals theirs or is a prefix of it.
enum class Match { kWhole, kBeginning };

std::vector<int64_t> Members(const BaseTable& masters, std::string_view key, const std::string& code, Match match) {
  std::vector<int64_t> members;
  for (size_t row = 0; row < masters.size(); ++row) {
    const Stored& member_code = masters.At(row, "ClassCode");
    if (member_code.IsNull()) continue;
    const std::string text = member_code.Plain();
    if (match == Match::kWhole ? text == code : text.starts_with(code)) members.push_back(masters.At(row, key).integer);
  }
  return members;
}

bool Contains(const std::vector<int64_t>& keys, const Stored& key) {
  return std::any_of(keys.begin(), keys.end(), [&](int64_t one) { return key.Is(one); });
}

// The matching rows of a left join; a single "none" if nothing matches.
std::vector<std::optional<size_t>> LeftJoin(const BaseTable& masters, std::string_view column, const Stored& key) {
  std::vector<std::optional<size_t>> matches;
  if (key.kind == Stored::Kind::kInteger)
    for (const size_t row : masters.Where(column, key.integer)) matches.emplace_back(row);
  if (matches.empty()) matches.emplace_back(std::nullopt);
  return matches;
}

std::string NameIn(const BaseTable& masters, std::optional<size_t> row, std::string_view column) {
  return row ? masters.At(*row, column).Plain() : std::string();
}

// A value that is not a number is not negated.
std::string Negative(const std::string& text) {
  if (!NumberOf(text)) return {};
  if (text == "0") return text;
  return text.front() == '-' ? text.substr(1) : "-" + text;
}

double Price(const Measures& measures) {
  if (measures.quantity == 0 || !std::isfinite(measures.quantity)) return 0;
  const double price = AsDouble(measures.amount) / measures.quantity;
  return std::isfinite(price) ? price : 0;
}

std::string PeriodCaption(const std::string& period, const char* word) {
  return period.substr(0, 4) + "年" + (period.size() < 2 ? period : period.substr(period.size() - 2)) + "月" + word;
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

void Measures::Add(const Measures& other, int sign) {
  quantity += sign * other.quantity;
  quantity2 += sign * other.quantity2;
  amount += sign * other.amount;
}

// Receipts or issues: their tables.
struct RecomputedJournal::Side {
  int flag;
  const BaseTable& records;
  const BaseTable& bills;
  const BaseTable& partners;
};

RecomputedJournal::RecomputedJournal(const BaseTables& tables, const app::JournalOptions& options)
    : tables_(tables), options_(options) {
  const std::vector<std::string> periods = Periods(tables);
  if (!periods.empty()) latest_ = periods.back();
  ReadSecondKeys();
  if (cannot_run_) return;
  const Side receipts{0, tables["入库记录"], tables["入库目录"], tables["厂商资料"]};
  const Side issues{1, tables["出库记录"], tables["出库目录"], tables["客户资料"]};
  if (options.journal_type != kCustomer) AddSide(receipts);
  if (options.journal_type != kSupplier) AddSide(issues);
  std::stable_sort(lines_.begin(), lines_.end(),
                   [](const auto& left, const auto& right) { return left.order < right.order; });
  ReadOpening();
}

void RecomputedJournal::ReadSecondKeys() {
  if (options_.dp_id >= 1) {
    second_keys_ = {options_.dp_id};
    return;
  }
  if (options_.journal_type == kMaterial) return;
  std::vector<int64_t> members;
  if (options_.journal_type == kProject) {
    if (!options_.dp_code.empty()) members = Members(tables_["项目设置"], "项目ID", options_.dp_code, Match::kWhole);
    if (!members.empty()) second_keys_ = members;
    return;
  }
  // The customer journal asks for the class whose code is the second key's number.
  const bool supplier = options_.journal_type == kSupplier;
  members = Members(tables_[supplier ? "厂商资料" : "客户资料"], "KSID",
                    supplier ? options_.dp_code : std::to_string(options_.dp_id), Match::kBeginning);
  cannot_run_ = members.empty();
  second_keys_ = members;
}

bool RecomputedJournal::Selects(const BaseTable& records, size_t record) const {
  const bool any_product = IsPartner(options_.journal_type) && options_.key_id < 1;
  if (!any_product && !records.At(record, "pdID").Is(options_.key_id)) return false;
  const char* second = options_.journal_type == kMaterial ? "dpID" : IsPartner(options_.journal_type) ? "ksID" : "pjID";
  return !second_keys_ || Contains(*second_keys_, records.At(record, second));
}

void RecomputedJournal::AddSide(const Side& side) {
  for (size_t record = 0; record < side.records.size(); ++record) {
    const Stored& bill_key = side.records.At(record, "BillID");
    if (!Selects(side.records, record) || bill_key.kind != Stored::Kind::kInteger) continue;
    for (const size_t bill : side.bills.Where("BillID", bill_key.integer)) {
      const Stored& period = side.bills.At(bill, "AccPeriod");
      if (!period.IsNull() && period.Plain() <= latest_) AddMovement(side, record, bill);
    }
  }
}

void RecomputedJournal::AddMovement(const Side& side, size_t record, size_t bill) {
  for (MovementLine& line : JoinMasters(side, record, bill)) {
    ComposeName(line.cells);
    // A union keeps one of equal rows.
    const bool is_union = !IsPartner(options_.journal_type);
    const auto equal = [&](const MovementLine& other) { return other.cells == line.cells; };
    if (is_union && std::any_of(lines_.begin(), lines_.end(), equal)) continue;
    lines_.push_back(std::move(line));
  }
}

std::vector<MovementLine> RecomputedJournal::JoinMasters(const Side& side, size_t record, size_t bill) const {
  MovementLine line;
  FillCells(side, record, bill, line);
  FillAmounts(side, record, line);
  const BaseTable& depots = tables_["仓库设置"];
  const BaseTable& projects = tables_["项目设置"];
  const BaseTable& products = tables_["商品设置"];
  const bool names_products = options_.journal_type != kMaterial;
  std::vector<MovementLine> joined;
  for (const auto depot : LeftJoin(depots, "dpID", side.records.At(record, "dpID"))) {
    for (const auto partner : LeftJoin(side.partners, "KSID", side.bills.At(bill, "ksID"))) {
      for (const auto project : LeftJoin(projects, "项目ID", side.bills.At(bill, "pjID"))) {
        line.cells[PlaceOf("Depot")] = NameIn(depots, depot, "仓库名称");
        line.cells[PlaceOf("Enterprise")] = NameIn(side.partners, partner, "企业名称");
        line.cells[PlaceOf("Project")] = NameIn(projects, project, "项目名称");
        line.cells[PlaceOf("ProjNo")] = NameIn(projects, project, "项目编号");
        if (!names_products) joined.push_back(line);
        if (!names_products) continue;
        for (const auto product : LeftJoin(products, "pdID", side.records.At(record, "pdID"))) {
          constexpr const char* kNames[][2] = {{"ProductName", "商品名称"}, {"ProductNo", "商品编号"},
                                               {"Model", "规格"},           {"Standard", "型号"},
                                               {"Measure", "计量单位"},     {"Measure2", "计量2"}};
          for (const auto& [key, column] : kNames) line.cells[PlaceOf(key)] = NameIn(products, product, column);
          joined.push_back(line);
        }
      }
    }
  }
  return joined;
}

void RecomputedJournal::FillCells(const Side& side, size_t record, size_t bill, MovementLine& line) const {
  const auto of_bill = [&](const char* column) -> const Stored& { return side.bills.At(bill, column); };
  const auto of_record = [&](const char* column) -> const Stored& { return side.records.At(record, column); };
  const auto put = [&](const char* key, const std::string& text) { line.cells[PlaceOf(key)] = text; };
  const std::string date = of_bill("BillDate").Date();
  const std::string kind = of_bill("单据类型").Plain();
  const std::string number = of_bill("单据编号").Plain();
  const std::string bill_no = date + " " + kind + " " + number;
  put("Period", of_bill("AccPeriod").Plain());
  put("BillDate", date);
  put("BillNo", bill_no);
  put("BillKind", of_bill("类型").Plain());
  put("Explain", of_bill("说明").Plain());
  put("Price", of_record("除税单价").Plain());
  put("Ratio", of_record("税率").Plain());
  put("Tax", of_record("税额").Money());
  put("TaxPrice", of_record("单价").Plain());
  put("TaxAccount", of_record("金额").Money());
  constexpr const char* kFields[] = {"经手人", "交接人", "包装", "货位", "期限", "SerialNo"};
  for (size_t field = 0; field < 6; ++field)
    put(("Field" + std::to_string(field)).c_str(), of_record(kFields[field]).Plain());
  put("Field6", of_record("ProductDate").Date());
  put("Inputor", of_bill("录入员").Plain());
  put("InputDate", of_bill("录入日期").Date());
  put("Auditor", of_bill("审核员").Plain());
  put("AuditDate", of_bill("审核日期").Date());
  put("DQty", of_record("数量").Plain());
  put("DStoQty", "0");
  for (const char* key : {"BillID", "dpID", "ksID", "pjID"}) put(key, of_bill(key).Plain());
  for (const char* key : {"RecID", "OtherID", "pdID"}) put(key, of_record(key).Plain());
  put("Flag", std::to_string(side.flag));
  put("BillName", kind);
  if (options_.journal_type == kMaterial)
    line.order = {date, side.flag, bill_no};
  else if (options_.journal_type == kProject)
    line.order = {date, side.flag, ""};
  else
    line.order = {date, 0, kind + number};
}

void RecomputedJournal::FillAmounts(const Side& side, size_t record, MovementLine& line) const {
  const Stored& quantity = side.records.At(record, "数量");
  const Stored& quantity2 = side.records.At(record, "Qty2");
  const Stored& amount = side.records.At(record, "除税金额");
  const Measures moved{quantity.Number(), quantity2.Number(), amount.MoneyAmount()};
  const bool receipt = side.flag == 0;
  (receipt ? line.receipt : line.issue) = moved;
  line.net.Add(moved, receipt ? 1 : -1);
  const std::string texts[] = {quantity.Plain(), quantity2.Plain(), amount.Money()};
  constexpr const char* kKeys[][3] = {
      {"Quantity", "RevQty", "IssQty"}, {"Quantity2", "RevQty2", "IssQty2"}, {"Account", "RevAcc", "IssAcc"}};
  for (size_t measure = 0; measure < 3; ++measure) {
    line.cells[PlaceOf(kKeys[measure][0])] = receipt ? texts[measure] : Negative(texts[measure]);
    line.cells[PlaceOf(kKeys[measure][1])] = receipt ? texts[measure] : "0";
    line.cells[PlaceOf(kKeys[measure][2])] = receipt ? "0" : texts[measure];
  }
  Blank(line, side.flag);
}

void RecomputedJournal::Blank(MovementLine& line, int flag) const {
  for (const char* key : {flag == 0 ? "RevQty" : "IssQty", flag == 0 ? "RevAcc" : "IssAcc"}) {
    std::string& cell = line.cells[PlaceOf(key)];
    if (cell == "0") cell.clear();
  }
}

// The owners whose balances count; `all` when the journal asks for no owner.
std::vector<int64_t> RecomputedJournal::BalanceOwners(bool& all) const {
  all = false;
  if (options_.dp_id != 0) return {options_.dp_id};
  std::vector<int64_t> owners;
  if (!options_.dp_code.empty()) {
    const int type = options_.journal_type;
    const char* masters = type == kSupplier ? "厂商资料" : type == kCustomer ? "客户资料" : "项目设置";
    owners = type == kProject ? Members(tables_[masters], "项目ID", options_.dp_code, Match::kWhole)
                              : Members(tables_[masters], "KSID", options_.dp_code, Match::kBeginning);
  }
  all = owners.empty();
  return owners;
}

void RecomputedJournal::SumBalance(const BaseTable& table, const std::vector<size_t>& rows,
                                   const std::array<std::string, 3>& columns) {
  // A sum of balances is the double nearest to the exact sum, whatever the order of addition.
  long double quantity = 0;
  long double quantity2 = 0;
  for (const size_t row : rows) {
    quantity += table.At(row, columns[0]).Number();
    quantity2 += table.At(row, columns[1]).Number();
  }
  Measures& sum = opening_->measures;
  sum.quantity = static_cast<double>(quantity);
  sum.quantity2 = static_cast<double>(quantity2);
  // In the customer journal the opening amount is a quantity.
  const bool quantity_as_amount = columns[2] == columns[0];
  if (quantity_as_amount) {
    sum.amount = AmountOf(NumberText(sum.quantity)).value_or(0);
    return;
  }
  for (const size_t row : rows) sum.amount += table.At(row, columns[2]).MoneyAmount();
}

void RecomputedJournal::ReadOpening() {
  const std::vector<std::string> periods = Periods(tables_);
  const std::string first = periods.empty() ? "" : periods.front();
  const int type = options_.journal_type;
  const char* names[] = {"仓库余额表", "tqSuppBalance", "tqCustBalance", "tqProjBalance"};
  const BaseTable& table = tables_[names[type]];
  bool all_owners = options_.dp_id <= 0;
  std::vector<int64_t> owners{options_.dp_id};
  if (type != kMaterial) owners = BalanceOwners(all_owners);
  opening_ = OpeningRow{first, {}};
  balance_is_refused_ = periods.empty() || (IsPartner(type) && all_owners);
  if (balance_is_refused_) return;
  const char* owner_column = type == kMaterial ? "DpID" : IsPartner(type) ? "ksID" : "pjID";
  const char* period_column = type == kMaterial ? "AccPeriod" : "bnPeriod";
  const char* product_column = type == kMaterial ? "PdID" : "pdID";
  std::vector<size_t> rows;
  std::string project_period;
  for (size_t row = 0; row < table.size(); ++row) {
    const bool any_product = IsPartner(type) && options_.key_id == 0;
    if (!any_product && !table.At(row, product_column).Is(options_.key_id)) continue;
    if (!all_owners && !Contains(owners, table.At(row, owner_column))) continue;
    const std::string period = table.At(row, period_column).Plain();
    if (type == kMaterial && period != first) continue;
    if (IsPartner(type) && period > first) continue;
    if (type == kProject && (rows.empty() || period < project_period)) {
      rows.clear();
      project_period = period;
    }
    if (type != kProject || period == project_period) rows.push_back(row);
  }
  if (type == kProject && !rows.empty()) opening_->period = project_period;
  if (type == kMaterial) SumBalance(table, rows, {"上期库存数量", "上期库存数量2", "上期库存金额"});
  if (type == kSupplier) SumBalance(table, rows, {"SumRevQuantity", "SumRevQuantity2", "SumRevAccount"});
  if (type == kCustomer) SumBalance(table, rows, {"SumIssQuantity", "SumIssQuantity2", "SumIssQuantity"});
  if (type == kProject) SumBalance(table, rows, {"LastQuantity", "LastQuantity2", "LastAccount"});
}

std::optional<std::vector<JournalRow>> RecomputedJournal::Rows(const std::vector<size_t>& order) const {
  std::vector<JournalRow> rows;
  Measures running;
  if (opening_) {
    running = opening_->measures;
    rows.push_back({RowKind::kOpening, {}});
    rows.back().cells[PlaceOf("Period")] = opening_->period;
    rows.back().cells[PlaceOf("BillNo")] = opening_->period.empty() ? "期初" : PeriodCaption(opening_->period, "期初");
    PutStock(rows.back().cells, running);
  }
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
    fits = fits && FitsMoney(running.amount) && in_period.Fit() && in_all.Fit();
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
