// SPDX-License-Identifier: MIT
#include "scenarios/desk.h"

#include <algorithm>
#include <stdexcept>

#include "base/text.h"
#include "stockbook/base/value.h"
#include "stockbook/control/row_fields.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/platform/error.h"

namespace stockbook::scenarios {
namespace {

using sheet::Modifiers;
using sheet::MouseButton;
using sheet::MouseEvent;

// "a" and "b" of "a<between>b"; "b" is empty without it.
std::pair<std::string, std::string> Cut(const std::string& text, const std::string& between) {
  const size_t at = text.find(between);
  if (at == std::string::npos) return {Trimmed(text), ""};
  return {Trimmed(text.substr(0, at)), Trimmed(text.substr(at + between.size()))};
}

std::string WithoutAccessKey(const std::string& caption) { return Cut(caption, "(&").first; }

const platform::MenuItem* ItemOf(const platform::MenuItem& menu, const std::string& caption) {
  for (const platform::MenuItem& item : menu.items) {
    if (!item.visible) continue;
    if (!item.caption.empty() && Visible(WithoutAccessKey(item.caption)) == caption) return &item;
    if (const platform::MenuItem* found = ItemOf(item, caption)) return found;
  }
  return nullptr;
}

}  // namespace

void EventLog::MouseUp(int16_t& button, int16_t& shift, float& /*x*/, float& /*y*/) {
  Hear("MouseUp button " + std::to_string(button) + " shift " + std::to_string(shift));
}

Desk::Desk(const std::string& dialect) : dialect_(dialect) { Compose(); }

void Desk::Compose() {
  keyboard_.reset();
  mouse_.reset();
  fakes_ = std::make_unique<testing::ControlOverFakes>();
  // No half twips, so that there is nothing to round.
  fakes_->metrics.line_height_twips = 210.7;
  control().DefaultFormat();
  grid().view().SetSize({4000, 1500}, 1.0);
  mouse_ = std::make_unique<sheet::Mouse>(grid().view());
  keyboard_ = std::make_unique<sheet::Keyboard>(grid().view());
  control().AddListener(&log_);
}

const std::map<std::string, Desk::Action>& Desk::Actions() {
  static const std::map<std::string, Action> kActions = {
      {"load", &Desk::DoLoad},
      {"click", &Desk::DoClick},
      {"shift-click", &Desk::DoShiftClick},
      {"control-click", &Desk::DoControlClick},
      {"right-click", &Desk::DoRightClick},
      {"double-click", &Desk::DoDoubleClick},
      {"drag", &Desk::DoDrag},
      {"drag-edge", &Desk::DoDragEdge},
      {"press", &Desk::DoPress},
      {"set", &Desk::DoSet},
      {"write", &Desk::DoWrite},
      {"find", &Desk::DoFind},
      {"command", &Desk::DoCommand},
      {"cancel-loads", &Desk::DoCancelLoads},
      {"save-appearance", &Desk::DoSave},
      {"restore-appearance", &Desk::DoRestore},
  };
  return kActions;
}

void Desk::Do(const std::string& step) {
  const auto [word, rest] = Cut(step, " ");
  const auto action = Actions().find(word);
  if (action == Actions().end()) throw std::runtime_error("Nobody knows how to do: " + step);
  (this->*action->second)(rest);
}

// load [product N] [second N] [class CODE]
void Desk::DoLoad(const std::string& rest) {
  if (control().Conn() == nullptr) control().SetConn(databases::OpenEmbedded(inventory_.ConnectionString(dialect_)));
  std::map<std::string, std::string> given{{"product", "-1"}, {"second", "-1"}, {"class", ""}};
  const auto words = base::Split(rest, ' ');
  for (size_t at = 0; at + 1 < words.size(); at += 2) {
    if (!given.contains(std::string(words[at]))) throw std::runtime_error("Nobody knows how to load by: " + rest);
    given[std::string(words[at])] = words[at + 1];
  }
  const bool loaded = control().Load(std::stoi(given["product"]), std::stoi(given["second"]), given["class"]);
  log_.lines.push_back(loaded ? "Load is true" : "Load is false");
}

// ROW KEY
Desk::Cell Desk::CellOf(const std::string& text) {
  const auto [row, key] = Cut(text, " ");
  const Cell cell{std::stoi(row), grid().ColIndex(key)};
  if (cell.column < 0 || cell.row >= grid().Rows()) throw std::runtime_error("The grid has no cell " + text + ".");
  if (grid().view().geometry().VisibleCellRect(cell.row, cell.column).width <= 0)
    throw std::runtime_error("The cell " + text + " is not in sight.");
  return cell;
}

MouseEvent Desk::At(const Cell& cell, MouseButton button, int16_t modifiers) {
  const sheet::Rect rect = grid().view().geometry().VisibleCellRect(cell.row, cell.column);
  return {button, {modifiers}, {rect.x + rect.width / 2, rect.y + rect.height / 2}};
}

void Desk::Click(const std::string& cell, MouseButton button, int16_t modifiers) {
  const MouseEvent event = At(CellOf(cell), button, modifiers);
  mouse_->Move({MouseButton::kNone, event.modifiers, event.at});
  mouse_->Press(event);
  mouse_->Release(event);
}

// CELL [and choose CAPTION]
void Desk::DoRightClick(const std::string& rest) {
  const auto [cell, caption] = Cut(rest, " and choose ");
  std::string problem;
  fakes_->menu.choose = [&, wanted = caption](const platform::MenuItem& menu) {
    const platform::MenuItem* item = wanted.empty() ? nullptr : ItemOf(menu, wanted);
    if (!wanted.empty() && (item == nullptr || !item->enabled)) problem = "The menu does not offer " + wanted + ".";
    return item == nullptr || !item->enabled ? platform::MenuChoice() : platform::MenuChoice{item->name, item->index};
  };
  fakes_->menu.shown.clear();
  Click(cell, MouseButton::kRight, 0);
  fakes_->menu.choose = nullptr;
  if (!caption.empty() && fakes_->menu.shown.empty()) problem = "No menu opened.";
  if (!problem.empty()) throw std::runtime_error(problem);
}

void Desk::DoDoubleClick(const std::string& rest) {
  const MouseEvent event = At(CellOf(rest), MouseButton::kLeft, 0);
  mouse_->Press(event);
  mouse_->Release(event);
  mouse_->DoubleClick(event);
  mouse_->Release(event);
}

// CELL to CELL
void Desk::DoDrag(const std::string& rest) {
  const auto [from, to] = Cut(rest, " to ");
  const MouseEvent begin = At(CellOf(from), MouseButton::kLeft, 0);
  const MouseEvent end = At(CellOf(to), MouseButton::kLeft, 0);
  mouse_->Press(begin);
  mouse_->Move(end);
  mouse_->Release(end);
}

// ROW by PIXELS: the lower edge of a row.
void Desk::DoDragEdge(const std::string& rest) {
  const auto [row, pixels] = Cut(rest, " by ");
  const sheet::Rect rect = grid().view().geometry().CellRect(std::stoi(row), 0);
  MouseEvent event{MouseButton::kLeft, {}, {rect.x + rect.width / 2, rect.bottom()}};
  mouse_->Press(event);
  event.at.y += std::stoi(pixels);
  mouse_->Move(event);
  mouse_->Release(event);
}

// [Shift+][Ctrl+]KEY
void Desk::DoPress(const std::string& rest) {
  static const std::map<std::string, sheet::Key> kKeys = {
      {"Up", sheet::Key::kUp},         {"Down", sheet::Key::kDown},         {"Left", sheet::Key::kLeft},
      {"Right", sheet::Key::kRight},   {"Home", sheet::Key::kHome},         {"End", sheet::Key::kEnd},
      {"PageUp", sheet::Key::kPageUp}, {"PageDown", sheet::Key::kPageDown}, {"Enter", sheet::Key::kEnter},
      {"Plus", sheet::Key::kPlus},     {"Minus", sheet::Key::kMinus},       {"A", sheet::Key::kA}};
  sheet::KeyEvent event;
  for (const std::string_view part : base::Split(rest, '+')) {
    if (part == "Shift")
      event.modifiers.bits |= Modifiers::kShift;
    else if (part == "Ctrl")
      event.modifiers.bits |= Modifiers::kControl;
    else
      event.key = kKeys.at(std::string(part));
  }
  keyboard_->Press(event);
}

// PROPERTY to VALUE
void Desk::DoSet(const std::string& rest) {
  const auto [name, value] = Cut(rest, " to ");
  if (control().Conn() == nullptr) control().SetConn(databases::OpenEmbedded(inventory_.ConnectionString(dialect_)));
  try {
    SetProperty(control(), name, value);
  } catch (const platform::Error& error) {
    log_.lines.push_back(std::string("Error ") + error.what());
  }
}

// FIELD of ROW as VALUE
void Desk::DoWrite(const std::string& rest) {
  const auto [field, row_and_value] = Cut(rest, " of ");
  const auto [row, value] = Cut(row_and_value, " as ");
  WriteField(control().Fields(), field, std::stoi(row), value);
}

void Desk::DoFind(const std::string& rest) { control().Find(rest); }

// NAME [PARAMETER]
void Desk::DoCommand(const std::string& rest) {
  const auto [name, parameter] = Cut(rest, " ");
  std::vector<base::Value> parameters{base::Value(parameter)};
  control().DoCommand(name, parameters);
}

void Desk::DoCancelLoads(const std::string& /*rest*/) { log_.cancels = true; }

void Desk::DoSave(const std::string& /*rest*/) {
  bag_ = {};
  control().WriteProperties(bag_);
}

// Into a new control, as if a form were opened again.
void Desk::DoRestore(const std::string& /*rest*/) {
  Compose();
  control().ReadProperties(bag_);
}

}  // namespace stockbook::scenarios
