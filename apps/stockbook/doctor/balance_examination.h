// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/doctor/doctor_report.h"
#include "stockbook/doctor/doctor_tables.h"

namespace stockbook::app {

// The balances of depots, suppliers, customers and projects against the lines, period by period: the totals of a period
// are the sums of its lines (receipts alone for suppliers, issues alone for customers), and the stock that a period
// opens with is what the period before has left. Periods without a line may do without a row.
void ExamineBalances(const ExaminedTables& tables, DoctorReport& report);

}  // namespace stockbook::app
