// SPDX-License-Identifier: MIT
#include "contract/plain_inventory.h"

#include <sqlite3.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <type_traits>

#include "databases/inventory/inventory_schema.h"
#include "databases/sqlite/embedded_connection.h"

namespace stockbook::testing {
namespace {

using databases::RowFilter;

// The fields of the current record, one after the other.
class NextField {
 public:
  explicit NextField(const platform::Recordset& rows) : rows_(rows) {}
  std::string Text() { return Value().Text(); }
  int64_t Key() { return OptionalKey().value_or(0); }
  std::optional<int64_t> OptionalKey() { return Value().AsInteger(); }
  std::optional<double> Number() { return Value().Number(); }
  std::optional<base::Money> Money() { return Value().AsMoney(); }
  base::Date Date() { return Value().AsDate().value_or(base::Date()); }
  databases::Sums Sums() {
    databases::Sums sums;
    sums.quantity = Number();
    sums.quantity2 = Number();
    sums.amount = Money();
    return sums;
  }

 private:
  base::Value Value() { return rows_.FieldValue(index_++); }
  const platform::Recordset& rows_;
  size_t index_ = 0;
};

databases::Bill BillOf(NextField& next) {
  databases::Bill bill;
  bill.id = next.Key();
  bill.period = next.Text();
  bill.date = next.Date();
  bill.type = next.Text();
  bill.number = next.Text();
  bill.kind = next.Text();
  bill.explain = next.Text();
  bill.depot = next.OptionalKey();
  bill.partner = next.OptionalKey();
  bill.project = next.OptionalKey();
  bill.entered_by = next.Text();
  bill.entered_on = next.Date();
  bill.audited_by = next.Text();
  bill.audited_on = next.Date();
  return bill;
}

databases::Line LineOf(NextField& next) {
  databases::Line line;
  line.id = next.Key();
  line.product = next.Key();
  line.depot = next.OptionalKey();
  line.partner = next.OptionalKey();
  line.project = next.OptionalKey();
  line.origin = next.Key();
  line.quantity = next.Number();
  line.quantity2 = next.Number();
  line.price = next.Number();
  line.amount = next.Money();
  line.tax_rate = next.Number();
  line.tax = next.Money();
  line.tax_price = next.Number();
  line.tax_amount = next.Money();
  line.handler = next.Text();
  line.counterpart = next.Text();
  line.packing = next.Text();
  line.place = next.Text();
  line.term = next.Text();
  line.serial_number = next.Text();
  line.produced_on = next.Date();
  return line;
}

class InventoryReader {
 public:
  explicit InventoryReader(const std::string& path) : file_("Provider=Stockbook.Embedded;Data Source=" + path) {}

  PlainInventory Read() {
    PlainInventory all;
    all.periods = Rows("AccPeriod", "tqAccPeriod", [](NextField& next) { return next.Text(); });
    all.receipts = Movements("入库");
    all.issues = Movements("出库");
    all.products = Products();
    all.depots = Rows("dpID, 仓库名称", "仓库设置", [](NextField& next) {
      databases::Depot depot;
      depot.id = next.Key();
      depot.name = next.Text();
      return depot;
    });
    all.suppliers = Partners("厂商资料");
    all.customers = Partners("客户资料");
    all.projects = Projects();
    all.classes = {Classes("商品分类"), Classes("厂商分类"), Classes("客户分类"), Classes("项目分类")};
    all.balances = {DepotBalances(), OwnerBalances("tqSuppBalance", "ksID"), OwnerBalances("tqCustBalance", "ksID"),
                    OwnerBalances("tqProjBalance", "pjID")};
    return all;
  }

 private:
  template <typename ReadRow>
  std::vector<std::invoke_result_t<ReadRow, NextField&>> Rows(const std::string& columns, const std::string& from,
                                                              ReadRow read) {
    std::vector<std::invoke_result_t<ReadRow, NextField&>> rows;
    platform::Recordset records = file_.Execute("SELECT " + columns + " FROM " + from);
    for (; !records.AtEnd(); records.MoveNext()) {
      NextField next(records);
      rows.push_back(read(next));
    }
    return rows;
  }

  std::vector<PlainInventory::Movement> Movements(const std::string& side) {
    const std::string columns =
        "d.BillID, d.AccPeriod, d.BillDate, d.单据类型, d.单据编号, d.类型, d.说明, d.dpID, d.ksID, d.pjID, d.录入员, "
        "d.录入日期, d.审核员, d.审核日期, r.RecID, r.pdID, r.dpID, r.ksID, r.pjID, r.OtherID, r.数量, r.Qty2, "
        "r.除税单价, r.除税金额, r.税率, r.税额, r.单价, r.金额, r.经手人, r.交接人, r.包装, r.货位, r.期限, "
        "r.SerialNo, r.ProductDate";
    return Rows(columns, side + "记录 AS r INNER JOIN " + side + "目录 AS d ON r.BillID = d.BillID",
                [](NextField& next) {
                  databases::Bill bill = BillOf(next);
                  return PlainInventory::Movement(std::move(bill), LineOf(next));
                });
  }

  std::vector<databases::Product> Products() {
    return Rows("pdID, 商品名称, 商品编号, 规格, 型号, 计量单位, 计量2, ClassCode", "商品设置", [](NextField& next) {
      databases::Product product;
      product.id = next.Key();
      product.name = next.Text();
      product.number = next.Text();
      product.specification = next.Text();
      product.model = next.Text();
      product.unit = next.Text();
      product.unit2 = next.Text();
      product.class_code = next.Text();
      return product;
    });
  }

  std::vector<databases::Partner> Partners(const std::string& table) {
    return Rows("KSID, 企业名称, ClassCode", table, [](NextField& next) {
      databases::Partner partner;
      partner.id = next.Key();
      partner.name = next.Text();
      partner.class_code = next.Text();
      return partner;
    });
  }

  std::vector<databases::Project> Projects() {
    return Rows("项目ID, 项目名称, 项目编号, ClassCode", "项目设置", [](NextField& next) {
      databases::Project project;
      project.id = next.Key();
      project.name = next.Text();
      project.number = next.Text();
      project.class_code = next.Text();
      return project;
    });
  }

  std::vector<databases::Class> Classes(const std::string& table) {
    return Rows("ClassCode, ClassName", table, [](NextField& next) {
      databases::Class row;
      row.code = next.Text();
      row.name = next.Text();
      return row;
    });
  }

  std::vector<databases::Balance> DepotBalances() {
    return BalancesOf(
        "ID, DpID, PdID, AccPeriod, 上期库存单价, 上期库存数量, 上期库存数量2, 上期库存金额, TotalRevQuantity, "
        "TotalRevQuantity2, TotalRevAccount, TotalIssQuantity, TotalIssQuantity2, TotalIssAccount",
        "仓库余额表");
  }

  std::vector<databases::Balance> OwnerBalances(const std::string& table, const std::string& owner) {
    return BalancesOf("0, " + owner +
                          ", pdID, bnPeriod, LastPrice, LastQuantity, LastQuantity2, LastAccount, SumRevQuantity, "
                          "SumRevQuantity2, SumRevAccount, SumIssQuantity, SumIssQuantity2, SumIssAccount",
                      table);
  }

  std::vector<databases::Balance> BalancesOf(const std::string& columns, const std::string& table) {
    return Rows(columns, table, [](NextField& next) {
      databases::Balance balance;
      balance.id = next.Key();
      balance.owner = next.Key();
      balance.product = next.Key();
      balance.period = next.Text();
      balance.price = next.Number();
      balance.carried_forward = next.Sums();
      balance.received = next.Sums();
      balance.issued = next.Sums();
      return balance;
    });
  }

  databases::EmbeddedConnection file_;
};

class Writer {
 public:
  explicit Writer(const std::string& path) {
    Check(sqlite3_open(path.c_str(), &handle_), path);
    Run("PRAGMA synchronous=OFF");
    Run("BEGIN");
  }
  ~Writer() { sqlite3_close(handle_); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  void Run(const std::string& sql) const { Check(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr), sql); }

 private:
  void Check(int code, const std::string& what) const {
    if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(handle_) + (": " + what));
  }
  sqlite3* handle_ = nullptr;
};

bool HasKey(const std::vector<int64_t>& asked, const std::optional<int64_t>& key) {
  return asked.empty() || (key && RowFilter::Has(asked, *key));
}

std::optional<int64_t> KeyOf(const std::optional<int64_t>& line, const std::optional<int64_t>& bill) {
  return line ? line : bill;
}

bool IsAskedLine(const RowFilter& filter, const databases::Bill& bill, const databases::Line& line) {
  return RowFilter::Has(filter.ids, line.id) && RowFilter::Has(filter.products, line.product) &&
         HasKey(filter.depots, KeyOf(line.depot, bill.depot)) &&
         HasKey(filter.partners, KeyOf(line.partner, bill.partner)) &&
         HasKey(filter.projects, KeyOf(line.project, bill.project)) && filter.HasPeriod(bill.period);
}

}  // namespace

PlainInventory ReadPlainInventory(const std::string& path) { return InventoryReader(path).Read(); }

void LetItSayWhatObjectsSay(const std::string& path) {
  const Writer writer(path);
  const auto run = [&](const std::string& sql) { writer.Run(sql); };
  for (const std::string side : {"入库", "出库"}) {
    const std::string bills = side + "目录";
    const std::string lines = side + "记录";
    run("UPDATE " + bills +
        " SET 年份=CAST(substr(BillDate,1,4) AS INTEGER), 月份=CAST(substr(BillDate,6,2) AS INTEGER), "
        "日子=CAST(substr(BillDate,9,2) AS INTEGER), AccPeriod=CASE WHEN ifnull(AccPeriod,'')='' THEN "
        "substr(BillDate,1,7) ELSE AccPeriod END");
    run("UPDATE " + lines + " SET OtherID=ifnull(OtherID,0)");
    for (const std::string key : {"dpID", "ksID", "pjID"}) {
      run("UPDATE " + lines + " SET " + key + "=(SELECT d." + key + " FROM " + bills + " AS d WHERE d.BillID=" + lines +
          ".BillID) WHERE " + key + " IS NULL");
    }
  }
  run("UPDATE 仓库余额表 SET 年份=CAST(substr(AccPeriod,1,4) AS INTEGER), 月份=CAST(substr(AccPeriod,6,2) AS INTEGER)");
  for (size_t index = 0; index < databases::kTableCount; ++index) {
    const auto& table = databases::InventoryTableOf(static_cast<databases::TableName>(index));
    for (const databases::InventoryColumn& column : table.columns) {
      const std::string name(column.name);
      const bool is_class = name == "ClassCode";
      if (column.type != "TEXT") continue;
      run("UPDATE " + std::string(table.name) + " SET " + name + "=" + (is_class ? "''" : "NULL") + " WHERE " + name +
          (is_class ? " IS NULL" : "=''"));
    }
  }
  run("COMMIT");
}

template <typename Row, typename IsAsked>
void PlainSource::Give(const std::vector<Row>& rows, const Take<Row>& take, IsAsked is_asked) {
  for (const Row& row : rows) {
    if (gives_ == Gives::kWhatIsAsked && !is_asked(row)) continue;
    ++given_;
    take(row);
  }
}

void PlainSource::GiveLines(const std::vector<PlainInventory::Movement>& movements, const RowFilter& filter,
                            const TakeLine& take) {
  for (const auto& [bill, line] : movements) {
    if (gives_ == Gives::kWhatIsAsked && !IsAskedLine(filter, bill, line)) continue;
    ++given_;
    take(bill, line);
  }
}

void PlainSource::Periods(const Take<std::string>& take) {
  Give(inventory_->periods, take, [](const std::string&) { return true; });
}

void PlainSource::Receipts(const RowFilter& filter, const TakeLine& take) {
  GiveLines(inventory_->receipts, filter, take);
}

void PlainSource::Issues(const RowFilter& filter, const TakeLine& take) { GiveLines(inventory_->issues, filter, take); }

void PlainSource::Products(const RowFilter& filter, const Take<databases::Product>& take) {
  Give(inventory_->products, take,
       [&](const databases::Product& row) { return RowFilter::Has(filter.products, row.id); });
}

void PlainSource::Depots(const RowFilter& filter, const Take<databases::Depot>& take) {
  Give(inventory_->depots, take, [&](const databases::Depot& row) { return RowFilter::Has(filter.depots, row.id); });
}

void PlainSource::Suppliers(const RowFilter& filter, const Take<databases::Partner>& take) {
  Give(inventory_->suppliers, take,
       [&](const databases::Partner& row) { return RowFilter::Has(filter.partners, row.id); });
}

void PlainSource::Customers(const RowFilter& filter, const Take<databases::Partner>& take) {
  Give(inventory_->customers, take,
       [&](const databases::Partner& row) { return RowFilter::Has(filter.partners, row.id); });
}

void PlainSource::Projects(const RowFilter& filter, const Take<databases::Project>& take) {
  Give(inventory_->projects, take,
       [&](const databases::Project& row) { return RowFilter::Has(filter.projects, row.id); });
}

void PlainSource::Classes(databases::ClassTree tree, const Take<databases::Class>& take) {
  Give(inventory_->classes[static_cast<size_t>(tree)], take, [](const databases::Class&) { return true; });
}

void PlainSource::Balances(databases::BalanceOwner owner, const RowFilter& filter,
                           const Take<databases::Balance>& take) {
  const auto& owners = owner == databases::BalanceOwner::kDepots     ? filter.depots
                       : owner == databases::BalanceOwner::kProjects ? filter.projects
                                                                     : filter.partners;
  Give(inventory_->balances[static_cast<size_t>(owner)], take, [&](const databases::Balance& row) {
    return RowFilter::Has(filter.ids, row.id) && RowFilter::Has(owners, row.owner) &&
           RowFilter::Has(filter.products, row.product) && filter.HasPeriod(row.period);
  });
}

PlainInventory Shuffled(PlainInventory inventory, unsigned seed) {
  std::mt19937 random(seed);
  const auto shuffle = [&](auto& rows) { std::shuffle(rows.begin(), rows.end(), random); };
  shuffle(inventory.periods);
  shuffle(inventory.receipts);
  shuffle(inventory.issues);
  shuffle(inventory.products);
  shuffle(inventory.depots);
  shuffle(inventory.suppliers);
  shuffle(inventory.customers);
  shuffle(inventory.projects);
  for (auto& rows : inventory.classes) shuffle(rows);
  for (auto& rows : inventory.balances) shuffle(rows);
  return inventory;
}

}  // namespace stockbook::testing
