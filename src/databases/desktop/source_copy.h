// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "databases/desktop/copy_in_use.h"
#include "databases/desktop/desktop_settings.h"
#include "databases/desktop/source_state.h"
#include "databases/execution/interruption.h"

namespace stockbook::databases {

// A copy of a desktop file in one of its states.
struct SourceCopy {
  SourceState state;
  std::unique_ptr<CopyInUse> copy;
};

// The copy of the file as it is now: the one that was kept, or a new one. A file that changes while it is read is read
// again. Throws platform::Error that says what is wrong with the file; of kBusy if it never stays as it is.
SourceCopy CopySource(const DesktopSettings& settings, Interruption& interruption, const char* operation);

}  // namespace stockbook::databases
