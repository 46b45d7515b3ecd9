// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QSize>
#include <string>

#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::pictures {

inline constexpr QSize kUsualSize{660, 300};

enum class View { kEnabled, kDisabled };

// A test that looks at a grid with the font of the reference pictures. Skipped if that is not installed.
class PictureTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
  void SetUp() override;

  // The sample ledger, with its pictures of bills, in the light colours.
  void FillLedger(int periods = 3, int lines = 6);
  // The grid as shown in a window of the size.
  QImage Seen(QSize size = kUsualSize, double scale = 1, View state = View::kEnabled);
  // Compares the view with docs/grid/NAME.png, or writes that file if STOCKBOOK_WRITE_PICTURES=1 is in the environment.
  void ExpectPicture(const std::string& name, const QImage& seen);
  void ExpectPicture(const std::string& name) { ExpectPicture(name, Seen()); }

  sheet::GridSheet sheet_;
};

}  // namespace stockbook::pictures
