// SPDX-License-Identifier: MIT
#include "stockbook/window/plot_paper.h"

#include <QFileInfo>
#include <QPainter>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <optional>

#include "qt/sheet/text.h"
#include "stockbook/platform/error.h"
#include "stockbook/plot/plot_drawing.h"

namespace stockbook::app {
namespace {

constexpr double kPlainDpi = 96;
constexpr double kMostDpi = 300;                // more cannot be seen and takes a lot of memory
constexpr PlotPage kFilePage{1280, 800, 1.25};  // as a window of usual size, easy to read in a document

std::optional<PlotFormat> FormatOfEnding(const QString& ending) {
  if (ending == QLatin1String("png")) return PlotFormat::kPng;
  if (ending == QLatin1String("pdf")) return PlotFormat::kPdf;
  if (ending == QLatin1String("svg")) return PlotFormat::kSvg;
  return std::nullopt;
}

}  // namespace

bool PrintPlot(const JournalPlot& plot, QPagedPaintDevice& device) {
  if (!CanDrawPlots()) return false;
  QPainter painter;
  if (!painter.begin(&device)) return false;
  const double dpi = device.logicalDpiX();
  const double factor = std::min(1.0, kMostDpi / dpi);
  const PlotPage page{static_cast<int>(std::lround(device.width() * factor)),
                      static_cast<int>(std::lround(device.height() * factor)), dpi * factor / kPlainDpi};
  const QImage picture = PlotPicture(plot, page, PlotLook::kLight);
  if (!picture.isNull()) painter.drawImage(QRectF(0, 0, device.width(), device.height()), picture);
  return painter.end() && !picture.isNull();
}

void SavePlot(const JournalPlot& plot, const QString& path) {
  const auto format = FormatOfEnding(QFileInfo(path).suffix().toLower());
  if (!format) {
    throw platform::Error("plot", "文件名要以 .png、.pdf 或 .svg 结尾：" + qt::FromQString(QFileInfo(path).fileName()));
  }
  const QByteArray bytes = PlotFile(plot, kFilePage, *format);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    throw platform::Error("plot", "写不了文件 " + qt::FromQString(path) + "（" + qt::FromQString(file.errorString()) +
                                      "）：请换一个位置。");
  }
}

}  // namespace stockbook::app
