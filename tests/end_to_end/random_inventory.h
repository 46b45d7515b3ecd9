// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "end_to_end/inventory_maker.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::end_to_end {

// A small inventory full of what is rare in real ones: bills of one day and number, red-letter entries, zero
// quantities, missing masters, lines of other partners than their bill's, bills of past and future periods. The same
// seed gives the same inventory and the same journals.
class RandomInventory {
 public:
  explicit RandomInventory(uint64_t seed) : random_(seed) {}

  void Write(const std::string& path, Declared declared);
  app::JournalOptions AnyJournal(int type);

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<uint64_t>(end)); }
  bool Chance(int percent) { return Below(100) < percent; }
  std::string Key(int end) { return std::to_string(Below(end)); }
  std::string QuantityLiteral();
  std::string AmountLiteral();
  std::string PeriodText();
  std::string DateLiteral();
  void AddMasters(InventoryMaker& maker);
  void AddBills(InventoryMaker& maker, const std::string& side);
  void AddLine(InventoryMaker& maker, const std::string& side, int bill, const Literals& keys);
  void AddBalances(InventoryMaker& maker);

  std::mt19937_64 random_;
  Declared declared_ = Declared::kUsual;
  int periods_ = 1;
  int next_record_ = 1;
};

}  // namespace stockbook::end_to_end
