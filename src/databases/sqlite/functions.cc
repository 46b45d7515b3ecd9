// SPDX-License-Identifier: MIT
#include "databases/sqlite/functions.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <vector>

#include "base/wide_integer.h"
#include "databases/dialect/conversions.h"
#include "databases/dialect/date_functions.h"
#include "databases/dialect/number_functions.h"
#include "databases/dialect/operators.h"
#include "databases/dialect/text_functions.h"
#include "databases/sqlite/row_values.h"

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
  bool money = false;

  void AddMoney(base::Money amount);
  void Add(const Value& value);
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
  if (!number) return;
  const double sum = real + *number;
  real_error += std::fabs(real) >= std::fabs(*number) ? (real - sum) + *number : (*number - sum) + real;
  real = sum;
  ++count;
  ++real_count;
}

Value SumState::Sum() const {
  if (count == 0) return {};
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

// The first argument spells the forms of the others.
void CallScalar(sqlite3_context* context, int count, sqlite3_value** stored) {
  Guarded(context, [&] {
    const auto& function = *static_cast<const ScalarFunction*>(sqlite3_user_data(context));
    const auto* forms = reinterpret_cast<const char*>(sqlite3_value_text(stored[0]));
    const auto arguments = static_cast<size_t>(count - 1);
    std::array<Value, 4> few;
    std::vector<Value> many;
    if (arguments > few.size()) many.resize(arguments);
    Value* values = many.empty() ? few.data() : many.data();
    for (size_t index = 0; index < arguments; ++index)
      values[index] = ReadValue(stored[index + 1], static_cast<Form>(forms[index]));
    WriteValue(context, function.apply({values, arguments}));
  });
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
    } else if (value.Number()) {
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
  if (sqlite3_create_function_v2(database.handle(), name, 1, SQLITE_UTF8, nullptr, nullptr, step, finish, nullptr) !=
      SQLITE_OK) {
    throw database.ErrorOf("Open");
  }
}

bool DependsOnTheClock(std::string_view name) { return name == "sb_now" || name == "sb_today"; }

}  // namespace

void RegisterFunctions(const Database& database) {
  for (const auto functions :
       {OperatorFunctions(), TextFunctions(), NumberFunctions(), DateFunctions(), ConversionFunctions()}) {
    for (const ScalarFunction& function : functions) {
      const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (DependsOnTheClock(function.name) ? 0 : SQLITE_DETERMINISTIC);
      auto* data = const_cast<ScalarFunction*>(&function);  // SQLite passes it back unchanged, and it is only read
      if (sqlite3_create_function_v2(database.handle(), function.name, -1, flags, data, CallScalar, nullptr, nullptr,
                                     nullptr) != SQLITE_OK) {
        throw database.ErrorOf("Open");
      }
    }
  }
  RegisterAggregate(database, "sb_sum", AddToSum<Form::kPlain>, FinishSum<&SumState::Sum>);
  RegisterAggregate(database, "sb_avg", AddToSum<Form::kPlain>, FinishSum<&SumState::Average>);
  RegisterAggregate(database, "sb_sum_money", AddToSum<Form::kUnits>, FinishSum<&SumState::Sum>);
  RegisterAggregate(database, "sb_avg_money", AddToSum<Form::kUnits>, FinishSum<&SumState::Average>);
}

}  // namespace stockbook::databases
