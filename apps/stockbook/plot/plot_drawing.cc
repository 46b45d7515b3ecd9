// SPDX-License-Identifier: MIT
#include "stockbook/plot/plot_drawing.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <QBuffer>
#include <QCoreApplication>
#include <memory>

#include "databases/late/late_library.h"
#include "stockbook/platform/error.h"
#include "stockbook/plot/plot_pen.h"

namespace stockbook::app {
namespace {

// Loaded with the first plot, as the library that draws on it is.
constexpr databases::LateLibrary kCairoLibrary(STOCKBOOK_CAIRO_FILE);
constinit const databases::LateFunction<decltype(::cairo_create)> cairo_create(kCairoLibrary, "cairo_create");
constinit const databases::LateFunction<decltype(::cairo_destroy)> cairo_destroy(kCairoLibrary, "cairo_destroy");
constinit const databases::LateFunction<decltype(::cairo_image_surface_create_for_data)>
    cairo_image_surface_create_for_data(kCairoLibrary, "cairo_image_surface_create_for_data");
constinit const databases::LateFunction<decltype(::cairo_paint)> cairo_paint(kCairoLibrary, "cairo_paint");
constinit const databases::LateFunction<decltype(::cairo_pdf_surface_create_for_stream)>
    cairo_pdf_surface_create_for_stream(kCairoLibrary, "cairo_pdf_surface_create_for_stream");
constinit const databases::LateFunction<decltype(::cairo_set_source_rgb)> cairo_set_source_rgb(kCairoLibrary,
                                                                                               "cairo_set_source_rgb");
constinit const databases::LateFunction<decltype(::cairo_status)> cairo_status(kCairoLibrary, "cairo_status");
constinit const databases::LateFunction<decltype(::cairo_surface_destroy)> cairo_surface_destroy(
    kCairoLibrary, "cairo_surface_destroy");
constinit const databases::LateFunction<decltype(::cairo_surface_finish)> cairo_surface_finish(kCairoLibrary,
                                                                                               "cairo_surface_finish");
constinit const databases::LateFunction<decltype(::cairo_surface_flush)> cairo_surface_flush(kCairoLibrary,
                                                                                             "cairo_surface_flush");
constinit const databases::LateFunction<decltype(::cairo_surface_status)> cairo_surface_status(kCairoLibrary,
                                                                                               "cairo_surface_status");
constinit const databases::LateFunction<decltype(::cairo_svg_surface_create_for_stream)>
    cairo_svg_surface_create_for_stream(kCairoLibrary, "cairo_svg_surface_create_for_stream");

struct DestroyCairo {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, DestroyCairo>;

// False when the surface or its file did not take the drawing.
bool DrawOnto(const CairoSurface& surface, const JournalPlot& plot, const PlotPage& page, PlotLook look) {
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return false;
  const std::unique_ptr<cairo_t, DestroyCairo> context(cairo_create(surface.get()));
  if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) return false;
  const unsigned paper = PlotPaperShade(look);
  cairo_set_source_rgb(context.get(), (paper >> 16) / 255.0, (paper >> 8 & 0xFF) / 255.0, (paper & 0xFF) / 255.0);
  cairo_paint(context.get());
  try {
    PenPlot(plot, page, look, context.get());
  } catch (const platform::Error&) {
    return false;
  }
  return cairo_status(context.get()) == CAIRO_STATUS_SUCCESS;
}

cairo_status_t TakePlotBytes(void* bytes, const unsigned char* data, unsigned length) {
  static_cast<QByteArray*>(bytes)->append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(length));
  return CAIRO_STATUS_SUCCESS;
}

QByteArray PlotVectorFile(const JournalPlot& plot, const PlotPage& page, PlotFormat format) {
  QByteArray bytes;
  const auto& create =
      format == PlotFormat::kPdf ? cairo_pdf_surface_create_for_stream : cairo_svg_surface_create_for_stream;
  CairoSurface surface(create(TakePlotBytes, &bytes, page.width, page.height));
  bool drawn = DrawOnto(surface, plot, page, PlotLook::kLight);
  cairo_surface_finish(surface.get());
  drawn = drawn && cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
  return drawn ? bytes : QByteArray();
}

bool HasCairo() {
  try {
    return kCairoLibrary.Find("cairo_create") != nullptr;
  } catch (const platform::Error&) {
    return false;
  }
}

}  // namespace

bool CanDrawPlots() {
  static const bool can = HasCairo() && HasPlotDriver();
  return can;
}

const char* WhyNoPlots() {
  return CanDrawPlots()
             ? ""
             : QT_TRANSLATE_NOOP("stockbook",
                                 "找不到绘图库 PLplot 或它的 cairo 驱动，不能作图：请安装软件包 plplot-driver-cairo。");
}

QImage PlotPicture(const JournalPlot& plot, const PlotPage& page, PlotLook look) {
  if (!CanDrawPlots() || page.width <= 0 || page.height <= 0) return {};
  QImage image(page.width, page.height, QImage::Format_RGB32);
  if (image.isNull()) return {};
  const CairoSurface surface(cairo_image_surface_create_for_data(image.bits(), CAIRO_FORMAT_RGB24, page.width,
                                                                 page.height, static_cast<int>(image.bytesPerLine())));
  if (!DrawOnto(surface, plot, page, look)) return {};
  cairo_surface_flush(surface.get());
  return image;
}

QByteArray PlotFile(const JournalPlot& plot, const PlotPage& page, PlotFormat format) {
  if (!CanDrawPlots()) throw platform::Error("plot", WhyNoPlots());
  QByteArray bytes;
  if (format == PlotFormat::kPng) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const QImage image = PlotPicture(plot, page, PlotLook::kLight);
    if (image.isNull() || !image.save(&buffer, "PNG")) bytes.clear();
  } else {
    bytes = PlotVectorFile(plot, page, format);
  }
  if (bytes.isEmpty()) throw platform::Error("plot", "不能作图：内存不足，请改小图的尺寸。");
  return bytes;
}

}  // namespace stockbook::app
