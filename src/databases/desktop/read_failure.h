// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace stockbook::databases {

// Why a desktop file could not be read to its end.
enum class FailureCause : uint8_t { kDamaged, kUnreadable, kNoMemory, kLinkedTables, kUnknownText };

// Crosses from the process that reads the file; `what()` is the table, or whatever else it happened at.
class ReadFailure : public std::runtime_error {
 public:
  ReadFailure(FailureCause cause, const std::string& place) : std::runtime_error(place), cause_(cause) {}
  FailureCause cause() const { return cause_; }

 private:
  FailureCause cause_;
};

}  // namespace stockbook::databases
