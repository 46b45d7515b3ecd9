// SPDX-License-Identifier: MIT
#include "stockbook/command/journal_options.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "stockbook/command/database_options.h"

namespace stockbook::app {
namespace {

constexpr std::array<Option, 9> kOptions{{
    {"journal", OptionKind::Value},
    {"product", OptionKind::Value},
    {"second", OptionKind::Value},
    {"class", OptionKind::Value},
    {"qty2", OptionKind::Flag},
    {"tax", OptionKind::Flag},
    {"restrict", OptionKind::Flag},
    {"from", OptionKind::Value},
    {"to", OptionKind::Value},
}};

// In the order of their numbers.
constexpr std::array<std::string_view, 4> kTypes{"material", "supplier", "customer", "project"};
constexpr int kSupplier = 1;
constexpr int kCustomer = 2;

// KeyID has 32 bits, dpID 16.
template <typename Key>
int32_t KeyOf(const CommandLine& line, std::string_view name) {
  using Limits = std::numeric_limits<Key>;
  return static_cast<int32_t>(line.Integer(name, Limits::min(), Limits::max()).value_or(0));
}

constexpr std::string_view kSubjectUsage =
    "JOURNAL is\n"
    "  --journal TYPE   material, supplier, customer or project\n"
    "  --product ID     the product; 0 is every product in the supplier and customer journals\n"
    "  --second ID      the depot, supplier, customer or project, by type; without it all of them\n"
    "  --class CODE     instead of --second: the class of suppliers, customers or projects\n"
    "  --qty2           show the quantities in the second unit\n"
    "  --tax            show tax rate, tax, price and amount with tax; not together with --restrict\n"
    "  --restrict       show - instead of amounts\n";
constexpr std::string_view kRangeUsage =
    "  --from WHEN      show only the lines from a period (2025-03), day (2025-03-15), quarter (2025Q1) or year "
    "(2025)\n"
    "                   on; the first row tells what is brought forward\n"
    "  --to WHEN        and only those up to the end of one\n";

BoundPair BoundsOf(const std::string& option, const std::string& text) {
  if (const auto bounds = ReadBounds(text)) return *bounds;
  throw UsageError("The option --" + option +
                   " needs a period like 2025-03, a day like 2025-03-15, a quarter like 2025Q1 or a year, not '" +
                   text + "'.");
}

JournalRange RangeOf(const CommandLine& line) {
  JournalRange range;
  if (const auto from = line.Value("from")) range.from = BoundsOf("from", *from).first;
  if (const auto to = line.Value("to")) range.to = BoundsOf("to", *to).last;
  if (range.IsBackward()) {
    throw UsageError("The range is empty: --from " + *line.Value("from") + " is after --to " + *line.Value("to") +
                     "; exchange them.");
  }
  return range;
}

}  // namespace

std::string JournalCommandUsage(std::string_view own) {
  return std::string(own).append(kSubjectUsage).append(kRangeUsage).append("\n").append(DatabaseUsage());
}

std::string WholeJournalCommandUsage(std::string_view own) {
  return std::string(own).append(kSubjectUsage).append("\n").append(DatabaseUsage());
}

std::span<const Option> JournalOptionList() { return kOptions; }

CommandLine ReadJournalCommand(std::span<const std::string> arguments, std::span<const Option> own) {
  std::vector<Option> known(own.begin(), own.end());
  known.insert(known.end(), kOptions.begin(), kOptions.end());
  known.push_back(kPasswordFileOption);
  CommandLine line(arguments, known);
  line.ExpectAtMost(1);
  return line;
}

std::optional<JournalOptions> ReadJournalOptions(const CommandLine& line) {
  const bool given =
      std::any_of(kOptions.begin(), kOptions.end(), [&](const Option& option) { return line.Has(option.name); });
  if (!given) return std::nullopt;
  line.Required("journal", "give --journal material, supplier, customer or project");
  JournalOptions options;
  const std::string type = *line.Choice("journal", kTypes);
  options.journal_type = static_cast<int>(std::find(kTypes.begin(), kTypes.end(), type) - kTypes.begin());
  options.key_id = KeyOf<int32_t>(line, "product");
  const bool partner = options.journal_type == kSupplier || options.journal_type == kCustomer;
  if (!partner && !line.Has("product")) {
    throw UsageError("The " + type + " journal is the journal of one product: give its number with --product ID.");
  }
  options.dp_id = KeyOf<int16_t>(line, "second");
  options.dp_code = line.Value("class").value_or("");
  options.allow_qty2 = line.Has("qty2");
  options.allow_inv = line.Has("tax");
  options.acc_restrict = line.Has("restrict");
  options.range = RangeOf(line);
  if (options.allow_inv && options.acc_restrict) {
    throw UsageError(
        "The options --tax and --restrict exclude each other: the tax columns show amounts; leave one out.");
  }
  return options;
}

JournalOptions RequireJournalOptions(const CommandLine& line) {
  if (auto options = ReadJournalOptions(line)) return *options;
  throw UsageError("The journal is missing: give --journal material, supplier, customer or project, and --product ID.");
}

}  // namespace stockbook::app
