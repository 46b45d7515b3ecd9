// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "stockbook/inventory/inventory_balances.h"
#include "stockbook/sample/sample_catalog.h"
#include "stockbook/sample/sample_random.h"

namespace stockbook::app {

enum class SampleProductRange { Many, One };

// The stock of one product in one depot, and where it came from.
struct SampleCell {
  StockSums stock;
  int64_t opening_id = 0;    // the balance record of its opening stock, or 0
  int64_t last_receipt = 0;  // RecID, or 0
};

// The wholesaler's stock while the bills are generated: who supplies, buys and uses which products, what is stored
// where, and the balances, which every entered line updates. Products, depots and parties count from 0 here.
class SampleStock {
 public:
  // Draws random assortments and opening stocks; with One, everything is about the first product.
  SampleStock(SampleRandom& random, SampleProductRange range, int first_year);

  const std::vector<SampleProduct>& products() const { return products_; }
  const std::vector<SampleParty>& suppliers() const { return suppliers_; }
  const std::vector<SampleParty>& customers() const { return customers_; }
  const std::vector<SampleParty>& projects() const { return projects_; }
  const std::vector<size_t>& supplied_by(size_t supplier) const { return supplied_[supplier]; }
  const std::vector<size_t>& bought_by(size_t customer) const { return bought_[customer]; }
  const std::vector<size_t>& used_in(size_t project) const { return used_[project]; }
  const std::vector<size_t>& homes_of(size_t product) const { return homes_[product]; }

  size_t depot_count() const { return SampleDepots().size(); }
  const SampleCell& Cell(size_t depot, size_t product) const { return cells_[depot * products_.size() + product]; }
  const StockSums& ProjectStock(size_t project, size_t product) const {
    return project_stocks_[project * products_.size() + product];
  }
  // The stock of all depots, counted in usual issues.
  int64_t FillOf(size_t product) const;

  // Enters a line into the stock and the balances; `line` carries the keys of the master records.
  void Enter(Direction direction, const LineRecord& line, int month);

  const BalanceBook& book(BalanceOwner owner) const { return books_[static_cast<size_t>(owner)]; }

 private:
  void DrawAssortments(SampleRandom& random, SampleProductRange range);
  void OpenDepots(SampleRandom& random, SampleProductRange range);
  void OpenProjects(SampleRandom& random);
  BalanceBook& Book(BalanceOwner owner) { return books_[static_cast<size_t>(owner)]; }

  std::vector<SampleProduct> products_;
  std::vector<SampleParty> suppliers_;
  std::vector<SampleParty> customers_;
  std::vector<SampleParty> projects_;
  std::vector<std::vector<size_t>> supplied_;
  std::vector<std::vector<size_t>> bought_;
  std::vector<std::vector<size_t>> used_;
  std::vector<std::vector<size_t>> homes_;
  std::vector<SampleCell> cells_;
  std::vector<StockSums> project_stocks_;
  BalanceBook books_[4];
};

// The quantity of a product that moves: about `thousandths` units, in whole packages or loose; in both units.
enum class SampleMeasure { WholePackages, Loose };
StockSums MeasureOf(const SampleProduct& product, int64_t thousandths, SampleMeasure measure, SampleRandom& random);
// A quantity in the product's second unit, to the hundredth; 0 without one.
Quantity SecondQuantityOf(const SampleProduct& product, Quantity quantity);

}  // namespace stockbook::app
