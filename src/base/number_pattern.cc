// SPDX-License-Identifier: MIT
#include "base/number_pattern.h"

#include <algorithm>
#include <utility>

namespace stockbook::base {
namespace {

void Count(NumberSection& section) {
  auto& pieces = section.pieces;
  const auto point = std::find_if(pieces.begin(), pieces.end(), [](const auto& piece) { return piece.sign == '.'; });
  section.point = static_cast<size_t>(point - pieces.begin());
  int commas = 0;  // since the last place
  for (auto piece = pieces.begin(); piece != pieces.end(); ++piece) {
    if (piece->sign == '%') ++section.percent_signs;
    if (piece->IsPlace()) ++(piece < point ? section.whole_places : section.decimals);
    if (piece >= point || section.whole_places == 0) continue;
    if (piece->sign == ',') {
      ++commas;
    } else {
      (piece->IsPlace() ? section.grouping_commas : section.other_commas) += std::exchange(commas, 0);
    }
  }
  section.other_commas += commas;
}

}  // namespace

std::vector<NumberSection> NumberSections(std::vector<PatternPiece> pieces) {
  std::vector<NumberSection> sections(1);
  for (PatternPiece& piece : pieces) {
    if (piece.sign == ';') {
      sections.emplace_back();
    } else {
      sections.back().pieces.push_back(std::move(piece));
    }
  }
  for (NumberSection& section : sections) Count(section);
  return sections;
}

}  // namespace stockbook::base
