// SPDX-License-Identifier: MIT
// A full repaint of the sheet on 1920 by 1080 pixels, from damage to window, compared with a plain loop that writes the
// same texts by ExtTextOutW, one cell a call, on a white bitmap and shows that by one BitBlt: what a program pays that
// draws its table itself. Both in one run, in turn. Run by hand, on an X server:
//
//   cmake --build build/windows-x64 --target stockbook_repaint_bench
//   xvfb-run -a tools/wine build/windows-x64/bench/com/repaint_bench.exe [ROUNDS]
//
// `of_plain` is repaint / plain, of the medians.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "com/automation/text.h"
#include "com/window/fonts.h"
#include "com/window/rectangle.h"
#include "com/window/sheet_surface.h"
#include "sheet/paint/snapshot.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/sample_ledger.h"

namespace {

using namespace stockbook;

constexpr sheet::Size kSize{1920, 1080};
constexpr sheet::Rect kAll{0, 0, kSize.width, kSize.height};
constexpr int kWarmUp = 5;

double Milliseconds() {
  LARGE_INTEGER count;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart) * 1e3;
}

// The sample ledger, as wide as the view.
void FillView(sheet::GridSheet& grid) {
  testing::SampleLedger().Fill(grid);
  grid.SetGridFont(com::DefaultGridFont());
  sheet::View& view = grid.view();
  view.SetSize(kSize, 1);
  const auto width = static_cast<double>(view.geometry().ContentWidth());
  if (width >= kSize.width) return;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    if (!grid.ColHidden(column))
      grid.SetColWidth(column, static_cast<int>(static_cast<double>(grid.ColWidth(column)) * kSize.width / width));
  }
}

struct PlainText {
  RECT area;
  std::wstring text;
};

std::vector<PlainText> TextsOf(const sheet::View& view) {
  constexpr int kMargin = 4;
  std::vector<PlainText> texts;
  const sheet::Snapshot snapshot = sheet::Snapshot::Of(view);
  for (const auto& pane : snapshot.panes()) {
    for (size_t row = 0; row < pane.rows.size(); ++row) {
      for (size_t column = 0; column < pane.columns.size(); ++column) {
        const auto& cell = pane.At(row, column);
        if (cell.text_size == 0) continue;
        RECT area = com::ToRECT(pane.CellRect(row, column));
        InflateRect(&area, -kMargin, 0);
        texts.push_back({area, com::ToWide(snapshot.TextOf(cell))});
      }
    }
  }
  return texts;
}

void PaintPlainly(const std::vector<PlainText>& texts, const com::GdiFont& font, const com::BackBuffer& buffer) {
  const RECT all = com::ToRECT(kAll);
  const HGDIOBJ old = SelectObject(buffer.dc(), font.handle());
  SetBkMode(buffer.dc(), TRANSPARENT);
  FillRect(buffer.dc(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  for (const PlainText& text : texts)
    ExtTextOutW(buffer.dc(), text.area.left, text.area.top + 2, ETO_CLIPPED, &text.area, text.text.data(),
                static_cast<UINT>(text.text.size()), nullptr);
  SelectObject(buffer.dc(), old);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int count, char** arguments) {
  const int rounds = std::max(1, count > 1 ? std::atoi(arguments[1]) : 21);
  const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, kSize.width, kSize.height,
                                      nullptr, nullptr, nullptr, nullptr);
  const HDC shown = GetDC(window);
  if (shown == nullptr) {
    std::fprintf(stderr, "repaint_bench: nothing here shows windows\n");
    return 1;
  }
  sheet::GridSheet grid;
  FillView(grid);
  const std::vector<PlainText> texts = TextsOf(grid.view());
  com::SheetSurface surface;
  com::BackBuffer buffer;
  buffer.Resize(kSize);
  const com::GdiFont font(grid.GridFont(), 1);
  std::vector<double> repaint;
  std::vector<double> plain;
  for (int round = -kWarmUp; round < rounds; ++round) {
    const double start = Milliseconds();
    surface.AddDamage(kAll);
    surface.Paint(grid.view(), std::nullopt);
    surface.Show(shown, kAll);
    GdiFlush();
    const double between = Milliseconds();
    PaintPlainly(texts, font, buffer);
    buffer.Show(shown, kAll, {0, 0});
    GdiFlush();
    const double end = Milliseconds();
    if (round < 0) continue;
    repaint.push_back(between - start);
    plain.push_back(end - between);
  }
  std::printf("texts %zu\nplain %.2f ms\nrepaint %.2f ms, of_plain %.2f\n", texts.size(), Median(plain),
              Median(repaint), Median(repaint) / Median(plain));
  ReleaseDC(window, shown);
  DestroyWindow(window);
  return 0;
}
