// SPDX-License-Identifier: MIT
#include "stockbook/sample/sample_bills.h"

#include <algorithm>
#include <array>

namespace stockbook::app {
namespace {

constexpr std::array<std::string_view, kSampleBillKindCount> kNames{"入库单", "采购单", "出库单", "销售单", "调拨单"};
constexpr std::array<std::string_view, kSampleBillKindCount> kPrefixes{"RK", "CG", "CK", "XS", "DB"};

// A product with more than this many usual issues in stock is not bought.
constexpr int64_t kFull = 60;
// Of the lines that need more than is available, one in this many is posted before its receipt and makes the stock
// negative.
constexpr int64_t kOverdrawnEvery = 50;
constexpr int kDecimalsOfMoney = 4;

size_t IndexBelow(SampleRandom& random, size_t count) {
  return static_cast<size_t>(random.Below(static_cast<int64_t>(count)));
}
int64_t NumberOf(size_t index) { return static_cast<int64_t>(index) + 1; }

bool Holds(const SampleBill& bill, size_t product) {
  return std::any_of(bill.lines.begin(), bill.lines.end(),
                     [&](const SampleLine& line) { return line.record.product_id == NumberOf(product); });
}

}  // namespace

std::string_view SampleBillName(SampleBillKind kind) { return kNames[static_cast<size_t>(kind)]; }
std::string_view SampleBillPrefix(SampleBillKind kind) { return kPrefixes[static_cast<size_t>(kind)]; }

SampleBillKind SampleBillMaker::ChooseKind(int64_t most_lines) {
  const int64_t draw = random_.Below(100);
  if (draw < 11) return SampleBillKind::StockIn;
  if (draw < 36) return SampleBillKind::Purchase;
  if (draw < 53) return SampleBillKind::StockOut;
  // A transfer has two lines for every product.
  return draw < 90 || most_lines < 2 ? SampleBillKind::Sale : SampleBillKind::Transfer;
}

int64_t SampleBillMaker::LineCount(int64_t most_lines) {
  const int64_t wanted = range_ == SampleProductRange::One ? random_.Below(8) / 7 + 1 : random_.Between(1, 5);
  return std::min(wanted, most_lines);
}

SampleBill SampleBillMaker::Make(base::Date date, int64_t most_lines) {
  date_ = date;
  month_ = MonthOf(date);
  SampleBill bill;
  bill.kind = ChooseKind(most_lines);
  const int64_t count = LineCount(most_lines);
  switch (bill.kind) {
    case SampleBillKind::StockIn:
    case SampleBillKind::Purchase:
      MakeReceipts(bill, count, Limit::FillUp);
      break;
    case SampleBillKind::StockOut:
    case SampleBillKind::Sale:
      MakeIssues(bill, count);
      break;
    case SampleBillKind::Transfer:
      MakeTransfers(bill, std::max<int64_t>(1, std::min(count, most_lines / 2)));
      break;
  }
  if (!bill.lines.empty()) return bill;
  // If there is nothing to buy because the stock is full, or nothing to issue, try the other direction, and finally
  // accept anything.
  bill = SampleBill{SampleBillKind::Sale, 0, 0, {}};
  MakeIssues(bill, count);
  if (!bill.lines.empty()) return bill;
  bill = SampleBill{SampleBillKind::Purchase, 0, 0, {}};
  MakeReceipts(bill, count, Limit::Always);
  return bill;
}

std::optional<size_t> SampleBillMaker::EmptiestOf(const std::vector<size_t>& products, Limit limit) {
  size_t best = random_.Pick(products);
  for (int look = 0; look < 3; ++look) {
    const size_t other = random_.Pick(products);
    if (stock_.FillOf(other) < stock_.FillOf(best)) best = other;
  }
  if (limit == Limit::FillUp && stock_.FillOf(best) > kFull) return std::nullopt;
  return best;
}

void SampleBillMaker::MakeReceipts(SampleBill& bill, int64_t count, Limit limit) {
  const bool purchase = bill.kind == SampleBillKind::Purchase;
  const size_t supplier = IndexBelow(random_, stock_.suppliers().size());
  const std::vector<size_t>* products = &stock_.supplied_by(supplier);
  if (purchase || random_.Chance(60)) bill.partner_id = NumberOf(supplier);
  if (purchase && random_.Chance(25)) {
    // A project buys the products it uses.
    const size_t project = IndexBelow(random_, stock_.projects().size());
    bill.project_id = NumberOf(project);
    products = &stock_.used_in(project);
  }
  const int tax = TaxPercent(bill.kind);
  for (int64_t line_number = 0; line_number < count; ++line_number) {
    const auto product = EmptiestOf(*products, limit);
    if (!product) return;
    if (range_ == SampleProductRange::Many && Holds(bill, *product)) continue;
    const SampleProduct& goods = stock_.products()[*product];
    const size_t depot = random_.Pick(stock_.homes_of(*product));
    const int64_t about = goods.usual_issue * random_.Between(1000, 4600);
    SampleLine line =
        LineOf(Direction::Receipt, *product, depot, MeasureOf(goods, about, SampleMeasure::WholePackages, random_));
    int64_t price = goods.price.units() * random_.Between(9400, 10900) / 10000;
    // Most prices are whole cents; the others result from a total.
    if (random_.Chance(80)) price = (price + 50) / 100 * 100;
    SetAmounts(line.record, base::Money::FromUnits(price), tax);
    Enter(bill, std::move(line));
  }
}

std::optional<size_t> SampleBillMaker::DepotWith(size_t product) {
  std::optional<size_t> best;
  const size_t first = IndexBelow(random_, stock_.depot_count());
  const bool any = random_.Chance(40);
  for (size_t step = 0; step < stock_.depot_count(); ++step) {
    const size_t depot = (first + step) % stock_.depot_count();
    const Quantity there = stock_.Cell(depot, product).stock.quantity;
    if (there <= Quantity()) continue;
    if (any) return depot;
    if (!best || there > stock_.Cell(*best, product).stock.quantity) best = depot;
  }
  return best;
}

std::optional<StockSums> SampleBillMaker::Issuable(size_t depot, size_t product, std::optional<size_t> project) {
  const SampleProduct& goods = stock_.products()[product];
  const StockSums& there = stock_.Cell(depot, product).stock;
  const SampleMeasure measure = random_.Chance(50) ? SampleMeasure::WholePackages : SampleMeasure::Loose;
  StockSums moved = MeasureOf(goods, goods.usual_issue * random_.Between(300, 2600), measure, random_);
  Quantity most = there.quantity;
  if (project) most = std::min(most, stock_.ProjectStock(*project, product).quantity);
  if (most <= Quantity()) return std::nullopt;
  if (moved.quantity <= most || (!project && random_.Below(kOverdrawnEvery) == 0)) return moved;
  moved.quantity = most;
  moved.quantity2 = most == there.quantity ? there.quantity2 : SecondQuantityOf(goods, most);
  return moved;
}

int64_t SampleBillMaker::OriginOf(const SampleCell& cell) {
  const int64_t draw = random_.Below(100);
  if (draw < 25) return 0;
  if (cell.last_receipt == 0 || draw < 35) return -cell.opening_id;
  return cell.last_receipt;
}

void SampleBillMaker::MakeIssues(SampleBill& bill, int64_t count) {
  std::optional<size_t> project;
  size_t customer = IndexBelow(random_, stock_.customers().size());
  if (bill.kind == SampleBillKind::StockOut && random_.Chance(70)) {
    project = IndexBelow(random_, stock_.projects().size());
    // Every project has a customer who builds it.
    customer = *project % stock_.customers().size();
    bill.project_id = NumberOf(*project);
  }
  if (bill.kind == SampleBillKind::Sale || project || random_.Chance(30)) bill.partner_id = NumberOf(customer);
  const std::vector<size_t>& products = project ? stock_.used_in(*project) : stock_.bought_by(customer);
  const int tax = TaxPercent(bill.kind);
  for (int64_t tries = count * 3; tries > 0 && static_cast<int64_t>(bill.lines.size()) < count; --tries) {
    const size_t product = random_.Pick(products);
    if (range_ == SampleProductRange::Many && Holds(bill, product)) continue;
    const auto depot = DepotWith(product);
    const auto moved = depot ? Issuable(*depot, product, project) : std::nullopt;
    if (!moved) continue;
    const SampleCell& cell = stock_.Cell(*depot, product);
    SampleLine line = LineOf(Direction::Issue, product, *depot, *moved);
    line.record.other_id = OriginOf(cell);
    const base::Money cost = UnitPriceOf(cell.stock.amount, cell.stock.quantity);
    SetAmounts(line.record, cost > base::Money() ? cost : stock_.products()[product].price, tax);
    Enter(bill, std::move(line));
  }
}

void SampleBillMaker::MakeTransfers(SampleBill& bill, int64_t count) {
  for (int64_t tries = count * 3; tries > 0 && static_cast<int64_t>(bill.lines.size()) < 2 * count; --tries) {
    const size_t product = random_.Pick(stock_.bought_by(IndexBelow(random_, stock_.customers().size())));
    const auto from = DepotWith(product);
    if (!from || (range_ == SampleProductRange::Many && Holds(bill, product))) continue;
    const size_t to = (*from + 1 + IndexBelow(random_, stock_.depot_count() - 1)) % stock_.depot_count();
    const auto moved = Issuable(*from, product, std::nullopt);
    if (!moved) continue;
    const SampleCell& cell = stock_.Cell(*from, product);
    SampleLine line = LineOf(Direction::Issue, product, *from, *moved);
    line.record.other_id = OriginOf(cell);
    const base::Money cost = UnitPriceOf(cell.stock.amount, cell.stock.quantity);
    SetAmounts(line.record, cost > base::Money() ? cost : stock_.products()[product].price, 0);
    SampleLine received = line;
    received.direction = Direction::Receipt;
    received.record.depot_id = NumberOf(to);
    received.record.other_id = 0;
    Enter(bill, std::move(line));
    Enter(bill, std::move(received));
  }
}

int SampleBillMaker::TaxPercent(SampleBillKind kind) {
  if (kind != SampleBillKind::Purchase && kind != SampleBillKind::Sale) return 0;
  constexpr std::array kPercents{13, 13, 13, 13, 13, 13, 3, 0};
  return random_.Pick(kPercents);
}

void SampleBillMaker::SetAmounts(LineRecord& record, base::Money price, int tax_percent) {
  record.price = price.ToDouble();
  record.amount = AmountOf(record.quantity, {price.units(), kDecimalsOfMoney});
  record.tax_rate = tax_percent / 100.0;
  record.tax = PercentOf(record.amount, tax_percent);
  record.tax_price = PercentOf(price, 100 + tax_percent).ToDouble();
  record.tax_amount = record.amount + record.tax;
}

SampleLine SampleBillMaker::LineOf(Direction direction, size_t product, size_t depot, const StockSums& moved) {
  SampleLine line;
  line.direction = direction;
  line.record.product_id = NumberOf(product);
  line.record.depot_id = NumberOf(depot);
  line.record.quantity = moved.quantity;
  line.record.quantity2 = moved.quantity2;
  AddDetails(line, stock_.products()[product]);
  return line;
}

void SampleBillMaker::AddDetails(SampleLine& line, const SampleProduct& product) {
  line.record.handler = random_.Pick(SampleHandlers());
  line.record.counterpart = random_.Pick(SampleDrivers());
  if (random_.Chance(70)) line.record.packing = random_.Pick(SamplePackings());
  if (random_.Chance(80)) line.record.place = product.place;
  const bool machine = product.class_code.starts_with("0402");
  const bool perishable = product.class_code.starts_with("06");
  if (machine) line.serial = "SN" + std::to_string(random_.Between(10'000'000, 99'999'999));
  if (perishable) line.record.term = random_.Pick(SampleTerms());
  if (machine || perishable) {
    line.record.produced_on =
        base::Date::FromSeconds(date_.seconds() - random_.Between(20, 200) * base::Date::kSecondsPerDay);
  }
}

void SampleBillMaker::Enter(SampleBill& bill, SampleLine line) {
  line.record.partner_id = bill.partner_id;
  line.record.project_id = bill.project_id;
  line.record.record_id = next_record_[static_cast<size_t>(line.direction)]++;
  stock_.Enter(line.direction, line.record, month_);
  bill.lines.push_back(std::move(line));
}

}  // namespace stockbook::app
