// SPDX-License-Identifier: MIT
#include "databases/sqlite/functions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_integer.h"
#include "databases/dialect/conversions.h"
#include "databases/dialect/date_functions.h"
#include "databases/dialect/number_functions.h"
#include "databases/dialect/operators.h"
#include "databases/dialect/text_functions.h"
#include "databases/sqlite/row_values.h"
#include "databases/sqlite/row_visitor.h"
#include "databases/sqlite/text_collation.h"

namespace stockbook::databases {
namespace {

using base::Value;

[[noreturn]] void ThrowSumOverflow() { throw base::ArithmeticError("合计超出范围：结果太大，请检查数据。"); }

// The running state of Sum and Avg over money or over plain values. Plain data, all zero at the start, because SQLite
// allocates it. Money and whole numbers add up exactly, doubles with compensation for rounding errors. Values that are
// no numbers are left out. Results out of range throw base::ArithmeticError; nothing added gives null.
struct SumState {
  base::WideInteger whole = 0;  // money units, or whole numbers
  double real = 0;
  double real_error = 0;
  int64_t count = 0;
  int64_t real_count = 0;
  double infinite = 0;  // the sum of the infinite values
  bool money = false;

  void AddMoney(base::Money amount);
  void Add(const Value& value);
  void AddInfinite(double number);
  Value Sum() const;
  Value Average() const;
};

void SumState::AddMoney(base::Money amount) {
  money = true;
  whole += amount.units();
  ++count;
}

void SumState::Add(const Value& value) {
  if (const auto* number = value.As<int64_t>()) {
    whole += *number;
    ++count;
    return;
  }
  const auto number = value.Number();
  if (!number) {
    if (const auto* real_value = value.As<double>()) AddInfinite(*real_value);
    return;
  }
  const double sum = real + *number;
  real_error += std::fabs(real) >= std::fabs(*number) ? (real - sum) + *number : (*number - sum) + real;
  real = sum;
  ++count;
  ++real_count;
}

// A sum without it would be wrong.
void SumState::AddInfinite(double number) {
  infinite += number;
  if (std::isnan(infinite)) ThrowSumOverflow();
  ++count;
  ++real_count;
}

Value SumState::Sum() const {
  if (count == 0) return {};
  if (infinite != 0) return Value(infinite);
  if (money) return Value(base::MoneyOfUnits(whole));
  if (real_count == 0) {
    if (whole > INT64_MAX || whole < INT64_MIN) ThrowSumOverflow();
    return Value(static_cast<int64_t>(whole));
  }
  const double sum = real + real_error + static_cast<double>(whole);
  if (!std::isfinite(sum)) ThrowSumOverflow();
  return Value(sum);
}

Value SumState::Average() const {
  if (count == 0) return {};
  if (infinite != 0) return Value(infinite);
  if (!money) {
    const double average = (real + real_error + static_cast<double>(whole)) / static_cast<double>(count);
    if (!std::isfinite(average)) ThrowSumOverflow();
    return Value(average);
  }
  return Value(base::MoneyOfUnits(base::DivideHalfToEven(whole, count)));
}

// No exception may pass through SQLite; it becomes the statement's error.
template <typename Work>
void Guarded(sqlite3_context* context, Work work) {
  try {
    work();
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

struct BoundFunction {
  const ScalarFunction& function;
  Interruption& interruption;
};

// The first argument spells the forms of the others. The translator writes it, but whoever gets to call a function in
// another way must not read beyond the arguments.
std::string_view FormsOf(const ScalarFunction& function, int count, sqlite3_value** stored) {
  const bool spelled = count > 0 && sqlite3_value_type(stored[0]) == SQLITE_TEXT;
  const std::string_view forms = spelled ? BytesOf(stored[0]) : std::string_view();
  const size_t arguments = forms.size();
  if (!spelled || arguments + 1 != static_cast<size_t>(count) || arguments < function.least ||
      arguments > function.most || forms.find_first_not_of("vrmdMD") != std::string_view::npos) {
    throw std::invalid_argument(std::string("wrong arguments of ") + function.name);
  }
  return forms;
}

constexpr size_t kShortText = 64;

void CallScalar(sqlite3_context* context, int count, sqlite3_value** stored) {
  constexpr size_t kBytesOfOneCall = 64;
  Guarded(context, [&] {
    const auto& bound = *static_cast<const BoundFunction*>(sqlite3_user_data(context));
    const std::string_view forms = FormsOf(bound.function, count, stored);
    std::array<Value, 4> few;
    std::vector<Value> many;
    if (forms.size() > few.size()) many.resize(forms.size());
    Value* values = many.empty() ? few.data() : many.data();
    size_t longest = 0;
    size_t work = 1;
    for (size_t index = 0; index < forms.size(); ++index) {
      values[index] = ReadValue(stored[index + 1], static_cast<Form>(forms[index]));
      const auto* text = values[index].As<std::string>();
      if (text == nullptr) continue;
      work += text->size() / kBytesOfOneCall;
      longest = std::max(longest, text->size());
    }
    // SQLite itself looks only between its instructions, of which a call is one.
    if (bound.interruption.IsDueAfter(work)) {
      sqlite3_result_error_code(context, SQLITE_INTERRUPT);
      return;
    }
    const Value result = bound.function.apply({values, forms.size()});
    const auto* text = result.As<std::string>();
    if (text != nullptr && text->size() > std::max(kMostTextBytes, longest)) ThrowTextTooLong();
    // Each row may have another one, and the result keeps them all.
    if (text != nullptr && text->size() > kShortText && !bound.interruption.MayMake(text->size()))
      throw base::ArithmeticError("文本太多：语句产生的文本一共超过 2 GB，请缩小查询的范围。");
    WriteValue(context, result);
  });
}

void AppendArgument(std::string& text, sqlite3_value* stored, Form form) {
  const bool plain = form == Form::kPlain && sqlite3_value_type(stored) == SQLITE_TEXT;
  if (plain) {
    text += BytesOf(stored);
  } else {
    text += ReadValue(stored, form).Text();
  }
}

// What Concat makes of the arguments, without a value for each: most rows of a journal have such a text. What is too
// long for it is left to Concat.
void CallConcat(sqlite3_context* context, int count, sqlite3_value** stored) {
  constexpr size_t kFewBytes = 1024;
  bool done = false;
  Guarded(context, [&] {
    const auto& bound = *static_cast<const BoundFunction*>(sqlite3_user_data(context));
    const std::string_view forms = FormsOf(bound.function, count, stored);
    std::string text;
    text.reserve(kShortText);
    for (size_t index = 0; index < forms.size() && text.size() <= kFewBytes; ++index)
      AppendArgument(text, stored[index + 1], static_cast<Form>(forms[index]));
    if (text.size() > kShortText) return;
    done = true;
    if (bound.interruption.IsDueAfter(1)) {
      sqlite3_result_error_code(context, SQLITE_INTERRUPT);
    } else {
      sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
  });
  if (!done) CallScalar(context, count, stored);
}

// SQLite returns zeroed memory, which is a fresh state, but aligned to eight bytes only; it never moves.
enum class IfMissing { kCreate, kNothing };

SumState* StateOf(sqlite3_context* context, IfMissing missing) {
  size_t space = sizeof(SumState) + alignof(SumState);
  void* memory = sqlite3_aggregate_context(context, missing == IfMissing::kCreate ? static_cast<int>(space) : 0);
  return memory == nullptr ? nullptr
                           : static_cast<SumState*>(std::align(alignof(SumState), sizeof(SumState), memory, space));
}

template <Form form>
void AddToSum(sqlite3_context* context, int, sqlite3_value** stored) {
  Guarded(context, [&] {
    SumState* state = StateOf(context, IfMissing::kCreate);
    if (state == nullptr) throw std::bad_alloc();
    const Value value = ReadValue(stored[0], form);
    if (const auto* money = value.As<base::Money>()) {
      state->AddMoney(*money);
    } else if (form == Form::kPlain) {
      state->Add(value);
    } else if (value.Number() || value.As<double>() != nullptr) {
      base::Money::ThrowOverflow();  // an amount that money cannot hold: a sum without it would be wrong
    }
  });
}

template <Value (SumState::*Result)() const>
void FinishSum(sqlite3_context* context) {
  Guarded(context, [&] {
    const SumState* state = StateOf(context, IfMissing::kNothing);
    WriteValue(context, state == nullptr ? Value() : (state->*Result)());
  });
}

using Step = void (*)(sqlite3_context*, int, sqlite3_value**);
using Finish = void (*)(sqlite3_context*);

void RegisterAggregate(const Database& database, const char* name, Step step, Finish finish) {
  if (sqlite3_create_function_v2(database.handle(), name, 1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, nullptr, step,
                                 finish, nullptr) != SQLITE_OK) {
    throw database.ErrorOf("Open");
  }
}

bool DependsOnTheClock(std::string_view name) { return name == "sb_now" || name == "sb_today"; }

// What the file itself calls (in views, generated columns, checks, indexes, triggers) must not be these functions.
void RegisterScalar(const Database& database, const ScalarFunction& function) {
  const int flags = SQLITE_UTF8 | SQLITE_DIRECTONLY | (DependsOnTheClock(function.name) ? 0 : SQLITE_DETERMINISTIC);
  const int count = function.least == function.most ? static_cast<int>(function.least) + 1 : -1;
  // SQLite deletes what it is given, even if it refuses the function.
  auto bound = std::make_unique<BoundFunction>(BoundFunction{function, database.interruption()});
  const auto call = std::string_view(function.name) == "sb_concat" ? CallConcat : CallScalar;
  if (sqlite3_create_function_v2(database.handle(), function.name, count, flags, bound.release(), call, nullptr,
                                 nullptr, [](void* data) { delete static_cast<BoundFunction*>(data); }) != SQLITE_OK) {
    throw database.ErrorOf("Open");
  }
}

}  // namespace

void RegisterFunctions(const Database& database) {
  for (const auto functions :
       {OperatorFunctions(), TextFunctions(), NumberFunctions(), DateFunctions(), ConversionFunctions()}) {
    for (const ScalarFunction& function : functions) RegisterScalar(database, function);
  }
  RegisterTextCollation(database);
  RegisterRowVisits(database);
  RegisterAggregate(database, "sb_sum", AddToSum<Form::kPlain>, FinishSum<&SumState::Sum>);
  RegisterAggregate(database, "sb_avg", AddToSum<Form::kPlain>, FinishSum<&SumState::Average>);
  RegisterAggregate(database, "sb_sum_money", AddToSum<Form::kUnits>, FinishSum<&SumState::Sum>);
  RegisterAggregate(database, "sb_avg_money", AddToSum<Form::kUnits>, FinishSum<&SumState::Average>);
}

}  // namespace stockbook::databases
