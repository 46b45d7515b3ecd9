// SPDX-License-Identifier: MIT
#include "stockbook/import/import_mapping.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "stockbook/command/command_line.h"
#include "stockbook/import/import_number.h"
#include "stockbook/import/import_sentence.h"

namespace stockbook::app {
namespace {

// In the order of ImportField.
constexpr std::array<std::string_view, kImportFieldCount> kFieldNames{"product",  "name",  "bill",    "date",
                                                                      "quantity", "price", "partner", "project"};
constexpr std::array kRequired{ImportField::Product, ImportField::Date, ImportField::Quantity};

std::string_view NameOf(ImportField field) { return kFieldNames[static_cast<size_t>(field)]; }

std::string Listed(const std::vector<std::string_view>& header) {
  constexpr size_t kMost = 20;
  std::string list;
  for (size_t index = 0; index < std::min(header.size(), kMost); ++index) {
    list.append(index == 0 ? "" : ", ").append(base::LeftCharacters(base::TrimBlanks(header[index]), 40));
  }
  return header.size() > kMost ? list + ", ..." : list;
}

// What to do about a header line that another delimiter would have split.
std::string DelimiterHint(const std::vector<std::string_view>& header) {
  if (header.size() != 1) return ".";
  for (const auto& [delimiter, name] : {std::pair{';', "';'"}, {'\t', "tab"}, {'|', "'|'"}, {',', "','"}}) {
    if (header.front().find(delimiter) != std::string_view::npos)
      return ", all in one field: the delimiter is wrong, give --delimiter " + std::string(name) + ".";
  }
  return ".";
}

}  // namespace

ImportMapping::ImportMapping(const Positions& positions) {
  for (size_t field = 0; field < kImportFieldCount; ++field) {
    is_mapped_[field] = positions[field].has_value();
    columns_[field] = positions[field].value_or(0);
  }
}

ImportMapping::ImportMapping(const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    for (const std::string_view piece : base::Split(text, ',')) Read(piece);
  }
  for (const ImportField field : kRequired) {
    if (Has(field)) continue;
    throw UsageError("The mapping lacks " + std::string(NameOf(field)) + ": name its column in --map as " +
                     std::string(NameOf(field)) + "=COLUMN.");
  }
}

void ImportMapping::Read(std::string_view text) {
  const size_t equals = text.find('=');
  const std::string_view key = base::TrimBlanks(text.substr(0, equals));
  const auto found = std::find(kFieldNames.begin(), kFieldNames.end(), key);
  if (equals == std::string_view::npos || found == kFieldNames.end()) {
    throw UsageError(
        "The mapping '" + std::string(text) +
        "' is none: write FIELD=COLUMN, FIELD being product, name, bill, date, quantity, price, partner or project.");
  }
  const std::string_view column = base::TrimBlanks(text.substr(equals + 1));
  if (column.empty())
    throw UsageError("The mapping '" + std::string(text) + "' names no column; write it behind the =.");
  auto& name = names_[static_cast<size_t>(found - kFieldNames.begin())];
  if (name) throw UsageError("The mapping names " + std::string(key) + " twice; name it once.");
  name = column;
  is_mapped_[static_cast<size_t>(found - kFieldNames.begin())] = true;
}

void ImportMapping::Locate(const std::vector<std::string_view>& header) {
  column_count_ = header.size();
  for (size_t field = 0; field < kImportFieldCount; ++field) {
    if (is_mapped_[field] && !names_[field] && columns_[field] >= header.size()) {
      throw TableError({"The table has only " + std::to_string(header.size()) + " columns; choose others.",
                        "表只有 " + std::to_string(header.size()) + " 列，请重新选定各列的含义。"});
    }
    if (!names_[field]) continue;
    const auto matches = [&](std::string_view name) { return TrimWideBlanks(name) == *names_[field]; };
    const auto found = std::find_if(header.begin(), header.end(), matches);
    if (found == header.end()) {
      throw UsageError("The table has no column '" + *names_[field] + "' for " + std::string(kFieldNames[field]) +
                       "; it has " + Listed(header) + DelimiterHint(header));
    }
    if (std::any_of(found + 1, header.end(), matches)) {
      throw UsageError("The table has two columns '" + *names_[field] +
                       "'; give each its own name in the header line.");
    }
    columns_[field] = static_cast<size_t>(found - header.begin());
  }
}

std::string_view ImportMapping::Text(ImportField field, const std::vector<std::string_view>& fields) const {
  if (!Has(field)) return {};
  return TrimWideBlanks(fields[columns_[static_cast<size_t>(field)]]);
}

}  // namespace stockbook::app
