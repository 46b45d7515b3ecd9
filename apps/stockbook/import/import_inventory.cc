// SPDX-License-Identifier: MIT
#include "stockbook/import/import_inventory.h"

#include <algorithm>
#include <array>

#include "base/digits.h"
#include "base/text.h"

namespace stockbook::app {
namespace {

constexpr int64_t kDepot = 1;
constexpr std::string_view kDepotName = "总库";
constexpr std::string_view kClassCode = "01";
constexpr std::string_view kClassName = "导入";

// A table of issues contains sales, with returns as receipts; a table of receipts contains purchases.
std::string_view BillTypeOf(const Movement& movement) {
  if (movement.direction == Direction::Receipt) return movement.returned ? "入库单" : "采购单";
  return movement.returned ? "出库单" : "销售单";
}

// The master records in the order of their numbers, whatever the order of the hash table.
template <typename Map, typename IdOf>
auto ById(const Map& map, IdOf id_of) {
  std::vector<const typename Map::value_type*> entries;
  entries.reserve(map.size());
  for (const auto& entry : map) entries.push_back(&entry);
  std::sort(entries.begin(), entries.end(),
            [&](const auto* a, const auto* b) { return id_of(a->second) < id_of(b->second); });
  return entries;
}

template <typename Names>
std::string_view MostFrequent(const Names& names) {
  const auto found = std::min_element(names.begin(), names.end(), [](const auto& a, const auto& b) {
    const auto& [a_count, a_place] = a.second;
    const auto& [b_count, b_place] = b.second;
    return a_count != b_count ? a_count > b_count : a_place < b_place;
  });
  return found == names.end() ? std::string_view() : std::string_view(found->first);
}

}  // namespace

int64_t ImportInventory::ProductOf(const Movement& movement) {
  Product& product = products_[movement.product];
  if (product.id == 0) product.id = static_cast<int64_t>(products_.size());
  if (!movement.name.empty()) {
    const auto place = static_cast<int64_t>(product.names.size());
    ++product.names.try_emplace(movement.name, 0, place).first->second.first;
  }
  return product.id;
}

int64_t ImportInventory::PartnerOf(const Movement& movement) {
  Partner& partner = partners_[movement.partner.empty() ? nobody_ : movement.partner];
  if (partner.id == 0) partner.id = static_cast<int64_t>(partners_.size());
  (movement.direction == Direction::Receipt ? partner.supplies : partner.buys) = true;
  return partner.id;
}

int64_t ImportInventory::ProjectOf(const Movement& movement) {
  if (movement.project.empty()) return 0;
  int64_t& id = projects_[movement.project];
  if (id == 0) id = static_cast<int64_t>(projects_.size());
  return id;
}

int64_t ImportInventory::BillOf(const Movement& movement, int64_t partner_id, int64_t project_id) {
  // All parts but the last are numbers, so different keys cannot collide.
  const std::array parts{movement.direction == Direction::Receipt ? int64_t{0} : int64_t{1}, movement.date.seconds(),
                         partner_id, project_id};
  bill_key_.clear();
  for (const int64_t part : parts) bill_key_.append(std::to_string(part)).append("|");
  bill_key_ += movement.bill;
  int64_t& bill_id = bills_[bill_key_];
  if (bill_id == 0) {
    bill_id = next_bill_++;
    WriteBill(movement, bill_id, partner_id, project_id);
  }
  return bill_id;
}

void ImportInventory::WriteBill(const Movement& movement, int64_t bill_id, int64_t partner_id, int64_t project_id) {
  const int month = MonthOf(movement.date);
  months_.insert(month);
  std::string number = movement.bill;
  if (number.empty()) {
    // Bills without a number get one made of the day and a count.
    number = base::ReplaceAll(movement.date.Text().substr(0, 10), "-", "") + "-" +
             base::ZeroPadded(++bills_of_day_[movement.date.days()], 4);
  }
  const std::string period = PeriodText(month);
  BillRecord bill;
  bill.bill_id = bill_id;
  bill.period = period;
  bill.date = movement.date;
  bill.type_name = BillTypeOf(movement);
  bill.number = number;
  bill.depot_id = kDepot;
  bill.partner_id = partner_id;
  bill.project_id = project_id;
  writer_.AddBill(movement.direction, bill);
}

void ImportInventory::Add(const Movement& movement) {
  LineRecord line;
  line.product_id = ProductOf(movement);
  line.partner_id = PartnerOf(movement);
  line.project_id = ProjectOf(movement);
  line.bill_id = BillOf(movement, line.partner_id, line.project_id);
  line.record_id = next_record_[static_cast<size_t>(movement.direction)]++;
  line.depot_id = kDepot;
  line.quantity = movement.quantity;
  line.price = line.tax_price = movement.price;
  line.amount = line.tax_amount = movement.amount;
  writer_.AddLine(movement.direction, line);
  EnterBalances(movement, line);
}

void ImportInventory::EnterBalances(const Movement& movement, const LineRecord& line) {
  const int month = MonthOf(movement.date);
  const StockSums sums{line.quantity, line.quantity2, line.amount};
  depots_.Enter(movement.direction, kDepot, line.product_id, month, sums);
  BalanceBook& partners = movement.direction == Direction::Receipt ? suppliers_ : customers_;
  partners.Enter(movement.direction, line.partner_id, line.product_id, month, sums);
  if (line.project_id != 0) project_stocks_.Enter(movement.direction, line.project_id, line.product_id, month, sums);
}

void ImportInventory::WriteMasters() {
  writer_.AddDepot(kDepot, kDepotName);
  for (const auto* entry : ById(products_, [](const Product& product) { return product.id; })) {
    ProductRecord product;
    product.product_id = entry->second.id;
    product.number = entry->first;
    product.name = MostFrequent(entry->second.names);
    // A product without any name is named by its number.
    if (product.name.empty()) product.name = product.number;
    product.class_code = kClassCode;
    writer_.AddProduct(product);
  }
  for (const auto* entry : ById(partners_, [](const Partner& partner) { return partner.id; })) {
    const Partner& partner = entry->second;
    if (partner.supplies) writer_.AddPartner(Partners::Suppliers, partner.id, entry->first, kClassCode);
    if (partner.buys) writer_.AddPartner(Partners::Customers, partner.id, entry->first, kClassCode);
  }
  for (const auto* entry : ById(projects_, [](int64_t id) { return id; })) {
    writer_.AddProject(entry->second, entry->first, base::ZeroPadded(entry->second, 3), kClassCode);
  }
  for (const ClassTree tree : {ClassTree::Products, ClassTree::Suppliers, ClassTree::Customers, ClassTree::Projects}) {
    writer_.AddClass(tree, kClassCode, kClassName);
  }
}

void ImportInventory::Complete() {
  WriteMasters();
  if (months_.empty()) return;
  // The opening row of a partner journal adds up the first period's own receipts or issues, so these must not be in
  // the lines as well: the first period is one without bills.
  const int initial_month = *months_.begin() - 1;
  writer_.AddPeriod(initial_month);
  for (const int month : months_) writer_.AddPeriod(month);
  writer_.AddBalances(BalanceOwner::Depots, depots_, initial_month);
  writer_.AddBalances(BalanceOwner::Suppliers, suppliers_, initial_month);
  writer_.AddBalances(BalanceOwner::Customers, customers_, initial_month);
  writer_.AddBalances(BalanceOwner::Projects, project_stocks_, initial_month);
}

}  // namespace stockbook::app
