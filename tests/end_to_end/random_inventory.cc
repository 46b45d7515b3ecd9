// SPDX-License-Identifier: MIT
#include "end_to_end/random_inventory.h"

#include <array>

namespace stockbook::end_to_end {
namespace {

constexpr std::array<const char*, 5> kCodes{"'01'", "'0101'", "'02'", "'-1'", "NULL"};

std::string Decimals(int64_t scaled, int decimals) {
  std::string digits = std::to_string(scaled < 0 ? -scaled : scaled);
  if (static_cast<int>(digits.size()) <= decimals)
    digits.insert(0, static_cast<size_t>(decimals) + 1 - digits.size(), '0');
  if (decimals > 0) digits.insert(digits.size() - static_cast<size_t>(decimals), ".");
  return (scaled < 0 ? "-" : "") + digits;
}

}  // namespace

std::string RandomInventory::QuantityLiteral() {
  switch (Below(10)) {
    case 0:
      return "0";
    case 1:
      return "NULL";
    case 2:
      return Decimals(-(1 + Below(300)), Below(3));
    case 3:
      return Decimals(1 + Below(1000), 3);
    case 4:
      return "1e" + std::to_string(Below(12));
    case 5:
      return "0.1";
    default:
      return Decimals(1 + Below(5000), Below(2));
  }
}

std::string RandomInventory::AmountLiteral() {
  std::string text;
  switch (Below(10)) {
    case 0:
      text = "0";
      break;
    case 1:
      return "NULL";
    case 2:
      text = Decimals(-(1 + Below(100000)), 4);
      break;
    case 3:
      text = Decimals(1 + Below(1000000000), 0);
      break;
    default:
      text = Decimals(1 + Below(10000000), Below(5));
      break;
  }
  // In a text the last digit matters; in a number it is that of a double.
  return declared_ == Declared::kUsual || declared_ == Declared::kWithoutKeys ? Quoted(text) : text;
}

std::string RandomInventory::PeriodText() { return "2025-0" + std::to_string(1 + Below(periods_)); }

std::string RandomInventory::DateLiteral() {
  if (Chance(3)) return "NULL";
  std::string date = "2025-0" + std::to_string(1 + Below(periods_)) + "-" + std::to_string(10 + Below(4));
  if (Chance(10)) date += " 0" + Key(10) + ":30:00";
  return Quoted(date);
}

void RandomInventory::AddMasters(InventoryMaker& maker) {
  // Keys from 1 on; gaps are deleted records.
  for (int key = 1; key <= 4; ++key) {
    const std::string number = std::to_string(key);
    const auto code = [&] { return std::string(kCodes[static_cast<size_t>(Below(kCodes.size()))]); };
    if (Chance(80)) maker.Insert("仓库设置", {{"dpID", number}, {"仓库名称", Quoted("库" + number)}});
    if (Chance(80))
      maker.Insert("厂商资料", {{"KSID", number}, {"企业名称", Quoted("供方" + number)}, {"ClassCode", code()}});
    if (Chance(80))
      maker.Insert("客户资料", {{"KSID", number}, {"企业名称", Quoted("客户" + number)}, {"ClassCode", code()}});
    if (Chance(80))
      maker.Insert("项目设置", {{"项目ID", number},
                                {"项目名称", Quoted("项目" + number)},
                                {"项目编号", Quoted("X" + number)},
                                {"ClassCode", code()}});
    if (Chance(80))
      maker.Insert("商品设置", {{"pdID", number},
                                {"商品名称", Quoted("品" + number)},
                                {"规格", Chance(50) ? "'M8'" : "NULL"},
                                {"计量单位", "'个'"}});
  }
  for (int period = 1; period <= periods_; ++period) {
    if (Chance(90)) maker.Insert("tqAccPeriod", {{"AccPeriod", Quoted("2025-0" + std::to_string(period))}});
  }
}

void RandomInventory::AddLine(InventoryMaker& maker, const std::string& side, int bill, const Literals& keys) {
  Literals line{{"RecID", std::to_string(next_record_++)},
                {"BillID", std::to_string(bill)},
                {"pdID", Key(4)},
                {"dpID", Key(5)},
                {"OtherID", Chance(50) ? "0" : Decimals(Below(9) - 4, 0)},
                {"数量", QuantityLiteral()},
                {"Qty2", QuantityLiteral()},
                {"除税单价", Decimals(Below(100000), 4)},
                {"除税金额", AmountLiteral()},
                {"税率", "0.13"},
                {"税额", AmountLiteral()},
                {"单价", "1.5"},
                {"金额", AmountLiteral()},
                {"经手人", "'张'"},
                {"ProductDate", Chance(20) ? DateLiteral() : "NULL"}};
  for (const char* key : {"ksID", "pjID"}) line[key] = Chance(85) ? keys.at(key) : Key(5);
  maker.Insert(side + "记录", line);
}

void RandomInventory::AddBills(InventoryMaker& maker, const std::string& side) {
  constexpr std::array<const char*, 6> kKinds{"'入库单'", "'采购单'", "'出库单'", "'销售单'", "'调拨单'", "NULL"};
  const int bills = Below(14);
  for (int bill = 1; bill <= bills; ++bill) {
    const Literals keys{{"ksID", Key(5)}, {"pjID", Key(5)}};
    Literals header{{"BillID", std::to_string(bill)},
                    {"AccPeriod", Chance(97) ? Quoted(PeriodText()) : "NULL"},
                    {"BillDate", DateLiteral()},
                    {"单据类型", kKinds[static_cast<size_t>(Below(kKinds.size()))]},
                    {"单据编号", Chance(95) ? Quoted("N" + Key(6)) : "NULL"},
                    {"类型", "'现购'"},
                    {"说明", Chance(50) ? "'说明'" : "NULL"},
                    {"dpID", Key(5)},
                    {"录入员", "'李'"},
                    {"审核员", Chance(50) ? "'王'" : "NULL"},
                    {"审核日期", DateLiteral()}};
    header.insert(keys.begin(), keys.end());
    maker.Insert(side + "目录", header);
    for (int lines = Below(5); lines > 0; --lines) AddLine(maker, side, Chance(97) ? bill : 99, keys);
  }
}

void RandomInventory::AddBalances(InventoryMaker& maker) {
  int id = 1;
  for (int row = Below(12); row > 0; --row) {
    maker.Insert("仓库余额表", {{"ID", std::to_string(id++)},
                                {"DpID", Key(5)},
                                {"PdID", Key(4)},
                                {"AccPeriod", Quoted(PeriodText())},
                                {"上期库存单价", "1"},
                                {"上期库存数量", QuantityLiteral()},
                                {"上期库存数量2", QuantityLiteral()},
                                {"上期库存金额", AmountLiteral()}});
  }
  for (const auto& [table, owner] :
       {std::pair{"tqSuppBalance", "ksID"}, {"tqCustBalance", "ksID"}, {"tqProjBalance", "pjID"}}) {
    for (int row = Below(12); row > 0; --row) {
      maker.Insert(table, {{"bnPeriod", Quoted(PeriodText())},
                           {owner, Key(5)},
                           {"pdID", Key(4)},
                           {"LastQuantity", QuantityLiteral()},
                           {"LastQuantity2", QuantityLiteral()},
                           {"LastAccount", AmountLiteral()},
                           {"SumRevQuantity", QuantityLiteral()},
                           {"SumRevQuantity2", QuantityLiteral()},
                           {"SumRevAccount", AmountLiteral()},
                           {"SumIssQuantity", QuantityLiteral()},
                           {"SumIssQuantity2", QuantityLiteral()}});
    }
  }
}

void RandomInventory::Write(const std::string& path, Declared declared) {
  declared_ = declared;
  periods_ = 1 + Below(4);
  InventoryMaker maker(path, declared);
  AddMasters(maker);
  AddBills(maker, "入库");
  AddBills(maker, "出库");
  AddBalances(maker);
}

app::JournalOptions RandomInventory::AnyJournal(int type) {
  constexpr std::array<const char*, 5> kClasses{"", "01", "0101", "02", "7"};
  app::JournalOptions options{
      type,       Below(4),   Below(6) - 1, kClasses[static_cast<size_t>(Below(kClasses.size()))],
      Chance(50), Chance(50), Chance(15)};
  if (type == 0) options.dp_code.clear();
  return options;
}

}  // namespace stockbook::end_to_end
