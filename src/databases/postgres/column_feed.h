// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "databases/dialect/value_class.h"
#include "databases/execution/column_sink.h"
#include "databases/postgres/numeric_value.h"
#include "stockbook/base/date.h"

namespace stockbook::databases {

// Carries one column of a server's rows into the column that shows it, as its class says: what fits no amount stays a
// text or an infinite number, what is no date and what is not a number (NaN) reads as null, as in the embedded
// database. Numbers are passed on in portions, so call Flush after the last row. Texts are cleaned here, and nowhere
// later.
class ColumnFeed {
 public:
  ColumnFeed(ColumnSink& sink, ValueClass cls) : sink_(&sink), cls_(cls) {}
  ValueClass cls() const { return cls_; }

  void TakeNull();
  void TakeWhole(int64_t whole);
  void TakeReal(double number);
  void TakeNumeric(const NumericValue& value);
  // `count` of 10^-decimals, as the server's type money counts.
  void TakeScaled(int64_t count, int decimals);
  void TakeDate(base::Date date);
  void TakeText(std::string_view bytes);
  void Flush();

 private:
  static constexpr size_t kPortion = 512;
  enum class Held : uint8_t { kNone, kReals, kUnits };

  void HoldReal(double number);
  void HoldUnits(int64_t units);
  void AppendText(std::string_view bytes);
  void AppendDateOf(std::string_view text);

  ColumnSink* sink_;
  ValueClass cls_;
  Held held_ = Held::kNone;
  size_t count_ = 0;
  std::array<double, kPortion> reals_{};
  std::array<int64_t, kPortion> units_{};
  std::string last_text_;  // clean, or what last_date_ was read from; both repeat from row to row
  base::Value last_date_;
};

}  // namespace stockbook::databases
