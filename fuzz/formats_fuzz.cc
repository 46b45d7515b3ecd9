// SPDX-License-Identifier: MIT
// Display formats, the desktop's Format() and LIKE take any pattern and any value; where a format has a quick way, it
// shows what the slow one shows.
#include <cmath>

#include "base/decimal.h"
#include "databases/dialect/format_value.h"
#include "databases/dialect/like_pattern.h"
#include "fuzzed_bytes.h"
#include "sheet/format/cell_format.h"

namespace stockbook::fuzz {
namespace {

base::Value TakeValue(FuzzedBytes& bytes) {
  switch (bytes.Below(7)) {
    case 0:
      return base::Value();
    case 1:
      return base::Value(bytes.Take<int64_t>());
    case 2:
      return base::Value(bytes.Take<double>());
    case 3:
      return base::Value(static_cast<double>(bytes.Take<int32_t>()) / 1000);
    case 4:
      return base::Value(base::Money::FromUnits(bytes.Take<int64_t>()));
    case 5:
      return base::Value(base::Date::FromSeconds(bytes.Take<int64_t>() % (int64_t{1} << 38)));
    default:
      return base::Value(std::string(bytes.TakeLine()));
  }
}

void ShowNumber(std::string_view pattern, double number, int64_t units) {
  const auto format = sheet::NumberFormat::Parse(pattern);
  if (!format.plain()) return;
  std::string quick;
  const auto decimal = base::Decimal::FromDouble(number);
  if (decimal && format.plain()->Append(number, quick))
    Require(quick == format.Format(*decimal), "a double has one look", std::string(pattern) + "\n" + quick);
  quick.clear();
  if (format.plain()->Append(units, 4, quick))
    Require(quick == format.Format(base::Decimal::FromScaled(units, 4)), "an amount has one look",
            std::string(pattern) + "\n" + quick);
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace stockbook;
  fuzz::FuzzedBytes bytes(data, size);
  const base::Value value = fuzz::TakeValue(bytes);
  const auto number = bytes.Take<double>();
  const auto units = bytes.Take<int64_t>();
  const std::string_view pattern = bytes.TakeLine();
  const std::string_view text = bytes.TakeAll();
  fuzz::ShowNumber(pattern, number, units);
  const sheet::CellFormat format(pattern);
  for (const auto type : {platform::DataType::kString, platform::DataType::kDouble, platform::DataType::kCurrency,
                          platform::DataType::kDate}) {
    std::string shown = "before";
    const bool formatted = format.Append(type, value, shown);
    fuzz::Require(shown.starts_with("before") && (formatted || shown == "before"), "a format only appends", shown);
    (void)format.Append(type, text, shown);
  }
  (void)databases::FormatValue(value, pattern);
  for (const auto wildcards : {databases::Wildcards::kDesktop, databases::Wildcards::kServer}) {
    try {
      (void)databases::MatchesLike(text, pattern, wildcards);
    } catch (const base::ArithmeticError&) {
      // The two are so long that the connection refuses them.
    }
    fuzz::Require(databases::MatchesLike(text, "%", wildcards), "% is any text", std::string(text));
  }
  return 0;
}
