// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

#include "stockbook/base/api.h"

namespace stockbook::platform {

// What failed. An error of the statement concerns what was asked (no such table, a text that is refused, a value that
// does not convert): another statement may well succeed, and a reader may take a neutral result. All others concern the
// engine: what was asked has an answer, and nobody knows it.
enum class ErrorKind { kStatement, kBusy, kInputOutput, kDamaged, kMemory, kInterrupted };

// The one error that ports throw: what was being done, and a message for the user in one sentence; the platform's own
// code and SQLSTATE where there are any. The control turns it into its neutral results at its own edge.
class STOCKBOOK_API Error : public std::runtime_error {
 public:
  // The operation is for logs, the message for the user; 0 and "" where the platform has no code.
  Error(std::string operation, const std::string& message, int native_code = 0, ErrorKind kind = ErrorKind::kStatement,
        std::string sql_state = {})
      : std::runtime_error(message),
        operation_(std::move(operation)),
        native_code_(native_code),
        kind_(kind),
        sql_state_(std::move(sql_state)) {}

  // kStatement unless the port said another kind.
  ErrorKind kind() const { return kind_; }
  // Whether nobody knows the answer: every kind but kStatement.
  bool IsOfEngine() const { return kind_ != ErrorKind::kStatement; }

  // What was being done, in English: for logs and tests.
  const std::string& operation() const { return operation_; }
  // The platform's own number, 0 where it has none.
  int native_code() const { return native_code_; }
  // The five characters of a server or a driver, or "".
  const std::string& sql_state() const { return sql_state_; }

 private:
  std::string operation_;
  int native_code_;
  ErrorKind kind_;
  std::string sql_state_;
};

}  // namespace stockbook::platform
