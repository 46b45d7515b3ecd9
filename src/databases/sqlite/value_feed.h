// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/typed_sql.h"
#include "databases/execution/column_sink.h"
#include "databases/sqlite/database.h"
#include "databases/sqlite/known_texts.h"

namespace stockbook::databases {

// Carries one column of stepped rows into the columns that show it, as it is or negated (as sb_negate would give it).
// Each value is read once, however many columns get it; numbers are passed on in portions, so call Flush after the last
// row. Texts are cleaned here, and nowhere later.
class ValueFeed {
 public:
  enum class Sign { kKept, kNegated };

  explicit ValueFeed(Form form) : form_(form) {}
  Form form() const { return form_; }
  void AddTarget(ColumnSink& sink, Sign sign) {
    targets_.push_back({&sink, sign});
    has_negated_ = has_negated_ || sign == Sign::kNegated;
  }

  void Take(sqlite3_value* stored);
  void TakeNull();
  void Flush();

 private:
  static constexpr size_t kFirstPortion = 32;
  static constexpr size_t kPortion = 512;
  enum class Held : uint8_t { kNone, kReals, kUnits, kWholes, kDates, kTexts };
  struct Target {
    ColumnSink* sink;
    Sign sign;
  };

  // Passes on what is held; numbers or texts of the kind are held from now on.
  void Begin(Held kind);
  void TakeReal(double number);
  // A number of units of money, a whole number or the seconds of a date.
  void Hold(Held kind, int64_t number);
  void TakeWhole(int64_t whole);
  void TakeText(sqlite3_value* stored, int type);
  void TakeAmount(sqlite3_value* stored, int type);
  void TakeDate(sqlite3_value* stored, int type);
  void AppendText(std::string_view bytes, int type);
  // Appends a clean text to columns that all show it as it is.
  void AppendClean(std::string_view text);
  void AppendNegatedText(Target& target, std::string_view bytes) const;
  void HoldText(std::string_view text);
  void FlushReals(const Target& target) const;
  void FlushCounted(const Target& target) const;
  void FlushTexts();
  bool IsAmount() const { return form_ == Form::kRawMoney || form_ == Form::kUnits; }

  Form form_;
  Held held_ = Held::kNone;
  size_t count_ = 0;
  // As long as there is room. A statement has hundreds of feeds, most of which hold one kind, and in small tables a few
  // rows of it: there is little room at first, and a portion's in tables that fill that.
  std::vector<double> reals_;
  std::vector<int64_t> counted_;
  std::string texts_;  // one after the other
  std::vector<size_t> text_ends_;
  std::vector<Target> targets_;
  bool has_negated_ = false;
  KnownTexts known_texts_;
  std::vector<uint32_t> codes_;
  std::string last_date_text_;  // dates repeat from row to row
  std::optional<base::Date> last_date_;
};

// Steps the statement to its end, column i into feed i, and returns the number of rows.
size_t StepInto(Statement& statement, std::vector<ValueFeed>& feeds);

}  // namespace stockbook::databases
