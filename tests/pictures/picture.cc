// SPDX-License-Identifier: MIT
#include "pictures/picture.h"

#include <QApplication>
#include <QFontDatabase>
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "pictures/picture_comparison.h"
#include "stockbook/qt/images.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/sheet/view/view.h"
#include "support/sample_ledger.h"
#include "support/toolkit.h"

namespace stockbook::pictures {
namespace {

constexpr const char* kFont = "Noto Sans CJK SC";

std::filesystem::path ReferenceOf(const std::string& name) {
  return std::filesystem::path(STOCKBOOK_SOURCE_DIR) / "docs" / "grid" / (name + ".png");
}

bool IsToBeWritten() { return qEnvironmentVariableIntValue("STOCKBOOK_WRITE_PICTURES") == 1; }

using ColourCounts = std::map<QRgb, int>;

// Maps every colour to the most frequent one in its cube of that side length; frequent colours stay.
std::map<QRgb, QRgb> MergeColours(const ColourCounts& counts, int side) {
  constexpr int kFrequent = 50;
  const auto cube_of = [side](QRgb colour) {
    return qRgb(qRed(colour) / side, qGreen(colour) / side, qBlue(colour) / side);
  };
  std::map<QRgb, std::pair<int, QRgb>> first_of_cube;
  for (const auto& [colour, count] : counts) {
    auto& [most, first] = first_of_cube[cube_of(colour)];
    if (count > most) {
      most = count;
      first = colour;
    }
  }
  std::map<QRgb, QRgb> merged;
  for (const auto& [colour, count] : counts)
    merged[colour] = count >= kFrequent ? colour : first_of_cube[cube_of(colour)].second;
  return merged;
}

// With at most 256 colours the file is a third as large; at the edges of pictures, colours that are barely
// distinguishable are merged.
QImage WithFewColours(const QImage& image) {
  constexpr int kMostColours = 256;
  ColourCounts counts;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
  }
  for (int side = 1; side < 32; ++side) {
    const std::map<QRgb, QRgb> merged = MergeColours(counts, side);
    std::map<QRgb, uint> index;
    for (const auto& [colour, now] : merged) index.emplace(now, static_cast<uint>(index.size()));
    if (index.size() > kMostColours) continue;
    QImage indexed(image.size(), QImage::Format_Indexed8);
    QList<QRgb> palette(static_cast<qsizetype>(index.size()));
    for (const auto& [colour, at] : index) palette[at] = colour;
    indexed.setColorTable(palette);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) indexed.setPixel(x, y, index.at(merged.at(image.pixel(x, y))));
    }
    return indexed;
  }
  return image;
}

void Write(const QImage& image, const std::filesystem::path& path) {
  constexpr int kSmallest = 0;
  ASSERT_TRUE(WithFewColours(image).save(QString::fromStdString(path.string()), "PNG", kSmallest)) << path;
}

}  // namespace

void PictureTest::SetUpTestSuite() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::RunningToolkit() = std::make_unique<testing::Toolkit>();
}

void PictureTest::TearDownTestSuite() { testing::RunningToolkit().reset(); }

void PictureTest::SetUp() {
  if (!QFontDatabase::families().contains(kFont)) GTEST_SKIP() << "the font " << kFont << " is not installed";
  sheet_.SetScrollBars(platform::ScrollBarsSetting::kNone);
  platform::Font font = sheet_.GridFont();
  font.name = kFont;
  sheet_.SetGridFont(font);
}

void PictureTest::FillLedger(int periods, int lines) {
  testing::SampleLedger({periods, lines}).Fill(sheet_);
  const qt::QtImages images;
  std::vector<uint8_t> kinds;
  for (size_t record = 0; record < sheet_.RecordCount(); ++record) {
    const std::string bill = sheet_.TextMatrix(sheet_.RowOfRecord(record), testing::kLedgerBill);
    kinds.push_back(bill.find(" R-") != std::string::npos ? 1 : 2);
  }
  sheet_.SetLoadedPictures(testing::kLedgerBill, std::move(kinds),
                           {nullptr, images.Find("RevBill"), images.Find("IssBill")},
                           platform::PictureAlignment::kLeftCenter);
}

QImage PictureTest::Seen(QSize size, double scale, View state) {
  qt::SheetWidget view(sheet_.view());
  view.setEnabled(state == View::kEnabled);
  view.resize(size);
  view.show();
  QApplication::processEvents();
  QImage image(QSize(static_cast<int>(size.width() * scale), static_cast<int>(size.height() * scale)),
               QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  view.viewport()->render(&image);
  image.setDevicePixelRatio(1);
  return image;
}

void PictureTest::ExpectPicture(const std::string& name, const QImage& seen) {
  const std::filesystem::path path = ReferenceOf(name);
  if (IsToBeWritten()) return Write(seen, path);
  const QImage reference(QString::fromStdString(path.string()));
  ASSERT_FALSE(reference.isNull()) << path << " is missing; make it with STOCKBOOK_WRITE_PICTURES=1";
  const Difference difference = Compare(reference, seen);
  if (difference.IsSmall()) return;
  const std::filesystem::path beside = std::filesystem::temp_directory_path() / ("stockbook-" + name + ".png");
  Write(seen, beside);
  const QRect& where = difference.where;
  ADD_FAILURE() << difference.unlike_pixels << " pixels are unlike " << path << ", from (" << where.x() << ", "
                << where.y() << ") on, " << where.width() << " by " << where.height()
                << "; colours: " << difference.colours << "; what is seen is in " << beside;
}

}  // namespace stockbook::pictures
