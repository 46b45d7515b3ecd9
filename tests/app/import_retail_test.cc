// SPDX-License-Identifier: MIT
// The real invoice lines kept beside the sources, if they are there: all must be imported,
// and the sums must agree.
#include <lzma.h>

#include <array>
#include <cstdint>
#include <fstream>
#include <map>
#include <set>

#include "app/inventory_balance_check.h"
#include "app/inventory_fixture.h"
#include "stockbook/base/money.h"

namespace stockbook::app {
namespace {

const std::string kTable = std::string(STOCKBOOK_SOURCE_DIR) + "/../shared/data/online-retail-2010-12_2011-06.csv.xz";

std::string UnpackXz(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string packed{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  std::string text(64 << 20, '\0');
  uint64_t memory = UINT64_MAX;
  size_t read = 0;
  size_t written = 0;
  EXPECT_EQ(lzma_stream_buffer_decode(&memory, 0, nullptr, reinterpret_cast<const uint8_t*>(packed.data()), &read,
                                      packed.size(), reinterpret_cast<uint8_t*>(text.data()), &written, text.size()),
            LZMA_OK);
  text.resize(written);
  return text;
}

// Splits the whole text in one pass: a second implementation of the format, independent of the tested one.
std::vector<std::vector<std::string>> SplitTable(const std::string& text) {
  std::vector<std::vector<std::string>> records(1, std::vector<std::string>(1));
  bool quoted = false;
  for (const char c : text) {
    if (c == '"') {
      quoted = !quoted;
    } else if (quoted || (c != ',' && c != '\n' && c != '\r')) {
      records.back().back() += c;
    } else if (c == ',') {
      records.back().emplace_back();
    } else if (c == '\n') {
      records.emplace_back(1);
    }
  }
  records.pop_back();
  records.erase(records.begin());
  return records;
}

// The decimal as a count of 1/1000, the table's finest price.
int64_t Thousandths(const std::string& text) {
  const size_t point = std::min(text.find('.'), text.size());
  std::string digits = text.substr(0, point);
  std::string fraction = point < text.size() ? text.substr(point + 1) : "";
  EXPECT_LE(fraction.size(), 3u) << text;
  fraction.resize(3, '0');
  return std::stoll(digits + fraction);
}

// Lines, quantity and amount in 1/1000 of one direction in one month.
using Sums = std::array<int64_t, 3>;

std::map<std::string, Sums> ExpectedSums(const std::vector<std::vector<std::string>>& records) {
  std::map<std::string, Sums> sums;
  for (const auto& record : records) {
    const int64_t quantity = std::stoll(record[3]);
    Sums& month = sums[record[4].substr(0, 7) + (quantity < 0 ? " receipts" : " issues")];
    month[0] += 1;
    month[1] += std::abs(quantity);
    month[2] += std::abs(quantity) * Thousandths(record[5]);
  }
  return sums;
}

std::map<std::string, Sums> ImportedSums(const OpenedInventory& inventory) {
  std::map<std::string, Sums> sums;
  for (const auto& [kind, direction] : {std::pair{"入库", " receipts"}, {"出库", " issues"}}) {
    const std::string name(kind);
    for (const auto& row :
         inventory.Rows("SELECT d.AccPeriod, r.数量, r.除税金额, r.金额, substr(d.BillDate, 1, 7) FROM " + name +
                        "记录 r JOIN " + name + "目录 d ON r.BillID = d.BillID")) {
      EXPECT_EQ(row[0], row[4]);
      EXPECT_EQ(row[2], row[3]);
      Sums& month = sums[row[0] + direction];
      month[0] += 1;
      month[1] += std::stoll(row[1]);
      month[2] += base::Money::Parse(row[2])->units() / 10;
    }
  }
  return sums;
}

class ImportRetailTest : public InventoryTest {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kTable)) GTEST_SKIP() << "The table of invoice lines is not here: " << kTable;
  }
};

TEST_F(ImportRetailTest, BringsInEveryLineAndTheirSums) {
  const std::string path = PathOf("retail.db");
  const Outcome outcome = RunArguments({"import", kTable, "-o", path, "--map",
                                        "product=StockCode,name=Description,bill=InvoiceNo,date=InvoiceDate,quantity="
                                        "Quantity,price=UnitPrice,partner=CustomerID,project=Country",
                                        "--direction", "issue"});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_TRUE(outcome.out.starts_with("Read 245903 lines: imported 245903 (")) << outcome.out;
  const auto records = SplitTable(UnpackXz(kTable));
  ASSERT_EQ(records.size(), 245903u);
  const OpenedInventory inventory(path);
  const auto expected = ExpectedSums(records);
  EXPECT_EQ(expected.size(), 14u);
  EXPECT_EQ(ImportedSums(inventory), expected);
  std::set<std::string> products;
  std::set<std::string> partners;
  std::set<std::string> projects;
  for (const auto& record : records) {
    products.insert(record[1]);
    projects.insert(record[7]);
    partners.insert(record[6].empty() ? "(无客户)" : record[6].substr(0, record[6].find('.')));
  }
  EXPECT_EQ(inventory.One("SELECT count(*) FROM 商品设置"), std::to_string(products.size()));
  EXPECT_EQ(inventory.One("SELECT count(*) FROM 项目设置"), std::to_string(projects.size()));
  EXPECT_EQ(inventory.One("SELECT count(*) FROM (SELECT 企业名称 FROM 客户资料 UNION SELECT 企业名称 FROM 厂商资料)"),
            std::to_string(partners.size()));
  EXPECT_EQ(inventory.Lines("SELECT * FROM tqAccPeriod ORDER BY 1"),
            (std::vector<std::string>{"2010-11", "2010-12", "2011-01", "2011-02", "2011-03", "2011-04", "2011-05",
                                      "2011-06"}));
}

TEST_F(ImportRetailTest, KeepsBalancesThatAgreeWithTheLines) {
  const std::string path = PathOf("retail.db");
  ASSERT_EQ(RunArguments(
                {"import", kTable, "-o", path, "--map",
                 "product=StockCode,bill=InvoiceNo,date=InvoiceDate,quantity=Quantity,price=UnitPrice,project=Country"})
                .code,
            0);
  EXPECT_GT(CheckBalances(path), 50000);
}

}  // namespace
}  // namespace stockbook::app
