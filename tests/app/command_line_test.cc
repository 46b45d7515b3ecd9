// SPDX-License-Identifier: MIT
#include "stockbook/command/command_line.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "stockbook/command/command_line_dispatch.h"

namespace stockbook::app {
namespace {

using Words = std::vector<std::string>;

constexpr std::array<Option, 4> kOptions{{{"output", OptionKind::Value, 'o'},
                                          {"map", OptionKind::Values},
                                          {"count", OptionKind::Value},
                                          {"strict", OptionKind::Flag, 's'}}};

CommandLine Parsed(const Words& words) { return CommandLine(words, kOptions); }

std::string ErrorOf(const Words& words) {
  try {
    Parsed(words);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "no error";
}

TEST(CommandLine, ReadsValuesAfterABlankOrAnEqualsSign) {
  EXPECT_EQ(Parsed({"--output", "a.db"}).Value("output"), "a.db");
  EXPECT_EQ(Parsed({"--output=a=b"}).Value("output"), "a=b");
  EXPECT_EQ(Parsed({"--output="}).Value("output"), "");
  EXPECT_EQ(Parsed({"-o", "-"}).Value("output"), "-");
}

TEST(CommandLine, TakesANegativeNumberAsAValueButNoOption) {
  EXPECT_EQ(Parsed({"--count", "-1"}).Integer("count", -5, 5), -1);
  EXPECT_EQ(ErrorOf({"--count", "--strict"}), "The option --count needs a value behind it.");
  EXPECT_EQ(ErrorOf({"-o"}), "The option -o needs a value behind it.");
}

TEST(CommandLine, KeepsEverythingAfterADoubleDashAsItIs) {
  const CommandLine line = Parsed({"a", "-s", "--", "--strict", "-o"});
  EXPECT_EQ(line.positionals(), (Words{"a", "--strict", "-o"}));
  EXPECT_TRUE(line.Has("strict"));
  EXPECT_FALSE(line.Has("output"));
}

TEST(CommandLine, TakesASingleDashAsAnArgument) { EXPECT_EQ(Parsed({"-"}).positionals(), Words{"-"}); }

TEST(CommandLine, CollectsRepeatableOptionsAndRefusesOthersTwice) {
  EXPECT_EQ(Parsed({"--map", "a", "--map=b"}).Values("map"), (Words{"a", "b"}));
  EXPECT_EQ(ErrorOf({"--count", "1", "--count", "2"}), "The option --count is given twice; give it once.");
}

TEST(CommandLine, NamesWhatItDoesNotKnow) {
  EXPECT_EQ(ErrorOf({"--nothing"}), "There is no option '--nothing' here.");
  EXPECT_EQ(ErrorOf({"--nothing=1"}), "There is no option '--nothing' here.");
  EXPECT_EQ(ErrorOf({"-x"}), "There is no option '-x' here.");
  EXPECT_EQ(ErrorOf({"-ofile"}), "There is no option '-ofile' here.");
  EXPECT_EQ(ErrorOf({"--strict=1"}), "The option --strict takes no value.");
}

TEST(CommandLine, RefusesNumbersOutsideTheirRange) {
  for (const std::string text : {"6", "-6", "1.5", "", "x", "99999999999999999999"}) {
    const CommandLine line = Parsed({"--count=" + text});
    EXPECT_THROW(line.Integer("count", -5, 5), UsageError) << text;
  }
  EXPECT_EQ(Parsed({}).Integer("count", -5, 5), std::nullopt);
}

TEST(CommandLine, RefusesAnArgumentTooManyAndOneTooFew) {
  EXPECT_THROW(Parsed({"a", "b"}).ExpectAtMost(1), UsageError);
  EXPECT_NO_THROW(Parsed({"a"}).ExpectAtMost(1));
  EXPECT_THROW(Parsed({}).Positional(0, "DB"), UsageError);
  EXPECT_THROW(Parsed({""}).Positional(0, "DB"), UsageError);
}

// Commands that record how they were called.
int PrintArguments(const Words& arguments, Terminal& terminal) {
  for (const std::string& argument : arguments) terminal.out << "<" << argument << ">";
  return kExitDone;
}
int FailWorking(const Words&, Terminal&) { throw std::runtime_error("The disk\nis full."); }
int FailUsage(const Words&, Terminal&) { throw UsageError("That is wrong."); }

const std::array kCommands{Command{"open", "Open the window", "Usage: open\n", PrintArguments},
                           Command{"work", "Work", "Usage: work\n", FailWorking},
                           Command{"use", "Use", "Usage: use", FailUsage}};

struct Reply {
  int code;
  std::string out;
  std::string err;
};

Reply RunWords(const Words& words) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  Terminal terminal{in, out, err};
  const int code = RunProgram(kCommands, words, terminal);
  return {code, out.str(), err.str()};
}

TEST(CommandDispatch, OpensWithoutACommandWord) {
  EXPECT_EQ(RunWords({}).out, "");
  EXPECT_EQ(RunWords({}).code, kExitDone);
  EXPECT_EQ(RunWords({"stock.db", "--journal", "material"}).out, "<stock.db><--journal><material>");
  EXPECT_EQ(RunWords({"--journal", "material"}).out, "<--journal><material>");
  EXPECT_EQ(RunWords({"open", "stock.db"}).out, "<stock.db>");
}

TEST(CommandDispatch, OpensAFileThatExistsWhateverItsName) {
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "stockbook-dispatch-test.inventory";
  std::ofstream(file) << "x";
  EXPECT_EQ(RunWords({file.string()}).out, "<" + file.string() + ">");
  std::filesystem::remove(file);
  EXPECT_EQ(RunWords({file.string()}).code, kExitUsage);
}

TEST(CommandDispatch, NamesACommandItDoesNotKnowInOneLine) {
  const Reply outcome = RunWords({"opne"});
  EXPECT_EQ(outcome.code, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "stockbook: There is no command and no file 'opne'. 'stockbook --help' lists the commands.\n");
}

TEST(CommandDispatch, ExplainsItselfAndEveryCommand) {
  EXPECT_NE(RunWords({"--help"}).out.find("  work      Work\n"), std::string::npos);
  EXPECT_EQ(RunWords({"--help"}).code, 0);
  EXPECT_EQ(RunWords({"work", "--help"}).out, "Usage: work\n");
  EXPECT_EQ(RunWords({"use", "x", "-h"}).out, "Usage: use\n");
  EXPECT_EQ(RunWords({"open", "--", "--help"}).out, "<--><--help>");
}

TEST(CommandDispatch, TurnsErrorsIntoOneLineAndAnExitCode) {
  const Reply working = RunWords({"work"});
  EXPECT_EQ(working.code, 1);
  EXPECT_EQ(working.err, "stockbook work: The disk is full.\n");
  const Reply usage = RunWords({"use"});
  EXPECT_EQ(usage.code, 2);
  EXPECT_EQ(usage.err, "stockbook use: That is wrong. See 'stockbook use --help'.\n");
}

}  // namespace
}  // namespace stockbook::app
