// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "databases/desktop/read_failure.h"
#include "databases/desktop/reading_process.h"
#include "databases/desktop/table_sink.h"

namespace stockbook::databases {

// Sends tables through a pipe to ReceiveTables, which knows by Finish or Fail that it has them all.
class TableSender : public TableSink {
 public:
  explicit TableSender(int pipe) : pipe_(pipe) {}
  void BeginTable(const DesktopTable& table) override;
  void AddIndex(const DesktopIndex& index) override;
  void AddRow(const std::vector<DesktopValue>& values) override;
  void Finish();
  void Fail(const ReadFailure& failure);

 private:
  void PutNumber(uint64_t number);
  void PutText(std::string_view text);
  void PutValue(const DesktopValue& value);
  void SendIfFull();
  void Send();

  int pipe_;
  std::string waiting_;
};

// Hands on what the process sends. Throws the ReadFailure that was sent, or one of a damaged file where the process
// ended before its time or sent what makes no sense.
void ReceiveTables(ReadingProcess& process, TableSink& sink);

}  // namespace stockbook::databases
