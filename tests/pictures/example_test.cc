// SPDX-License-Identifier: MIT
// The example that embeds the grid alone does what docs/grid.md promises.
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "pictures/picture.h"

namespace stockbook::pictures {
namespace {

using GridOnly = PictureTest;

#ifdef STOCKBOOK_GRID_ONLY
TEST_F(GridOnly, PaintsItsCashBook) {
  const QTemporaryDir folder;
  const QString file = folder.filePath("cash_book.png");
  QProcess example;
  example.start(STOCKBOOK_GRID_ONLY, {"--picture", file});
  ASSERT_TRUE(example.waitForFinished(60000));
  EXPECT_EQ(example.exitCode(), 0);
  const QImage picture = QImage(file).convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(picture.size(), QSize(780, 480));
  std::set<QRgb> colours;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) colours.insert(picture.pixel(x, y));
  }
  EXPECT_GT(colours.size(), 50u) << "there is text in it";
  EXPECT_TRUE(colours.contains(0xFF1D65B5u)) << "and a frozen edge";
}

TEST_F(GridOnly, SaysWhenItsPictureCannotBeWritten) {
  QProcess example;
  example.start(STOCKBOOK_GRID_ONLY, {"--picture", "/nowhere/at/all.png"});
  ASSERT_TRUE(example.waitForFinished(60000));
  EXPECT_EQ(example.exitCode(), 1);
}

TEST_F(GridOnly, IsLinkedWithoutTheJournal) {
  std::ifstream program(STOCKBOOK_GRID_ONLY, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(program), {}};
  // The names of classes that have a type at run time, and of functions; stripped programs keep the former.
  EXPECT_NE(bytes.find("9stockbook5sheet"), std::string::npos);
  for (const char* room : {"7journal", "7control", "11interaction", "9databases"}) {
    EXPECT_EQ(bytes.find(std::string("9stockbook") + room), std::string::npos) << room;
  }
}
#endif

TEST_F(GridOnly, IsPrintedInThePageAboutTheGrid) {
  const auto text_of = [](const std::string& file) {
    std::ifstream stream(std::string(STOCKBOOK_SOURCE_DIR) + file);
    return std::string{std::istreambuf_iterator<char>(stream), {}};
  };
  const std::string source = text_of("/examples/grid-only/first.cc");
  const std::string code = source.substr(source.find("#include"));
  EXPECT_NE(text_of("/docs/grid.md").find("```cpp\n" + code + "```\n"), std::string::npos)
      << "docs/grid.md prints the program as it is, from its first #include on";
}

TEST_F(GridOnly, TakesFewerThanEightyLines) {
  std::ifstream source(std::string(STOCKBOOK_SOURCE_DIR) + "/examples/grid-only/main.cc");
  int lines = 0;
  for (std::string line; std::getline(source, line);) ++lines;
  EXPECT_GT(lines, 20);
  EXPECT_LT(lines, 80);
}

}  // namespace
}  // namespace stockbook::pictures
