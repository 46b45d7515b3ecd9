// SPDX-License-Identifier: MIT
#include "stockbook/command/spreadsheet_text.h"

#include <gtest/gtest.h>

namespace stockbook::app {
namespace {

TEST(SpreadsheetText, PutsAnApostropheBeforeWhatWouldBeAFormula) {
  for (const char* text : {"=1+1", "=cmd|' /C calc'!A0", "+A1", "-A1", "@SUM(A1)", "\t=1", "\r=1", "-1+2", "+", "=",
                           "-.", "-1,2x", "--1", "-1e", "-3.00\n-5.00", "- 1", "-1%%"}) {
    EXPECT_EQ(SpreadsheetText(text), std::string("'") + text);
  }
}

TEST(SpreadsheetText, LeavesNumbersAndOrdinaryTextsAlone) {
  for (const char* text : {"", "-", "-3.00", "-1,234,567.50", "+7", "-.5", "-12.5%", "-1E+20", "+1e-7", "3.00\n-5.00",
                           "2026-01-05 采购单 CG-1", "六角螺栓", "a=b", "'tis", "'", "#"}) {
    EXPECT_EQ(SpreadsheetText(text), text);
  }
}

TEST(SpreadsheetText, LeavesTheSumsOfATotalRowAlone) {
  for (const char* text : {"-461.20\n1,807.20", "-5\n0", "+1\n2", "-1.00\n2.00\n3.00", "461.20\n1,807.20"})
    EXPECT_EQ(SpreadsheetText(text), text);
}

// To a spreadsheet these are differences and more.
TEST(SpreadsheetText, PutsAnApostropheBeforeSumsThatWouldBeCalculatedWith) {
  for (const char* text : {"-461.20\n-1,807.20", "-5\n+3", "-5\n3\n-1", "-5\n=3", "-5\n@A1", "-5\n", "-5\n\n3",
                           "-5\r\n3", "-5\nA1", "-5\n\t3", "-5\n%"})
    EXPECT_EQ(SpreadsheetText(text), std::string("'") + text);
}

TEST(SpreadsheetText, GivesEveryTextBack) {
  for (const char* text : {"-461.20\n1,807.20", "'-461.20\n1,807.20", "'-5\n-3", "=1", "'=1", "''=1", "-5", "'-5", "-",
                           "'-", "'tis", "", "'", "@", "\tx", "x", "'''", "'''+"}) {
    EXPECT_EQ(CellText(SpreadsheetText(text)), text);
  }
}

}  // namespace
}  // namespace stockbook::app
