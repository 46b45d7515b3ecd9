// SPDX-License-Identifier: MIT
#include "qt/kept_layouts.h"

#include <QStringList>
#include <algorithm>
#include <set>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::qt {
namespace {

constexpr int kTypes = 4;
constexpr int kMostTwips = 1 << 20;

std::optional<bool> ReadFlag(const QString& text) {
  if (text != QLatin1String("0") && text != QLatin1String("1")) return {};
  return text == QLatin1String("1");
}

std::optional<int> ReadTwips(const QString& text) {
  bool is_number = false;
  const int twips = text.toInt(&is_number);
  if (!is_number || twips < 0 || twips > kMostTwips) return {};
  return twips;
}

QString PrefixOf(const QString& group) { return group.isEmpty() ? QString() : group + QLatin1Char('/'); }

}  // namespace

KeptLayouts::KeptLayouts(control::Stockbook& stockbook)
    : stockbook_(stockbook), heights_laid_out_(ReadHeights()), columns_laid_out_(Shown()) {}

void KeptLayouts::Save(QSettings& settings, const QString& group) {
  Learn();
  // Without Restore there is one to save, the one that is shown.
  if (!keeping_ && IsLaidOut()) layouts_.insert_or_assign(Type(), ReadLayout(nullptr));
  for (const auto& [type, layout] : layouts_) Write(settings, PrefixOf(group), type, layout);
}

void KeptLayouts::Restore(const QSettings& settings, const QString& group) {
  keeping_ = true;
  layouts_.clear();
  for (int type = 0; type < kTypes; ++type) {
    if (auto layout = Read(settings, PrefixOf(group), type)) layouts_.insert_or_assign(type, std::move(*layout));
  }
  heights_laid_out_ = ReadHeights();
  // The host has not heard yet of a layout in which it hides what the user may not see.
  PutBackVisibility(PutBackWhat::kHidden);
  columns_laid_out_ = Shown();
  PutBack();
}

std::optional<KeptLayouts::Layout> KeptLayouts::Read(const QSettings& settings, const QString& prefix, int type) {
  const QString number = QString::number(type);
  Layout layout;
  std::set<QString> keys;
  for (const QString& column : settings.value(prefix + QStringLiteral("Columns") + number).toStringList()) {
    const QStringList parts = column.split(QLatin1Char(':'));
    const auto width = ReadTwips(parts.value(1));
    const auto hidden = ReadFlag(parts.value(2));
    if (parts.size() != 3 || (!width && !parts[1].isEmpty()) || (!hidden && !parts[2].isEmpty())) continue;
    if (parts[0].isEmpty() || !keys.insert(parts[0]).second) continue;
    layout.columns.push_back({FromQString(parts[0]), width, hidden});
  }
  if (layout.columns.empty()) return {};
  layout.frozen = std::max(0, settings.value(prefix + QStringLiteral("Frozen") + number).toInt());
  const QStringList heights = settings.value(prefix + QStringLiteral("Heights") + number).toStringList();
  const auto title = ReadTwips(heights.value(0));
  const auto line = ReadTwips(heights.value(1));
  const auto sum = ReadTwips(heights.value(2));
  layout.heights = {title.value_or(0), line.value_or(0), sum.value_or(0)};
  return layout;
}

void KeptLayouts::Write(QSettings& settings, const QString& prefix, int type, const Layout& layout) {
  const QString number = QString::number(type);
  QStringList columns;
  for (const Column& column : layout.columns) {
    columns << QStringLiteral("%1:%2:%3")
                   .arg(ToQString(column.key))
                   .arg(column.width_twips ? QString::number(*column.width_twips) : QString())
                   .arg(column.hidden ? QString::number(*column.hidden ? 1 : 0) : QString());
  }
  settings.setValue(prefix + QStringLiteral("Columns") + number, columns);
  settings.setValue(prefix + QStringLiteral("Frozen") + number, layout.frozen);
  const QString heights = prefix + QStringLiteral("Heights") + number;
  const auto& [title, line, sum] = layout.heights;
  if (title != 0 || line != 0 || sum != 0) {
    settings.setValue(heights, QStringList{QString::number(title), QString::number(line), QString::number(sum)});
  } else {
    settings.remove(heights);
  }
}

void KeptLayouts::BeforeOtherType() {
  Learn();
  // What comes now is laid out by the program, also where it sets the type that it has.
  arranged_.reset();
}

void KeptLayouts::BeforeLoad() {
  Learn();
  loading_ = true;
}

void KeptLayouts::AfterFormatted(const std::function<void()>& raise) {
  if (loading_) {
    arranged_.reset();
    PutBackVisibility(PutBackWhat::kHiddenAndShown);
  } else if (arranged_ == Type()) {
    // A layout that the user asked for is an arrangement like another.
    layouts_.erase(Type());
  } else {
    arranged_.reset();
  }
  columns_laid_out_ = Shown();
  heights_laid_out_ = ReadHeights();
  raise();
  columns_laid_out_ = Shown();
}

void KeptLayouts::ChangeFont(const std::function<void()>& change) {
  const Heights before = ReadHeights();
  change();
  const Heights after = ReadHeights();
  for (const auto height : {&Heights::title, &Heights::line, &Heights::sum}) {
    if (before.*height == heights_laid_out_.*height) heights_laid_out_.*height = after.*height;
  }
}

void KeptLayouts::ChangeRight(const std::function<void()>& change) {
  Learn();
  const std::map<std::string, LaidOut> before = Shown();
  change();
  for (const auto& [key, column] : Shown()) {
    const auto was = before.find(key);
    if (was != before.end() && was->second.hidden != column.hidden) columns_laid_out_[key].hidden = column.hidden;
  }
}

void KeptLayouts::LoadEnded() {
  loading_ = false;
  if (!IsLaidOut()) arranged_.reset();
}

void KeptLayouts::AfterLoaded() {
  loading_ = false;
  heights_laid_out_ = ReadHeights();
  if (keeping_) PutBack();
}

std::map<std::string, KeptLayouts::LaidOut> KeptLayouts::Shown() const {
  const platform::Grid& grid = stockbook_.Grid();
  std::map<std::string, LaidOut> columns;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column)
    columns.insert_or_assign(grid.ColKey(column), LaidOut{grid.ColWidth(column), grid.ColHidden(column)});
  return columns;
}

// A load that fails may leave the grid without the columns of the layout.
bool KeptLayouts::IsLaidOut() const {
  const std::map<std::string, LaidOut> shown = Shown();
  return std::all_of(columns_laid_out_.begin(), columns_laid_out_.end(),
                     [&](const auto& column) { return shown.contains(column.first); });
}

// Whether the control does not let the user see the column.
bool KeptLayouts::IsWithheld(const std::string& key) const {
  return stockbook_.ColsFilter().find("|" + key + "|") != std::string::npos;
}

KeptLayouts::Heights KeptLayouts::ReadHeights() const {
  const platform::Grid& grid = stockbook_.Grid();
  Heights heights;
  if (grid.Rows() == 0) return heights;
  heights.title = grid.RowHeight(0);
  int line = grid.FixedRows();
  while (line < grid.Rows() && grid.IsSubtotal(line)) ++line;
  if (line < grid.Rows()) heights.line = grid.RowHeight(line);
  // The totals, which a load inserts last and the control reads its height from, are as high as the first node.
  if (const int node = grid.NextSubtotal(grid.FixedRows()); node >= 0) heights.sum = grid.RowHeight(node);
  return heights;
}

KeptLayouts::Layout KeptLayouts::ReadLayout(const Layout* known) const {
  const platform::Grid& grid = stockbook_.Grid();
  std::map<std::string, std::optional<bool>> hidden_before;
  if (known != nullptr) {
    for (const Column& column : known->columns) hidden_before.insert_or_assign(column.key, column.hidden);
  }
  Layout layout;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    Column now{grid.ColKey(column), grid.ColWidth(column), grid.ColHidden(column)};
    const auto usual = columns_laid_out_.find(now.key);
    const bool is_usual = usual != columns_laid_out_.end();
    if (is_usual && usual->second.width_twips == now.width_twips) now.width_twips.reset();
    if (IsWithheld(now.key) || (is_usual && usual->second.hidden == now.hidden)) now.hidden = hidden_before[now.key];
    layout.columns.push_back(std::move(now));
  }
  layout.frozen = grid.FrozenCols();
  const Heights now = ReadHeights();
  for (const auto height : {&Heights::title, &Heights::line, &Heights::sum}) {
    // A journal without such rows says nothing of their height.
    if (now.*height == 0 && known != nullptr)
      layout.heights.*height = known->heights.*height;
    else if (now.*height != heights_laid_out_.*height)
      layout.heights.*height = now.*height;
  }
  return layout;
}

void KeptLayouts::Learn() {
  if (!keeping_ || arranged_ != Type() || !IsLaidOut()) return;
  const auto known = layouts_.find(Type());
  layouts_.insert_or_assign(Type(), ReadLayout(known == layouts_.end() ? nullptr : &known->second));
}

void KeptLayouts::PutBack() {
  arranged_ = Type();
  const auto layout = layouts_.find(Type());
  if (layout == layouts_.end()) return;
  PutBackColumns(layout->second);
  PutBackHeights(layout->second.heights);
}

void KeptLayouts::PutBackVisibility(PutBackWhat what) {
  const auto layout = layouts_.find(Type());
  if (!keeping_ || layout == layouts_.end()) return;
  platform::Grid& grid = stockbook_.Grid();
  const auto redraw = platform::RedrawOff(grid);
  for (const Column& wanted : layout->second.columns) {
    const int column = grid.ColIndex(wanted.key);
    if (column < grid.FixedCols() || !wanted.hidden) continue;
    if (*wanted.hidden)
      grid.SetColHidden(column, true);
    else if (what == PutBackWhat::kHiddenAndShown && !IsWithheld(wanted.key))
      grid.SetColHidden(column, false);
  }
}

void KeptLayouts::PutBackColumns(const Layout& layout) {
  platform::Grid& grid = stockbook_.Grid();
  const auto redraw = platform::RedrawOff(grid);
  int position = grid.FixedCols();
  for (const Column& wanted : layout.columns) {
    const int column = grid.ColIndex(wanted.key);
    // Before the position are fixed columns and those that have their places.
    if (column < position) continue;
    grid.SetColPosition(column, position);
    if (wanted.width_twips) grid.SetColWidth(position, *wanted.width_twips);
    ++position;
  }
  grid.SetFrozenCols(std::clamp(layout.frozen, 0, std::max(0, grid.Cols() - 1)));
  // The tree follows its column.
  grid.SetOutlineCol(grid.ColIndex(stockbook_.OutlineColKey()));
}

void KeptLayouts::PutBackHeights(const Heights& heights) {
  // The height of lines sets the others anew, as the control knows them.
  const Heights now = heights.line > 0 ? ReadHeights() : Heights{};
  const int title = heights.title > 0 ? heights.title : now.title;
  const int sum = heights.sum > 0 ? heights.sum : now.sum;
  if (title > 0) stockbook_.SetRowHeightTitle(static_cast<float>(title));
  if (sum > 0) stockbook_.SetRowHeightSum(static_cast<float>(sum));
  if (heights.line > 0) stockbook_.SetRowHeight(static_cast<float>(heights.line));
}

}  // namespace stockbook::qt
