// SPDX-License-Identifier: MIT
#include "stockbook/sample/sample_inventory.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <vector>

#include "base/digits.h"
#include "stockbook/inventory/inventory_writer.h"
#include "stockbook/sample/sample_bills.h"

namespace stockbook::app {
namespace {

constexpr int kYearOfStart = 2025;
constexpr double kVat = 0.13;
constexpr double kOrdinaryRate = 0.03;

constexpr std::array<std::string_view, 6> kExplains{"急用", "补上月欠货", "随车送货", "自提", "样品", "月末集中开单"};

int DaysIn(int month) {
  const std::chrono::year_month at{std::chrono::year(month / 12),
                                   std::chrono::month(static_cast<unsigned>(month % 12 + 1))};
  return static_cast<int>(static_cast<unsigned>((at / std::chrono::last).day()));
}

base::Date DayOf(int month, int day) { return *base::Date::FromParts({month / 12, month % 12 + 1, day, 0, 0, 0}); }

std::string_view KindCode(SampleBillKind kind, SampleRandom& random) {
  const bool cash = random.Chance(30);
  switch (kind) {
    case SampleBillKind::Purchase:
      return cash ? "现购" : "赊购";
    case SampleBillKind::Sale:
      return cash ? "现销" : "赊销";
    case SampleBillKind::StockIn:
      return cash ? "退料" : "验收";
    case SampleBillKind::StockOut:
      return cash ? "自用" : "领料";
    case SampleBillKind::Transfer:
      break;
  }
  return "移库";
}

// Writes the bills month by month and finally everything they refer to.
class SampleWriting {
 public:
  SampleWriting(const std::string& path, const SampleOptions& options)
      : options_(options),
        writer_(path),
        random_(options.seed),
        stock_(random_, options.range, kYearOfStart),
        maker_(stock_, random_, options.range) {
    for (int period = 0; period < options.periods; ++period) months_.push_back(kYearOfStart * 12 + period);
  }

  SampleSummary Run() {
    for (int period = 0; period < options_.periods; ++period) {
      const int64_t begin = options_.lines * period / options_.periods;
      const int64_t end = options_.lines * (period + 1) / options_.periods;
      WriteMonth(months_[static_cast<size_t>(period)], end - begin);
    }
    WriteProducts();
    WriteParties();
    WriteClasses();
    // The opening row of a partner journal adds up the first period's own receipts or issues, so these must not be in
    // the lines as well: the first period is one without bills, and carries the opening stocks.
    const int initial_month = months_.front() - 1;
    writer_.AddPeriod(initial_month);
    for (const int month : months_) writer_.AddPeriod(month);
    for (const BalanceOwner owner :
         {BalanceOwner::Depots, BalanceOwner::Suppliers, BalanceOwner::Customers, BalanceOwner::Projects}) {
      writer_.AddBalances(owner, stock_.book(owner), initial_month);
    }
    writer_.Finish();
    return {maker_.record_count(Direction::Receipt), maker_.record_count(Direction::Issue), next_bill_ - 1,
            months_.front(), months_.back()};
  }

 private:
  void WriteMonth(int month, int64_t quota) {
    const int days = DaysIn(month);
    std::fill(bills_of_month_.begin(), bills_of_month_.end(), 0);
    for (int64_t done = 0; done < quota;) {
      const base::Date date = DayOf(month, static_cast<int>(done * days / quota) + 1);
      const SampleBill bill = maker_.Make(date, quota - done);
      WriteBill(bill, date, month);
      done += static_cast<int64_t>(bill.lines.size());
    }
  }

  std::string NumberOf(SampleBillKind kind, int month) {
    const int64_t count = ++bills_of_month_[static_cast<size_t>(kind)];
    const std::string period = PeriodText(month);
    std::string number(SampleBillPrefix(kind));
    number.append(period, 0, period.size() - 3).append(period, period.size() - 2, 2).append("-");
    return number.append(base::ZeroPadded(count, 4));
  }

  base::Date WorkingTime(base::Date day, int64_t days_later) {
    return base::Date::FromSeconds(day.seconds() + days_later * base::Date::kSecondsPerDay +
                                   random_.Between(8 * 3600, 17 * 3600 + 1800));
  }

  void WriteBill(const SampleBill& bill, base::Date date, int month) {
    const std::string period = PeriodText(month);
    const std::string number = NumberOf(bill.kind, month);
    BillRecord record;
    record.bill_id = next_bill_++;
    record.period = period;
    record.date = date;
    record.type_name = SampleBillName(bill.kind);
    record.number = number;
    record.kind = KindCode(bill.kind, random_);
    if (random_.Chance(20)) record.explain = random_.Pick(kExplains);
    record.partner_id = bill.partner_id;
    record.project_id = bill.project_id;
    record.entered_by = random_.Pick(SampleClerks());
    record.entered_on = WorkingTime(date, 0);
    // The last bills are still unfinished work.
    if (random_.Chance(month == months_.back() ? 60 : 92)) {
      record.audited_by = random_.Pick(SampleAuditors());
      record.audited_on = WorkingTime(date, random_.Between(1, 3));
    }
    for (const Direction direction : {Direction::Receipt, Direction::Issue}) WriteSide(bill, direction, record);
  }

  // The bill's lines of one direction get their own header; a transfer has both directions under one number.
  void WriteSide(const SampleBill& bill, Direction direction, BillRecord record) {
    const auto of_side = [&](const SampleLine& line) { return line.direction == direction; };
    const auto first = std::find_if(bill.lines.begin(), bill.lines.end(), of_side);
    if (first == bill.lines.end()) return;
    record.depot_id = first->record.depot_id;
    writer_.AddBill(direction, record);
    for (const SampleLine& line : bill.lines) {
      if (!of_side(line)) continue;
      LineRecord written = line.record;
      written.bill_id = record.bill_id;
      written.serial_number = line.serial;
      writer_.AddLine(direction, written);
    }
  }

  int64_t MainSupplierOf(size_t product) const {
    for (size_t supplier = 0; supplier < stock_.suppliers().size(); ++supplier) {
      const auto& supplied = stock_.supplied_by(supplier);
      if (std::find(supplied.begin(), supplied.end(), product) != supplied.end())
        return stock_.suppliers()[supplier].id;
    }
    return 0;
  }

  void WriteProducts() {
    for (const SampleProduct& product : stock_.products()) {
      ProductRecord record;
      record.product_id = product.id;
      record.name = product.name;
      record.number = product.number;
      record.specification = product.size;
      record.model = product.standard;
      record.unit = product.unit;
      record.unit2 = product.unit2;
      record.costing = "移动加权平均";
      record.rounding = "四舍五入";
      record.least_stock = Quantity::Whole(product.usual_issue * 4);
      record.most_stock = Quantity::Whole(product.usual_issue * 60);
      record.short_code = product.short_code;
      record.supplier_id = MainSupplierOf(static_cast<size_t>(product.id - 1));
      record.price = PercentOf(product.price, 118).ToDouble();
      record.purchase_price = product.price.ToDouble();
      record.vat_rate = record.purchase_vat_rate = kVat;
      record.ordinary_tax_rate = record.ordinary_purchase_tax_rate = kOrdinaryRate;
      record.class_code = product.class_code;
      record.per_package = product.per_package;
      record.place = product.place;
      record.barcode = product.barcode;
      writer_.AddProduct(record);
    }
  }

  void WriteParties() {
    int64_t depot_id = 0;
    for (const std::string_view name : SampleDepots()) writer_.AddDepot(++depot_id, name);
    for (const SampleParty& party : stock_.suppliers())
      writer_.AddPartner(Partners::Suppliers, party.id, party.name, party.class_code);
    for (const SampleParty& party : stock_.customers())
      writer_.AddPartner(Partners::Customers, party.id, party.name, party.class_code);
    for (const SampleParty& party : stock_.projects())
      writer_.AddProject(party.id, party.name, party.number, party.class_code);
  }

  void WriteClasses() {
    for (const SampleClass& entry : SampleProductClasses())
      writer_.AddClass(ClassTree::Products, entry.code, entry.name);
    for (const SampleClass& entry : SampleSupplierClasses())
      writer_.AddClass(ClassTree::Suppliers, entry.code, entry.name);
    for (const SampleClass& entry : SampleCustomerClasses())
      writer_.AddClass(ClassTree::Customers, entry.code, entry.name);
    for (const SampleClass& entry : SampleProjectClasses())
      writer_.AddClass(ClassTree::Projects, entry.code, entry.name);
  }

  SampleOptions options_;
  InventoryWriter writer_;
  SampleRandom random_;
  SampleStock stock_;
  SampleBillMaker maker_;
  std::vector<int> months_;
  std::array<int64_t, kSampleBillKindCount> bills_of_month_{};
  int64_t next_bill_ = 1;
};

}  // namespace

SampleSummary WriteSampleInventory(const std::string& path, const SampleOptions& options) {
  return SampleWriting(path, options).Run();
}

}  // namespace stockbook::app
