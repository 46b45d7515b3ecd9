// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "stockbook/platform/connection.h"

namespace stockbook::designer {

// A connection to a made-up journal of two months, which every journal type and every key shows: what a form editor has
// instead of an inventory. It reads no file and needs no database.
std::shared_ptr<platform::Connection> SampleJournal();

}  // namespace stockbook::designer
