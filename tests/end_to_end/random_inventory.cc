// SPDX-License-Identifier: MIT
#include "end_to_end/random_inventory.h"

#include <array>

#include "end_to_end/hostile_literals.h"

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

std::string RandomInventory::OneOf(std::span<const char* const> literals) {
  return literals[static_cast<size_t>(Below(static_cast<int>(literals.size())))];
}

bool RandomInventory::MayRepeat() const {
  return declared_ == Declared::kWithoutKeys || declared_ == Declared::kNothing || declared_ == Declared::kTextKeys;
}

std::string RandomInventory::KeyLiteral(int end) {
  return IsHostile(hostile_share_ / 3) ? OneOf(HostileKeys()) : Key(end);
}

std::string RandomInventory::OwnKeyLiteral(int key) {
  const std::string number = std::to_string(key);
  if (values_ == Values::kUsual || (declared_ != Declared::kTextMasters && !MayRepeat())) return number;
  if (MayRepeat() && IsHostile(hostile_share_ / 3)) return OneOf(HostileKeys());
  if (declared_ != Declared::kTextMasters && !Chance(hostile_share_)) return number;
  const std::array<std::string, 6> spellings{"00" + number, number,       " " + number,
                                             number + ".0", "+" + number, number + "e0"};
  return Quoted(spellings[Chance(50) ? 0 : static_cast<size_t>(Below(spellings.size()))]);
}

std::string RandomInventory::TextLiteral(const std::string& usual) {
  return IsHostile(hostile_share_) ? OneOf(HostileTexts()) : usual;
}

std::string RandomInventory::QuantityLiteral() {
  if (IsHostile(hostile_share_)) return OneOf(Chance(endless_share_) ? EndlessQuantities() : HostileQuantities());
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
  if (IsHostile(hostile_share_)) return OneOf(Chance(beyond_share_) ? AmountsBeyond() : HostileAmounts());
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

std::string RandomInventory::PeriodLiteral() {
  return IsHostile(hostile_share_ / 3) ? OneOf(HostilePeriods()) : Quoted(PeriodText());
}

std::string RandomInventory::CodeLiteral() {
  constexpr const char* kHostileCodes[] = {"'a1'", "'A1'", "'é1'", "'0%'", "1", "'01 '", "'[0]1'", "'_'", "''"};
  return IsHostile(hostile_share_) ? OneOf(kHostileCodes) : OneOf(kCodes);
}

std::string RandomInventory::DateLiteral() {
  if (Chance(3)) return "NULL";
  if (IsHostile(hostile_share_)) return OneOf(HostileDates());
  std::string date = "2025-0" + std::to_string(1 + Below(periods_)) + "-" + std::to_string(10 + Below(4));
  if (Chance(10)) date += " 0" + Key(10) + ":30:00";
  return Quoted(date);
}

void RandomInventory::AddMasters(InventoryMaker& maker) {
  // Keys from 1 on; gaps are deleted records.
  for (int key = 1; key <= 4; ++key) {
    const std::string number = std::to_string(key);
    const auto code = [&] { return CodeLiteral(); };
    const auto own = [&] { return OwnKeyLiteral(key); };
    const auto name = [&](const char* word) { return TextLiteral(Quoted(word + number)); };
    if (Chance(80)) InsertOnceOrTwice(maker, "仓库设置", {{"dpID", own()}, {"仓库名称", name("库")}});
    if (Chance(80))
      InsertOnceOrTwice(maker, "厂商资料", {{"KSID", own()}, {"企业名称", name("供方")}, {"ClassCode", code()}});
    if (Chance(80))
      InsertOnceOrTwice(maker, "客户资料", {{"KSID", own()}, {"企业名称", name("客户")}, {"ClassCode", code()}});
    if (Chance(80))
      InsertOnceOrTwice(
          maker, "项目设置",
          {{"项目ID", own()}, {"项目名称", name("项目")}, {"项目编号", name("X")}, {"ClassCode", code()}});
    if (Chance(80))
      InsertOnceOrTwice(maker, "商品设置",
                        {{"pdID", own()},
                         {"商品名称", name("品")},
                         {"规格", Chance(50) ? "'M8'" : "NULL"},
                         {"计量单位", TextLiteral("'个'")}});
  }
}

void RandomInventory::AddPeriods(InventoryMaker& maker) {
  for (int period = 1; period <= periods_; ++period) {
    if (Chance(90)) maker.Insert("tqAccPeriod", {{"AccPeriod", Quoted("2025-0" + std::to_string(period))}});
  }
  if (IsHostile(hostile_share_)) maker.Insert("tqAccPeriod", {{"AccPeriod", OneOf(HostilePeriods())}});
}

void RandomInventory::AddDistance(InventoryMaker& maker) {
  for (const auto& [table, key] : {std::pair{"仓库设置", "dpID"},
                                   {"厂商资料", "KSID"},
                                   {"客户资料", "KSID"},
                                   {"项目设置", "项目ID"},
                                   {"商品设置", "pdID"},
                                   {"入库目录", "BillID"},
                                   {"出库目录", "BillID"}}) {
    if (Chance(30)) maker.Insert(table, {{key, "1000"}, {"rowid", "1000"}});
    if (Chance(20)) maker.Run(std::string("CREATE INDEX ") + table + "_i ON " + table + "(" + key + ")");
  }
  for (const std::string table : {"入库记录", "出库记录"}) {
    for (const char* key : {"BillID", "pdID", "dpID", "ksID", "pjID"})
      if (Chance(20)) maker.Run("CREATE INDEX " + table + key + " ON " + table + "(" + key + ")");
  }
}

void RandomInventory::InsertOnceOrTwice(InventoryMaker& maker, const std::string& table, const Literals& values) {
  maker.Insert(table, values);
  if (MayRepeat() && IsHostile(hostile_share_ / 3)) maker.Insert(table, values);
}

void RandomInventory::AddLine(InventoryMaker& maker, const std::string& side, int bill, const Literals& keys) {
  Literals line{{"RecID", std::to_string(next_record_++)},
                {"BillID", IsHostile(hostile_share_ / 6) ? OneOf(HostileKeys()) : std::to_string(bill)},
                {"pdID", KeyLiteral(4)},
                {"dpID", KeyLiteral(5)},
                {"OtherID", IsHostile(hostile_share_) ? OneOf(HostileKeys())
                            : Chance(50)              ? "0"
                                                      : Decimals(Below(9) - 4, 0)},
                {"数量", QuantityLiteral()},
                {"Qty2", QuantityLiteral()},
                {"除税单价", IsHostile(hostile_share_) ? QuantityLiteral() : Decimals(Below(100000), 4)},
                {"除税金额", AmountLiteral()},
                {"税率", "0.13"},
                {"税额", AmountLiteral()},
                {"单价", "1.5"},
                {"金额", AmountLiteral()},
                {"经手人", TextLiteral("'张'")},
                {"ProductDate", Chance(20) ? DateLiteral() : "NULL"}};
  for (const char* key : {"ksID", "pjID"}) line[key] = Chance(85) ? keys.at(key) : KeyLiteral(5);
  InsertOnceOrTwice(maker, side + "记录", line);
}

void RandomInventory::AddBills(InventoryMaker& maker, const std::string& side) {
  constexpr std::array<const char*, 6> kKinds{"'入库单'", "'采购单'", "'出库单'", "'销售单'", "'调拨单'", "NULL"};
  const int bills = Below(14);
  for (int bill = 1; bill <= bills; ++bill) {
    const Literals keys{{"ksID", KeyLiteral(5)}, {"pjID", KeyLiteral(5)}};
    Literals header{{"BillID", OwnKeyLiteral(bill)},
                    {"AccPeriod", Chance(97) ? PeriodLiteral() : "NULL"},
                    {"BillDate", DateLiteral()},
                    {"单据类型", TextLiteral(kKinds[static_cast<size_t>(Below(kKinds.size()))])},
                    {"单据编号", Chance(95) ? TextLiteral(Quoted("N" + Key(6))) : "NULL"},
                    {"类型", TextLiteral("'现购'")},
                    {"说明", Chance(50) ? TextLiteral("'说明'") : "NULL"},
                    {"dpID", Key(5)},
                    {"录入员", "'李'"},
                    {"审核员", Chance(50) ? "'王'" : "NULL"},
                    {"审核日期", DateLiteral()}};
    header.insert(keys.begin(), keys.end());
    InsertOnceOrTwice(maker, side + "目录", header);
    for (int lines = Below(5); lines > 0; --lines) AddLine(maker, side, Chance(97) ? bill : 99, keys);
  }
}

void RandomInventory::AddBalances(InventoryMaker& maker) {
  int id = 1;
  for (int row = Below(12); row > 0; --row) {
    maker.Insert("仓库余额表", {{"ID", std::to_string(id++)},
                                {"DpID", KeyLiteral(5)},
                                {"PdID", KeyLiteral(4)},
                                {"AccPeriod", PeriodLiteral()},
                                {"上期库存单价", QuantityLiteral()},
                                {"上期库存数量", QuantityLiteral()},
                                {"上期库存数量2", QuantityLiteral()},
                                {"上期库存金额", AmountLiteral()},
                                {"TotalRevAccount", AmountLiteral()},
                                {"TotalIssQuantity", QuantityLiteral()}});
  }
  for (const auto& [table, owner] :
       {std::pair{"tqSuppBalance", "ksID"}, {"tqCustBalance", "ksID"}, {"tqProjBalance", "pjID"}}) {
    for (int row = Below(12); row > 0; --row) {
      maker.Insert(table, {{"bnPeriod", PeriodLiteral()},
                           {owner, KeyLiteral(5)},
                           {"pdID", KeyLiteral(4)},
                           {"LastPrice", QuantityLiteral()},
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
  if (values_ == Values::kHostile) {
    constexpr int kShares[] = {2, 6, 15, 30};
    hostile_share_ = kShares[Below(4)];
    endless_share_ = Chance(25) ? 20 : 0;
    beyond_share_ = Chance(25) ? 20 : 0;
  }
  InventoryMaker maker(path, declared);
  AddMasters(maker);
  AddPeriods(maker);
  if (values_ == Values::kHostile) AddDistance(maker);
  AddBills(maker, "入库");
  AddBills(maker, "出库");
  AddBalances(maker);
}

app::JournalOptions RandomInventory::AnyJournal(int type) {
  constexpr const char* kClasses[] = {"", "01", "0101", "02", "7"};
  constexpr const char* kHostileClasses[] = {"a", "A1", "é", "0_", "%", "0%", "0", "01 "};
  app::JournalOptions options{
      type,       Below(4),   Below(6) - 1, IsHostile(20) ? OneOf(kHostileClasses) : OneOf(kClasses),
      Chance(50), Chance(50), Chance(15)};
  if (type == 0) options.dp_code.clear();
  return options;
}

}  // namespace stockbook::end_to_end
