// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/format/decimal.h"
#include "sheet/format/plain_number.h"

namespace stockbook::sheet {

// A number format as data: up to three sections, for positive, negative and zero numbers, parted by semicolons. In a
// section 0 is a digit always shown, # a digit shown when there is one, a point begins the decimals, a comma between
// digits groups by thousands and one behind the last digit divides by a thousand, % shows the number times 100; texts
// in double quotes, characters behind a backslash and all others stand for themselves. A section that is missing or
// empty is that of positive numbers, with a minus sign where the number is negative. A plain value; formatting is
// O(digits).
class NumberFormat {
 public:
  NumberFormat() = default;
  static NumberFormat Parse(std::string_view format);

  // Rounded half away from zero to the decimals that the section shows; a number that rounds to zero has no sign.
  std::string Format(const Decimal& number) const;

  // The same in one step, where the format is of the common shape.
  const std::optional<PlainNumber>& plain() const { return plain_; }

 private:
  enum class PieceKind { kLiteral, kZero, kDigit };
  struct Piece {
    PieceKind kind = PieceKind::kLiteral;
    std::string literal;
  };
  struct Section {
    std::vector<Piece> whole;
    std::vector<Piece> fraction;
    int whole_digits = 0;
    int decimals = 0;
    int power = 0;  // of ten, that the number is multiplied with before it is shown
    bool grouped = false;
    bool has_point = false;

    bool IsEmpty() const { return whole.empty() && fraction.empty(); }
  };

  static Section ParseSection(std::string_view text);
  static void ParseSign(Section& section, char sign, std::string_view rest);
  static void AddLiteral(Section& section, std::string_view literal);
  static Decimal Rounded(const Section& section, Decimal number);
  static std::string Show(const Section& section, const Decimal& rounded);
  static std::string ShowWhole(const Section& section, const std::string& digits);
  static std::string ShowFraction(const Section& section, const std::string& digits);
  const Section& SectionAt(size_t index) const;
  static std::optional<PlainNumber> PlainOf(const Section& section);

  std::vector<Section> sections_;
  std::optional<PlainNumber> plain_;
};

}  // namespace stockbook::sheet
