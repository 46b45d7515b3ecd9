// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <memory>

namespace stockbook::qt {

// A test with a running toolkit, without a screen.
class WithApplication : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  // Starts the toolkit with a platform other than one plain screen.
  static void StartOn(const QByteArray& platform);
  static void TearDownTestSuite();
};

// How many pixels of the area differ from the colour.
int PixelsUnlike(const QImage& image, const QRect& area, QRgb colour);

}  // namespace stockbook::qt
