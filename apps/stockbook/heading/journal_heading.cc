// SPDX-License-Identifier: MIT
#include "stockbook/heading/journal_heading.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/text.h"
#include "sheet/outline/row_states.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/recordset.h"
#include "stockbook/range/range_view.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

constexpr std::string_view kProgramName = "库存台账";
constexpr std::array<std::string_view, 4> kJournalNames{"商品台账", "供应商台账", "客户台账", "项目台账"};
constexpr std::string_view kMissingPart = "(无)";

std::string Labelled(std::string_view label, const std::string& text) {
  return text.empty() ? std::string() : std::string(label) + text;
}

// With a blank for what some file system refuses.
std::string Allowed(std::string_view words) {
  std::string allowed;
  for (const char c : words) {
    const bool blank = static_cast<unsigned char>(c) <= 0x20 ||
                       std::string_view("\\/:*?\"<>|[]{}.\x7F").find(c) != std::string_view::npos;
    if (!blank) allowed += c;
    if (blank && !allowed.empty() && allowed.back() != ' ') allowed += ' ';
  }
  if (allowed.ends_with(' ')) allowed.pop_back();
  return allowed;
}

// The header without what tells nobody apart: the labels, since the journal's name says whose it is, the model and the
// unit of the product, and that it is of all depots.
std::string ShortSubject(std::string caption) {
  if (const size_t unit = caption.find(" 单位:"); unit != std::string::npos)
    caption.erase(unit, std::min(caption.find(" [", unit), caption.find(']', unit)) - unit);
  const size_t model = caption.find('{');
  if (const size_t end = caption.find('}', model); end != std::string::npos) caption.erase(model, end - model);
  for (const std::string_view label : {"商品:", "供应商:", "客户:", "项目:", "[全部仓库]"})
    caption = base::ReplaceAll(caption, label, "");
  return caption;
}

}  // namespace

std::string JournalHeading::Journal() const {
  const bool known = facts_.journal_type >= 0 && facts_.journal_type < static_cast<int>(kJournalNames.size());
  return std::string(kJournalNames[known ? static_cast<size_t>(facts_.journal_type) : 0]);
}

std::string JournalHeading::Page() const {
  return facts_.caption.empty() ? Journal() : Journal() + "　" + facts_.caption;
}

std::string JournalHeading::RangeWords() const {
  if (facts_.first_range.empty() || facts_.first_range == facts_.last_range) return facts_.last_range;
  return facts_.first_range + " 至 " + facts_.last_range;
}

std::string JournalHeading::Range() const { return Labelled("期间:", RangeWords()); }

std::string JournalHeading::Made() const { return Labelled("打印时间:", facts_.made); }

std::string JournalHeading::ShortSource() const {
  const size_t slash = facts_.source.find_last_of("/\\");
  return slash == std::string::npos ? facts_.source : facts_.source.substr(slash + 1);
}

std::string JournalHeading::Source() const { return Labelled("来源:", ShortSource()); }

std::string JournalHeading::WindowTitle() const {
  const std::string source = facts_.source.empty() ? std::string(kProgramName) : ShortSource();
  return facts_.caption.empty() ? source : facts_.caption + " — " + source;
}

std::string JournalHeading::FileName() const {
  constexpr size_t kMostCharacters = 60;
  // The header of a part of a journal ends with the range that was asked for, which may be of days.
  const size_t asked = facts_.caption.rfind(kRangeInCaption);
  const std::string range = Allowed(asked == std::string::npos ? RangeWords() : facts_.caption.substr(asked));
  const std::string end = range.empty() ? std::string() : " " + range;
  const size_t taken = base::CharacterCount(Journal()) + 1 + base::CharacterCount(end);
  const size_t room = kMostCharacters - std::min(taken, kMostCharacters);
  const std::string subject =
      Allowed(base::LeftCharacters(Allowed(ShortSubject(facts_.caption.substr(0, asked))), room));
  const std::string name = Journal() + (subject.empty() ? "" : " " + subject) + end;
  return Allowed(base::LeftCharacters(name, kMostCharacters));
}

ShownRange RangeShownIn(const sheet::Sheet& sheet) {
  const int column = sheet.ColIndex(keys::kPeriod);
  if (column < 0) return {};
  int first = -1;
  int last = -1;
  sheet.states().ForEachRun(sheet.FixedRows(), sheet.Rows(), [&](int64_t begin, int64_t count, const auto& state) {
    if (state.hidden || state.subtotal) return true;
    // The opening row is no record, and stands alone.
    const auto from = static_cast<int>(begin) + (sheet.RecordOfRow(static_cast<int>(begin)) < 0 ? 1 : 0);
    const auto to = static_cast<int>(begin + count);
    if (from >= to) return true;
    if (first < 0) first = from;
    last = to - 1;
    return true;
  });
  if (first < 0) return {};
  return {sheet.TextMatrix(first, column), sheet.TextMatrix(last, column)};
}

std::string ProductOfPartnerJournal(platform::Connection& connection, const JournalOptions& options) {
  const bool partner = options.journal_type == base::SupplierJournal || options.journal_type == base::CustomerJournal;
  if (!partner || options.key_id < 1) return {};
  const std::string number = std::to_string(options.key_id);
  try {
    const platform::Recordset rows =
        connection.Execute("Select 商品名称, 商品编号, 型号, 规格, 计量单位, 计量2 From 商品设置 Where pdID=" + number);
    if (rows.AtEnd()) return "商品:" + std::string(kMissingPart) + "[" + number + "]";
    const auto text = [&](size_t field) { return rows.FieldValue(field).Text(); };
    const auto or_none = [](const std::string& some) { return some.empty() ? std::string(kMissingPart) : some; };
    std::string product = "商品:" + or_none(text(0)) + (text(1).empty() ? "" : "[" + text(1) + "]");
    if (!text(2).empty() || !text(3).empty())
      product += "{" + text(2) + (text(2).empty() || text(3).empty() ? "" : "\\") + text(3) + "}";
    const bool second = options.allow_qty2 && !text(5).empty();
    return product + " 单位:" + or_none(text(4)) + (second ? "/" + text(5) : "");
  } catch (const platform::Error&) {
    return "商品:[" + number + "]";
  }
}

}  // namespace stockbook::app
