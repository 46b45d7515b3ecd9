// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace stockbook::base {

// The kinds of journal, spelled as in the public interface. Hosts set it by number, so other values are possible; every
// reader says what it does with them.
enum tqJournalTypeContants : int32_t {
  MaterialJournal = 0,  // the stock journal of one product, in one depot or all
  SupplierJournal = 1,  // receipts from one supplier or a class of them
  CustomerJournal = 2,  // issues to one customer or a class of them
  ProjectJournal = 3,   // movements of one project or a class of them
};

}  // namespace stockbook::base
