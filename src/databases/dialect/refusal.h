// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "stockbook/platform/error.h"

namespace stockbook::databases {

// Why a statement is not run, and the byte of the statement where the reason is. Thrown inside the room alone; the
// connection turns it into a platform::Error with RefusedAt.
class Refusal : public std::runtime_error {
 public:
  Refusal(size_t offset, const std::string& reason) : std::runtime_error(reason), offset_(offset) {}
  size_t offset() const { return offset_; }

 private:
  size_t offset_;
};

// The error of a refused statement: the reason with its line and character (both counted from 1).
platform::Error RefusedAt(std::string_view statement, const Refusal& refusal);

}  // namespace stockbook::databases
