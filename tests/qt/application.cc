// SPDX-License-Identifier: MIT
#include "qt/application.h"

namespace stockbook::qt {
namespace {

// The toolkit keeps pointers to its command line, and allows one application at a time.
struct Application {
  int count = 1;
  char name[8] = "tests";
  char* arguments[2] = {name, nullptr};
  QApplication application{count, arguments};
};

std::unique_ptr<Application>& Running() {
  static std::unique_ptr<Application> running;
  return running;
}

}  // namespace

void WithApplication::SetUpTestSuite() { StartOn("offscreen"); }

void WithApplication::StartOn(const QByteArray& platform) {
  qputenv("QT_QPA_PLATFORM", platform);
  Running() = std::make_unique<Application>();
}

void WithApplication::TearDownTestSuite() { Running().reset(); }

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
