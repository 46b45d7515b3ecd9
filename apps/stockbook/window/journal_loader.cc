// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_loader.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "journal/query_builder.h"
#include "journal/subjects.h"
#include "qt/sheet/text.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/grid_guards.h"
#include "stockbook/qt/threaded_connection.h"

namespace stockbook::app {
namespace {

bool IsNarrow(int32_t key) {
  return key >= std::numeric_limits<int16_t>::min() && key <= std::numeric_limits<int16_t>::max();
}

}  // namespace

JournalLoader::JournalLoader(qt::StockbookWidget& stockbook)
    : stockbook_(stockbook), beside_(std::make_shared<qt::Beside>()) {}

std::shared_ptr<PrefetchedConnection> JournalLoader::Prepare(std::shared_ptr<platform::Connection> opened) const {
  return std::make_shared<PrefetchedConnection>(std::make_shared<qt::ThreadedConnection>(std::move(opened), beside_));
}

LoadReport JournalLoader::Load(const JournalOptions& options, const std::function<void()>& arrange) {
  if (connection_ == nullptr) return {};
  const auto connection = connection_;
  const auto task = beside_->Begin();
  const base::ScopeExit dropped([&] { connection->Drop(); });
  try {
    connection->BeginMoment();
    // A key that the control refuses leaves no statement to run ahead.
    if (IsNarrow(options.dp_id)) connection->Fetch(StatementOf(options));
  } catch (const platform::Error& error) {
    LoadReport report;
    report.notify.emplace_back(error.what());
    return TellCancelled(std::move(report));
  }
  return TellCancelled(HandOver(connection, options, arrange));
}

// What is half done is not painted.
LoadReport JournalLoader::HandOver(const std::shared_ptr<PrefetchedConnection>& connection,
                                   const JournalOptions& options, const std::function<void()>& arrange) {
  const auto redraw = platform::RedrawOff(stockbook_.Grid());
  const bool updates = stockbook_.updatesEnabled();
  stockbook_.setUpdatesEnabled(false);
  const base::ScopeExit painted([&] { stockbook_.setUpdatesEnabled(updates); });
  return LoadJournal(stockbook_.control(), connection, options, {[this] { beside_->Pause(); }, arrange});
}

// A statement that took too long was interrupted, too, and that stays a failure.
LoadReport JournalLoader::TellCancelled(LoadReport report) const {
  if (!beside_->WasCancelled()) return report;
  report.loaded = false;
  report.cancelled = true;
  report.notify.assign(1, qt::FromQString(QCoreApplication::translate("Reading", "已取消读取。")));
  return report;
}

std::string JournalLoader::StatementOf(const JournalOptions& options) const {
  const auto type = static_cast<base::tqJournalTypeContants>(options.journal_type);
  journal::SubjectKeys keys{options.key_id, static_cast<int16_t>(options.dp_id), options.dp_code};
  journal::Subjects(connection_.get(), type).CompleteClassCode(keys);
  return journal::QueryBuilder(connection_.get(), type, keys).Build();
}

}  // namespace stockbook::app
