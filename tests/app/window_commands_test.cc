// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QImage>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/inventory_fixture.h"
#include "stockbook/sample/sample_inventory.h"

#include <sys/wait.h>

namespace stockbook::app {
namespace {

// The real program, because the toolkit allows only one scale per process.
class WindowCommand : public InventoryTest {
 protected:
  WindowCommand() { WriteSampleInventory(PathOf("sample.db"), {}); }

  // `environment` is put in front of the command.
  Outcome Program(const std::string& arguments, const std::string& environment = {}) const {
    const std::string out = PathOf("out.txt");
    const std::string err = PathOf("err.txt");
    const std::string command =
        environment + " '" + STOCKBOOK_PROGRAM + "' " + arguments + " >'" + out + "' 2>'" + err + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(out), ReadAll(err)};
  }
  Outcome Render(const std::string& more) const {
    return Program("render '" + PathOf("sample.db") + "' --journal material --product 1 " + more + " -o '" +
                   PathOf("picture.png") + "'");
  }
  QImage Picture() const { return QImage(QString::fromStdString(PathOf("picture.png"))); }
};

TEST_F(WindowCommand, RenderWritesThePictureWithoutADisplay) {
  const Outcome outcome = Render("");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_EQ(Picture().size(), QSize(1280, 800));
}

TEST_F(WindowCommand, RenderTakesSizeAndScale) {
  EXPECT_EQ(Render("--size 640x480 --scale 2").code, 0);
  EXPECT_EQ(Picture().size(), QSize(1280, 960));
  EXPECT_EQ(Render("--size 640x480 --scale 1.25").code, 0);
  EXPECT_EQ(Picture().size(), QSize(800, 600));
}

TEST_F(WindowCommand, RenderScrollsAndClosesPeriods) {
  Render("");
  const QImage plain = Picture();
  Render("--top-row 30");
  const QImage scrolled = Picture();
  Render("--collapse");
  const QImage collapsed = Picture();
  EXPECT_NE(plain, scrolled);
  EXPECT_NE(plain, collapsed);
  EXPECT_NE(scrolled, collapsed);
  EXPECT_EQ(Render("--top-row 2000000000").code, 0) << "a row after the last one is the last one";
}

TEST_F(WindowCommand, RenderShowsADarkDesktop) {
  Render("");
  const QImage light = Picture();
  EXPECT_EQ(Render("--dark").code, 0);
  const QImage dark = Picture();
  const QPoint grid(600, 700);
  const QPoint frame(5, 5);
  EXPECT_GT(qGray(light.pixel(grid)), 200);
  EXPECT_GT(qGray(light.pixel(frame)), 200);
  EXPECT_LT(qGray(dark.pixel(grid)), 80);
  EXPECT_LT(qGray(dark.pixel(frame)), 80);
}

TEST_F(WindowCommand, PrintWritesAPdfWithoutADisplay) {
  const auto print = [&](const std::string& more) {
    return Program("print '" + PathOf("sample.db") + "' --journal material --product 1 " + more + " -o '" +
                       PathOf("journal.pdf") + "'",
                   "env -u DISPLAY");
  };
  const auto pages = [&] {
    const std::string pdf = ReadAll(PathOf("journal.pdf"));
    EXPECT_TRUE(pdf.starts_with("%PDF"));
    EXPECT_NE(pdf.find("/FontFile"), std::string::npos);
    int count = 0;
    for (size_t at = pdf.find("/Type /Page /"); at != std::string::npos; at = pdf.find("/Type /Page /", at + 1))
      ++count;
    return count;
  };
  const Outcome outcome = print("");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
  const int all = pages();
  EXPECT_GT(all, 1);
  EXPECT_EQ(print("--collapse").code, 0);
  EXPECT_LT(pages(), all);
  EXPECT_EQ(print("--paper a5 --portrait").code, 0);
  EXPECT_NE(ReadAll(PathOf("journal.pdf")).find("/MediaBox [0 0 420 595]"), std::string::npos);
  EXPECT_GE(pages(), 1);
  EXPECT_EQ(print("--pages-wide 2 --tax --qty2").code, 0);
  EXPECT_GT(pages(), all);
  EXPECT_EQ(print("--no-carry").code, 0);
  EXPECT_LE(pages(), all) << "there is more room for lines";
  Write("journal.pdf", "as it was");
  for (const char* wrong : {"--paper a9", "--paper", "extra", "--size 3x3", "--pages-wide 0", "--pages-wide 11"}) {
    const Outcome refused = print(wrong);
    EXPECT_EQ(refused.code, 2) << wrong;
    EXPECT_EQ(std::count(refused.err.begin(), refused.err.end(), '\n'), 1) << refused.err;
  }
  EXPECT_EQ(Program("print missing.db --journal material --product 1 -o '" + PathOf("journal.pdf") + "'").code, 1);
  EXPECT_EQ(ReadAll(PathOf("journal.pdf")), "as it was");
}

TEST_F(WindowCommand, RenderIsTheSameTwice) {
  Render("");
  const QImage first = Picture();
  Render("");
  EXPECT_EQ(Picture(), first);
}

TEST_F(WindowCommand, RenderWritesNothingWhenItCannot) {
  Write("picture.png", "as it was");
  const std::string target = " -o '" + PathOf("picture.png") + "'";
  for (const std::string& arguments :
       {std::string("render missing.db --journal material --product 1"),
        "render '" + Write("no.db", "no inventory") + "' --journal material --product 1"}) {
    const Outcome outcome = Program(arguments + target);
    EXPECT_EQ(outcome.code, 1) << arguments;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(ReadAll(PathOf("picture.png")), "as it was");
  }
  for (const char* wrong : {"--size 12", "--size 0x0", "--size 100000x100000", "--size x", "--scale 0", "--scale a",
                            "--top-row -1", "extra"}) {
    const Outcome outcome = Render(wrong);
    EXPECT_EQ(outcome.code, 2) << wrong;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(ReadAll(PathOf("picture.png")), "as it was");
  }
}

TEST_F(WindowCommand, PicturesAndPagesOfNoProductAreRefused) {
  for (const char* command : {"print", "render", "plot"}) {
    const std::string target = PathOf("none.png");
    const Outcome outcome = Program(std::string(command) + " '" + PathOf("sample.db") +
                                    "' --journal material --product 9999 -o '" + target + "'");
    EXPECT_EQ(outcome.code, 1) << command;
    EXPECT_EQ(outcome.err, std::string("stockbook ") + command + ": There is no product 9999 in '" +
                               PathOf("sample.db") + "'; give the number of another one with --product.\n");
    EXPECT_FALSE(std::filesystem::exists(target)) << command;
  }
}

TEST_F(WindowCommand, OpenSaysThatThereIsNoDisplay) {
  const std::string open = "open '" + PathOf("sample.db") + "'";
  for (const char* environment : {"env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM",
                                  "env -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM DISPLAY=:9999"}) {
    const Outcome outcome = Program(open, environment);
    EXPECT_EQ(outcome.code, 1) << environment;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_NE(outcome.err.find("no display"), std::string::npos) << outcome.err;
  }
}

TEST_F(WindowCommand, OpenRefusesArgumentsBeforeItLooksForADisplay) {
  for (const char* wrong : {"open --journal nonsense", "open a.db b.db", "open --frobnicate"}) {
    EXPECT_EQ(Program(wrong, "env -u DISPLAY").code, 2) << wrong;
  }
}

TEST_F(WindowCommand, ExplainsItself) {
  for (const char* command : {"open", "print", "render"}) {
    const Outcome outcome = Program(std::string(command) + " --help");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_NE(outcome.out.find("--journal"), std::string::npos);
  }
}

}  // namespace
}  // namespace stockbook::app
