// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "end_to_end/base_tables.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::end_to_end {

enum JournalTypes : int { kMaterial, kSupplier, kCustomer, kProject };

inline bool IsPartner(int type) { return type == kSupplier || type == kCustomer; }

// Quantity, quantity in the second unit, amount.
struct Measures {
  double quantity = 0;
  double quantity2 = 0;
  Amount amount = 0;

  void Add(const Measures& other, int sign) {
    quantity += sign * other.quantity;
    quantity2 += sign * other.quantity2;
    amount += sign * other.amount;
  }
};

// What a journal begins with.
struct RecomputedOpening {
  std::string period;  // empty without periods
  Measures measures;
  // Whether the statement of the balance fails: there is no period to open with, or a partner journal over everybody
  // has no condition to add the product to. The journal opens with zeros then, and says so.
  bool is_refused = false;
};

// The opening balance of a journal, found by SQL that is written here by hand.
RecomputedOpening OpeningOf(const BaseTables& tables, const app::JournalOptions& options);

}  // namespace stockbook::end_to_end
