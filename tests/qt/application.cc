// SPDX-License-Identifier: MIT
#include "qt/application.h"

#include "support/toolkit.h"

namespace stockbook::qt {
void WithApplication::SetUpTestSuite() { StartOn("offscreen"); }

void WithApplication::StartOn(const QByteArray& platform) {
  qputenv("QT_QPA_PLATFORM", platform);
  testing::RunningToolkit() = std::make_unique<testing::Toolkit>();
}

void WithApplication::TearDownTestSuite() { testing::RunningToolkit().reset(); }

int PixelsUnlike(const QImage& image, const QRect& area, QRgb colour) {
  int count = 0;
  const QRect inside = area.intersected(image.rect());
  for (int y = inside.top(); y <= inside.bottom(); ++y) {
    for (int x = inside.left(); x <= inside.right(); ++x) {
      if ((image.pixel(x, y) | 0xFF000000u) != (colour | 0xFF000000u)) ++count;
    }
  }
  return count;
}

}  // namespace stockbook::qt
