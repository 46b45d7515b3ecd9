// SPDX-License-Identifier: MIT
#include "stockbook/heading/journal_heading.h"

#include <gtest/gtest.h>

#include "app/window_fixture.h"
#include "base/text.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/heading/journal_coverage.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/coverage_words.h"

namespace stockbook::app {
namespace {

JournalHeading CustomersOfABolt() {
  return JournalHeading({base::CustomerJournal, "全部客户 [商品:六角螺栓[1001]{M8\\GB5783} 单位:千克]", "2025-01",
                         "2025-03", "/home/clerk/库存.db", "2025-04-01 08:30"});
}

TEST(JournalHeading, SaysWhoseJournalOfWhatOfWhichRangeWhenAndFromWhere) {
  const JournalHeading heading = CustomersOfABolt();
  EXPECT_EQ(heading.Page(), "客户台账　全部客户 [商品:六角螺栓[1001]{M8\\GB5783} 单位:千克]");
  EXPECT_EQ(heading.Range(), "期间:2025-01 至 2025-03");
  EXPECT_EQ(heading.Made(), "打印时间:2025-04-01 08:30");
  EXPECT_EQ(heading.Source(), "来源:库存.db");
  EXPECT_EQ(heading.WindowTitle(), "全部客户 [商品:六角螺栓[1001]{M8\\GB5783} 单位:千克] — 库存.db");
}

TEST(JournalHeading, SaysNothingOfWhatThereIsNot) {
  const JournalHeading nothing;
  EXPECT_EQ(nothing.Page(), "商品台账");
  EXPECT_EQ(nothing.Range() + nothing.Made() + nothing.Source(), "");
  EXPECT_EQ(nothing.WindowTitle(), "库存台账");
  const JournalHeading month({base::MaterialJournal, "商品:螺母", "2025-02", "2025-02", "", ""});
  EXPECT_EQ(month.Range(), "期间:2025-02") << "one period is no range";
}

TEST(JournalHeading, OffersAShortNameForFiles) {
  EXPECT_EQ(CustomersOfABolt().FileName(), "客户台账 全部客户 六角螺栓 1001 2025-01 至 2025-03");
  const auto name = [](int type, const std::string& caption) {
    return JournalHeading({type, caption, "2025-02", "2025-02", "", ""}).FileName();
  };
  EXPECT_EQ(name(base::MaterialJournal, "商品:螺母[N8]{M8\\GB6170} 单位:箱/个 [全部仓库]"), "商品台账 螺母 N8 2025-02");
  EXPECT_EQ(name(base::MaterialJournal, "商品:螺母[N8] 单位:箱/个 [总库]"), "商品台账 螺母 N8 总库 2025-02");
  EXPECT_EQ(name(base::SupplierJournal, "供应商:华东\\上海"), "供应商台账 华东 上海 2025-02");
  EXPECT_EQ(name(base::ProjectJournal, "项目:一号楼 [商品:螺母{M8} 单位:个]"), "项目台账 一号楼 螺母 2025-02");
  EXPECT_EQ(name(base::MaterialJournal, "商品:螺母[N8] 单位:个 [全部仓库]   2025年02月10日至2025年02月12日"),
            "商品台账 螺母 N8 2025年02月10日至2025年02月12日")
      << "the range that was asked for, and no other beside it";
  EXPECT_EQ(JournalHeading().FileName(), "商品台账");
}

TEST(JournalHeading, OffersANameThatEveryFileSystemTakes) {
  JournalHeading::Facts facts;
  facts.caption = "商品:../../etc/passwd\n*?.pdf";
  EXPECT_EQ(JournalHeading(facts).FileName(), "商品台账 etc passwd pdf");
  for (int times = 0; times < 60; ++times) facts.caption += "长名称";
  facts.last_range = "2025-03";
  const std::string longest = JournalHeading(facts).FileName();
  EXPECT_EQ(base::CharacterCount(longest), 60U);
  EXPECT_TRUE(longest.ends_with(" 2025-03")) << "the subject is cut off, and not the range";
  EXPECT_TRUE(base::IsCleanUtf8(longest)) << "no half character";
}

class Headings : public WindowTest {
 protected:
  static JournalOptions Partners(int type, int32_t product) {
    JournalOptions options;
    options.journal_type = type;
    options.key_id = product;
    return options;
  }
};

TEST_F(Headings, NameTheProductOfAPartnerJournal) {
  Open();
  for (const int type : {base::SupplierJournal, base::CustomerJournal}) {
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    const std::string material = stockbook().control().Caption();
    const std::string product = material.substr(0, material.find(" ["));
    ASSERT_TRUE(window_->LoadJournal(Partners(type, 1)).loaded);
    const std::string caption = stockbook().control().Caption();
    EXPECT_NE(caption.find(product), std::string::npos) << caption;
    EXPECT_EQ(Title(), caption + " — sample.db");
    ASSERT_TRUE(window_->LoadJournal(Partners(type, 0)).loaded);
    EXPECT_EQ(stockbook().control().Caption().find("商品:"), std::string::npos) << "all products are no product";
  }
}

TEST_F(Headings, SpeakOfPartnersAsTheChoosersDo) {
  Open();
  window_->LoadJournal(Partners(base::SupplierJournal, 0));
  EXPECT_EQ(stockbook().control().Caption(), "全部供应商");
  window_->LoadJournal(Partners(base::CustomerJournal, 0));
  EXPECT_EQ(stockbook().control().Caption(), "全部客户");
}

TEST_F(Headings, HaveTheRangeOfTheLinesThatAreShown) {
  Open();
  window_->LoadFirstJournal();
  sheet::GridSheet& sheet = stockbook().sheet();
  const int period = sheet.ColIndex(base::keys::kPeriod);
  const std::string first = sheet.TextMatrix(sheet.RowOfRecord(0), period);
  const std::string last = sheet.TextMatrix(sheet.RowOfRecord(sheet.RecordCount() - 1), period);
  EXPECT_LT(first, last);
  EXPECT_EQ(window_->Heading().Range(), "期间:" + first + " 至 " + last);
  sheet.CollapseAll();
  EXPECT_EQ(window_->Heading().Range(), "期间:" + first + " 至 " + last) << "closed periods are folded, not left out";
  sheet.ExpandAll();
  size_t record = 0;
  while (sheet.TextMatrix(sheet.RowOfRecord(record), period) == first)
    sheet.SetRowHidden(sheet.RowOfRecord(record++), true);
  const std::string second = sheet.TextMatrix(sheet.RowOfRecord(record), period);
  EXPECT_EQ(window_->Heading().Range(), "期间:" + second + " 至 " + last);
}

class Coverage : public WindowTest {
 protected:
  static JournalOptions Customers(int32_t key) {
    JournalOptions options;
    options.journal_type = base::CustomerJournal;
    options.dp_id = key;
    return options;
  }
};

TEST_F(Coverage, OfAllCustomersIsToldWithWhatIsLeftOut) {
  Change(PathOf("sample.db"), "UPDATE 客户资料 SET ClassCode='95' WHERE KSID IN (1, 2)");
  Change(PathOf("sample.db"), "UPDATE 出库记录 SET ksID=0 WHERE RecID % 50 = 0");
  const OpenedInventory stored(PathOf("sample.db"));
  const std::string partners = stored.One("SELECT COUNT(*) FROM 客户资料 WHERE ClassCode NOT LIKE '0%'");
  const std::string lines = stored.One("SELECT COUNT(*) FROM 出库记录 WHERE ksID IS NULL OR ksID < 1");
  ASSERT_EQ(partners, "2");
  ASSERT_NE(lines, "0");
  Open();
  ASSERT_TRUE(window_->LoadJournal(Customers(0)).loaded);
  EXPECT_FALSE(window_->coverage().isHidden());
  EXPECT_EQ(window_->coverage().text().toStdString(), "未列入 2 个客户、" + lines + " 行");
  const QString tip = window_->coverage().accessibleDescription();
  EXPECT_TRUE(tip.contains(QStringLiteral("分类以“0”开头的客户"))) << tip.toStdString();
  ASSERT_TRUE(window_->LoadJournal(Customers(3)).loaded);
  EXPECT_TRUE(window_->coverage().isHidden()) << "one customer's journal has all of its lines";
}

TEST_F(Coverage, OfAClassOfCustomersIsWhatTheControlLists) {
  const auto connection = OpenInventory(PathOf("sample.db"));
  JournalOptions options = Customers(0);
  options.dp_code = "01";
  EXPECT_EQ(CoverageSentence(ReadCoverage(*connection, options)).section(QStringLiteral("，"), 0, 0).toStdString(),
            "本台账列出分类以“0”开头的客户")
      << "whatever class was chosen";
  options.journal_type = base::SupplierJournal;
  EXPECT_EQ(CoverageSentence(ReadCoverage(*connection, options)).section(QStringLiteral("，"), 0, 0).toStdString(),
            "本台账列出分类以“01”开头的供应商");
  options.journal_type = base::MaterialJournal;
  EXPECT_TRUE(ReadCoverage(*connection, options).IsComplete());
  EXPECT_EQ(CoverageSentence(ReadCoverage(*connection, options)).toStdString(), "");
}

TEST_F(Coverage, IsEverythingWhereNobodyIsOfTheClass) {
  Change(PathOf("sample.db"), "UPDATE 客户资料 SET ClassCode='9' || ClassCode");
  const auto connection = OpenInventory(PathOf("sample.db"));
  const JournalCoverage coverage = ReadCoverage(*connection, Customers(0));
  EXPECT_TRUE(coverage.IsComplete());
  EXPECT_EQ(CoverageSentence(coverage).toStdString(), "本台账列出全部记录，因为没有分类以“0”开头的客户。");
}

TEST(CoverageOfAJournal, IsSaidInOneSentence) {
  JournalCoverage coverage;
  EXPECT_EQ(ShortCoverage(coverage).toStdString(), "");
  coverage.listed = JournalCoverage::Listed::kOfClass;
  coverage.code = "0";
  EXPECT_EQ(ShortCoverage(coverage).toStdString(), "分类以“0”开头的客户");
  EXPECT_EQ(CoverageSentence(coverage).toStdString(), "本台账列出分类以“0”开头的客户。");
  coverage.lines_left_out = 12;
  EXPECT_EQ(ShortCoverage(coverage).toStdString(), "未列入 12 行");
  EXPECT_EQ(CoverageSentence(coverage).toStdString(), "本台账列出分类以“0”开头的客户，没有列入 12 行没有客户的记录。");
  coverage.partners_left_out = 3;
  EXPECT_EQ(ShortCoverage(coverage).toStdString(), "未列入 3 个客户、12 行");
  EXPECT_EQ(CoverageSentence(coverage).toStdString(),
            "本台账列出分类以“0”开头的客户，没有列入其他 3 个客户，也没有列入 12 行没有客户的记录。");
}

}  // namespace
}  // namespace stockbook::app
