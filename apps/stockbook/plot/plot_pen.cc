// SPDX-License-Identifier: MIT
#include "stockbook/plot/plot_pen.h"

#include <plplot.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "databases/late/late_library.h"
#include "stockbook/platform/error.h"
#include "stockbook/plot/plot_layout.h"

namespace stockbook::app {
namespace {

// The library, which brings a dozen others, is loaded with the first plot. Its functions are called as ever; its
// header's macros call most of them by the names in quotes.
constexpr databases::LateLibrary kPlotLibrary(STOCKBOOK_PLPLOT_FILE);
constinit const databases::LateFunction<decltype(::pl_cmd)> pl_cmd(kPlotLibrary, "pl_cmd");
constinit const databases::LateFunction<decltype(::pladv)> pladv(kPlotLibrary, "c_pladv");
constinit const databases::LateFunction<decltype(::plbox)> plbox(kPlotLibrary, "c_plbox");
constinit const databases::LateFunction<decltype(::plcol0)> plcol0(kPlotLibrary, "c_plcol0");
constinit const databases::LateFunction<decltype(::plend)> plend(kPlotLibrary, "c_plend");
constinit const databases::LateFunction<decltype(::plfill)> plfill(kPlotLibrary, "c_plfill");
constinit const databases::LateFunction<decltype(::plgDevs)> plgDevs(kPlotLibrary, "plgDevs");
constinit const databases::LateFunction<decltype(::plgspa)> plgspa(kPlotLibrary, "c_plgspa");
constinit const databases::LateFunction<decltype(::plinit)> plinit(kPlotLibrary, "c_plinit");
constinit const databases::LateFunction<decltype(::plline)> plline(kPlotLibrary, "c_plline");
constinit const databases::LateFunction<decltype(::plptex)> plptex(kPlotLibrary, "c_plptex");
constinit const databases::LateFunction<decltype(::plschr)> plschr(kPlotLibrary, "c_plschr");
constinit const databases::LateFunction<decltype(::plscol0)> plscol0(kPlotLibrary, "c_plscol0");
constinit const databases::LateFunction<decltype(::plsdev)> plsdev(kPlotLibrary, "c_plsdev");
constinit const databases::LateFunction<decltype(::plsexit)> plsexit(kPlotLibrary, "plsexit");
constinit const databases::LateFunction<decltype(::plslabelfunc)> plslabelfunc(kPlotLibrary, "c_plslabelfunc");
constinit const databases::LateFunction<decltype(::plsmaj)> plsmaj(kPlotLibrary, "c_plsmaj");
constinit const databases::LateFunction<decltype(::plsmin)> plsmin(kPlotLibrary, "c_plsmin");
constinit const databases::LateFunction<decltype(::plspage)> plspage(kPlotLibrary, "c_plspage");
constinit const databases::LateFunction<decltype(::plvpor)> plvpor(kPlotLibrary, "c_plvpor");
constinit const databases::LateFunction<decltype(::plwidth)> plwidth(kPlotLibrary, "c_plwidth");
constinit const databases::LateFunction<decltype(::plwind)> plwind(kPlotLibrary, "c_plwind");

constexpr const char* kPlotDriver = "extcairo";  // draws where the caller says, in memory or into a file's surface

// Numbers of the library's colours.
enum PlotInk : PLINT { kPaperInk, kTextInk, kGridInk, kBandInk, kQuantityInk, kPriceInk, kInInk, kOutInk, kInkCount };

using Shades = std::array<unsigned, kInkCount>;  // 0xRRGGBB
constexpr Shades kLightShades{0xFFFFFF, 0x303438, 0xC4C8CC, 0xF0F3F7, 0x1F5FA8, 0x8A4FA3, 0x2E8B57, 0xC0504D};
constexpr Shades kDarkShades{0x1E1F22, 0xDADDE0, 0x4A4E54, 0x282B30, 0x6FB1F0, 0xC79BDD, 0x69C08C, 0xE08582};

const Shades& ShadesOf(PlotLook look) { return look == PlotLook::kDark ? kDarkShades : kLightShades; }

// The library ends the program on an error that it takes for a fatal one, unless its caller leaves it here.
int LeavePlotLibrary(const char* reason) { throw platform::Error("plot", reason == nullptr ? "" : reason); }

bool ListsPlotDriver() {
  constexpr int kMost = 64;
  std::array<const char*, kMost> menu{};
  std::array<const char*, kMost> names{};
  const char** menus = menu.data();
  const char** devices = names.data();
  int count = kMost;
  plgDevs(&menus, &devices, &count);
  return std::any_of(names.begin(), names.begin() + std::clamp(count, 0, kMost),
                     [](const char* name) { return name != nullptr && std::strcmp(name, kPlotDriver) == 0; });
}

// The library's escapes begin with '#', which is a sign like others in names.
std::string EscapedForPlot(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '#') escaped += '#';
    escaped += c;
  }
  return escaped;
}

// What the marks of a frame stand for.
struct PlotMarks {
  double first_day = 0;
  double number_step = 1;
};

// The library's own clock writes the day before beside a mark at midnight.
void LabelMark(PLINT axis, PLFLT value, char* label, PLINT length, PLPointer data) {
  const auto& marks = *static_cast<const PlotMarks*>(data);
  const std::string text =
      axis == PL_X_AXIS ? PlotDayText(marks.first_day, value) : PlotNumberText(value, marks.number_step);
  std::snprintf(label, static_cast<size_t>(length), "%s", text.c_str());
}

// Draws one plot into a cairo context. The library is drawing only while this lives, and nothing else of it.
class PlotPen {
 public:
  PlotPen(const JournalPlot& plot, const PlotPage& page, const Shades& shades, void* context)
      : plot_(plot), page_(page), layout_(LayOutPlot(plot, page)) {
    plsdev(kPlotDriver);
    plspage(0, 0, page.width, page.height, 0, 0);
    for (int ink = 0; ink < kInkCount; ++ink) {
      const unsigned shade = shades.at(static_cast<size_t>(ink));
      plscol0(ink, static_cast<PLINT>(shade >> 16), static_cast<PLINT>(shade >> 8 & 0xFF),
              static_cast<PLINT>(shade & 0xFF));
    }
    plinit();
    pl_cmd(PLESC_DEVINIT, context);
    pladv(0);
    SetTextHeight();
  }
  ~PlotPen() { plend(); }
  PlotPen(const PlotPen&) = delete;
  PlotPen& operator=(const PlotPen&) = delete;

  void Draw() {
    for (const PlotFrame& frame : layout_.frames) {
      OpenFrame(frame);
      DrawBands(frame);
      DrawGrid(frame);
      if (frame.pane == PlotPane::kMovements) {
        DrawBars();
      } else {
        DrawSteps(frame.pane);
      }
      DrawAxes(frame);
    }
    DrawTexts();
  }

 private:
  double Width() const { return page_.width; }
  double Height() const { return page_.height; }
  // Days count from the left edge, so that their marks do, too.
  double XOf(double day) const { return day - layout_.from; }

  void SetTextHeight() {
    PLFLT left = 0;
    PLFLT right = 0;
    PLFLT bottom = 0;
    PLFLT top = 0;
    plgspa(&left, &right, &bottom, &top);
    plschr(layout_.text_height / Width() * (right - left), 1.0);
    plsmaj(0, 0.5);
    plsmin(0, 0.5);
  }

  void OpenFrame(const PlotFrame& frame) {
    plvpor(frame.left / Width(), frame.right / Width(), 1 - frame.bottom / Height(), 1 - frame.top / Height());
    plwind(0, layout_.to - layout_.from, frame.low, frame.high);
  }

  void DrawBands(const PlotFrame& frame) {
    plcol0(kBandInk);
    for (size_t at = 1; at < plot_.bands.size(); at += 2) {
      const PlotBand& band = plot_.bands[at];
      FillBox(band.from, band.to, frame.low, frame.high);
    }
  }

  void FillBox(double from, double to, double low, double high) {
    const std::array<PLFLT, 4> x{XOf(from), XOf(to), XOf(to), XOf(from)};
    const std::array<PLFLT, 4> y{low, low, high, high};
    plfill(4, x.data(), y.data());
  }

  void DrawBars() {
    for (const PlotBar& bar : plot_.bars) {
      const double gap = (bar.to - bar.from) * 0.1;
      plcol0(kInInk);
      if (bar.in != 0 && std::isfinite(bar.in)) FillBox(bar.from + gap, bar.to - gap, 0, bar.in);
      plcol0(kOutInk);
      if (bar.out != 0 && std::isfinite(bar.out)) FillBox(bar.from + gap, bar.to - gap, 0, -bar.out);
    }
  }

  // Level from a line to the next one, then up or down to it.
  void DrawSteps(PlotPane pane) {
    const auto number = [pane](const PlotStep& step) {
      return pane == PlotPane::kQuantity ? step.quantity : step.price;
    };
    std::vector<PLFLT> x;
    std::vector<PLFLT> y;
    for (const PlotStep& step : plot_.steps) {
      if (!std::isfinite(number(step))) continue;
      if (!x.empty()) {
        x.push_back(XOf(step.day));
        y.push_back(y.back());
      }
      x.push_back(XOf(step.day));
      y.push_back(number(step));
    }
    if (x.empty()) return;
    x.push_back(XOf(layout_.to));
    y.push_back(y.back());
    plcol0(pane == PlotPane::kQuantity ? kQuantityInk : kPriceInk);
    plwidth(1.5 * page_.scale);
    plline(static_cast<PLINT>(x.size()), x.data(), y.data());
    plwidth(page_.scale);
  }

  void DrawGrid(const PlotFrame& frame) {
    plwidth(page_.scale * 0.8);
    plcol0(kGridInk);
    plbox("", 0, 0, "g", frame.step, 0);
  }

  void DrawAxes(const PlotFrame& frame) {
    plwidth(page_.scale * 0.8);
    plcol0(kTextInk);
    const bool last = &frame == &layout_.frames.back();
    PlotMarks marks{layout_.from, frame.step};
    plslabelfunc(LabelMark, &marks);
    plbox(last ? "bctno" : "bct", layout_.day_step, 0, "bctnov", frame.step, 0);
    plslabelfunc(nullptr, nullptr);
    const std::array<PLFLT, 2> x{0, layout_.to - layout_.from};
    const std::array<PLFLT, 2> y{0, 0};
    if (frame.low < 0 && frame.high > 0) plline(2, x.data(), y.data());
    plwidth(page_.scale);
  }

  // From the pixels of the page.
  void Write(double x, double y, double justify, const std::string& text) {
    plptex(x, Height() - y, 1, 0, justify, EscapedForPlot(text).c_str());
  }

  const std::string& CaptionOf(PlotPane pane) const {
    if (pane == PlotPane::kPrice) return plot_.price_caption;
    return pane == PlotPane::kQuantity ? plot_.quantity_caption : plot_.movements_caption;
  }

  void DrawTexts() {
    plvpor(0, 1, 0, 1);
    plwind(0, Width(), 0, Height());
    plcol0(kTextInk);
    const double line = layout_.text_height;
    if (page_.is_titled) Write(Width() / 2, line, 0.5, plot_.title);
    if (layout_.frames.empty()) return;
    for (const PlotFrame& frame : layout_.frames) Write(frame.left, frame.top - line, 0, CaptionOf(frame.pane));
    if (!layout_.period_line) return;
    for (const PlotBand& band : plot_.bands) {
      if (layout_.HasRoomFor(band))
        Write((layout_.XOf(band.from) + layout_.XOf(band.to)) / 2, *layout_.period_line, 0.5, band.caption);
    }
  }

  const JournalPlot& plot_;
  PlotPage page_;
  PlotLayout layout_;
};

}  // namespace

unsigned PlotPaperShade(PlotLook look) { return ShadesOf(look)[kPaperInk]; }

bool HasPlotDriver() {
  try {
    plsexit(LeavePlotLibrary);
    return ListsPlotDriver();
  } catch (const platform::Error&) {
    return false;  // it is not here, or finds no list of its drivers
  }
}

void PenPlot(const JournalPlot& plot, const PlotPage& page, PlotLook look, void* context) {
  PlotPen(plot, page, ShadesOf(look), context).Draw();
}

}  // namespace stockbook::app
