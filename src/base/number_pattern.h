// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "base/pattern.h"
#include "stockbook/base/api.h"

namespace stockbook::base {

// A section of a number pattern: 0 is a digit always shown, # a digit shown when there is one, the first point begins
// the decimals. Other signs show themselves. What its commas and percent signs do is up to who shows numbers with it. A
// plain value.
struct NumberSection {
  std::vector<PatternPiece> pieces;
  size_t point = 0;      // where the point is among the pieces; their count without one
  int whole_places = 0;  // before the point
  int decimals = 0;      // places after it
  int percent_signs = 0;
  // Commas of the whole part, after its first place: those with only commas up to another place, and the others.
  int grouping_commas = 0;
  int other_commas = 0;

  bool HasPoint() const { return point < pieces.size(); }
  std::span<const PatternPiece> Whole() const { return std::span(pieces).first(point); }
  std::span<const PatternPiece> Fraction() const { return std::span(pieces).subspan(HasPoint() ? point + 1 : point); }
};

// The sections of "positive;negative;zero", at least one; a semicolon in quotes does not separate them.
STOCKBOOK_API std::vector<NumberSection> NumberSections(std::vector<PatternPiece> pieces);

}  // namespace stockbook::base
