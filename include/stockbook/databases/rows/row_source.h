// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// The rows of an inventory as a host's own objects give them. What is not set is empty in the journal: an empty text,
// the zero date, a number without a value. docs/schema.md tells each field's place in the tables.

// A receipt or an issue.
struct Bill {
  int64_t id = 0;           // its own among receipts, or among issues
  std::string period = {};  // where it is empty, the month of the date, as 2025-03
  base::Date date = {};
  std::string type = {};  // 入库单, 采购单, 出库单, 销售单 or 调拨单, which have pictures, or any other name
  std::string number = {};
  std::string kind = {};
  std::string explain = {};
  std::optional<int64_t> depot = {};
  std::optional<int64_t> partner = {};  // supplier of a receipt, customer of an issue
  std::optional<int64_t> project = {};
  std::string entered_by = {};
  base::Date entered_on = {};
  std::string audited_by = {};
  base::Date audited_on = {};
};

// One line of a bill.
struct Line {
  int64_t id = 0;  // its own among the lines of receipts, or of issues
  int64_t product = 0;
  // Where they are not set, those of the bill.
  std::optional<int64_t> depot = {};
  std::optional<int64_t> partner = {};
  std::optional<int64_t> project = {};
  int64_t origin = 0;                   // of issued stock: the line of a receipt, or minus the id of a depot balance
  std::optional<double> quantity = {};  // positive for receipts and issues; below 0 counts the other way
  std::optional<double> quantity2 = {};
  std::optional<double> price = {};  // without tax, as the amount
  std::optional<base::Money> amount = {};
  std::optional<double> tax_rate = {};  // 0.13 is 13 %
  std::optional<base::Money> tax = {};
  std::optional<double> tax_price = {};
  std::optional<base::Money> tax_amount = {};
  std::string handler = {};        // 经手人, the column Field0
  std::string counterpart = {};    // 交接人, Field1
  std::string packing = {};        // 包装, Field2
  std::string place = {};          // 货位, Field3
  std::string term = {};           // 期限, Field4
  std::string serial_number = {};  // 序列号, Field5
  base::Date produced_on = {};     // 生产日期, Field6
};

// A product of the inventory.
struct Product {
  int64_t id = 0;
  std::string name = {};
  std::string number = {};
  std::string specification = {};  // 规格
  std::string model = {};          // 型号
  std::string unit = {};
  std::string unit2 = {};
  std::string class_code = {};
};

// A depot, where stock lies.
struct Depot {
  int64_t id = 0;
  std::string name = {};
};

// A supplier or a customer.
struct Partner {
  int64_t id = 0;
  std::string name = {};
  std::string class_code = {};  // begins with the codes of the classes above; without one it is in journals of all
};

// A project that movements belong to.
struct Project {
  int64_t id = 0;
  std::string name = {};
  std::string number = {};
  std::string class_code = {};
};

// A class of a tree; the codes of the classes below it begin with its own.
struct Class {
  std::string code = {};
  std::string name = {};
};

// Quantity, second quantity and amount.
struct Sums {
  std::optional<double> quantity = {};
  std::optional<double> quantity2 = {};
  std::optional<base::Money> amount = {};
};

// What one depot, supplier, customer or project had of one product when a period began, and what moved in it.
struct Balance {
  int64_t id = 0;     // of depots alone: its own
  int64_t owner = 0;  // the depot, supplier, customer or project
  int64_t product = 0;
  std::string period = {};  // where it is empty, the earliest of RowSource::Periods
  std::optional<double> price = {};
  Sums carried_forward = {};
  Sums received = {};
  Sums issued = {};
};

// Of what a tree of classes is.
enum class ClassTree { kProducts, kSuppliers, kCustomers, kProjects };
// Whose balances are asked for.
enum class BalanceOwner { kDepots, kSuppliers, kCustomers, kProjects };

// Which rows are asked for; an empty list or text asks for all. A source may give more rows than these, never fewer.
struct STOCKBOOK_API RowFilter {
  std::vector<int64_t> ids = {};  // of lines, or of depot balances
  std::vector<int64_t> products = {};
  std::vector<int64_t> depots = {};
  std::vector<int64_t> partners = {};  // suppliers or customers, as the function says
  std::vector<int64_t> projects = {};
  std::string last_period = {};  // and the ones before it

  // Both tell whether a row of the key or the period is one of them.
  static bool Has(const std::vector<int64_t>& asked, int64_t key);
  bool HasPeriod(std::string_view period) const;
};

// An inventory that a host keeps in objects of its own, for OpenRowSource. Every function gives its rows, in any order,
// by calling `take` once for each; a row may go when the call returns. They run on the thread that executes the
// statement, and never at the same time. What a function throws ends the load with its message; what `take` throws,
// because the load is cancelled, has to pass.
//
// After a load the user is told, by Notify, of bills of the journal that were given and are not listed: those with
// neither period nor date, those of later periods than Periods gives or where it gives none; and, of Columns, of lines
// whose bill is not among the bills. Rows that the filter keeps back in the source are not counted, nor is anything of
// other subjects, nor a line of a product, depot or partner that is not there: it is listed, without its name, but for
// one of a partner or project that is not there in a journal over all of them or over a class.
class STOCKBOOK_API RowSource {
 public:
  // What a function calls for each of its rows; the row may go when it returns.
  template <typename Row>
  using Take = std::function<void(const Row& row)>;
  // The same for a line, with the bill that it is of.
  using TakeLine = std::function<void(const Bill& bill, const Line& line)>;

  virtual ~RowSource() = default;

  // The accounting periods, as texts that sort in the order of time; one may come more than once. Bills of later
  // periods than these are not listed. Unless it is written anew, all that bills and balances are posted in, or this
  // month as long as there are no bills; each load goes three times through all of them then, or four times where a
  // balance has no period.
  virtual void Periods(const Take<std::string>& take);
  // Both give each line with its bill, which is the same in all of its lines: another period, date, number or type
  // under an id that was there ends the load, and the message says so. The filter means the fields of the line, and the
  // period of the bill.
  virtual void Receipts(const RowFilter& filter, const TakeLine& take) = 0;
  virtual void Issues(const RowFilter& filter, const TakeLine& take) = 0;
  // These are filtered by their own ids, by the list of their kind; without an override there are none.
  virtual void Products(const RowFilter& filter, const Take<Product>& take);
  virtual void Depots(const RowFilter& filter, const Take<Depot>& take);
  virtual void Suppliers(const RowFilter& filter, const Take<Partner>& take);
  virtual void Customers(const RowFilter& filter, const Take<Partner>& take);
  virtual void Projects(const RowFilter& filter, const Take<Project>& take);
  // All classes of a tree; without an override there are none.
  virtual void Classes(ClassTree tree, const Take<Class>& take);
  // The opening row shows those of the earliest period; without any, as without an override, it shows zeros.
  virtual void Balances(BalanceOwner owner, const RowFilter& filter, const Take<Balance>& take);

  // A whole table at once, which is faster where there are columns already: under the names of its fields, of equal
  // length; fields that are left out are empty, but keys and what the statement finds rows by must be there. Whoever
  // keeps bills of later periods back keeps back their lines, too. Asked before the functions above; nothing sends it
  // there.
  virtual std::optional<std::vector<platform::Field>> Columns(std::string_view table, const RowFilter& filter);

  // Both enclose what has to fit together, as of one moment: a load is one. EndMoment may not throw.
  virtual void BeginMoment() {}
  virtual void EndMoment() {}
};

// A connection to the objects, for a control or for qt::ThreadedConnection. For every statement it asks the source for
// what the statement reads, and runs it over that in memory: nothing is kept from one statement to the next, so that a
// load always shows what the objects say. Cancel and RowsRead work as on a database. `settings` are those of a
// connection string, as "Timeout=0" (in seconds, 60 unless given, 0 for no end) or "Dialect=SQL". Throws
// platform::Error for settings that mean nothing, and std::invalid_argument without a source.
STOCKBOOK_API std::unique_ptr<platform::Connection> OpenRowSource(std::shared_ptr<RowSource> source,
                                                                  std::string_view settings = {});

}  // namespace stockbook::databases
