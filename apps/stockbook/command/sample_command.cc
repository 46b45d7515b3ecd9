// SPDX-License-Identifier: MIT
#include "stockbook/command/sample_command.h"

#include <array>
#include <limits>
#include <ostream>

#include "stockbook/command/command_line.h"
#include "stockbook/command/output_check.h"
#include "stockbook/inventory/inventory_balances.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::app {
namespace {

constexpr std::array<Option, 4> kOptions{{
    {"lines", OptionKind::Value},
    {"periods", OptionKind::Value},
    {"seed", OptionKind::Value},
    {"one-product", OptionKind::Flag},
}};

constexpr std::string_view kUsage = R"(Writes a made-up inventory, that of a hardware wholesaler.

Usage: stockbook sample DB [--lines N] [--periods P] [--seed S] [--one-product]

  DB              the inventory to write; an existing one is replaced when all has gone well
  --lines N       receipt and issue lines together (5000)
  --periods P     months with bills, from January 2025 on (12); the period before carries the opening stocks
  --seed S        another number makes another inventory; the same one makes the same (1)
  --one-product   all lines are about product 1, for measuring
)";

int RunSample(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line(arguments, kOptions);
  line.ExpectAtMost(1);
  const std::string path = line.Positional(0, "DB, the inventory to write");
  if (path == "-") throw UsageError("An inventory cannot go to standard output; name a file.");
  CheckOutput(path, {}, Replaces::kAnyInventory);
  SampleOptions options;
  options.lines = line.Integer("lines", 0, kMostSampleLines).value_or(options.lines);
  options.periods = static_cast<int>(line.Integer("periods", 1, kMostSamplePeriods).value_or(options.periods));
  options.seed = static_cast<uint64_t>(line.Integer("seed", 0, std::numeric_limits<int64_t>::max()).value_or(1));
  if (line.Has("one-product")) options.range = SampleProductRange::One;
  const SampleSummary made = WriteSampleInventory(path, options);
  terminal.out << "Wrote " << OneLine(path) << ": " << made.receipts << " receipt and " << made.issues
               << " issue lines on " << made.bills << " bills, " << PeriodText(made.first_month) << " to "
               << PeriodText(made.last_month) << ".\n";
  return kExitDone;
}

}  // namespace

Command SampleCommand() { return {"sample", "Write a made-up inventory to look at", std::string(kUsage), RunSample}; }

}  // namespace stockbook::app
