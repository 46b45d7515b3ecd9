// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/doctor/doctor_report.h"
#include "stockbook/inventory/database_source.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

// Examines an inventory as of one moment, whatever database it lies in: whole columns are read by one statement a table
// and examined in memory. Errors of the engine are passed on. The indexes are those of SQLite's files alone.
DoctorReport ExamineInventory(const DatabaseSource& source, platform::Connection& connection);

}  // namespace stockbook::app
