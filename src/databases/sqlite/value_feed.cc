// SPDX-License-Identifier: MIT
#include "databases/sqlite/value_feed.h"

#include <array>
#include <span>

#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/operators.h"
#include "databases/sqlite/row_values.h"

namespace stockbook::databases {
namespace {

constexpr int64_t kExactReal = int64_t{1} << 53;
constexpr size_t kRowsToTell = 512;

}  // namespace

void ValueFeed::Take(sqlite3_value* stored) {
  const int type = sqlite3_value_type(stored);
  if (type == SQLITE_NULL) {
    TakeNull();
    return;
  }
  switch (form_) {
    case Form::kRawMoney:
      TakeAmount(stored, type);
      return;
    case Form::kRawDate:
    case Form::kDateText:
      TakeDate(stored, type);
      return;
    case Form::kUnits:
      if (type != SQLITE_INTEGER) break;
      Hold(Held::kUnits, sqlite3_value_int64(stored));
      return;
    case Form::kReal:
    case Form::kPlain:
      break;
  }
  if (type == SQLITE_FLOAT) {
    TakeReal(sqlite3_value_double(stored));
  } else if (type == SQLITE_INTEGER) {
    TakeWhole(sqlite3_value_int64(stored));
  } else {
    TakeText(stored, type);
  }
}

void ValueFeed::TakeNull() {
  Flush();
  for (Target& target : targets_) target.sink->builder.AppendNull();
}

void ValueFeed::Begin(Held kind) {
  const size_t held = held_ == kind ? count_ : 0;
  Flush();
  const auto make_room = [&](auto& numbers) {
    if (held == numbers.size()) numbers.resize(numbers.empty() ? kFirstPortion : kPortion);
  };
  if (kind == Held::kReals) {
    make_room(reals_);
  } else if (kind != Held::kTexts) {
    make_room(counted_);
  }
  held_ = kind;
}

void ValueFeed::TakeReal(double number) {
  if (held_ != Held::kReals || count_ == reals_.size()) Begin(Held::kReals);
  reals_[count_++] = number;
}

void ValueFeed::Hold(Held kind, int64_t number) {
  if (held_ != kind || count_ == counted_.size()) Begin(kind);
  counted_[count_++] = number;
}

void ValueFeed::TakeWhole(int64_t whole) {
  if (form_ == Form::kReal && whole >= -kExactReal && whole <= kExactReal) {
    TakeReal(static_cast<double>(whole));
    return;
  }
  if (whole == INT64_MIN && has_negated_) ThrowNumberOverflow();
  Hold(Held::kWholes, whole);
}

void ValueFeed::TakeText(sqlite3_value* stored, int type) {
  const std::string_view bytes = BytesOf(stored);
  const auto codes = type == SQLITE_TEXT ? known_texts_.CodesOf(bytes) : std::span<const uint32_t>();
  if (codes.empty()) return AppendText(bytes, type);
  Flush();
  for (size_t index = 0; index < codes.size(); ++index) targets_[index].sink->builder.AppendTextCode(codes[index]);
}

// A blob sorts after all texts; as a text it would not.
void ValueFeed::AppendText(std::string_view bytes, int type) {
  const bool clean = IsCleanText(bytes);
  if (clean && type == SQLITE_TEXT && !has_negated_) return AppendClean(bytes);
  Flush();
  const std::string mended = clean ? std::string() : base::CleanUtf8(bytes);
  for (Target& target : targets_) {
    if (target.sign == Sign::kNegated) {
      AppendNegatedText(target, clean ? bytes : mended);
      continue;
    }
    target.sink->mended = target.sink->mended || type == SQLITE_BLOB || !clean;
    target.sink->builder.AppendText(clean ? bytes : mended);
  }
}

void ValueFeed::AppendClean(std::string_view text) {
  if (!known_texts_.IsUseful(text)) return HoldText(text);
  Flush();
  codes_.clear();
  for (Target& target : targets_) {
    codes_.push_back(target.sink->builder.AddText(text));
    target.sink->builder.AppendTextCode(codes_.back());
  }
  known_texts_.Remember(text, codes_);
}

// Where texts differ from row to row they are looked up some at a time.
void ValueFeed::HoldText(std::string_view text) {
  constexpr size_t kLongest = 256;
  if (held_ != Held::kTexts || count_ == columns::TextPool::kMostAtOnce) Begin(Held::kTexts);
  if (text.size() > kLongest) {
    Flush();
    for (Target& target : targets_) target.sink->builder.AppendText(text);
    return;
  }
  texts_ += text;
  text_ends_.push_back(texts_.size());
  ++count_;
}

// Minus a text is minus the number that it spells; a text that spells none has no negative.
void ValueFeed::AppendNegatedText(Target& target, std::string_view bytes) const {
  const auto number = IsAmount() ? std::nullopt : base::ParseNumber(bytes);
  if (number) {
    target.sink->builder.AppendDouble(-*number);
  } else {
    target.sink->builder.AppendNull();
  }
}

void ValueFeed::TakeAmount(sqlite3_value* stored, int type) {
  if (type == SQLITE_TEXT) {
    if (const auto amount = base::Money::Parse(BytesOf(stored))) {
      Hold(Held::kUnits, amount->units());
    } else {
      TakeText(stored, type);
    }
    return;
  }
  const base::Value value = ReadValue(stored, form_);
  if (const auto* amount = value.As<base::Money>()) {
    Hold(Held::kUnits, amount->units());
    return;
  }
  if (const auto* infinite = value.As<double>()) {
    TakeReal(*infinite);
    return;
  }
  Flush();
  AppendText(value.Text(), type);
}

void ValueFeed::TakeDate(sqlite3_value* stored, int type) {
  if (type != SQLITE_TEXT) {
    TakeNull();
    return;
  }
  const std::string_view bytes = BytesOf(stored);
  if (bytes != last_date_text_ || bytes.empty()) {
    last_date_text_ = bytes;
    last_date_ = base::Date::Parse(bytes);
  }
  if (!last_date_) return TakeNull();
  Hold(Held::kDates, last_date_->seconds());
}

void ValueFeed::FlushReals(const Target& target) const {
  if (target.sign == Sign::kKept) {
    target.sink->builder.AppendDoubles(std::span<const double>(reals_).first(count_));
    return;
  }
  std::array<double, kPortion> negated;
  for (size_t index = 0; index < count_; ++index) negated[index] = -reals_[index];
  target.sink->builder.AppendDoubles(std::span<const double>(negated).first(count_));
}

void ValueFeed::FlushCounted(const Target& target) const {
  auto numbers = std::span<const int64_t>(counted_).first(count_);
  std::array<int64_t, kPortion> negated;
  if (target.sign == Sign::kNegated && held_ != Held::kDates) {
    // Money refuses what has no negative; a whole number without one was refused when it came.
    for (size_t index = 0; index < count_; ++index) negated[index] = (-base::Money::FromUnits(numbers[index])).units();
    numbers = std::span<const int64_t, kPortion>(negated).first(count_);
  }
  columns::ColumnBuilder& builder = target.sink->builder;
  if (held_ == Held::kUnits) {
    builder.AppendMoneyUnits(numbers);
  } else if (held_ == Held::kWholes) {
    builder.AppendIntegers(numbers);
  } else {
    builder.AppendDateSeconds(numbers);
  }
}

void ValueFeed::FlushTexts() {
  std::array<std::string_view, columns::TextPool::kMostAtOnce> texts;
  size_t begin = 0;
  for (size_t at = 0; at < count_; ++at) {
    texts[at] = std::string_view(texts_).substr(begin, text_ends_[at] - begin);
    begin = text_ends_[at];
  }
  for (Target& target : targets_) target.sink->builder.AppendTexts(std::span(texts).first(count_));
  texts_.clear();
  text_ends_.clear();
}

void ValueFeed::Flush() {
  if (count_ == 0) return;
  if (held_ == Held::kTexts) {
    FlushTexts();
    count_ = 0;
    return;
  }
  for (const Target& target : targets_) {
    if (held_ == Held::kReals) {
      FlushReals(target);
    } else {
      FlushCounted(target);
    }
  }
  count_ = 0;
}

size_t StepInto(Statement& statement, std::vector<ValueFeed>& feeds) {
  size_t rows = 0;
  for (; statement.Step(); ++rows) {
    int column = 0;
    for (ValueFeed& feed : feeds) feed.Take(sqlite3_column_value(statement.handle(), column++));
    if (rows % kRowsToTell == kRowsToTell - 1) statement.CountRows(kRowsToTell);
  }
  for (ValueFeed& feed : feeds) feed.Flush();
  return rows;
}

}  // namespace stockbook::databases
