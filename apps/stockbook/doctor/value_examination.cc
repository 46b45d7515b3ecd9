// SPDX-License-Identifier: MIT
#include "stockbook/doctor/value_examination.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "base/number.h"
#include "stockbook/inventory/inventory_balances.h"

namespace stockbook::app {
namespace {

using Finding = FindingGroup::Example;

constexpr std::array<TableName, 2> kBillTables{TableName::ReceiptBills, TableName::IssueBills};
constexpr std::array<TableName, 2> kLineTables{TableName::ReceiptLines, TableName::IssueLines};

// The text with every digit as 9: periods are of one form if these are equal.
std::string FormOf(std::string_view text) {
  std::string form(text);
  for (char& c : form) c = c >= '0' && c <= '9' ? '9' : c;
  return form;
}

std::string UsualForm(const std::map<std::string, size_t>& forms) {
  const auto usual = std::max_element(forms.begin(), forms.end(),
                                      [](const auto& left, const auto& right) { return left.second < right.second; });
  return usual == forms.end() ? std::string() : usual->first;
}

// The month of 2026-03, 2026.03, 202603, as MonthOf counts it; nothing for another form.
std::optional<int> MonthOfPeriod(const std::string& period) {
  const std::string form = FormOf(period);
  const bool joined = form == "999999";
  if (!joined && (form.size() != 7 || !form.starts_with("9999") || !form.ends_with("99") || form[4] == '9')) return {};
  const int year = std::stoi(period.substr(0, 4));
  const int month = std::stoi(period.substr(period.size() - 2));
  if (month < 1 || month > 12) return std::nullopt;
  return year * 12 + month - 1;
}

void ExaminePeriodColumn(const ExaminedTable& table, std::string_view name, const std::set<std::string>& known,
                         DoctorReport& report) {
  const columns::Column* periods = table.Find(name);
  if (periods == nullptr) return;
  FindingGroup& unknown = report.Group(Ailment::kPeriodUnknown, table.name(), name);
  for (size_t row = 0; row < periods->size(); ++row) {
    const std::string period = periods->Text(row);
    if (known.contains(period)) continue;
    unknown.Add([&] { return Finding{table.KeyText(row), period.empty() ? "会计期间为空" : "会计期间 " + period}; });
  }
}

// The earliest bill of each period.
std::map<std::string, base::Date> EarliestDates(const ExaminedTables& tables) {
  std::map<std::string, base::Date> earliest;
  for (const TableName name : kBillTables) {
    const columns::Column* periods = tables.Of(name).Find("AccPeriod");
    const columns::Column* dates = tables.Of(name).Find("BillDate");
    if (periods == nullptr || dates == nullptr) continue;
    for (size_t row = 0; row < periods->size(); ++row) {
      const auto date = dates->At(row).AsDate();
      if (!date || IsBlankAt(*periods, row)) continue;
      const auto [place, is_new] = earliest.emplace(periods->Text(row), *date);
      if (!is_new) place->second = std::min(place->second, *date);
    }
  }
  return earliest;
}

void ExaminePeriodOrder(const ExaminedTables& tables, DoctorReport& report) {
  const std::map<std::string, base::Date> earliest = EarliestDates(tables);
  FindingGroup& order = report.Group(Ailment::kPeriodOrder, tables.Of(TableName::Periods).name(), "AccPeriod");
  for (auto next = earliest.begin(); next != earliest.end();) {
    const auto before = next++;
    if (next == earliest.end() || before->second <= next->second) continue;
    order.Add([&] {
      return Finding{"AccPeriod=" + before->first, "最早的单据在 " + before->second.Text() + "，晚于按文本在后的 " +
                                                       next->first + "（" + next->second.Text() + "）"};
    });
  }
}

void ExamineBillDates(const ExaminedTable& bills, DoctorReport& report) {
  const columns::Column* dates = bills.Find("BillDate");
  const columns::Column* periods = bills.Find("AccPeriod");
  if (dates == nullptr) return;
  FindingGroup& missing = report.Group(Ailment::kDateMissing, bills.name(), "BillDate");
  FindingGroup& outside = report.Group(Ailment::kDateOutsidePeriod, bills.name(), "BillDate");
  std::string period;
  std::optional<int> month;
  for (size_t row = 0; row < dates->size(); ++row) {
    if (IsBlankAt(*dates, row)) missing.Add([&] { return Finding{bills.KeyText(row), "日期为空"}; });
    const auto date = dates->At(row).AsDate();
    if (!date || periods == nullptr) continue;
    // Bills of one period stand together.
    if (std::string text = periods->Text(row); text != period) {
      period = std::move(text);
      month = MonthOfPeriod(period);
    }
    if (!month || MonthOf(*date) == *month) continue;
    outside.Add([&] { return Finding{bills.KeyText(row), "日期 " + date->Text() + "，会计期间 " + period}; });
  }
}

void ExamineDateParts(const ExaminedTable& bills, DoctorReport& report) {
  const std::array parts{bills.Find("年份"), bills.Find("月份"), bills.Find("日子")};
  const columns::Column* dates = bills.Find("BillDate");
  if (dates == nullptr || std::find(parts.begin(), parts.end(), nullptr) != parts.end()) return;
  FindingGroup& wrong = report.Group(Ailment::kDateParts, bills.name());
  for (size_t row = 0; row < dates->size(); ++row) {
    const auto date = dates->At(row).AsDate();
    if (!date || IsBlankAt(*dates, row)) continue;
    const base::DateParts day = date->parts();
    const std::array numbers{day.year, day.month, day.day};
    bool same = true;
    for (size_t index = 0; index < parts.size(); ++index) same &= WholeAt(*parts[index], row) == numbers[index];
    if (same) continue;
    wrong.Add([&] {
      return Finding{bills.KeyText(row), "日期 " + date->Text() + "，三列为 " + parts[0]->Text(row) + "、" +
                                             parts[1]->Text(row) + "、" + parts[2]->Text(row)};
    });
  }
}

void ExamineReadable(const ExaminedTable& table, std::string_view name, DoctorReport& report) {
  const columns::Column* dates = table.Find(name);
  if (dates == nullptr) return;
  FindingGroup& unreadable = report.Group(Ailment::kDateUnreadable, table.name(), name);
  for (size_t row = 0; row < dates->size(); ++row) {
    if (IsBlankAt(*dates, row) || dates->At(row).AsDate()) continue;
    unreadable.Add([&] { return Finding{table.KeyText(row), std::string(name) + " 为“" + dates->Text(row) + "”"}; });
  }
}

void ExamineNumberColumn(const ExaminedTable& table, std::string_view name, DoctorReport& report) {
  const columns::Column* numbers = table.Find(name);
  if (numbers == nullptr) return;
  FindingGroup& unreadable = report.Group(Ailment::kNumberUnreadable, table.name(), name);
  const auto add = [&](size_t row) {
    unreadable.Add([&] { return Finding{table.KeyText(row), std::string(name) + " 为“" + numbers->Text(row) + "”"}; });
  };
  constexpr size_t kBlockRows = 4096;
  std::array<double, kBlockRows> block{};
  const bool plain = numbers->HoldsNumbersOnly();
  for (size_t first = 0; first < numbers->size(); first += kBlockRows) {
    const std::span<double> read(block.data(), std::min(kBlockRows, numbers->size() - first));
    numbers->ReadNumbers(first, read);
    for (size_t at = 0; at < read.size(); ++at) {
      const size_t row = first + at;
      if (!std::isfinite(read[at])) {
        add(row);
      } else if (!plain && !IsBlankAt(*numbers, row) && !numbers->At(row).Number()) {
        add(row);
      }
    }
  }
}

void ExamineQuantity(const ExaminedTable& lines, DoctorReport& report) {
  const columns::Column* quantities = lines.Find("数量");
  if (quantities == nullptr) return;
  FindingGroup& negative = report.Group(Ailment::kQuantityNegative, lines.name(), "数量");
  FindingGroup& unreadable = report.Group(Ailment::kNumberUnreadable, lines.name(), "数量");
  for (size_t row = 0; row < quantities->size(); ++row) {
    if (quantities->Number(row) < 0) {
      negative.Add([&] { return Finding{lines.KeyText(row), "数量为 " + quantities->Text(row)}; });
    } else if (quantities->IsNull(row)) {
      unreadable.Add([&] { return Finding{lines.KeyText(row), "数量为空"}; });
    }
  }
}

}  // namespace

void ExaminePeriods(const ExaminedTables& tables, DoctorReport& report) {
  const ExaminedTable& table = tables.Of(TableName::Periods);
  const columns::Column* periods = table.Find("AccPeriod");
  if (periods == nullptr) return;
  std::set<std::string> known;
  std::map<std::string, size_t> forms;
  for (size_t row = 0; row < periods->size(); ++row) {
    if (IsBlankAt(*periods, row)) continue;
    known.insert(periods->Text(row));
    ++forms[FormOf(periods->Text(row))];
  }
  const std::string usual = UsualForm(forms);
  FindingGroup& other = report.Group(Ailment::kPeriodForm, table.name(), "AccPeriod");
  for (const std::string& period : known) {
    if (FormOf(period) == usual) continue;
    other.Add([&] { return Finding{"AccPeriod=" + period, "多数期间的写法是 " + usual}; });
  }
  if (!known.empty() && !MonthOfPeriod(*known.begin()))
    report.LeaveOut("单据日期是否在会计期间内", "期间“" + *known.begin() + "”不是年月");
  for (const TableName name : kBillTables) ExaminePeriodColumn(tables.Of(name), "AccPeriod", known, report);
  ExaminePeriodColumn(tables.Of(TableName::DepotBalances), "AccPeriod", known, report);
  for (const TableName name : {TableName::SupplierBalances, TableName::CustomerBalances, TableName::ProjectBalances})
    ExaminePeriodColumn(tables.Of(name), "bnPeriod", known, report);
  ExaminePeriodOrder(tables, report);
}

void ExamineDates(const ExaminedTables& tables, DoctorReport& report) {
  for (const TableName name : kBillTables) {
    ExamineBillDates(tables.Of(name), report);
    ExamineDateParts(tables.Of(name), report);
    for (const char* column : {"BillDate", "录入日期", "审核日期"}) ExamineReadable(tables.Of(name), column, report);
  }
  for (const TableName name : kLineTables) ExamineReadable(tables.Of(name), "ProductDate", report);
}

void ExamineNumbers(const ExaminedTables& tables, DoctorReport& report) {
  for (size_t index = 0; index < kTableCount; ++index) {
    const auto table = static_cast<TableName>(index);
    for (const InventoryColumn& column : InventoryTableOf(table).columns) {
      if (column.type == "REAL" || column.type == "MONEY TEXT")
        ExamineNumberColumn(tables.Of(table), column.name, report);
    }
  }
  for (const TableName name : kLineTables) ExamineQuantity(tables.Of(name), report);
}

}  // namespace stockbook::app
