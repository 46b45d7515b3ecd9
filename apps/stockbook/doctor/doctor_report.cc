// SPDX-License-Identifier: MIT
#include "stockbook/doctor/doctor_report.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "stockbook/command/journal_export.h"

namespace stockbook::app {
namespace {

struct AilmentTexts {
  std::string_view name;
  std::string_view problem;
  std::string_view advice;
};

// In the order of Ailment.
constexpr std::array<AilmentTexts, static_cast<size_t>(Ailment::kIndexMissing) + 1> kAilments{{
    {"table-missing", "表不存在或无法读取", "请建立此表，或检查账号能否读取"},
    {"column-missing", "表中缺少列", "请补上此列，台账要读取它"},
    {"key-null", "键为空", "请为这一行填上唯一的键，或删去这一行"},
    {"key-no-number", "键不是整数", "请把键改为整数"},
    {"key-duplicate", "键重复", "请让每一行的键各不相同，否则单据行会重复出现"},
    {"reference-dangling", "引用的记录不存在", "请补上被引用的记录，或改正引用"},
    {"reference-missing", "没有必需的引用", "请填上引用，否则这一行不在任何台账中"},
    {"period-unknown", "会计期间不在 tqAccPeriod 中", "请在 tqAccPeriod 中补上期间，或改正这里的期间"},
    {"period-form", "会计期间的写法与其他期间不同", "请统一写法，例如 2026-03，期间按文本比较先后"},
    {"period-order", "会计期间按文本的先后与日期的先后不符", "请改正期间的写法，使文本的先后就是时间的先后"},
    {"date-missing", "单据没有日期，或日期无法识别", "请填上日期，台账按日期排列"},
    {"date-unreadable", "日期无法识别", "请改为日期，例如 2026-03-08"},
    {"date-outside-period", "单据日期不在所记的会计期间内", "请改正日期或会计期间"},
    {"date-parts", "年份、月份、日子与单据日期不符", "请按单据日期改正这三列"},
    {"number-unreadable", "不是数", "请改为数，台账把它当作 0"},
    {"quantity-negative", "数量为负", "数量一律为正，退货应记为相反方向的单据"},
    {"class-unknown", "分类编码不在分类表中", "请在分类表中补上此编码，或改正编码"},
    {"class-duplicate", "分类编码重复或为空", "请让每个编码只出现一次"},
    {"balance-duplicate", "同一期间的余额有多行", "请只留一行，期初余额会被重复相加"},
    {"balance-missing", "有单据而没有余额行", "请重新结算此期间"},
    {"balance-total", "余额表的本期合计与单据不符", "请重新结算此期间，或检查单据"},
    {"balance-opening", "期初与上期结存不符", "请从不符的期间起重新结算"},
    {"index-missing", "缺少索引", "请建立索引，否则载入会慢"},
}};

const AilmentTexts& TextsOf(Ailment ailment) { return kAilments[static_cast<size_t>(ailment)]; }

std::string PlaceOf(const FindingGroup& group) {
  return group.column().empty() ? group.table() : group.table() + "." + group.column();
}

void AppendPair(std::string_view name, std::string_view value, std::string& out) {
  if (out.back() != '{') out += ',';
  AppendJson(name, out);
  out += ':';
  AppendJson(value, out);
}

void AppendCount(std::string_view name, size_t count, std::string& out) {
  if (out.back() != '{') out += ',';
  AppendJson(name, out);
  out += ':' + std::to_string(count);
}

void AppendGroup(const FindingGroup& group, std::string& out) {
  const AilmentTexts& texts = TextsOf(group.ailment());
  out += out.back() == '[' ? "{" : ",{";
  AppendPair("kind", texts.name, out);
  AppendPair("table", group.table(), out);
  AppendPair("column", group.column(), out);
  AppendCount("count", group.count(), out);
  AppendPair("problem", texts.problem, out);
  AppendPair("advice", texts.advice, out);
  out += ",\"examples\":[";
  for (const FindingGroup::Example& example : group.examples()) {
    out += out.back() == '[' ? "{" : ",{";
    AppendPair("key", example.key, out);
    AppendPair("detail", example.detail, out);
    out += '}';
  }
  out += "]}";
}

}  // namespace

FindingGroup& DoctorReport::Group(Ailment ailment, std::string_view table, std::string_view column) {
  const auto found = std::find_if(groups_.begin(), groups_.end(), [&](const FindingGroup& group) {
    return group.ailment() == ailment && group.table() == table && group.column() == column;
  });
  if (found != groups_.end()) return *found;
  return groups_.emplace_back(ailment, std::string(table), std::string(column));
}

bool DoctorReport::IsHealthy() const {
  return std::all_of(groups_.begin(), groups_.end(), [](const FindingGroup& group) { return group.count() == 0; });
}

void DoctorReport::WriteText(std::ostream& out) const {
  size_t kinds = 0;
  size_t findings = 0;
  for (const FindingGroup& group : groups_) {
    if (group.count() == 0) continue;
    ++kinds;
    findings += group.count();
    const AilmentTexts& texts = TextsOf(group.ailment());
    out << PlaceOf(group) << "：" << texts.problem << "，共 " << group.count() << " 处；" << texts.advice << "。\n";
    for (const FindingGroup::Example& example : group.examples()) {
      out << "  " << example.key << (example.key.empty() || example.detail.empty() ? "" : "：") << example.detail
          << "\n";
    }
    if (group.count() > group.examples().size())
      out << "  其余 " << group.count() - group.examples().size() << " 处从略\n";
  }
  for (const LeftOut& left_out : left_out_) out << left_out.what << "：未检查，" << left_out.why << "。\n";
  size_t rows = 0;
  for (const Table& table : tables_) rows += table.rows;
  out << "检查了“" << database_ << "”的 " << tables_.size() << " 张表、" << rows << " 行：";
  if (findings == 0) {
    out << "没有发现问题。\n";
  } else {
    out << "发现 " << kinds << " 类共 " << findings << " 处问题。\n";
  }
}

void DoctorReport::WriteJson(std::ostream& out) const {
  std::string text = "{\"version\":1";
  AppendPair("database", database_, text);
  text += std::string(",\"healthy\":") + (IsHealthy() ? "true" : "false") + ",\"tables\":[";
  for (const Table& table : tables_) {
    text += text.back() == '[' ? "{" : ",{";
    AppendPair("name", table.name, text);
    AppendCount("rows", table.rows, text);
    text += '}';
  }
  text += "],\"findings\":[";
  for (const FindingGroup& group : groups_) {
    if (group.count() > 0) AppendGroup(group, text);
  }
  text += "],\"unchecked\":[";
  for (const LeftOut& left_out : left_out_) {
    text += text.back() == '[' ? "{" : ",{";
    AppendPair("what", left_out.what, text);
    AppendPair("why", left_out.why, text);
    text += '}';
  }
  out << text << "]}\n";
}

}  // namespace stockbook::app
