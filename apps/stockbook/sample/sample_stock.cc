// SPDX-License-Identifier: MIT
#include "stockbook/sample/sample_stock.h"

#include <algorithm>
#include <set>

namespace stockbook::app {
namespace {

// One in this many products is new and has no opening stock.
constexpr size_t kNewProductEvery = 17;
// One in this many products, including the first, sells all the time: every partner deals in it.
constexpr size_t kBestSellerEvery = 30;

size_t SizeOf(int64_t number) { return static_cast<size_t>(number); }

// `count` distinct numbers of 0..total-1, ascending.
std::vector<size_t> Draw(SampleRandom& random, size_t total, size_t count) {
  std::set<size_t> drawn;
  while (drawn.size() < std::min(total, count)) drawn.insert(SizeOf(random.Below(static_cast<int64_t>(total))));
  return {drawn.begin(), drawn.end()};
}

// A random assortment plus the best sellers.
std::vector<size_t> DrawAssortment(SampleRandom& random, size_t total, size_t count) {
  std::vector<size_t> drawn = Draw(random, total, count);
  for (size_t product = 0; product < total; product += kBestSellerEvery) drawn.push_back(product);
  std::sort(drawn.begin(), drawn.end());
  drawn.erase(std::unique(drawn.begin(), drawn.end()), drawn.end());
  return drawn;
}

// The main depot and the one for the product's class.
std::vector<size_t> HomesOf(const SampleProduct& product) {
  if (product.class_code.starts_with("01")) return {0, 1};
  if (product.class_code.starts_with("02") || product.class_code.starts_with("05")) return {0, 2};
  return {0, 3};
}

// Weights are read to the tenth of a kilogram, or to the kilogram where the unit is a ton.
int64_t ScaleStep(const SampleProduct& product) { return product.per_package < Quantity::Whole(1) ? 1 : 100; }

}  // namespace

Quantity SecondQuantityOf(const SampleProduct& product, Quantity quantity) {
  const int64_t package = product.per_package.millionths();
  if (package == 0) return {};
  const int64_t hundredths = (quantity.millionths() * 100 + package / 2) / package;
  return Quantity::FromThousandths(hundredths * 10);
}

StockSums MeasureOf(const SampleProduct& product, int64_t thousandths, SampleMeasure measure, SampleRandom& random) {
  StockSums sums;
  const int64_t package = product.per_package.millionths() / 1000;
  if (package > 0 && measure == SampleMeasure::WholePackages) {
    const int64_t packages = std::max<int64_t>(1, (thousandths + package / 2) / package);
    int64_t weight = packages * package;
    if (product.weighed) weight += weight * random.Between(-150, 150) / 10000 / ScaleStep(product) * ScaleStep(product);
    sums.quantity = Quantity::FromThousandths(weight);
    sums.quantity2 = Quantity::Whole(packages);
    return sums;
  }
  const int64_t step = product.weighed ? ScaleStep(product) : 1000;
  sums.quantity = Quantity::FromThousandths(std::max(step, thousandths / step * step));
  sums.quantity2 = SecondQuantityOf(product, sums.quantity);
  return sums;
}

SampleStock::SampleStock(SampleRandom& random, SampleProductRange range, int first_year)
    : products_(SampleProducts()),
      suppliers_(SampleSuppliers()),
      customers_(SampleCustomers()),
      projects_(SampleProjects(first_year)),
      cells_(SampleDepots().size() * products_.size()),
      project_stocks_(projects_.size() * products_.size()) {
  for (const SampleProduct& product : products_) homes_.push_back(HomesOf(product));
  DrawAssortments(random, range);
  OpenDepots(random, range);
  OpenProjects(random);
}

void SampleStock::DrawAssortments(SampleRandom& random, SampleProductRange range) {
  constexpr size_t kBought = 14;
  constexpr size_t kUsed = 9;
  const std::vector<size_t> first{0};
  supplied_.resize(suppliers_.size());
  for (size_t product = 0; product < products_.size(); ++product) {
    // Every product has at least two suppliers, so that none runs out for good.
    const size_t suppliers = product % kBestSellerEvery == 0 ? 9 : 2;
    for (const size_t supplier : Draw(random, suppliers_.size(), suppliers)) supplied_[supplier].push_back(product);
  }
  for (size_t index = 0; index < customers_.size(); ++index)
    bought_.push_back(DrawAssortment(random, products_.size(), kBought));
  for (size_t index = 0; index < projects_.size(); ++index)
    used_.push_back(DrawAssortment(random, products_.size(), kUsed));
  for (auto* assortments : {&supplied_, &bought_, &used_}) {
    for (auto& products : *assortments) {
      if (range == SampleProductRange::One || products.empty()) products = first;
    }
  }
}

void SampleStock::OpenDepots(SampleRandom& random, SampleProductRange range) {
  const size_t count = range == SampleProductRange::One ? 1 : products_.size();
  for (size_t index = 0; index < count; ++index) {
    if (index % kNewProductEvery == kNewProductEvery - 1) continue;
    const SampleProduct& product = products_[index];
    for (const size_t depot : homes_[index]) {
      StockSums stock =
          MeasureOf(product, product.usual_issue * 1000 * random.Between(5, 18), SampleMeasure::WholePackages, random);
      const int64_t price = product.price.units() * random.Between(970, 1030) / 1000;
      stock.amount = AmountOf(stock.quantity, {price, 4});
      SampleCell& cell = cells_[depot * products_.size() + index];
      cell.stock = stock;
      cell.opening_id = Book(BalanceOwner::Depots).Open(static_cast<int64_t>(depot) + 1, product.id, stock);
    }
  }
}

void SampleStock::OpenProjects(SampleRandom& random) {
  for (size_t project = 0; project < projects_.size(); ++project) {
    for (const size_t index : used_[project]) {
      if (random.Chance(50)) continue;
      const SampleProduct& product = products_[index];
      StockSums stock =
          MeasureOf(product, product.usual_issue * 1000 * random.Between(1, 4), SampleMeasure::WholePackages, random);
      stock.amount = AmountOf(stock.quantity, {product.price.units(), 4});
      project_stocks_[project * products_.size() + index] = stock;
      Book(BalanceOwner::Projects).Open(projects_[project].id, product.id, stock);
    }
  }
}

int64_t SampleStock::FillOf(size_t product) const {
  Quantity total;
  for (size_t depot = 0; depot < depot_count(); ++depot) total += Cell(depot, product).stock.quantity;
  return total.millionths() / Quantity::kScale / products_[product].usual_issue;
}

void SampleStock::Enter(Direction direction, const LineRecord& line, int month) {
  const StockSums sums{line.quantity, line.quantity2, line.amount};
  const size_t product = SizeOf(line.product_id - 1);
  const auto apply = [&](StockSums& stock) { direction == Direction::Receipt ? stock += sums : stock -= sums; };
  SampleCell& cell = cells_[SizeOf(line.depot_id - 1) * products_.size() + product];
  apply(cell.stock);
  if (direction == Direction::Receipt) cell.last_receipt = line.record_id;
  Book(BalanceOwner::Depots).Enter(direction, line.depot_id, line.product_id, month, sums);
  if (line.partner_id != 0) {
    const BalanceOwner partners = direction == Direction::Receipt ? BalanceOwner::Suppliers : BalanceOwner::Customers;
    Book(partners).Enter(direction, line.partner_id, line.product_id, month, sums);
  }
  if (line.project_id != 0) {
    apply(project_stocks_[SizeOf(line.project_id - 1) * products_.size() + product]);
    Book(BalanceOwner::Projects).Enter(direction, line.project_id, line.product_id, month, sums);
  }
}

}  // namespace stockbook::app
