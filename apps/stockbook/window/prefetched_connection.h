// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "stockbook/platform/connection.h"

namespace stockbook::app {

// Another connection, of which one statement can be run ahead of who will ask for it. So a host learns whether a
// journal can be read before the control gives up the one that is shown. To its user it is the other connection; it
// owns the rows that were fetched until they are asked for or dropped.
class PrefetchedConnection : public platform::Connection {
 public:
  explicit PrefetchedConnection(std::shared_ptr<platform::Connection> other) : other_(std::move(other)) {}

  // Begins a moment, which the next one that is asked for continues: what is fetched is of the same moment as what is
  // read then. Throws platform::Error.
  void BeginMoment();
  // From now on what `fresh` reads is read, by all who use this one.
  void Become(const PrefetchedConnection& fresh);
  // Runs the statement and keeps its rows for whoever executes the same text next. Throws platform::Error.
  void Fetch(std::string statement);
  // Gives up what nobody asked for.
  void Drop();

  std::string ConnectionString() const override { return other_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options = platform::kExecuteUnspecified) override;
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override;
  void Cancel() override { other_->Cancel(); }
  std::size_t RowsRead() const override { return other_->RowsRead(); }

 private:
  std::shared_ptr<platform::Connection> other_;
  std::unique_ptr<platform::Moment> moment_;
  std::string statement_;
  std::optional<platform::Recordset> rows_;
};

}  // namespace stockbook::app
