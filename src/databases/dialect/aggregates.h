// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "base/value.h"
#include "base/wide_integer.h"

namespace stockbook::databases {

// The running state of Sum and Avg over money or over plain values. Plain data, all zero at the start, so that a
// database may allocate it. Money and whole numbers add up exactly, doubles with compensation for rounding errors.
// Values that are no numbers are left out. Results out of range throw base::ArithmeticError; nothing added gives null.
struct SumState {
  base::WideInteger whole = 0;  // money units, or whole numbers
  double real = 0;
  double real_error = 0;
  int64_t count = 0;
  int64_t real_count = 0;
  bool money = false;

  void AddMoney(base::Money amount);
  void Add(const base::Value& value);
  base::Value Sum() const;
  base::Value Average() const;
};

}  // namespace stockbook::databases
