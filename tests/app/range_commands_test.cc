// SPDX-License-Identifier: MIT
// A range of a journal, and its plot, by the real program.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QImage>
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

#include "app/inventory_fixture.h"
#include "stockbook/plot/plot_drawing.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::app {
namespace {

class RangeCommand : public InventoryTest {
 protected:
  RangeCommand() { WriteSampleInventory(PathOf("sample.db"), {}); }

  // The program on the journal of the first product; what follows `command` is for the shell.
  Outcome OnJournal(const std::string& command, const std::string& more) const {
    const std::string out = PathOf("out.txt");
    const std::string err = PathOf("err.txt");
    const std::string line = std::string("env -u DISPLAY '") + STOCKBOOK_PROGRAM + "' " + command + " '" +
                             PathOf("sample.db") + "' --journal material --product 1 " + more + " >'" + out + "' 2>'" +
                             err + "'";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(out), ReadAll(err)};
  }
  // The lines of bills in an export, which begin with their days.
  static std::vector<std::string> BillLines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t at = text.find("\n,20"); at != std::string::npos; at = text.find("\n,20", at + 1)) {
      std::string line = text.substr(at + 2, text.find('\n', at + 1) - at - 2);
      if (line.size() > 10 && line[10] == ' ') lines.push_back(line);
    }
    return lines;
  }
};

TEST_F(RangeCommand, ExportWritesTheLinesInsideAndWhatIsBroughtForward) {
  const std::vector<std::string> all = BillLines(OnJournal("export", "").out);
  const Outcome outcome = OnJournal("export", "--from 2025-03-10 --to 2025-03-20");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "");
  std::vector<std::string> expected;
  std::copy_if(all.begin(), all.end(), std::back_inserter(expected),
               [](const std::string& line) { return line >= "2025-03-10" && line < "2025-03-21"; });
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(BillLines(outcome.out), expected);
  const auto before =
      std::find_if(all.begin(), all.end(), [](const std::string& line) { return line >= "2025-03-10"; });
  ASSERT_NE(before, all.begin());
  const size_t forward = outcome.out.find(",2025-03-10承前,");
  ASSERT_NE(forward, std::string::npos);
  const std::string row = outcome.out.substr(forward, outcome.out.find('\n', forward) - forward);
  // Both end in price, quantity and amount, where amounts of thousands are quoted.
  const std::string line = *std::prev(before);
  EXPECT_TRUE(row.ends_with(line.substr(line.rfind('"', line.size() - 2)))) << row << "\n" << line;
}

TEST_F(RangeCommand, ExportTakesQuartersAndYears) {
  const Outcome quarter = OnJournal("export", "--from 2025Q2 --to 2025Q2");
  EXPECT_NE(quarter.out.find(",2025年04月承前,"), std::string::npos);
  EXPECT_NE(quarter.out.find("2025年06月合计"), std::string::npos);
  EXPECT_EQ(quarter.out.find("2025年07月合计"), std::string::npos);
  EXPECT_EQ(BillLines(OnJournal("export", "--from 2025 --to 2025").out), BillLines(OnJournal("export", "").out));
  EXPECT_TRUE(BillLines(OnJournal("export", "--from 2030").out).empty());
}

TEST_F(RangeCommand, NdjsonHoldsTheSameRowsAndNamesTheRange) {
  const Outcome outcome = OnJournal("export", "--format ndjson --from 2025-11");
  EXPECT_NE(outcome.out.find("2025年11月起\",\"columns\""), std::string::npos) << outcome.out.substr(0, 200);
  EXPECT_EQ(outcome.out.find("\"Period\":\"2025-10\""), std::string::npos);
  EXPECT_NE(outcome.out.find("\"Period\":\"2025-12\""), std::string::npos);
}

TEST_F(RangeCommand, PicturesAndPagesShowTheRange) {
  const auto picture = [&](const std::string& more) {
    EXPECT_EQ(OnJournal("render", more + " -o '" + PathOf("picture.png") + "'").code, 0) << more;
    return QImage(QString::fromStdString(PathOf("picture.png")));
  };
  EXPECT_NE(picture(""), picture("--from 2025-03"));
  EXPECT_EQ(OnJournal("print", "-o '" + PathOf("all.pdf") + "'").code, 0);
  EXPECT_EQ(OnJournal("print", "--from 2025-03 --to 2025-03 -o '" + PathOf("part.pdf") + "'").code, 0);
  EXPECT_LT(ReadAll(PathOf("part.pdf")).size(), ReadAll(PathOf("all.pdf")).size());
}

TEST_F(RangeCommand, WhatIsNoRangeIsAWrongUse) {
  for (const char* wrong : {"--from 2025-13", "--to tomorrow", "--from 2025-05 --to 2025-04", "--from"}) {
    for (const char* command : {"export", "print", "render", "plot"}) {
      const Outcome outcome = OnJournal(command, std::string(wrong) + " -o '" + PathOf("no.pdf") + "'");
      EXPECT_EQ(outcome.code, 2) << command << " " << wrong;
      EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    }
  }
  EXPECT_EQ(ReadAll(PathOf("no.pdf")), "");
}

TEST_F(RangeCommand, PlotDrawsTheJournalAsPngPdfAndSvg) {
  if (!CanDrawPlots()) GTEST_SKIP() << WhyNoPlots();
  const auto plot = [&](const std::string& name, const std::string& more) {
    const Outcome outcome = OnJournal("plot", more + " -o '" + PathOf(name) + "'");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return ReadAll(PathOf(name));
  };
  plot("all.png", "--size 900x600");
  const QImage all(QString::fromStdString(PathOf("all.png")));
  EXPECT_EQ(all.size(), QSize(900, 600));
  plot("part.png", "--size 900x600 --from 2025-03 --to 2025-04");
  EXPECT_NE(QImage(QString::fromStdString(PathOf("part.png"))), all);
  EXPECT_TRUE(plot("plot.pdf", "").starts_with("%PDF"));
  EXPECT_NE(plot("plot.svg", "").find("<svg"), std::string::npos);
  EXPECT_NE(plot("picture", "--format svg").find("<svg"), std::string::npos);
}

TEST_F(RangeCommand, PlotEndsWithASentenceWhereTheLibraryFindsNoDriver) {
  if (!CanDrawPlots()) GTEST_SKIP() << WhyNoPlots();
  setenv("PLPLOT_DRV_DIR", PathOf("nowhere").c_str(), 1);
  const Outcome outcome = OnJournal("plot", "-o '" + PathOf("no.png") + "'");
  unsetenv("PLPLOT_DRV_DIR");
  EXPECT_EQ(outcome.code, 1) << "and not by the library's own end of the program";
  EXPECT_NE(outcome.err.find("plplot-driver-cairo"), std::string::npos) << outcome.err;
  EXPECT_EQ(ReadAll(PathOf("no.png")), "");
}

TEST_F(RangeCommand, PlotWritesNothingWhereThereIsNothingToDraw) {
  const std::string target = PathOf("none.png");
  const Outcome nothing = OnJournal("plot", "--from 2031 -o '" + target + "'");
  EXPECT_EQ(nothing.code, 1);
  EXPECT_EQ(std::count(nothing.err.begin(), nothing.err.end(), '\n'), 1) << nothing.err;
  EXPECT_EQ(OnJournal("plot", "-o '" + PathOf("plot.txt") + "'").code, 2);
  EXPECT_EQ(OnJournal("plot", "--size 10x10 -o '" + target + "'").code, 2);
  EXPECT_EQ(OnJournal("plot", "").code, 2);
  EXPECT_EQ(OnJournal("plot", "--format png -o '" + PathOf("sample.db") + "'").code, 2) << "an inventory stays";
  EXPECT_EQ(ReadAll(target), "");
}

}  // namespace
}  // namespace stockbook::app
