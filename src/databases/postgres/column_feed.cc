// SPDX-License-Identifier: MIT
#include "databases/postgres/column_feed.h"

#include <cmath>

#include "base/decimal.h"
#include "base/text.h"

namespace stockbook::databases {
namespace {

constexpr int64_t kExactlyReal = int64_t{1} << 53;
constexpr size_t kRememberedLength = 64;

// Where the journal's dates end; beyond, a date is none.
bool IsInCalendar(base::Date date) {
  static const base::Date first = base::Date::FromParts({100, 1, 1, 0, 0, 0}).value();
  static const base::Date last = base::Date::FromParts({9999, 12, 31, 23, 59, 59}).value();
  return date >= first && date <= last;
}

}  // namespace

void ColumnFeed::TakeNull() {
  Flush();
  sink_->builder.AppendNull();
}

void ColumnFeed::HoldReal(double number) {
  if (held_ != Held::kReals || count_ == kPortion) Flush();
  held_ = Held::kReals;
  reals_[count_++] = number;
}

void ColumnFeed::HoldUnits(int64_t units) {
  if (held_ != Held::kUnits || count_ == kPortion) Flush();
  held_ = Held::kUnits;
  units_[count_++] = units;
}

void ColumnFeed::TakeWhole(int64_t whole) {
  if (cls_ == ValueClass::kMoney) {
    TakeScaled(whole, 0);
  } else if (cls_ == ValueClass::kReal && whole >= -kExactlyReal && whole <= kExactlyReal) {
    HoldReal(static_cast<double>(whole));
  } else if (cls_ == ValueClass::kDate) {
    TakeNull();
  } else {
    Flush();
    sink_->builder.AppendInteger(whole);
  }
}

void ColumnFeed::TakeReal(double number) {
  if (std::isnan(number) || cls_ == ValueClass::kDate) {
    TakeNull();
    return;
  }
  if (cls_ != ValueClass::kMoney || std::isinf(number)) {
    HoldReal(number);
    return;
  }
  const base::Value value(number);
  if (const auto amount = value.AsMoney()) {
    HoldUnits(amount->units());
  } else {
    AppendText(value.Text());
  }
}

void ColumnFeed::TakeNumeric(const NumericValue& value) {
  if (value.kind() == NumericValue::Kind::kNotANumber || cls_ == ValueClass::kDate) {
    TakeNull();
    return;
  }
  if (value.kind() != NumericValue::Kind::kFinite) {
    HoldReal(value.kind() == NumericValue::Kind::kInfinite ? HUGE_VAL : -HUGE_VAL);
    return;
  }
  if (cls_ == ValueClass::kReal) {
    HoldReal(value.Real());
    return;
  }
  if (cls_ == ValueClass::kInteger || cls_ == ValueClass::kBoolean) {
    if (const auto whole = value.Whole()) {
      TakeWhole(*whole);
    } else {
      HoldReal(value.Real());
    }
    return;
  }
  const auto units = value.Units();
  if (units && (cls_ == ValueClass::kMoney || value.HasAtMostFourDecimals())) {
    HoldUnits(*units);
  } else if (cls_ == ValueClass::kMoney) {
    AppendText(value.Text());
  } else {
    HoldReal(value.Real());
  }
}

void ColumnFeed::TakeScaled(int64_t count, int decimals) {
  if (cls_ == ValueClass::kDate) {
    TakeNull();
    return;
  }
  int64_t units = count;
  bool fits = decimals <= base::Money::kDecimals;
  for (int digit = decimals; fits && digit < base::Money::kDecimals; ++digit) {
    fits = !__builtin_mul_overflow(units, int64_t{10}, &units);
  }
  if (cls_ == ValueClass::kReal) {
    HoldReal(static_cast<double>(count) / std::pow(10.0, decimals));
  } else if (fits) {
    HoldUnits(units);
  } else {
    const base::Decimal exact = base::Decimal::FromScaled(count, decimals);
    const std::string whole = exact.WholeDigits();
    const std::string fraction = exact.FractionDigits(decimals);
    const auto text =
        (exact.negative ? "-" : "") + (whole.empty() ? "0" : whole) + (decimals > 0 ? "." : "") + fraction;
    TakeText(text);
  }
}

void ColumnFeed::TakeDate(base::Date date) {
  Flush();
  const bool is_date = IsInCalendar(date);
  if (!is_date || cls_ == ValueClass::kDate || cls_ == ValueClass::kAny || cls_ == ValueClass::kNull) {
    is_date ? sink_->builder.AppendDate(date) : sink_->builder.AppendNull();
  } else {
    AppendText(date.Text());
  }
}

void ColumnFeed::TakeText(std::string_view bytes) {
  if (cls_ == ValueClass::kDate) {
    AppendDateOf(bytes);
    return;
  }
  if (cls_ == ValueClass::kMoney) {
    if (const auto amount = base::Money::Parse(bytes)) {
      HoldUnits(amount->units());
      return;
    }
  }
  AppendText(bytes);
}

void ColumnFeed::AppendDateOf(std::string_view text) {
  Flush();
  if (text != last_text_ || text.empty()) {
    last_text_ = text;
    const auto date = base::Date::Parse(text);
    last_date_ = date ? base::Value(*date) : base::Value();
  }
  sink_->builder.Append(last_date_);
}

void ColumnFeed::AppendText(std::string_view bytes) {
  Flush();
  if (bytes == last_text_ || base::IsCleanUtf8(bytes)) {
    if (bytes.size() <= kRememberedLength && bytes != last_text_) last_text_ = bytes;
    sink_->builder.AppendText(bytes);
    return;
  }
  sink_->mended = true;
  sink_->builder.AppendText(base::CleanUtf8(bytes));
}

void ColumnFeed::Flush() {
  if (count_ == 0) return;
  if (held_ == Held::kReals) {
    sink_->builder.AppendDoubles(std::span<const double>(reals_).first(count_));
  } else {
    sink_->builder.AppendMoneyUnits(std::span<const int64_t>(units_).first(count_));
  }
  count_ = 0;
}

}  // namespace stockbook::databases
