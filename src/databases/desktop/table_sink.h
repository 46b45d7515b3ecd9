// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace stockbook::databases {

// What the values of a column are: whole numbers (truth values among them, -1 for true), doubles, amounts of money,
// other decimal numbers, dates, texts, bytes.
enum class ColumnKind : uint8_t { kWhole, kReal, kMoney, kDecimal, kDate, kText, kBytes };

struct DesktopColumn {
  std::string name;
  ColumnKind kind = ColumnKind::kText;
};

struct DesktopTable {
  std::string name;
  std::vector<DesktopColumn> columns;
};

enum class Repetition : uint8_t { kAllowed, kForbidden };

// Of the table that was begun last; the columns by their places in it.
struct DesktopIndex {
  std::vector<uint32_t> columns;
  Repetition repetition = Repetition::kAllowed;
};

struct Bytes {
  std::string content;
};
// Null, a whole number, a double, a text (money, decimals and dates as well), bytes.
using DesktopValue = std::variant<std::monostate, int64_t, double, std::string, Bytes>;

// Takes the tables of a file one after another: each begins, then come its indexes, then its rows in their order.
class TableSink {
 public:
  virtual ~TableSink() = default;
  virtual void BeginTable(const DesktopTable& table) = 0;
  virtual void AddIndex(const DesktopIndex& index) = 0;
  // One value a column.
  virtual void AddRow(const std::vector<DesktopValue>& values) = 0;
};

}  // namespace stockbook::databases
