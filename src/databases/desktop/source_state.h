// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace stockbook::databases {

// What tells a state of a file from every other one without reading it: which file it is, how long, and when it was
// last changed. A plain value.
struct SourceState {
  uint64_t device = 0;
  uint64_t inode = 0;
  uint64_t bytes = 0;
  int64_t modified_ns = 0;
  int64_t changed_ns = 0;

  bool operator==(const SourceState&) const = default;
};

// One call of the operating system. Throws platform::Error of `operation` when there is no such file, when it may not
// be looked at, or when it is a folder, a pipe or a device.
SourceState StateOf(const std::string& file, const char* operation);

// Waits until a further change would give the file another time than that of `state`: times are no finer than the clock
// of the system that stamps them. A hundredth of a second at most; nothing for files that are older.
void WaitUntilChangesShow(const SourceState& state);

}  // namespace stockbook::databases
