// SPDX-License-Identifier: MIT
#include "qt/kept_layouts.h"

#include <QStringList>
#include <algorithm>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::qt {
namespace {

constexpr int kTypes = 4;
constexpr int kMostTwips = 1 << 20;

std::optional<int> ReadTwips(const QString& text) {
  bool is_number = false;
  const int twips = text.toInt(&is_number);
  if (!is_number || twips < 0 || twips > kMostTwips) return {};
  return twips;
}

QString PrefixOf(const QString& group) { return group.isEmpty() ? QString() : group + QLatin1Char('/'); }

}  // namespace

void KeptLayouts::Save(QSettings& settings, const QString& group) {
  Learn();
  // Without Restore there is one to save, the one that is shown.
  if (!keeping_ && IsLaidOut()) layouts_.insert_or_assign(Type(), ReadLayout());
  for (const auto& [type, layout] : layouts_) Write(settings, PrefixOf(group), type, layout);
}

void KeptLayouts::Restore(const QSettings& settings, const QString& group) {
  keeping_ = true;
  layouts_.clear();
  for (int type = 0; type < kTypes; ++type) {
    if (auto layout = Read(settings, PrefixOf(group), type)) layouts_.insert_or_assign(type, std::move(*layout));
  }
  laid_out_ = ReadHeights();
  widths_laid_out_ = Widths();
  PutBack();
}

std::optional<KeptLayouts::Layout> KeptLayouts::Read(const QSettings& settings, const QString& prefix, int type) {
  const QString number = QString::number(type);
  Layout layout;
  std::set<QString> keys;
  for (const QString& column : settings.value(prefix + QStringLiteral("Columns") + number).toStringList()) {
    const QStringList parts = column.split(QLatin1Char(':'));
    const auto width = ReadTwips(parts.value(1));
    if (parts.size() != 3 || (!width && !parts[1].isEmpty())) continue;
    if (parts[0].isEmpty() || !keys.insert(parts[0]).second) continue;
    layout.columns.push_back({FromQString(parts[0]), width, parts[2] == QLatin1String("1")});
  }
  if (layout.columns.empty()) return {};
  layout.frozen = std::max(0, settings.value(prefix + QStringLiteral("Frozen") + number).toInt());
  const QStringList heights = settings.value(prefix + QStringLiteral("Heights") + number).toStringList();
  const auto title = ReadTwips(heights.value(0));
  const auto line = ReadTwips(heights.value(1));
  const auto sum = ReadTwips(heights.value(2));
  if (title && line && sum) layout.heights = Heights{*title, *line, *sum};
  return layout;
}

void KeptLayouts::Write(QSettings& settings, const QString& prefix, int type, const Layout& layout) {
  const QString number = QString::number(type);
  QStringList columns;
  for (const Column& column : layout.columns) {
    columns << QStringLiteral("%1:%2:%3")
                   .arg(ToQString(column.key))
                   .arg(column.width_twips ? QString::number(*column.width_twips) : QString())
                   .arg(column.hidden ? 1 : 0);
  }
  settings.setValue(prefix + QStringLiteral("Columns") + number, columns);
  settings.setValue(prefix + QStringLiteral("Frozen") + number, layout.frozen);
  const QString heights = prefix + QStringLiteral("Heights") + number;
  if (layout.heights) {
    settings.setValue(heights,
                      QStringList{QString::number(layout.heights->title), QString::number(layout.heights->line),
                                  QString::number(layout.heights->sum)});
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
  // A layout that the user asked for is an arrangement like another.
  if (loading_ || arranged_ != Type()) arranged_.reset();
  const std::set<std::string> before = HiddenKeys();
  raise();
  host_hides_.clear();
  for (const std::string& key : HiddenKeys()) {
    if (!before.contains(key)) host_hides_.insert(key);
  }
  widths_laid_out_ = Widths();
}

void KeptLayouts::LoadEnded() {
  loading_ = false;
  if (!IsLaidOut()) arranged_.reset();
}

void KeptLayouts::AfterLoaded() {
  loading_ = false;
  if (!keeping_) return;
  laid_out_ = ReadHeights();
  PutBack();
}

std::set<std::string> KeptLayouts::HiddenKeys() const {
  const platform::Grid& grid = stockbook_.Grid();
  std::set<std::string> keys;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    if (grid.ColHidden(column)) keys.insert(grid.ColKey(column));
  }
  return keys;
}

std::map<std::string, int> KeptLayouts::Widths() const {
  const platform::Grid& grid = stockbook_.Grid();
  std::map<std::string, int> widths;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column)
    widths.insert_or_assign(grid.ColKey(column), grid.ColWidth(column));
  return widths;
}

// A load that fails may leave the grid without the columns of the layout.
bool KeptLayouts::IsLaidOut() const {
  const std::map<std::string, int> shown = Widths();
  return !widths_laid_out_.empty() && std::all_of(widths_laid_out_.begin(), widths_laid_out_.end(),
                                                  [&](const auto& column) { return shown.contains(column.first); });
}

// Whether the control or the host does not let the user see the column.
bool KeptLayouts::IsWithheld(const std::string& key) const {
  return host_hides_.contains(key) || stockbook_.ColsFilter().find("|" + key + "|") != std::string::npos;
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

KeptLayouts::Layout KeptLayouts::ReadLayout() const {
  const platform::Grid& grid = stockbook_.Grid();
  Layout layout;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    Column now{grid.ColKey(column), grid.ColWidth(column), grid.ColHidden(column)};
    const auto usual = widths_laid_out_.find(now.key);
    if (keeping_ && usual != widths_laid_out_.end() && usual->second == now.width_twips) now.width_twips.reset();
    layout.columns.push_back(std::move(now));
  }
  layout.frozen = grid.FrozenCols();
  if (const Heights now = ReadHeights(); now != laid_out_) layout.heights = now;
  return layout;
}

void KeptLayouts::Learn() {
  if (!keeping_ || arranged_ != Type() || !IsLaidOut()) return;
  Layout now = ReadLayout();
  const auto known = layouts_.find(Type());
  if (known != layouts_.end()) {
    // A journal without lines says nothing of their height.
    if (ReadHeights().line == 0) now.heights = known->second.heights;
    // Who may not see a column has not hidden it.
    for (Column& column : now.columns) {
      if (!IsWithheld(column.key)) continue;
      const auto& columns = known->second.columns;
      const auto before =
          std::find_if(columns.begin(), columns.end(), [&](const Column& other) { return other.key == column.key; });
      if (before != columns.end()) column.hidden = before->hidden;
    }
  }
  layouts_.insert_or_assign(Type(), std::move(now));
}

void KeptLayouts::PutBack() {
  arranged_ = Type();
  const auto layout = layouts_.find(Type());
  if (layout == layouts_.end()) return;
  PutBackColumns(layout->second);
  if (layout->second.heights) PutBackHeights(*layout->second.heights);
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
    grid.SetColHidden(position, wanted.hidden || IsWithheld(wanted.key));
    ++position;
  }
  grid.SetFrozenCols(std::clamp(layout.frozen, 0, std::max(0, grid.Cols() - 1)));
  // The tree follows its column.
  grid.SetOutlineCol(grid.ColIndex(stockbook_.OutlineColKey()));
}

void KeptLayouts::PutBackHeights(const Heights& heights) {
  if (heights.title > 0) stockbook_.SetRowHeightTitle(static_cast<float>(heights.title));
  if (heights.sum > 0) stockbook_.SetRowHeightSum(static_cast<float>(heights.sum));
  if (heights.line > 0) stockbook_.SetRowHeight(static_cast<float>(heights.line));
}

}  // namespace stockbook::qt
