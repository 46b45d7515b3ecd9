// SPDX-License-Identifier: MIT
#include "sheet/print/carried_line.h"

#include <algorithm>

#include "sheet/geometry/scale.h"
#include "sheet/paint/cell_layout.h"

namespace stockbook::sheet {

using platform::GridColour;

std::string CarriedLine::TextBefore(int row, int column) const {
  const Sheet& sheet = paper_.sheet();
  int line = std::min(row, sheet.Rows()) - 1;
  while (line >= sheet.FixedRows() && sheet.IsSubtotal(line)) --line;
  if (line < sheet.FixedRows()) return {};
  std::string text = sheet.DisplayText(line, column);
  return text.empty() ? sheet.FormatValue(column, base::Value(0.0)) : text;
}

bool CarriedLine::IsCarried(int column) const {
  return std::find(setup_.carried_columns.begin(), setup_.carried_columns.end(), column) !=
         setup_.carried_columns.end();
}

std::vector<CarriedLine::Place> CarriedLine::PlacesOf(Span columns) const {
  const Sheet& sheet = paper_.sheet();
  std::vector<Place> places;
  int x = 0;
  const auto add = [&](Span some) {
    for (int column = some.first; column < some.last; ++column) {
      if (sheet.ColHidden(column)) continue;
      const auto width = static_cast<int>(ToPixels(sheet.ColWidth(column), paper_.view().scale()));
      if (width > 0) places.push_back({column, x, width});
      x += width;
    }
  };
  add({0, paper_.PinnedCols()});
  add(columns);
  return places;
}

// The words stand where those of periods do, or else in the first column that does not tell a value.
int CarriedLine::CaptionColumn(const std::vector<Place>& places) const {
  const Sheet& sheet = paper_.sheet();
  const auto is_outline = [&](const Place& place) { return place.column == sheet.OutlineCol(); };
  if (std::any_of(places.begin(), places.end(), is_outline)) return sheet.OutlineCol();
  const auto found = std::find_if(places.begin(), places.end(), [&](const Place& place) {
    return place.column >= sheet.FixedCols() && !IsCarried(place.column);
  });
  return found == places.end() ? -1 : found->column;
}

void CarriedLine::Paint(Canvas& canvas, const Appearance& looks, std::string_view caption, int row_after,
                        Span columns) const {
  const std::vector<Place> places = PlacesOf(columns);
  if (places.empty()) return;
  const PaintMetrics metrics = PaintMetrics::Of(paper_.view().scale());
  const int width = places.back().x + places.back().width;
  const Rect whole{0, 0, width, height()};
  canvas.FillRects(looks.NodeBackOf(CellPart::kBody), {&whole, 1});
  std::vector<Rect> lines{{0, whole.height - metrics.line, width, metrics.line}};
  for (const Place& place : places)
    lines.push_back({place.x + place.width - metrics.line, 0, metrics.line, whole.height});
  canvas.FillRects(looks.Of(GridColour::kGridColor), lines);
  const int words = CaptionColumn(places);
  std::vector<std::string> texts;
  for (const Place& place : places) {
    const bool carried = IsCarried(place.column);
    texts.push_back(carried ? TextBefore(row_after, place.column)
                            : std::string(place.column == words ? caption : std::string_view()));
  }
  std::vector<TextItem> items;
  for (size_t at = 0; at < places.size(); ++at) {
    const Rect cell{places[at].x, 0, places[at].width, whole.height};
    const auto align = IsCarried(places[at].column) ? HorizontalAlign::kRight : HorizontalAlign::kLeft;
    if (!texts[at].empty()) items.push_back({texts[at], cell.Inset(metrics.padding, 0), align});
  }
  canvas.DrawTexts(looks.font, looks.ForeOf(CellPart::kBody), items);
}

}  // namespace stockbook::sheet
