// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::app {

// What may be wrong with an inventory. Their texts, and their names in JSON, are a table in the source.
enum class Ailment {
  kTableMissing,
  kColumnMissing,
  kKeyNull,
  kKeyNoNumber,
  kKeyDuplicate,
  kReferenceDangling,
  kReferenceMissing,
  kPeriodUnknown,
  kPeriodForm,
  kPeriodOrder,
  kDateMissing,
  kDateUnreadable,
  kDateOutsidePeriod,
  kDateParts,
  kNumberUnreadable,
  kQuantityNegative,
  kClassUnknown,
  kClassDuplicate,
  kBalanceDuplicate,
  kBalanceMissing,
  kBalanceTotal,
  kBalanceOpening,
  kIndexMissing,
};

// The findings of one kind in one column of one table: all of them are counted, the first ones kept as examples.
class FindingGroup {
 public:
  static constexpr size_t kMostExamples = 20;
  struct Example {
    std::string key;
    std::string detail;
  };

  FindingGroup(Ailment ailment, std::string table, std::string column)
      : ailment_(ailment), table_(std::move(table)), column_(std::move(column)) {}

  // `describe` makes the Example and is called only if it is kept.
  template <typename Describe>
  void Add(Describe describe) {
    if (++count_ <= kMostExamples) examples_.push_back(describe());
  }

  Ailment ailment() const { return ailment_; }
  const std::string& table() const { return table_; }
  const std::string& column() const { return column_; }
  size_t count() const { return count_; }
  const std::vector<Example>& examples() const { return examples_; }

 private:
  Ailment ailment_;
  std::string table_;
  std::string column_;
  size_t count_ = 0;
  std::vector<Example> examples_;
};

// What an examination has found, in the order in which it looked. Groups stay where they are.
class DoctorReport {
 public:
  explicit DoctorReport(std::string database) : database_(std::move(database)) {}

  FindingGroup& Group(Ailment ailment, std::string_view table, std::string_view column = {});
  void CountRows(std::string_view table, size_t rows) { tables_.push_back({std::string(table), rows}); }
  // What could not be examined, and why.
  void LeaveOut(std::string what, std::string why) { left_out_.push_back({std::move(what), std::move(why)}); }

  bool IsHealthy() const;
  // A sentence a kind with its examples below it, for people.
  void WriteText(std::ostream& out) const;
  // One JSON document; docs/doctor.md describes it.
  void WriteJson(std::ostream& out) const;

 private:
  struct Table {
    std::string name;
    size_t rows;
  };
  struct LeftOut {
    std::string what;
    std::string why;
  };

  std::string database_;
  std::vector<Table> tables_;
  std::deque<FindingGroup> groups_;
  std::vector<LeftOut> left_out_;
};

}  // namespace stockbook::app
