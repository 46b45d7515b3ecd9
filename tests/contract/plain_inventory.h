// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/databases/rows/row_source.h"

namespace stockbook::testing {

// An inventory as a program might keep it, in plain objects.
struct PlainInventory {
  using Movement = std::pair<databases::Bill, databases::Line>;

  std::vector<std::string> periods;
  std::vector<Movement> receipts;
  std::vector<Movement> issues;
  std::vector<databases::Product> products;
  std::vector<databases::Depot> depots;
  std::vector<databases::Partner> suppliers;
  std::vector<databases::Partner> customers;
  std::vector<databases::Project> projects;
  std::array<std::vector<databases::Class>, 4> classes;     // by ClassTree
  std::array<std::vector<databases::Balance>, 4> balances;  // by BalanceOwner
};

// The rows of a file's inventory as objects; lines without a bill are in no journal, and not read.
PlainInventory ReadPlainInventory(const std::string& path);

// Changes an inventory to say what objects say: the parts of a date are those of the date, a bill without a period is
// in the month of its date, a line without keys has those of its bill, and what is empty is null, class codes excepted.
void LetItSayWhatObjectsSay(const std::string& path);

// Gives them, and counts what it gives.
class PlainSource : public databases::RowSource {
 public:
  enum class Gives { kWhatIsAsked, kAll };
  explicit PlainSource(std::shared_ptr<const PlainInventory> inventory, Gives gives = Gives::kWhatIsAsked)
      : inventory_(std::move(inventory)), gives_(gives) {}

  void Periods(const Take<std::string>& take) override;
  void Receipts(const databases::RowFilter& filter, const TakeLine& take) override;
  void Issues(const databases::RowFilter& filter, const TakeLine& take) override;
  void Products(const databases::RowFilter& filter, const Take<databases::Product>& take) override;
  void Depots(const databases::RowFilter& filter, const Take<databases::Depot>& take) override;
  void Suppliers(const databases::RowFilter& filter, const Take<databases::Partner>& take) override;
  void Customers(const databases::RowFilter& filter, const Take<databases::Partner>& take) override;
  void Projects(const databases::RowFilter& filter, const Take<databases::Project>& take) override;
  void Classes(databases::ClassTree tree, const Take<databases::Class>& take) override;
  void Balances(databases::BalanceOwner owner, const databases::RowFilter& filter,
                const Take<databases::Balance>& take) override;

  size_t given() const { return given_; }
  // Whether a load says this of what it was given and does not list, which of a file it does not say.
  static bool IsOfWhatIsNotListed(const std::string& message) {
    return message.find("没有列出：请在 RowSource::") != std::string::npos;
  }

 private:
  template <typename Row, typename IsAsked>
  void Give(const std::vector<Row>& rows, const Take<Row>& take, IsAsked is_asked);
  void GiveLines(const std::vector<PlainInventory::Movement>& movements, const databases::RowFilter& filter,
                 const TakeLine& take);

  std::shared_ptr<const PlainInventory> inventory_;
  Gives gives_;
  size_t given_ = 0;
};

// The same objects in another order.
PlainInventory Shuffled(PlainInventory inventory, unsigned seed);

}  // namespace stockbook::testing
