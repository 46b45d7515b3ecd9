// SPDX-License-Identifier: MIT
#pragma once

#include "sheet/input/viewer.h"
#include "sheet/sheet.h"

namespace stockbook::sheet {

// For as long as it lives the sheet is laid out for paper, and afterwards as it was before: its viewer hears nothing of
// it, so a window goes on showing what it shows. Nothing but painting may happen meanwhile.
class PaperLayout {
 public:
  // What stays in view of the columns: as on the screen, or the fixed columns alone.
  enum class Pinned { kFrozen, kFixed };

  // `scale` is pixels of the sheet for one of 96 to the inch; the sheet has the appearance meanwhile.
  PaperLayout(Sheet& sheet, double scale, const Appearance& appearance);
  ~PaperLayout();
  PaperLayout(const PaperLayout&) = delete;
  PaperLayout& operator=(const PaperLayout&) = delete;

  void Pin(Pinned pinned);
  // Lays out exactly the rows and columns that are given, behind the captions and the pinned columns.
  void Show(Span rows, Span columns);

  // In pixels of the sheet: what the captions, the pinned columns, and the columns and rows behind them take.
  int CaptionHeight() const;
  int PinnedWidth() const;
  int64_t Width(Span columns) const;
  int64_t Height(Span rows) const;
  const Sheet& sheet() const { return sheet_; }

 private:
  Sheet& sheet_;
  SheetViewer* viewer_;
  Sheet::Layout layout_;
  Appearance appearance_;
  int frozen_columns_;
};

}  // namespace stockbook::sheet
