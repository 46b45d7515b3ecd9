// SPDX-License-Identifier: MIT
// The program as called from a shell.
#include <QImage>
#include <algorithm>
#include <filesystem>
#include <sstream>

#include "end_to_end/fixture.h"
#include "end_to_end/inventory_maker.h"
#include "end_to_end/journal_comparison.h"

namespace stockbook::end_to_end {
namespace {

using Arguments = std::vector<std::string>;

constexpr const char* kTypes[] = {"material", "supplier", "customer", "project"};

class CommandLine : public EndToEnd {
 protected:
  void MakeSample() {
    const Outcome made = Program({"sample", database_, "--lines", "900", "--periods", "3", "--seed", "7"});
    ASSERT_EQ(made.code, 0) << made.err;
  }
  Outcome Export(const Arguments& more) const {
    Arguments arguments{"export", database_};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Program(arguments);
  }
  // One line on stderr, nothing on stdout, and the same files as before.
  void ExpectError(int code, const Arguments& arguments) const {
    const std::vector<std::string> before = Files();
    const Outcome outcome = Program(arguments);
    const std::string typed = ::testing::PrintToString(arguments);
    EXPECT_EQ(outcome.code, code) << typed << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << typed << outcome.err;
    EXPECT_EQ(outcome.out, "") << typed;
    EXPECT_EQ(Files(), before) << typed;
  }

  std::string database_ = PathOf("inventory.db");
};

// The statements stored with the tests of the journal room, for the periods 2004-01 to 2004-06, product 7, second key 3
// and a class "01" with the members 12, 15 and 31.
class Statements : public CommandLine {
 protected:
  void MakeInventory(const char* class_code) {
    std::filesystem::remove(database_);
    InventoryMaker maker(database_);
    maker.Run("INSERT INTO tqAccPeriod VALUES ('2004-06'), ('2004-01'), ('2004-03')");
    for (const char* key : {"12", "15", "31"}) {
      maker.Insert("厂商资料", {{"KSID", key}, {"ClassCode", class_code}});
      maker.Insert("客户资料", {{"KSID", key}, {"ClassCode", class_code}});
      maker.Insert("项目设置", {{"项目ID", key}, {"ClassCode", class_code}});
    }
  }
  std::string Kept(const std::string& name) const {
    const std::string kept = ReadAll(std::string(STOCKBOOK_SOURCE_DIR) + "/tests/journal/statements/" + name + ".sql");
    EXPECT_NE(kept, "") << name;
    return kept;
  }
  void Compare(const std::string& scope, const Arguments& typed) {
    for (int type = 0; type < 4; ++type) {
      for (const char* dialect : {"desktop", "server"}) {
        for (const char* product : {"7", "0"}) {
          Arguments arguments{"sql", database_, "--journal", kTypes[type], "--product", product, "--dialect", dialect};
          arguments.insert(arguments.end(), typed.begin(), typed.end());
          std::string kept = Kept(std::string(kTypes[type]) + "_" + dialect +
                                  (product[0] == '7' ? "_product_" : "_no_product_") + scope);
          // For a class, the customer journal uses the second key's number, 0, as the code, and "01" begins with it.
          if (type == 2 && scope == "class") kept.insert(kept.find("pd.pdID ") + 8, " Where Recs.ksID in (12,15,31)");
          const Outcome outcome = Program(arguments);
          EXPECT_EQ(outcome.out, kept) << ::testing::PrintToString(arguments);
          EXPECT_EQ(outcome.code, 0);
          EXPECT_EQ(outcome.err, "");
        }
      }
    }
  }
};

TEST_F(Statements, OfOneSecondKeyArePrintedAsTheyAreSent) {
  MakeInventory("'01'");
  Compare("second", {"--second", "3"});
}

TEST_F(Statements, OfAClassArePrintedAsTheyAreSent) {
  MakeInventory("'01'");
  Compare("class", {"--class", "01"});
}

TEST_F(Statements, OfAllSecondKeysArePrintedAsTheyAreSent) {
  MakeInventory("NULL");
  Compare("none", {});
}

TEST_F(Statements, UseTheDesktopDialectAsUsual) {
  MakeInventory("NULL");
  EXPECT_EQ(Program({"sql", database_, "--journal", "material", "--product", "7", "--second", "3"}).out,
            Kept("material_desktop_product_second"));
}

TEST_F(CommandLine, ExportsObjectsThatAgreeWithTheTables) {
  MakeSample();
  const BaseTables tables(database_);
  for (int type = 0; type < 4; ++type) {
    const Outcome outcome = Export({"--format", "ndjson", "--journal", kTypes[type], "--product",
                                    type % 3 == 0 ? "1" : "0", "--second", "1", "--qty2", "--tax"});
    ASSERT_EQ(outcome.code, 0) << outcome.err;
    const ShownJournal shown = FromNdjson(outcome.out);
    const app::JournalOptions options{type, type % 3 == 0 ? 1 : 0, 1, "", true, true, false};
    EXPECT_TRUE(IsTheJournalOf(tables, options, shown));
    const auto lines =
        std::count_if(shown.rows.begin(), shown.rows.end(), [](const ShownRow& row) { return row.level == 1; });
    EXPECT_TRUE(SaysWhatALoadSays(shown, options, static_cast<size_t>(lines), Balance::kRead));
  }
}

// Splits separated values; quotes may hold separators and line breaks.
std::vector<std::vector<std::string>> Split(const std::string& text, char separator) {
  std::vector<std::vector<std::string>> records(1, std::vector<std::string>(1));
  bool quoted = false;
  for (size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '"' && quoted && at + 1 < text.size() && text[at + 1] == '"')
      records.back().back() += text[++at];
    else if (c == '"')
      quoted = !quoted;
    else if (!quoted && c == separator)
      records.back().emplace_back();
    else if (!quoted && c == '\n')
      records.emplace_back(1);
    else
      records.back().back() += c;
  }
  EXPECT_EQ(records.back(), std::vector<std::string>(1)) << "the last line ends";
  records.pop_back();
  return records;
}

TEST_F(CommandLine, ExportsCaptionsAndShownTextsInSeparatedValues) {
  MakeSample();
  const Arguments journal{"--journal", "material", "--product", "1", "--qty2"};
  const auto with = [&](Arguments arguments) {
    arguments.insert(arguments.end(), journal.begin(), journal.end());
    return Export(arguments);
  };
  const ShownJournal shown = FromNdjson(with({"--format", "ndjson"}).out);
  for (const char* choice : {"visible", "all"}) {
    std::vector<std::vector<std::string>> expected(shown.rows.size() + 1);
    for (size_t place = 0; place < kColumnCount; ++place) {
      if (std::string(choice) == "visible" && shown.columns[place].hidden) continue;
      // The column of line numbers has no caption of its own.
      const std::string& caption = shown.columns[place].caption;
      expected[0].push_back(caption.empty() ? "序号" : caption);
      for (size_t row = 0; row < shown.rows.size(); ++row) {
        // Of two sums in one cell a spreadsheet would subtract the second one from the first.
        const std::string& text = shown.rows[row].display[place];
        const bool is_formula = text.starts_with("-") && text.find("\n-") != std::string::npos;
        expected[row + 1].push_back((is_formula ? "'" : "") + text);
      }
    }
    EXPECT_EQ(Split(with({"--format", "csv", "--columns", choice}).out, ','), expected);
    EXPECT_EQ(Split(with({"--format", "tsv", "--columns", choice}).out, '\t'), expected);
  }
  EXPECT_EQ(with({}).out, with({"--format", "csv", "--columns", "visible"}).out);
  const ShownJournal visible = [&] {
    ShownJournal read = FromNdjson(with({"--format", "ndjson", "--columns", "visible"}).out);
    return read;
  }();
  EXPECT_EQ(visible.columns.size(),
            static_cast<size_t>(std::count_if(shown.columns.begin(), shown.columns.end(),
                                              [](const auto& column) { return !column.hidden; })));
}

TEST_F(CommandLine, ExportsIntoAFileWhatItPrints) {
  MakeSample();
  const Arguments journal{"--journal", "customer", "--second", "2", "--format", "ndjson"};
  Arguments into_file = journal;
  into_file.insert(into_file.end(), {"-o", PathOf("rows.ndjson")});
  const Outcome outcome = Export(into_file);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_EQ(ReadAll(PathOf("rows.ndjson")), Export(journal).out);
  EXPECT_EQ(Files(), (std::vector<std::string>{"inventory.db", "rows.ndjson"}));
}

TEST_F(CommandLine, RendersEveryTypeInTheSizeAndScaleAskedFor) {
  MakeSample();
  for (const char* type : kTypes) {
    const Outcome outcome = Program({"render", database_, "--journal", type, "--product", "1", "--second", "1",
                                     "--size", "800x500", "--scale", "2", "-o", PathOf("picture.png")});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out + outcome.err, "");
    const QImage picture(QString::fromStdString(PathOf("picture.png")));
    EXPECT_EQ(picture.size(), QSize(1600, 1000));
    std::filesystem::remove(PathOf("picture.png"));
  }
}

TEST_F(CommandLine, RefusesWhatItDoesNotKnowWithExitCodeTwo) {
  MakeSample();
  for (const char* command : {"export", "sql", "render"}) {
    const Arguments base{command, database_, "--journal", "material", "--product", "1"};
    const auto with = [&](const Arguments& more) {
      Arguments arguments = base;
      arguments.insert(arguments.end(), more.begin(), more.end());
      return arguments;
    };
    ExpectError(2, with({"--frobnicate"}));
    ExpectError(2, with({"--produkt", "1"}));
    ExpectError(2, with({"--second"}));
    ExpectError(2, with({"--second", "x"}));
    ExpectError(2, with({"--second", "99999999999"}));
    ExpectError(2, with({"another.db"}));
    ExpectError(2, {command, database_});
    ExpectError(2, {command, database_, "--journal", "stock", "--product", "1"});
    ExpectError(2, {command, database_, "--journal", "project"});
    ExpectError(2, {command, "--journal", "material", "--product", "1"});
  }
  ExpectError(2, {"export", database_, "--journal", "material", "--product", "1", "--format", "xml"});
  ExpectError(2, {"export", database_, "--journal", "material", "--product", "1", "--columns", "some"});
  ExpectError(2, {"sql", database_, "--journal", "material", "--product", "1", "--dialect", "oral"});
  ExpectError(2, {"frobnicate"});
}

TEST_F(CommandLine, SaysThatTheStatementsTakeNoRange) {
  MakeSample();
  for (const char* bound : {"--from", "--to"}) {
    const Arguments arguments{"sql", database_, "--journal", "material", "--product", "1", bound, "2025-03"};
    ExpectError(2, arguments);
    EXPECT_NE(Program(arguments).err.find("sql takes no --from and no --to"), std::string::npos);
  }
  EXPECT_EQ(Program({"sql", "--help"}).out.find("--from"), std::string::npos);
  EXPECT_NE(Program({"export", "--help"}).out.find("--from"), std::string::npos);
}

TEST_F(CommandLine, FailsWithExitCodeOneWhenAJournalCannotBeLoaded) {
  MakeSample();
  // A class without members leaves the statement without its condition.
  ExpectError(1, {"export", database_, "--journal", "supplier", "--product", "1", "--class", "no such"});
  ExpectError(1, {"render", database_, "--journal", "supplier", "--product", "1", "--class", "no such", "-o",
                  PathOf("picture.png")});
  ExpectError(1, {"export", database_, "--journal", "supplier", "--product", "1", "--class", "it''s"});
  ExpectError(1, {"export", database_, "--journal", "material", "--product", "1", "-o", PathOf("no/such/folder")});
  ExpectError(1, {"export", PathOf("no.db"), "--journal", "material", "--product", "1"});
}

TEST_F(CommandLine, TakesNoSecondKeyThatTheControlDoesNotTake) {
  MakeSample();
  for (const char* second : {"32768", "-32769", "70000"}) {
    for (const char* command : {"export", "sql"})
      ExpectError(2, {command, database_, "--journal", "material", "--product", "1", "--second", second});
  }
  EXPECT_EQ(Export({"--journal", "material", "--product", "1", "--second", "32767"}).code, 0);
}

}  // namespace
}  // namespace stockbook::end_to_end
