// SPDX-License-Identifier: MIT
#include "end_to_end/fixture.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <numeric>

#include "end_to_end/journal_comparison.h"

namespace stockbook::end_to_end {

app::LoadReport EndToEnd::Load(const std::string& database, const app::JournalOptions& options) {
  return app::LoadJournal(desk_.control(), app::OpenInventory(database), options);
}

::testing::AssertionResult EndToEnd::ShowsWhatTheTablesGive(const std::string& database, const BaseTables& tables,
                                                            const app::JournalOptions& options) {
  const app::LoadReport report = Load(database, options);
  const RecomputedJournal journal(tables, options);
  if (journal.cannot_run()) {
    if (!report.loaded && !app::LoadError(report).empty()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << Describe(options) << ": its statement cannot run, and it loaded";
  }
  if (!report.loaded) return ::testing::AssertionFailure() << Describe(options) << ": " << app::LoadError(report);
  ShownJournal shown = FromGrid(desk_.sheet());
  shown.caption = desk_.control().Caption();
  shown.notify = report.notify;
  shown.process = report.process;
  if (auto same = IsTheJournalOf(tables, options, shown); !same) return same;
  return SaysWhatALoadSays(shown, options,
                           static_cast<size_t>(std::count_if(shown.rows.begin(), shown.rows.end(),
                                                             [](const ShownRow& row) { return row.level == 1; })),
                           journal.balance_is_refused() ? Balance::kRefused : Balance::kRead);
}

::testing::AssertionResult EndToEnd::AgreesBy(const Plan& plan, const std::string& database,
                                              const RecomputedJournal& journal, const app::JournalOptions& options) {
  const std::string dialect = plan.dialect == app::SqlDialect::kServer ? "Dialect=SQL;" : "";
  const auto connection = std::make_shared<databases::EmbeddedConnection>(
      "Provider=Stockbook.Embedded;" + dialect + "Data Source=\"" + database + "\"", plan.strategy);
  const app::LoadReport report = app::LoadJournal(desk_.control(), connection, options);
  const std::string error = app::LoadError(report);
  if (journal.cannot_run()) {
    if (!report.loaded && !error.empty()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << Describe(options) << ": its statement cannot run, and it loaded";
  }
  std::vector<size_t> order(journal.lines().size());
  std::iota(order.begin(), order.end(), size_t{0});
  const bool fits = journal.Rows(order).has_value();
  const bool refused = error.starts_with("金额超出范围") || error.starts_with("数值超出范围");
  if (!fits && refused && !report.loaded) return ::testing::AssertionSuccess();
  if (!report.loaded) return ::testing::AssertionFailure() << Describe(options) << ": " << error;
  return IsTheJournal(journal, options, FromGrid(desk_.sheet()));
}

Outcome EndToEnd::Program(const std::vector<std::string>& arguments) const {
  const std::string out = PathOf("out.txt");
  const std::string err = PathOf("err.txt");
  std::string command = std::string("'") + STOCKBOOK_PROGRAM + "'";
  for (const std::string& argument : arguments) command += " '" + argument + "'";
  const int status = std::system((command + " >'" + out + "' 2>'" + err + "' </dev/null").c_str());
  const Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(out), ReadAll(err)};
  std::filesystem::remove(out);
  std::filesystem::remove(err);
  return outcome;
}

}  // namespace stockbook::end_to_end
