// SPDX-License-Identifier: MIT
#include "grid/product_names.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "columns/block_reader.h"
#include "columns/row_classes.h"
#include "grid/row_runs.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::grid {
namespace {

namespace keys = base::keys;

struct Part {
  const char* key;
  const char* before;
  const char* after;
};
constexpr std::array<Part, 3> kParts = {
    {{keys::kModel, "", ""}, {keys::kStandard, "[", "]"}, {keys::kMeasure, "(", ")"}}};

std::string Compose(const std::string& bare_name, const std::string& parts) {
  return parts.empty() ? bare_name : bare_name + " " + parts;
}

// The loaded columns that names are composed from; nullptr where a column is visible or nothing was loaded into it.
struct Sources {
  const columns::Column* name = nullptr;
  const columns::Column* product = nullptr;
  const columns::Column* shown = nullptr;
  std::array<const columns::Column*, kParts.size()> parts{};
};

Sources SourcesOf(const platform::GridTable& grid) {
  const int name = grid.ColIndex(keys::kProductName);
  Sources sources = {grid.LoadedData(name), grid.LoadedText(grid.ColIndex(keys::kPdID)), grid.LoadedText(name), {}};
  for (size_t index = 0; index < kParts.size(); ++index) {
    const int column = grid.ColIndex(kParts[index].key);
    if (column >= 0 && grid.ColHidden(column)) sources.parts[index] = grid.LoadedText(column);
  }
  return sources;
}

std::string ComposeRecord(const Sources& sources, size_t record) {
  std::string parts;
  for (size_t index = 0; index < kParts.size(); ++index) {
    const std::string text = sources.parts[index] ? sources.parts[index]->Text(record) : std::string();
    if (!text.empty()) parts += kParts[index].before + text + kParts[index].after;
  }
  return Compose(sources.name ? sources.name->Text(record) : std::string(), parts);
}

bool SameTexts(const Sources& sources, size_t left, size_t right) {
  const auto same = [&](const columns::Column* column) {
    return column == nullptr || column->At(left) == column->At(right);
  };
  return same(sources.name) && std::all_of(sources.parts.begin(), sources.parts.end(), same);
}

// The codes of the texts that a name is composed from, with kComposed at the end; or, of a record without product, that
// of the text that it shows.
using Combination = std::array<uint32_t, 1 + kParts.size() + 1>;
constexpr uint32_t kComposed = UINT32_MAX;

struct CombinationHash {
  size_t operator()(const Combination& codes) const {
    uint64_t hash = 0;
    for (const uint32_t code : codes) hash = (hash ^ code) * 0x9E3779B97F4A7C15U;
    return static_cast<size_t>(hash ^ (hash >> 32U));
  }
};

// Composes every name once, where the sources tell their texts apart by codes; otherwise nothing.
std::optional<columns::Column> ComposeByCodes(const Sources& sources, const std::vector<uint8_t>& has_product) {
  std::vector<const columns::Column*> read = {sources.name};
  read.insert(read.end(), sources.parts.begin(), sources.parts.end());
  read.push_back(sources.shown);
  const auto has_codes = [](const columns::Column* column) { return column == nullptr || column->HasTextCodes(); };
  if (!std::all_of(read.begin(), read.end(), has_codes)) return std::nullopt;
  std::vector<columns::BlockReader<uint32_t>> readers(read.begin(), read.end());
  std::unordered_map<Combination, uint32_t, CombinationHash> known;
  columns::ColumnBuilder names;
  std::vector<uint32_t> pool_codes;
  std::vector<uint32_t> name_of_record(has_product.size());
  std::array<std::span<const uint32_t>, std::tuple_size_v<Combination>> codes;
  for (const columns::RowBlock block : columns::RowBlocks(0, has_product.size())) {
    for (size_t index = 0; index < codes.size(); ++index) codes[index] = readers[index].Read(block);
    for (size_t at = 0; at < block.count; ++at) {
      const size_t record = block.first + at;
      const auto code = [&](size_t index) { return codes[index].empty() ? 0 : codes[index][at]; };
      const bool composed = has_product[record] != 0;
      Combination combination{};
      for (size_t index = 0; composed && index + 1 < codes.size(); ++index) combination[index] = code(index);
      combination.back() = composed ? kComposed : code(codes.size() - 1);
      const auto [found, is_new] = known.try_emplace(combination, static_cast<uint32_t>(known.size()));
      name_of_record[record] = found->second;
      if (!is_new) continue;
      if (composed) {
        names.AppendText(ComposeRecord(sources, record));
      } else if (sources.shown) {
        names.AppendFrom(*sources.shown, record, pool_codes);
      } else {
        names.AppendNull();
      }
    }
  }
  return names.Finish().Gather(name_of_record);
}

columns::Column ComposeRecords(const Sources& sources, size_t records) {
  const auto has_product =
      columns::ClassifyNumbers(sources.product, records, [](double key) -> uint8_t { return key > 0 ? 1 : 0; });
  if (auto composed = ComposeByCodes(sources, has_product)) return std::move(*composed);
  columns::ColumnBuilder builder;
  std::vector<uint32_t> pool_codes;
  size_t composed_from = records;
  std::string composed;
  for (size_t record = 0; record < records; ++record) {
    if (has_product[record] != 0) {
      if (composed_from == records || !SameTexts(sources, composed_from, record)) {
        composed = ComposeRecord(sources, record);
        composed_from = record;
      }
      builder.AppendText(composed);
    } else if (sources.shown) {
      builder.AppendFrom(*sources.shown, record, pool_codes);
    } else {
      builder.AppendNull();
    }
  }
  return builder.Finish();
}

// Whether the host has edited cells that names are composed from.
bool HasEditedSources(const platform::GridTable& grid) {
  const auto edited = [&](const char* key) { return grid.HasEditedRecords(grid.ColIndex(key)); };
  return edited(keys::kProductName) || edited(keys::kPdID) ||
         std::any_of(kParts.begin(), kParts.end(), [&](const Part& part) { return edited(part.key); });
}

// What the records show after a refresh, composed from the cells as they are now.
columns::Column ComposeRowsOfRecords(const platform::GridTable& grid) {
  const int name = grid.ColIndex(keys::kProductName);
  const int product = grid.ColIndex(keys::kPdID);
  columns::ColumnBuilder builder;
  for (size_t record = 0; record < grid.RecordCount(); ++record) {
    const int row = grid.RowOfRecord(record);
    builder.AppendText(grid.ValueMatrix(row, product) > 0 ? ComposeProductName(grid, row) : grid.TextMatrix(row, name));
  }
  return builder.Finish();
}

}  // namespace

std::string ComposeProductName(const platform::GridTable& grid, int row) {
  std::string parts;
  for (const Part& part : kParts) {
    const int column = grid.ColIndex(part.key);
    const std::string text = column >= 0 && grid.ColHidden(column) ? grid.TextMatrix(row, column) : std::string();
    if (!text.empty()) parts += part.before + text + part.after;
  }
  return Compose(grid.CellData(row, grid.ColIndex(keys::kProductName)).Text(), parts);
}

void RefreshProductNames(platform::GridTable& grid, platform::GridBusy& busy) {
  const auto tag = platform::BusyTag(busy, "Refresh_ProductNames");
  const auto redraw = platform::RedrawOff(busy);
  const int name = grid.ColIndex(keys::kProductName);
  const int product = grid.ColIndex(keys::kPdID);
  if (name < 0 || product < 0) return;
  if (grid.RecordCount() > 0) {
    const Sources sources = SourcesOf(grid);
    if (HasEditedSources(grid)) {
      grid.ReplaceLoadedText(name, ComposeRowsOfRecords(grid));
    } else if (sources.product != nullptr) {
      grid.ReplaceLoadedText(name, ComposeRecords(sources, grid.RecordCount()));
    }
  }
  for (auto run = RowRunAt(grid, grid.FixedRows()); run.count > 0; run = RowRunAt(grid, run.End())) {
    if (run.IsInserted() && grid.ValueMatrix(run.row, product) > 0)
      grid.SetTextMatrix(run.row, name, ComposeProductName(grid, run.row));
  }
}

}  // namespace stockbook::grid
