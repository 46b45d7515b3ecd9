// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "end_to_end/inventory_maker.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::end_to_end {

// A small inventory full of cases that are rare in real ones: bills with the same day and number, red-letter entries
// (negative corrections), zero quantities, missing master records, lines with another partner than their bill, bills in
// past and future periods. The same seed gives the same inventory and the same journals.
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
