// SPDX-License-Identifier: MIT
#pragma once

#include <sql.h>

#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "databases/execution/interruption.h"
#include "databases/execution/row_reader.h"
#include "databases/odbc/odbc_link.h"
#include "databases/odbc/odbc_rowset.h"
#include "databases/odbc/odbc_worker.h"

namespace stockbook::databases {

// Who gets the rows of a statement.
class OdbcRowTaker {
 public:
  OdbcRowTaker() = default;
  OdbcRowTaker(const OdbcRowTaker&) = delete;
  OdbcRowTaker& operator=(const OdbcRowTaker&) = delete;
  virtual ~OdbcRowTaker() = default;

  // The rows begin; once more, and what was taken counts no longer, when a text needed more room than there was.
  virtual void Begin(size_t columns) = 0;
  virtual void Take(const OdbcRowset& block) = 0;
};

// One login to a database behind a driver. The driver is called by a thread of the session's own: while it fetches a
// block, the one before is decoded, and a driver that does not return in time is left behind with all that it uses. The
// session is over then, as it is when the connection breaks. Functions throw platform::Error.
class OdbcSession : public RowReader {
 public:
  // Connects. Waits, here and later, until the interruption is due; the settings need not outlive the call.
  OdbcSession(const OdbcSettings& settings, Interruption& interruption);
  ~OdbcSession() override;

  const OdbcInfo& info() const { return info_; }
  // False once it is over.
  bool IsOpen() const { return link_ != nullptr; }

  // A transaction that reads as of now, where the database has them, and its end.
  void Begin();
  void Rollback();

  size_t Read(std::string_view sql, std::span<const ValueClass> classes, std::span<ColumnSink> sinks) override;
  void Stream(std::string_view sql, OdbcRowTaker& taker);

  // Runs something that makes a result on a statement; called by the session's thread, so it owns what it uses.
  using Starter = std::function<SQLRETURN(const OdbcStatement&)>;
  void StreamFrom(const Starter& start, OdbcRowTaker& taker);

 private:
  enum class Took { kAll, kTooNarrow };

  void Run(std::function<void()> job, const char* operation);
  void Await(const char* operation);
  void Open(const Starter& start);
  std::vector<OdbcColumn> Describe();
  Took TakeRows(std::vector<OdbcColumn>& columns, OdbcRowTaker& taker);
  void StartFetch(const std::shared_ptr<OdbcRowset>& block);
  void Close();
  void Settle();
  void RequestCancel();
  void Leave();
  platform::Error ErrorOf(const OdbcFailure& failure) const;

  Interruption& interruption_;
  SQLULEN query_seconds_ = 0;
  OdbcInfo info_;
  std::unique_ptr<OdbcWorker> worker_;
  std::shared_ptr<OdbcLink> link_;
  std::shared_ptr<OdbcStatement> statement_;  // the one that runs
};

}  // namespace stockbook::databases
