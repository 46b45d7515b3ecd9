// SPDX-License-Identifier: MIT
#include "sheet/paint/snapshot.h"

#include <algorithm>
#include <vector>

#include "sheet/geometry/row_axis.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "sheet/paint/cell_layout.h"
#include "sheet/store/store.h"
#include "stockbook/sheet/geometry/geometry.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {

using platform::Alignment;
using platform::GridColour;

// Whether a snapshot shows the selection, the current cell and the drop mark.
enum class Highlights { kShown, kLeftOut };

// Fills a Snapshot from a view of a sheet.
class SnapshotBuilder {
 public:
  SnapshotBuilder(const View& view, const Appearance& looks, const Rect& area, Highlights highlights);
  Snapshot Build();

 private:
  // Longer texts are cut; no screen shows more of a cell.
  static constexpr size_t kMostTextBytes = 4096;

  void AddPane(Span rows, Span columns, const Rect& pane);
  std::vector<SnapshotRow> RowsOf(Span rows) const;
  std::vector<SnapshotColumn> ColumnsOf(Span columns) const;
  void FillRow(SnapshotPane& pane, const SnapshotRow& row);
  SnapshotCell CellOf(const SnapshotRow& row, const SheetColumn& column, RowId id);
  void AddText(const SnapshotRow& row, const SheetColumn& column, RowId id, SnapshotCell& cell);
  void AddColours(const SnapshotRow& row, int column, const CellStyle& style, SnapshotCell& cell) const;
  uint16_t FontIndex(std::string_view name);
  int DropEdge(int column) const;
  void AddCurrentCell();

  const View& view_;
  const Sheet& sheet_;
  Geometry geometry_;
  Highlights highlights_;
  Snapshot snapshot_;
};

Snapshot Snapshot::Of(const View& view, const Rect& area) { return Of(view, area, view.sheet().appearance()); }

Snapshot Snapshot::Of(const View& view, const Rect& area, const Appearance& looks) {
  return SnapshotBuilder(view, looks, area, Highlights::kShown).Build();
}

Snapshot Snapshot::Of(const View& view) { return Of(view, {0, 0, view.size().width, view.size().height}); }

Snapshot Snapshot::OnPaper(const View& view, const Rect& area, const Appearance& looks) {
  return SnapshotBuilder(view, looks, area, Highlights::kLeftOut).Build();
}

SnapshotBuilder::SnapshotBuilder(const View& view, const Appearance& looks, const Rect& area, Highlights highlights)
    : view_(view), sheet_(view.sheet()), geometry_(view.geometry()), highlights_(highlights) {
  snapshot_.area_ = area.Intersected({0, 0, geometry_.view().width, geometry_.view().height});
  snapshot_.scale_ = view.scale();
  snapshot_.focused_ = view.focused();
  snapshot_.appearance_ = looks;
  snapshot_.cells_ = geometry_.CellsRect();
  snapshot_.outline_column_ = sheet_.states().NodeCount() > 0 ? sheet_.OutlineCol() : -1;
  snapshot_.fonts_.push_back(looks.font);
}

Snapshot SnapshotBuilder::Build() {
  const Pinned pinned = geometry_.pinned();
  const Rect& area = snapshot_.area_;
  const Size view = geometry_.view();
  const int fixed_width = std::min(geometry_.FixedWidth(), view.width);
  const int left = geometry_.PinnedWidth();
  const int top = geometry_.PinnedHeight();
  const Span body_rows = geometry_.RowsWithin(area.y, area.bottom());
  const Span body_columns = geometry_.ColumnsWithin(area.x, area.right());
  const Span fixed_rows = geometry_.FixedRowsWithin(area.y, area.bottom());
  const Rect caption{left, 0, view.width - left, top};
  const Rect body{left, top, view.width - left, view.height - top};
  // The scrolling parts first, then the pinned parts on top of them.
  AddPane(body_rows, body_columns, body);
  AddPane(body_rows, {pinned.fixed_columns, pinned.columns}, {fixed_width, top, left - fixed_width, view.height - top});
  AddPane(body_rows, {0, pinned.fixed_columns}, {0, top, fixed_width, view.height - top});
  AddPane(fixed_rows, body_columns, caption);
  AddPane(fixed_rows, {pinned.fixed_columns, pinned.columns}, {fixed_width, 0, left - fixed_width, top});
  AddPane(fixed_rows, {0, pinned.fixed_columns}, {0, 0, fixed_width, top});
  if (pinned.columns > pinned.fixed_columns && left < view.width) snapshot_.frozen_edge_ = left;
  if (highlights_ == Highlights::kShown) {
    if (view_.drop_column() >= 0) snapshot_.drop_edge_ = DropEdge(view_.drop_column());
    AddCurrentCell();
  }
  return std::move(snapshot_);
}

void SnapshotBuilder::AddPane(Span rows, Span columns, const Rect& pane) {
  SnapshotPane part;
  part.whole = pane.Intersected(snapshot_.cells_);
  part.area = part.whole.Intersected(snapshot_.area_);
  if (part.area.IsEmpty()) return;
  part.rows = RowsOf(rows);
  part.columns = ColumnsOf(columns);
  if (part.rows.empty() || part.columns.empty()) return;
  const SnapshotColumn& first = part.columns.front();
  const SnapshotColumn& last = part.columns.back();
  part.cells = {first.x, part.rows.front().y, last.x + last.width - first.x,
                part.rows.back().y + part.rows.back().height - part.rows.front().y};
  const CellPart kind = view_.PartOf(part.rows.front().row, first.column);
  part.fixed = kind == CellPart::kFixed;
  part.back = snapshot_.appearance_.BackOf(kind);
  part.content.reserve(part.rows.size() * part.columns.size());
  for (const SnapshotRow& row : part.rows) FillRow(part, row);
  snapshot_.panes_.push_back(std::move(part));
}

std::vector<SnapshotRow> SnapshotBuilder::RowsOf(Span span) const {
  std::vector<SnapshotRow> rows;
  const RowStates& states = sheet_.states();
  const RowAxis& axis = view_.rows();
  if (span.first >= span.last) return rows;
  const int64_t scrolled = span.first < geometry_.pinned().rows ? 0 : geometry_.scroll().y;
  int64_t y = axis.Top(span.first) - scrolled;
  states.ForEachRun(span.first, span.last, [&](int64_t first, int64_t count, const RowState& state) {
    const int height = axis.HeightOf(state);
    for (int64_t row = first; height > 0 && row < first + count; ++row) {
      if (!rows.empty()) rows.back().next_level = state.level;
      rows.push_back({static_cast<int>(row), static_cast<int>(y), height, state.level, -1, state.subtotal,
                      state.collapsed, false});
      y += height;
    }
    return true;
  });
  if (rows.empty()) return rows;
  const int64_t next = states.ShownAtOrAfter(rows.back().row + 1);
  if (next < states.Rows()) rows.back().next_level = states.At(next).level;
  for (SnapshotRow& row : rows) row.governs = row.node && sheet_.outline().Governs(row.row);
  return rows;
}

std::vector<SnapshotColumn> SnapshotBuilder::ColumnsOf(Span span) const {
  std::vector<SnapshotColumn> columns;
  if (geometry_.pinned().rows >= sheet_.Rows() && sheet_.Rows() == 0) return columns;
  for (int column = span.first; column < span.last; ++column) {
    const Rect at = geometry_.CellRect(0, column);
    const bool seen = at.x < snapshot_.area_.right() && at.right() > snapshot_.area_.x;
    if (at.width > 0 && seen) columns.push_back({column, at.x, at.width});
  }
  return columns;
}

void SnapshotBuilder::FillRow(SnapshotPane& pane, const SnapshotRow& row) {
  const RowId id = sheet_.store().order().IdAt(row.row);
  for (const SnapshotColumn& column : pane.columns) {
    pane.content.push_back(CellOf(row, sheet_.store().columns().At(column.column), id));
  }
}

SnapshotCell SnapshotBuilder::CellOf(const SnapshotRow& row, const SheetColumn& column, RowId id) {
  SnapshotCell cell;
  const CellStyle& style = sheet_.store().StyleAt(column, id);
  cell.font = FontIndex(style.font_name);
  AddText(row, column, id, cell);
  platform::PictureRef picture = sheet_.store().PictureAt(column, id, cell.picture_alignment);
  if (picture != nullptr) {
    cell.picture = picture.get();
    snapshot_.pictures_.push_back(std::move(picture));
  }
  const bool caption = row.row < sheet_.FixedRows();
  cell.alignment = style.alignment.value_or(caption ? Alignment::kCenterCenter : column.alignment);
  if (cell.alignment == Alignment::kGeneral) {
    const bool right = cell.number || (column.type() == platform::DataType::kDate && !caption);
    cell.alignment = right ? Alignment::kRightCenter : Alignment::kLeftCenter;
  }
  AddColours(row, column.position, style, cell);
  return cell;
}

void SnapshotBuilder::AddText(const SnapshotRow& row, const SheetColumn& column, RowId id, SnapshotCell& cell) {
  std::string& texts = snapshot_.texts_;
  cell.text_first = static_cast<uint32_t>(texts.size());
  const bool caption = row.row < sheet_.FixedRows();
  if (caption) {
    column.AppendText(id, texts);
  } else {
    sheet_.store().AppendDisplay(column, id, texts);
  }
  if (texts.size() - cell.text_first > kMostTextBytes) {
    size_t end = cell.text_first + kMostTextBytes;
    while (end > cell.text_first && (static_cast<unsigned char>(texts[end]) & 0xC0) == 0x80) --end;
    texts.resize(end);
  }
  cell.text_size = static_cast<uint32_t>(texts.size()) - cell.text_first;
  if (caption || cell.text_size == 0 || !IsNumberType(column.type())) return;
  // A number has digits and no characters but those of numbers: "1,234.50", "12%", "1.00\n2.00".
  const std::string_view text = std::string_view(texts).substr(cell.text_first);
  cell.number = text.find_first_not_of("0123456789.,+-()%Ee \r\n") == std::string_view::npos &&
                text.find_first_of("0123456789") != std::string_view::npos;
}

void SnapshotBuilder::AddColours(const SnapshotRow& row, int column, const CellStyle& style, SnapshotCell& cell) const {
  const Appearance& looks = snapshot_.appearance_;
  const CellPart part = view_.PartOf(row.row, column);
  cell.back = style.back.value_or(row.node ? looks.NodeBackOf(part) : looks.BackOf(part));
  cell.fore = style.fore.value_or(looks.ForeOf(part));
  const Selection& selection = view_.selection();
  const bool current = selection.current == CellPosition{row.row, column};
  const bool marked = highlights_ == Highlights::kShown && !current && selection.IsRange();
  if (part != CellPart::kFixed && marked && selection.Contains(row.row, column)) {
    cell.back = looks.Of(GridColour::kBackColorSel);
    cell.fore = looks.Of(GridColour::kForeColorSel);
  }
  const bool tells_negative = cell.number && looks.negative_fore && !style.fore;
  cell.negative_fore = tells_negative ? *looks.negative_fore : cell.fore;
}

uint16_t SnapshotBuilder::FontIndex(std::string_view name) {
  auto& fonts = snapshot_.fonts_;
  if (name.empty()) return 0;
  for (size_t index = 0; index < fonts.size(); ++index) {
    if (fonts[index].name == name) return static_cast<uint16_t>(index);
  }
  platform::Font font = fonts.front();
  font.name = name;
  fonts.push_back(std::move(font));
  return static_cast<uint16_t>(fonts.size() - 1);
}

int SnapshotBuilder::DropEdge(int column) const {
  if (sheet_.Cols() == 0) return -1;
  const int edge =
      column < sheet_.Cols() ? geometry_.CellRect(0, column).x : geometry_.CellRect(0, sheet_.Cols() - 1).right();
  // If the edge of a partly visible column is out of view, the mark is where the visible part begins or ends.
  const int least = column < view_.PinnedCols() ? 0 : geometry_.PinnedWidth();
  const int most = geometry_.view().width - 2 * PaintMetrics::Of(view_.scale()).line;
  return std::max(std::min(edge, most), least);
}

void SnapshotBuilder::AddCurrentCell() {
  const CellPosition current = view_.selection().current;
  if (current.row < 0 || current.column < 0 || !sheet_.states().At(current.row).IsShown()) return;
  snapshot_.current_pane_ = geometry_.PaneOf(current.row, current.column);
  snapshot_.current_ = geometry_.CellRect(current.row, current.column);
  if (!snapshot_.current_.Intersects(snapshot_.current_pane_)) snapshot_.current_ = Rect();
}

}  // namespace stockbook::sheet
