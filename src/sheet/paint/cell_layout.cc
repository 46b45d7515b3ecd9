// SPDX-License-Identifier: MIT
#include "sheet/paint/cell_layout.h"

namespace stockbook::sheet {
namespace {

using platform::PictureAlignment;

// The colour halfway between two.
platform::Colour Between(platform::Colour one, platform::Colour other) {
  constexpr platform::Colour kLowBits = 0x00010101;  // a half of an odd channel must not reach the next one
  return ((one & ~kLowBits) >> 1) + ((other & ~kLowBits) >> 1);
}

constexpr std::string_view kHashes = "########################################################################";

HorizontalAlign HorizontalOf(int16_t code) {
  constexpr int kRowsOfCodes = 3;
  return code / kRowsOfCodes == 0   ? HorizontalAlign::kLeft
         : code / kRowsOfCodes == 1 ? HorizontalAlign::kCenter
                                    : HorizontalAlign::kRight;
}

// The position of something of the size within [first, first + room): 0 at the beginning, 1 in the middle, 2 at the
// end.
int Placed(int first, int room, int size, int where) { return first + (room - size) * where / 2; }

std::string_view TakeLine(std::string_view& text) {
  const size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

int LinesOf(std::string_view text) {
  constexpr std::ptrdiff_t kMostLines = 64;
  return static_cast<int>(std::min(std::count(text.begin(), text.end(), '\n') + 1, kMostLines));
}

// Formats write a minus sign or put the number in brackets.
bool IsBelowZero(std::string_view number) { return number.front() == '-' || number.front() == '('; }

}  // namespace

CellLayout::CellLayout(const Snapshot& snapshot, TextMeasure& measure)
    : snapshot_(snapshot), measure_(measure), metrics_(PaintMetrics::Of(snapshot.scale())) {
  for (const platform::Font& font : snapshot.fonts()) {
    fonts_.push_back({measure.LineHeight(font), std::max(measure.TextWidth(font, "0"), measure.TextWidth(font, "%"))});
  }
}

bool CellLayout::HasTree(const SnapshotPane& pane, size_t column) const {
  return !pane.fixed && pane.columns[column].column == snapshot_.outline_column() &&
         snapshot_.appearance().outline_bar != platform::OutlineBarStyle::kNone;
}

Rect CellLayout::ContentRect(const SnapshotPane& pane, size_t row, size_t column) const {
  Rect content = pane.CellRect(row, column);
  content.width -= metrics_.line;
  content.height -= metrics_.line;
  if (HasTree(pane, column)) {
    const SnapshotRow& shown = pane.rows[row];
    const int indent = shown.node ? metrics_.outline.NodeIndent(shown.level) : metrics_.outline.LineIndent(shown.level);
    content.x += indent;
    content.width -= indent;
  }
  return content;
}

PictureItem CellLayout::PlacePicture(const SnapshotCell& cell, Rect& content) const {
  const platform::Picture& picture = *cell.picture;
  if (cell.picture_alignment >= PictureAlignment::kStretch) {
    return {&picture, content, cell.picture_alignment == PictureAlignment::kTile};
  }
  int width = static_cast<int>(std::lround(picture.WidthPx() * snapshot_.scale()));
  int height = static_cast<int>(std::lround(picture.HeightPx() * snapshot_.scale()));
  if (height > content.height && height > 0) {
    width = width * std::max(content.height, 0) / height;
    height = std::max(content.height, 0);
  }
  const auto code = static_cast<int>(cell.picture_alignment);
  const int side = code / 3;
  // A small mark in a corner overlaps the margin of the text and takes no room, so that marked numbers stay aligned.
  const bool mark = code % 3 != 1 && height * 2 <= content.height;
  const Rect room = mark ? content : content.Inset(metrics_.gap, 0);
  const Rect at{Placed(room.x, room.width, width, side), Placed(room.y, room.height, height, code % 3), width, height};
  constexpr int kLeft = 0;
  constexpr int kRight = 2;
  const int taken = mark ? 0 : width + metrics_.gap;
  if (side == kLeft) content.x += taken;
  if (side == kLeft || side == kRight) content.width -= taken;
  return {&picture, at, false};
}

std::string_view CellLayout::Hashes(const SnapshotCell& cell, int width) const {
  const int hash = std::max(1, measure_.TextWidth(snapshot_.FontOf(cell), "#"));
  return kHashes.substr(0, static_cast<size_t>(std::clamp(width / hash, 1, static_cast<int>(kHashes.size()))));
}

bool CellLayout::IsCutOff(HorizontalAlign align, const Rect& room, const Rect& seen, int width) {
  if (width > room.width) return true;
  const int x = Placed(room.x, room.width, width, static_cast<int>(align));
  return x < seen.x || x + width > seen.right();
}

void CellLayout::PlaceText(const SnapshotCell& cell, const Rect& content, const Rect& seen, Batches& batches) const {
  std::string_view text = snapshot_.TextOf(cell);
  const Rect room = content.Inset(metrics_.padding, 0);
  if (text.empty() || room.IsEmpty()) return;
  const int line_height = LineHeightOf(cell);
  const int lines = LinesOf(text);
  const int fitting = std::clamp(room.height / line_height, 1, lines);
  const auto code = static_cast<int16_t>(cell.alignment);
  const HorizontalAlign align = HorizontalOf(code);
  const TextOverflow overflow = cell.number ? TextOverflow::kClip : TextOverflow::kEllipsis;
  const bool clip = line_height > room.height;
  const bool within = room.x >= seen.x && room.right() <= seen.right();
  int y = Placed(room.y, room.height, fitting * line_height, code % 3);
  // Lines that do not fit are left out, so that half a line is never mistaken for another number.
  for (int line = 0; line < fitting; ++line, y += line_height) {
    const std::string_view whole = TakeLine(text);
    if (whole.empty()) continue;
    TextItem item{whole, room, align, overflow, clip};
    const bool surely_fits =
        !cell.number || (within && static_cast<int>(whole.size()) * fonts_[cell.font].number_width <= room.width);
    platform::Colour fore = IsBelowZero(whole) ? cell.negative_fore : cell.fore;
    const int width = surely_fits ? 0 : measure_.TextWidth(snapshot_.FontOf(cell), whole);
    if (!surely_fits && IsCutOff(align, room, seen, width)) {
      // Scrolling sideways would reveal the number, so the signs are pale, on whatever the row has behind them.
      if (width <= room.width) fore = Between(fore, cell.back);
      item.rect.x = std::max(room.x, seen.x);
      item.rect.width = std::min(room.right(), seen.right()) - item.rect.x;
      if (item.rect.IsEmpty()) continue;
      item.text = Hashes(cell, item.rect.width);
    }
    if (!clip) {
      item.rect.y = y;
      item.rect.height = line_height;
    }
    batches.TextsOf(cell.font, fore).push_back(item);
  }
}

bool CellLayout::IsCut(const SnapshotCell& cell, const Rect& content, const Rect& seen) const {
  std::string_view text = snapshot_.TextOf(cell);
  const Rect room = content.Inset(metrics_.padding, 0);
  if (text.empty()) return false;
  const int lines = LinesOf(text);
  if (lines > 1 && lines * LineHeightOf(cell) > room.height) return true;
  const HorizontalAlign align = HorizontalOf(static_cast<int16_t>(cell.alignment));
  while (!text.empty()) {
    if (IsCutOff(align, room, seen, measure_.TextWidth(snapshot_.FontOf(cell), TakeLine(text)))) return true;
  }
  return false;
}

Size CellLayout::NaturalSize(const SnapshotPane& pane, size_t row, size_t column) const {
  const SnapshotCell& cell = pane.At(row, column);
  const Rect whole = pane.CellRect(row, column);
  Rect content = ContentRect(pane, row, column);
  if (cell.picture != nullptr && cell.picture_alignment < PictureAlignment::kStretch) PlacePicture(cell, content);
  // The tree, the picture and the grid lines need the same room whatever the text.
  Size size{whole.width - content.width, whole.height - content.height};
  std::string_view text = snapshot_.TextOf(cell);
  if (text.empty()) return size;
  size.height += LinesOf(text) * LineHeightOf(cell);
  int widest = 0;
  while (!text.empty()) widest = std::max(widest, measure_.TextWidth(snapshot_.FontOf(cell), TakeLine(text)));
  size.width += widest + 2 * metrics_.padding;
  return size;
}

}  // namespace stockbook::sheet
