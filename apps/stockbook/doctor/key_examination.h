// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/doctor/doctor_report.h"
#include "stockbook/doctor/doctor_tables.h"

namespace stockbook::app {

// Keys that are missing, no whole numbers, or given twice; and what refers to a record that does not exist: bills,
// products, depots, partners and projects of lines and bills, the stock that an issue came from, classes.
void ExamineKeys(const ExaminedTables& tables, DoctorReport& report);
void ExamineReferences(const ExaminedTables& tables, DoctorReport& report);
void ExamineClasses(const ExaminedTables& tables, DoctorReport& report);

}  // namespace stockbook::app
