// SPDX-License-Identifier: MIT
#include "databases/sqlite/functions.h"

#include <array>
#include <exception>
#include <memory>
#include <new>
#include <vector>

#include "databases/dialect/aggregates.h"
#include "databases/dialect/conversions.h"
#include "databases/dialect/date_functions.h"
#include "databases/dialect/number_functions.h"
#include "databases/dialect/operators.h"
#include "databases/dialect/text_functions.h"
#include "databases/sqlite/row_values.h"

namespace stockbook::databases {
namespace {

using base::Value;

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
