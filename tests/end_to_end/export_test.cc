// SPDX-License-Identifier: MIT
// What `export` writes beside the rows themselves, and what it says of an inventory that lacks something.
#include <algorithm>
#include <sstream>

#include "end_to_end/fixture.h"
#include "end_to_end/inventory_maker.h"
#include "stockbook/export/xlsx_writer.h"

namespace stockbook::end_to_end {
namespace {

using Arguments = std::vector<std::string>;
const std::string kMark = "\xEF\xBB\xBF";

class Export : public EndToEnd {
 protected:
  void SetUp() override {
    InventoryMaker maker(database_);
    maker.AddMasters();
    maker.AddReceipt(1, "2025-01-05", {{"数量", "3"}, {"除税单价", "2.5"}, {"除税金额", "'7.5'"}});
    maker.AddIssue(2, "2025-02-06", {{"数量", "1"}, {"除税单价", "2.5"}, {"除税金额", "'2.5'"}});
  }
  Outcome Run(const Arguments& more) const {
    Arguments arguments{"export", database_, "--journal", "material", "--product", "1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Program(arguments);
  }
  std::string Error(const Arguments& arguments, int code) const {
    const Outcome outcome = Program(arguments);
    EXPECT_EQ(outcome.code, code) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    return outcome.err;
  }

  std::string database_ = PathOf("inventory.db");
};

TEST_F(Export, NamesTheColumnOfNumbers) {
  EXPECT_TRUE(Run({}).out.starts_with("序号,单据,"));
  EXPECT_TRUE(Run({"--format", "tsv"}).out.starts_with("序号\t单据\t"));
}

TEST_F(Export, BeginsWithAByteOrderMarkWhereThatIsAskedFor) {
  const std::string plain = Run({}).out;
  EXPECT_FALSE(plain.starts_with(kMark));
  EXPECT_EQ(Run({"--bom"}).out, kMark + plain);
}

TEST_F(Export, TakesTheBillApart) {
  std::istringstream lines(Run({"--split-bill"}).out);
  std::vector<std::string> begins;
  for (std::string line; std::getline(lines, line);) {
    // The period or caption, the day, the kind and the number.
    size_t end = 0;
    for (int field = 0; field < 5 && end != std::string::npos; ++field) end = line.find(',', end + (field > 0 ? 1 : 0));
    begins.push_back(line.substr(0, end));
  }
  const auto has = [&](const std::string& begin) { return std::count(begins.begin(), begins.end(), begin) == 1; };
  EXPECT_TRUE(has("序号,期间,日期,单据,单据编号")) << ::testing::PrintToString(begins);
  EXPECT_TRUE(has(",2025-01,,,")) << ::testing::PrintToString(begins);
  EXPECT_TRUE(has(",2025年01月合计,,,")) << ::testing::PrintToString(begins);
  const auto line = std::find_if(begins.begin(), begins.end(),
                                 [](const std::string& begin) { return begin.starts_with(",2025-01,2025-01-05,"); });
  EXPECT_NE(line, begins.end()) << ::testing::PrintToString(begins);
}

TEST_F(Export, WritesAWorkbookToAFileOrToStandardOutput) {
  if (!app::CanWriteXlsx()) GTEST_SKIP() << "built without libxlsxwriter";
  const Outcome written = Run({"--format", "xlsx", "-o", PathOf("t.xlsx")});
  EXPECT_EQ(written.code, 0) << written.err;
  EXPECT_EQ(written.out, "");
  EXPECT_TRUE(ReadAll(PathOf("t.xlsx")).starts_with("PK"));
  EXPECT_TRUE(Run({"--format", "xlsx"}).out.starts_with("PK"));
}

TEST_F(Export, RefusesOptionsThatAFormatDoesNotHave) {
  for (const char* format : {"ndjson", "xlsx"}) {
    for (const char* option : {"--bom", "--split-bill"}) {
      const Outcome outcome = Run({"--format", format, option});
      EXPECT_EQ(outcome.code, 2) << format << option;
      EXPECT_EQ(outcome.out, "");
    }
  }
}

TEST_F(Export, SaysThatThereIsNoSuchProduct) {
  for (const char* journal : {"material", "supplier", "customer", "project"}) {
    EXPECT_EQ(Error({"export", database_, "--journal", journal, "--product", "99"}, 1),
              "stockbook export: There is no product 99 in '" + database_ +
                  "'; give the number of another one with --product.\n");
  }
  // One that exists and has never moved is another matter.
  InventoryMaker(PathOf("still.db")).AddMasters();
  EXPECT_EQ(Program({"export", PathOf("still.db"), "--journal", "material", "--product", "1"}).code, 0);
}

TEST_F(Export, NamesTheTablesThatAreMissing) {
  {
    InventoryMaker maker(PathOf("torn.db"));
    maker.AddMasters();
    maker.Run("DROP TABLE 入库记录");
    maker.Run("DROP TABLE 仓库余额表");
    maker.Run("DROP TABLE 客户分类");
  }
  EXPECT_EQ(Error({"export", PathOf("torn.db"), "--journal", "material", "--product", "1"}, 1),
            "stockbook export: The inventory '" + PathOf("torn.db") +
                "' lacks the tables 入库记录, 仓库余额表; put back a whole copy of it, or name another database.\n");
}

TEST_F(Export, SaysWhatIsNoInventoryAtAll) {
  {
    InventoryMaker maker(PathOf("other.db"));
    for (size_t table = 0; table < app::kTableCount; ++table)
      maker.Run("DROP TABLE " + std::string(app::InventoryTableOf(static_cast<app::TableName>(table)).name));
    maker.Run("CREATE TABLE songs(title)");
  }
  EXPECT_EQ(Error({"export", PathOf("other.db"), "--journal", "material", "--product", "1"}, 1),
            "stockbook export: '" + PathOf("other.db") +
                "' is no inventory: it has none of its tables, such as 入库目录; name another database.\n");
}

TEST_F(Export, TellsItsVersion) {
  for (const char* asked : {"--version", "-V"}) {
    const Outcome outcome = Program({asked});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(outcome.out.starts_with("stockbook 0.")) << outcome.out;
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1);
  }
}

}  // namespace
}  // namespace stockbook::end_to_end
