// SPDX-License-Identifier: MIT
// The last cumulative values of the partner journals and the last stocks of the project journals, against sums that
// plain SQL makes of the tables.
#include <sqlite3.h>

#include <cmath>
#include <sstream>

#include "end_to_end/fixture.h"
#include "stockbook/base/money.h"
#include "stockbook/command/import_command.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::end_to_end {
namespace {

// Quantity, second quantity and amount; the amount in 1/10,000.
struct Totals {
  double quantity = 0;
  double quantity2 = 0;
  int64_t amount = 0;
};

class TrueTotals : public EndToEnd {
 protected:
  ~TrueTotals() override { sqlite3_close(database_); }

  void Open(const std::string& path) {
    path_ = path;
    ASSERT_EQ(sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  }
  std::vector<std::vector<double>> Numbers(const std::string& sql) const {
    std::vector<std::vector<double>> rows;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database_);
    while (sqlite3_step(statement) == SQLITE_ROW) {
      rows.emplace_back();
      for (int column = 0; column < sqlite3_column_count(statement); ++column)
        rows.back().push_back(sqlite3_column_double(statement, column));
    }
    sqlite3_finalize(statement);
    return rows;
  }
  Totals Sums(const std::string& table, const std::string& where) const {
    const auto sums =
        Numbers("SELECT total(数量), total(Qty2), coalesce(sum(CAST(round(除税金额 * 10000) AS INTEGER)), 0) FROM " +
                table + " WHERE " + where);
    return {sums[0][0], sums[0][1], std::llround(sums[0][2])};
  }
  // The values of the last row that has any.
  Totals LastShown(const app::JournalOptions& options) {
    const app::LoadReport report = Load(path_, options);
    EXPECT_TRUE(report.loaded) << app::LoadError(report);
    const sheet::GridSheet& sheet = desk().sheet();
    for (int row = sheet.Rows() - 1; row >= sheet.FixedRows(); --row) {
      if (sheet.IsSubtotal(row)) continue;
      const auto text = [&](const char* key) { return sheet.TextMatrix(row, sheet.ColIndex(key)); };
      const auto amount = base::Money::Parse(text("StoAcc"));
      EXPECT_TRUE(amount) << text("StoAcc");
      return {std::stod(text("StoQty")), std::stod(text("StoQty2")), amount ? amount->units() : 0};
    }
    return {};
  }
  void ExpectTotals(const app::JournalOptions& options, const Totals& expected) {
    const Totals shown = LastShown(options);
    const std::string what = "journal " + std::to_string(options.journal_type) + " of " +
                             std::to_string(options.key_id) + "/" + std::to_string(options.dp_id);
    EXPECT_NEAR(shown.quantity, expected.quantity, 1e-6) << what;
    EXPECT_NEAR(shown.quantity2, expected.quantity2, 1e-6) << what;
    EXPECT_EQ(shown.amount, expected.amount) << what;
  }
  size_t CheckPartners(int type, const std::string& table) {
    const auto partners = Numbers("SELECT DISTINCT ksID FROM " + table + " WHERE ksID > 0");
    for (const auto& partner : partners) {
      const std::string key = std::to_string(std::llround(partner[0]));
      ExpectTotals({type, 0, std::stoi(key), "", true, false, false}, Sums(table, "ksID = " + key));
    }
    return partners.size();
  }
  // Opening stock of the initial period, and receipts less issues.
  void CheckProject(int64_t project, int64_t product) {
    const std::string where = "pjID = " + std::to_string(project) + " AND pdID = " + std::to_string(product);
    const auto opening = Numbers(
        "SELECT total(LastQuantity), total(LastQuantity2), coalesce(sum(CAST(round(LastAccount * 10000) AS INTEGER)), "
        "0) FROM tqProjBalance WHERE bnPeriod = (SELECT min(AccPeriod) FROM tqAccPeriod) AND " +
        where);
    const Totals received = Sums("入库记录", where);
    const Totals issued = Sums("出库记录", where);
    ExpectTotals(
        {3, static_cast<int32_t>(product), static_cast<int32_t>(project), "", true, false, false},
        {opening[0][0] + received.quantity - issued.quantity, opening[0][1] + received.quantity2 - issued.quantity2,
         std::llround(opening[0][2]) + received.amount - issued.amount});
  }
  size_t CheckProjects() {
    const auto pairs =
        Numbers("SELECT pjID, pdID FROM 入库记录 WHERE pjID > 0 UNION SELECT pjID, pdID FROM 出库记录 WHERE pjID > 0");
    for (const auto& pair : pairs) CheckProject(std::llround(pair[0]), std::llround(pair[1]));
    return pairs.size();
  }

 private:
  std::string path_;
  sqlite3* database_ = nullptr;
};

TEST_F(TrueTotals, AreShownForEveryPartnerAndProjectOfASample) {
  app::WriteSampleInventory(PathOf("sample.db"), {});
  Open(PathOf("sample.db"));
  EXPECT_GT(CheckPartners(1, "入库记录"), 10u);
  EXPECT_GT(CheckPartners(2, "出库记录"), 10u);
  EXPECT_GT(CheckProjects(), 50u);
}

TEST_F(TrueTotals, AreShownForEveryPartnerAndProjectOfAnImport) {
  app::SampleRandom random(5);
  std::string table = "p,d,q,u,k,j\n";
  for (int line = 0; line < 400; ++line) {
    const std::string month = std::to_string(random.Between(1, 9));
    table += "P" + std::to_string(random.Below(9)) + ",2026-0" + month + "-1" + std::to_string(random.Below(9)) + "," +
             std::to_string(random.Between(-20, 50)) + ".5,1.25,K" + std::to_string(random.Below(7)) + ",J" +
             std::to_string(random.Below(4)) + "\n";
  }
  std::istringstream in(table);
  std::ostringstream out;
  std::ostringstream err;
  app::Terminal terminal{in, out, err};
  ASSERT_EQ(app::ImportCommand().run(
                {"-", "-o", PathOf("import.db"), "--map", "product=p,date=d,quantity=q,price=u,partner=k,project=j"},
                terminal),
            0)
      << err.str();
  Open(PathOf("import.db"));
  EXPECT_EQ(CheckPartners(1, "入库记录"), 7u);
  EXPECT_EQ(CheckPartners(2, "出库记录"), 7u);
  EXPECT_GT(CheckProjects(), 20u);
}

}  // namespace
}  // namespace stockbook::end_to_end
