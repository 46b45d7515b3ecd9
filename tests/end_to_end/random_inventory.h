// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <random>
#include <span>
#include <string>

#include "end_to_end/inventory_maker.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::end_to_end {

// A small inventory full of cases that are rare in real ones: bills with the same day and number, red-letter entries
// (negative corrections), zero quantities, missing master records, lines with another partner than their bill, bills in
// past and future periods. The same seed gives the same inventory and the same journals.
class RandomInventory {
 public:
  // Hostile values are of other types than their columns, numbers and dates in odd spellings or none at all, infinite,
  // huge and tiny numbers, malformed texts; records repeat where no key forbids it. Each hostile inventory has its own
  // share of them, because an infinite number hides what comes after it.
  enum class Values { kUsual, kHostile };
  explicit RandomInventory(uint64_t seed, Values values = Values::kUsual) : random_(seed), values_(values) {}

  void Write(const std::string& path, Declared declared);
  app::JournalOptions AnyJournal(int type);

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<uint64_t>(end)); }
  bool Chance(int percent) { return Below(100) < percent; }
  std::string Key(int end) { return std::to_string(Below(end)); }
  // Whether a value is one of those, and one of a list.
  bool IsHostile(int percent) { return values_ == Values::kHostile && Chance(percent); }
  std::string OneOf(std::span<const char* const> literals);
  // Whether records with equal keys may be stored.
  bool MayRepeat() const;
  // A key as a bill or line names it, and as a master or bill spells its own.
  std::string KeyLiteral(int end);
  std::string OwnKeyLiteral(int key);
  std::string TextLiteral(const std::string& usual);
  std::string QuantityLiteral();
  std::string AmountLiteral();
  std::string PeriodText();
  std::string PeriodLiteral();
  std::string CodeLiteral();
  std::string DateLiteral();
  void AddMasters(InventoryMaker& maker);
  void AddPeriods(InventoryMaker& maker);
  // Records that no line names, far away, so that looking up is quicker than reading all; indexes that help to.
  void AddDistance(InventoryMaker& maker);
  void InsertOnceOrTwice(InventoryMaker& maker, const std::string& table, const Literals& values);
  void AddBills(InventoryMaker& maker, const std::string& side);
  void AddLine(InventoryMaker& maker, const std::string& side, int bill, const Literals& keys);
  void AddBalances(InventoryMaker& maker);

  std::mt19937_64 random_;
  Values values_;
  Declared declared_ = Declared::kUsual;
  int hostile_share_ = 15;  // in percent
  int endless_share_ = 0;   // of hostile quantities
  int beyond_share_ = 0;    // of hostile amounts
  int periods_ = 1;
  int next_record_ = 1;
};

}  // namespace stockbook::end_to_end
