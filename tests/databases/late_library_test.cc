// SPDX-License-Identifier: MIT
#include "databases/late/late_library.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

constexpr LateLibrary kMathematics("libm.so.6");
constexpr LateLibrary kNowhere("libstockbook-nowhere.so.1");

TEST(LateLibrary, CallsAFunctionOfTheLibrary) {
  const LateFunction<double(double)> root(kMathematics, "cbrt");
  EXPECT_DOUBLE_EQ(root(27.0), 3.0);
  EXPECT_DOUBLE_EQ(root(8.0), 2.0) << "it is found once";
}

TEST(LateLibrary, AMissingLibraryIsNamedInOneSentence) {
  const LateFunction<double(double)> root(kNowhere, "cbrt");
  try {
    root(27.0);
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find("“libstockbook-nowhere.so.1”没有安装"), std::string::npos) << error.what();
  }
}

TEST(LateLibrary, AFunctionThatTheLibraryDoesNotHaveIsAnErrorToo) {
  const LateFunction<double(double)> none(kMathematics, "stockbook_has_no_such_function");
  EXPECT_THROW(none(1.0), platform::Error);
}

}  // namespace
}  // namespace stockbook::databases
