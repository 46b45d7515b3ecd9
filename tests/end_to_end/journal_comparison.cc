// SPDX-License-Identifier: MIT
#include "end_to_end/journal_comparison.h"

#include <algorithm>
#include <set>

namespace stockbook::end_to_end {
namespace {

using ::testing::AssertionFailure;
using ::testing::AssertionResult;
using ::testing::AssertionSuccess;

const std::set<std::string, std::less<>> kRunning = {"StoPrice", "StoQty", "StoQty2", "StoAcc"};
const std::set<std::string, std::less<>> kMasked = {"Price", "Account", "RevAcc", "IssAcc"};

std::string Differences(const Cells& expected, const Cells& shown, const char* what) {
  std::string text;
  const auto columns = ColumnsOf(0, true, true);
  for (size_t place = 0; place < kColumnCount; ++place) {
    if (expected[place] == shown[place]) continue;
    text += std::string("\n  ") + what + " " + columns[place].key + ": expected \"" + expected[place].substr(0, 200) +
            "\", shown \"" + shown[place].substr(0, 200) + "\"";
  }
  return text;
}

// Whether all cells of the line except the running values equal those of the shown row.
bool IsSameLine(const MovementLine& line, const ShownRow& row, bool restricted) {
  static const auto columns = ColumnsOf(0, true, true);
  for (size_t place = 0; place < kColumnCount; ++place) {
    const std::string& key = columns[place].key;
    if (kRunning.contains(key) || (restricted && kMasked.contains(key))) continue;
    if (line.cells[place] != row.text[place]) return false;
  }
  return true;
}

// Finds the order in which the lines are shown; fails if a set of tied lines differs.
AssertionResult OrderOf(const RecomputedJournal& journal, const std::vector<const ShownRow*>& shown, bool restricted,
                        std::vector<size_t>& order) {
  const auto& lines = journal.lines();
  if (lines.size() != shown.size())
    return AssertionFailure() << "expected " << lines.size() << " lines, shown " << shown.size();
  std::vector<bool> used(lines.size());
  for (size_t first = 0; first < lines.size();) {
    size_t end = first;
    while (end < lines.size() && lines[end].order == lines[first].order) ++end;
    for (size_t at = first; at < end; ++at) {
      size_t candidate = first;
      while (candidate < end && (used[candidate] || !IsSameLine(lines[candidate], *shown[at], restricted))) ++candidate;
      if (candidate == end) {
        return AssertionFailure() << "line " << at << " is none of the " << end - first << " lines that belong here"
                                  << Differences(lines[at].cells, shown[at]->text, "text");
      }
      used[candidate] = true;
      order.push_back(candidate);
    }
    first = end;
  }
  return AssertionSuccess();
}

AssertionResult SameRow(const JournalRow& expected, const ShownRow& shown,
                        const std::vector<ColumnDescription>& columns) {
  Cells display;
  for (size_t place = 0; place < kColumnCount; ++place) {
    const bool two_lines = expected.kind == RowKind::kTotal;
    display[place] = two_lines ? expected.cells[place] : Shown(expected.cells[place], columns[place].format);
  }
  std::string differences =
      Differences(expected.cells, shown.text, "text") + Differences(display, shown.display, "display");
  const bool node = expected.kind == RowKind::kNode || expected.kind == RowKind::kTotal;
  if (node != shown.node) differences += node ? "\n  is no node" : "\n  is a node";
  const int level = expected.kind == RowKind::kLine ? 1 : 0;
  if (level != shown.level) differences += "\n  has level " + std::to_string(shown.level);
  if (shown.hidden) differences += "\n  is hidden";
  return differences.empty() ? AssertionSuccess() : AssertionFailure() << differences;
}

AssertionResult SameHeights(const std::vector<JournalRow>& expected, const ShownJournal& shown) {
  int line_height = 0;
  for (size_t row = 0; row < expected.size(); ++row) {
    if (expected[row].kind == RowKind::kLine) line_height = shown.rows[row].height_twips;
  }
  for (size_t row = 0; row < expected.size() && line_height > 0; ++row) {
    const int height = shown.rows[row].height_twips;
    const bool total = expected[row].kind == RowKind::kTotal;
    const bool line = expected[row].kind == RowKind::kLine;
    if (total && height != 2 * line_height)
      return AssertionFailure() << "the total row " << row << " is " << height << " twips high";
    if (line && height != line_height)
      return AssertionFailure() << "the line " << row << " is " << height << " twips high";
  }
  return AssertionSuccess();
}

AssertionResult SameColumns(const ShownJournal& shown, const app::JournalOptions& options) {
  const auto expected = ColumnsOf(options.journal_type, options.allow_qty2, options.allow_inv);
  if (shown.columns.size() != expected.size())
    return AssertionFailure() << "shown " << shown.columns.size() << " columns";
  for (size_t place = 0; place < expected.size(); ++place) {
    const ColumnDescription& column = shown.columns[place];
    if (column != expected[place]) {
      return AssertionFailure() << "column " << place << " is " << column.key << " \"" << column.caption << "\" hidden "
                                << column.hidden << " type " << column.type << " format \"" << column.format
                                << "\" width " << column.width_twips;
    }
  }
  return AssertionSuccess();
}

std::vector<const ShownRow*> LinesOf(const ShownJournal& shown) {
  std::vector<const ShownRow*> lines;
  for (const ShownRow& row : shown.rows) {
    if (!row.node && row.level == 1) lines.push_back(&row);
  }
  return lines;
}

}  // namespace

std::string Describe(const app::JournalOptions& options) {
  constexpr const char* kTypes[] = {"material", "supplier", "customer", "project"};
  return std::string(kTypes[options.journal_type]) + " product " + std::to_string(options.key_id) + " second " +
         std::to_string(options.dp_id) + " class '" + options.dp_code + "'" + (options.allow_qty2 ? " qty2" : "") +
         (options.allow_inv ? " tax" : "") + (options.acc_restrict ? " restrict" : "");
}

AssertionResult IsTheJournalOf(const BaseTables& tables, const app::JournalOptions& options,
                               const ShownJournal& shown) {
  return IsTheJournal(RecomputedJournal(tables, options), options, shown);
}

AssertionResult IsTheJournal(const RecomputedJournal& journal, const app::JournalOptions& options,
                             const ShownJournal& shown) {
  if (journal.cannot_run())
    return AssertionFailure() << Describe(options) << ": a journal is shown whose statement cannot run";
  if (auto columns = SameColumns(shown, options); !columns) return columns << " in " << Describe(options);
  std::vector<size_t> order;
  if (auto found = OrderOf(journal, LinesOf(shown), options.acc_restrict, order); !found)
    return found << "\nin " << Describe(options);
  const auto expected = journal.Rows(order);
  if (!expected)
    return AssertionFailure() << Describe(options) << ": an amount leaves the range of money and still is shown";
  if (expected->size() != shown.rows.size()) {
    return AssertionFailure() << Describe(options) << ": expected " << expected->size() << " rows, shown "
                              << shown.rows.size();
  }
  for (size_t row = 0; row < expected->size(); ++row) {
    if (auto same = SameRow((*expected)[row], shown.rows[row], shown.columns); !same) {
      return AssertionFailure() << Describe(options) << ", grid row " << row + 1 << ":" << same.message();
    }
  }
  if (auto heights = SameHeights(*expected, shown); !heights) return heights << " in " << Describe(options);
  return AssertionSuccess();
}

namespace {

// What the control calls the journal: the caption, but for the product of a partner journal, which the host adds. "" if
// the caption is not made of that.
std::string SubjectOf(const std::string& caption, const std::vector<std::string>& said,
                      const app::JournalOptions& options) {
  const bool partner = options.journal_type == 1 || options.journal_type == 2;
  if (!partner || options.key_id < 1) return caption;
  const std::string read = "已读入：";
  if (said.empty() || !said.back().starts_with(read)) return {};
  const std::string subject = said.back().substr(read.size());
  return caption.starts_with(subject + " [商品:") ? subject : std::string();
}

}  // namespace

AssertionResult SaysWhatALoadSays(const ShownJournal& shown, const app::JournalOptions& options, size_t line_count,
                                  Balance balance) {
  std::vector<std::string> said = shown.notify;
  const bool refused = !said.empty() && said.back().starts_with("读不到期初余额，期初行按零显示");
  if (refused) said.pop_back();
  const std::string subject = SubjectOf(shown.caption, said, options);
  const std::vector<std::string> messages = {"正在读入：" + subject + "...", "已读入：" + subject};
  if (subject.empty() || said != messages || refused != (balance == Balance::kRefused))
    return AssertionFailure() << Describe(options) << ": said " << ::testing::PrintToString(shown.notify);
  const bool one_statement = options.journal_type == 1 || options.journal_type == 2;
  std::vector<int> process =
      one_statement ? std::vector<int>{0, 20, 30, 35, 40} : std::vector<int>{0, 10, 20, 30, 35, 40};
  for (size_t line = 1; line <= line_count; ++line) {
    const int indicator = 40 + static_cast<int>(line * 60 / line_count);
    if (process.back() != indicator) process.push_back(indicator);
  }
  process.push_back(-1);
  if (shown.process != process)
    return AssertionFailure() << Describe(options) << ": progress " << ::testing::PrintToString(shown.process);
  return AssertionSuccess();
}

}  // namespace stockbook::end_to_end
