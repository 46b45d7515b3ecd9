// SPDX-License-Identifier: MIT
#include "databases/sqlite/embedded_connection.h"

#include <new>

#include "databases/connection_string.h"
#include "databases/dialect/sqlite_emitter.h"
#include "databases/dialect/translation.h"
#include "databases/sqlite/functions.h"
#include "databases/sqlite/plan_executor.h"
#include "databases/sqlite/value_feed.h"
#include "stockbook/base/money.h"
#include "stockbook/databases/sqlite/open_embedded.h"

namespace stockbook::databases {
namespace {

// Runs a translated statement as a whole: SQLite finds, joins, sorts and removes duplicates. Right for every statement.
std::vector<platform::Field> ExecuteStatement(const Database& database, const TranslatedQuery& query) {
  Statement statement(database, query.sql);
  std::vector<ColumnSink> sinks(query.columns.size());
  std::vector<ValueFeed> feeds;
  for (size_t index = 0; index < sinks.size(); ++index) {
    feeds.emplace_back(ResultFormOf(query.columns[index].cls)).AddTarget(sinks[index], ValueFeed::Sign::kKept);
  }
  StepInto(statement, feeds);
  std::vector<platform::Field> fields;
  for (size_t index = 0; index < sinks.size(); ++index)
    fields.push_back({query.columns[index].name, sinks[index].builder.Finish()});
  return fields;
}

}  // namespace

EmbeddedConnection::EmbeddedConnection(std::string connection_string, Strategy strategy)
    : EmbeddedConnection(connection_string, strategy, ReadEmbeddedSettings(connection_string)) {}

EmbeddedConnection::EmbeddedConnection(std::string connection_string, Strategy strategy,
                                       const EmbeddedSettings& settings)
    : connection_string_(WithoutPassword(connection_string)),
      strategy_(strategy),
      dialect_(DialectOf(connection_string_)),
      ampersand_(settings.ampersand),
      database_(settings.file, settings.tables, settings.time_limit),
      readers_(database_, settings.threads),
      catalog_(database_) {
  RegisterFunctions(database_);
}

platform::Recordset EmbeddedConnection::Execute(std::string_view statement, int) {
  const Interruption::Running running(database_.interruption());
  try {
    return ExecuteChecked(statement);
  } catch (const base::ArithmeticError& error) {
    throw platform::Error("Execute", error.what());
  } catch (const std::bad_alloc&) {
    throw platform::Error("Execute", "内存不足，结果的行数太多，请缩小查询的范围", 0, platform::ErrorKind::kMemory);
  }
}

std::unique_ptr<platform::Moment> EmbeddedConnection::ReadAsOfOneMoment() {
  class Reading : public platform::Moment {
   public:
    explicit Reading(const Database& database) : transaction_(database) {}

   private:
    ReadTransaction transaction_;
  };
  const Interruption::Running running(database_.interruption());
  return std::make_unique<Reading>(database_);
}

platform::Recordset EmbeddedConnection::ExecuteChecked(std::string_view statement) {
  // Long enough for the keys of a million partners.
  constexpr size_t kMostBytes = size_t{8} << 20;
  if (statement.size() > kMostBytes) throw platform::Error("Execute", "语句太长，最多 8 MB，请缩小查询的范围");
  // The catalogue, the tables and the rows are those of one moment, even if another program writes.
  const ReadTransaction transaction(database_);
  database_.interruption().Check();
  catalog_.Refresh();
  const SqliteEmitter emitter;
  Translation translation(statement, {dialect_, emitter, ampersand_},
                          [this](std::string_view name) { return catalog_.FindTable(name); });
  if (translation.plan() && strategy_ != Strategy::kStatement) {
    const auto reading = strategy_ == Strategy::kArms ? ArmReading::kStepped : ArmReading::kJoined;
    if (auto fields = ExecutePlan(readers_, *translation.plan(), translation.columns(), reading)) {
      return platform::Recordset(std::move(*fields));
    }
  }
  return platform::Recordset(ExecuteStatement(database_, translation.Whole()));
}

std::unique_ptr<platform::Connection> OpenEmbedded(std::string_view connection_string) {
  return std::make_unique<EmbeddedConnection>(std::string(connection_string));
}

}  // namespace stockbook::databases
