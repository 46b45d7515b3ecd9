// SPDX-License-Identifier: MIT
// What a scenario can look at: the control's grid, pictures, events, clipboard, menus and
// values.
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "scenarios/desk.h"
#include "stockbook/control/row_fields.h"

namespace stockbook::scenarios {
namespace {

using Lines = std::vector<std::string>;

void AddMenuLines(const platform::MenuItem& menu, const std::string& indent, Lines& lines) {
  for (const platform::MenuItem& item : menu.items) {
    if (!item.visible) continue;
    std::string line = item.separator ? "----" : Visible(item.caption);
    if (item.checkable) line = (item.checked ? "[x] " : "[ ] ") + line;
    lines.push_back(indent + line + (item.enabled ? "" : " (disabled)"));
    AddMenuLines(item, indent + "> ", lines);
  }
}

std::string BagText(const platform::BagValue& value) {
  if (const auto* small = std::get_if<int16_t>(&value)) return "Integer " + std::to_string(*small);
  if (const auto* number = std::get_if<int32_t>(&value)) return "Long " + std::to_string(*number);
  const auto& picture = std::get<platform::PictureRef>(value);
  return "Picture " + (picture ? testing::NameOf(picture) : "none");
}

}  // namespace

Lines Desk::Look(const std::string& what, const Lines& expected) {
  const size_t blank = what.find(' ');
  const std::string word = what.substr(0, blank);
  const std::string rest = blank == std::string::npos ? "" : what.substr(blank + 1);
  if (word == "grid") return LookAtGrid(rest);
  if (word == "pictures") return LookAtPictures();
  if (word == "events") return LookAtEvents(rest);
  if (word == "clipboard") return LookAtClipboard();
  if (word == "menu") return LookAtMenu();
  if (word == "bag") return LookAtBag(rest);
  if (word == "values") return LookAtValues(expected);
  throw std::runtime_error("Nobody knows how to look at: " + what);
}

std::string Desk::RowKind(int row) {
  std::string kind = "line";
  if (row < grid().FixedRows()) {
    kind = "captions";
  } else if (grid().IsSubtotal(row)) {
    const bool total = grid().TextMatrix(row, grid().ColIndex("BillNo")).ends_with("合计");
    kind = total ? "total" : grid().IsCollapsed(row) ? "period +" : "period -";
  } else if (grid().RecordOfRow(row) < 0) {
    kind = "opening";
  }
  return grid().view().geometry().CellRect(row, 0).height > 0 ? kind : kind + ", folded";
}

// The columns that are shown, or those that the step names.
Lines Desk::LookAtGrid(const std::string& rest) {
  std::vector<int> columns;
  if (rest.empty()) {
    for (int column = grid().FixedCols(); column < grid().Cols(); ++column)
      if (!grid().ColHidden(column)) columns.push_back(column);
  } else {
    for (const std::string_view key : base::Split(rest, ' ')) {
      columns.push_back(grid().ColIndex(key));
      if (columns.back() < 0) throw std::runtime_error("The grid has no column " + std::string(key) + ".");
    }
  }
  Table table{{"row", "is"}};
  for (const int column : columns) table[0].push_back(grid().ColKey(column));
  for (int row = 0; row < grid().Rows(); ++row) {
    table.push_back({std::to_string(row), RowKind(row)});
    for (const int column : columns) table.back().push_back(Visible(grid().DisplayText(row, column)));
  }
  return TableLines(table);
}

Lines Desk::LookAtPictures() {
  Lines lines;
  for (int row = grid().FixedRows(); row < grid().Rows(); ++row) {
    std::string line;
    for (int column = 0; column < grid().Cols(); ++column) {
      const platform::PictureRef picture = grid().CellPicture(row, column);
      if (!picture) continue;
      line += (line.empty() ? "" : ", ") + grid().ColKey(column) + " " + testing::NameOf(picture);
      if (grid().CellPictureAlignment(row, column) == platform::PictureAlignment::kRightTop) line += " right top";
    }
    if (!line.empty()) lines.push_back("row " + std::to_string(row) + ": " + line);
  }
  return lines;
}

// The events since the last look at them.
Lines Desk::LookAtEvents(const std::string& rest) {
  Lines lines = log_.Take();
  for (std::string& line : lines) line = Trimmed(Visible(line));
  if (rest == "but progress") std::erase_if(lines, [](const std::string& line) { return line.starts_with("Process"); });
  return lines;
}

// One line for every line on the clipboard, with its line end.
Lines Desk::LookAtClipboard() {
  Lines lines;
  for (const std::string_view line : base::Split(fakes_->clipboard.text, '\n')) lines.push_back(Visible(line) + "\\n");
  lines.back().resize(lines.back().size() - 2);
  if (lines.back().empty()) lines.pop_back();
  return lines;
}

Lines Desk::LookAtMenu() {
  Lines lines;
  if (!fakes_->menu.shown.empty()) AddMenuLines(fakes_->menu.shown.back(), "", lines);
  return lines;
}

// Of all keys, or of those that the step names.
Lines Desk::LookAtBag(const std::string& rest) {
  const auto wanted = base::Split(rest, ' ');
  Table table{{"key", "value"}};
  for (const auto& [key, value] : bag_.entries()) {
    if (rest.empty() || std::find(wanted.begin(), wanted.end(), key) != wanted.end())
      table.push_back({key, BagText(value)});
  }
  return TableLines(table);
}

Lines Desk::LookAtValues(const Lines& expected) {
  Lines lines;
  for (const std::string& line : expected) {
    const std::string name = Trimmed(line.substr(0, line.find(" =")));
    lines.push_back(Trimmed(name + " = " + Visible(ValueOf(name))));
  }
  return lines;
}

// A property of the control, "FIELD of ROW", or a value of the grid.
std::string Desk::ValueOf(const std::string& name) {
  const size_t of = name.find(" of ");
  if (of != std::string::npos) {
    const std::string what = name.substr(0, of);
    const std::string which = name.substr(of + 4);
    if (what == "height") return std::to_string(grid().RowHeight(std::stoi(which)));
    if (what == "back colour") {
      char text[12];
      std::snprintf(text, sizeof text, "#%06X", grid().CellBackColor(std::stoi(which), grid().ColIndex("BillNo")));
      return text;
    }
    if (what == "width") return std::to_string(grid().ColWidth(grid().ColIndex(which)));
    if (what == "position") return std::to_string(grid().ColIndex(which));
    if (what == "IssueSource") return control().Fields().IssueSource(std::stoi(which));
    return FieldText(control().Fields(), what, std::stoi(which));
  }
  if (name == "Cols") return std::to_string(grid().Cols());
  if (name == "OutlineCol") return std::to_string(grid().OutlineCol());
  if (name == "TopRow") return std::to_string(grid().TopRow());
  if (name == "FrozenCols") return std::to_string(grid().FrozenCols());
  if (name == "busy marker") return grid().Tag();
  if (name == "redraw") return grid().Redraw() ? "on" : "off";
  if (name == "body border") return std::to_string(control().C1EBody().border_width);
  if (name == "header picture") return testing::NameOf(control().C1EHeader().picture);
  return PropertyText(control(), name);
}

}  // namespace stockbook::scenarios
