// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/doctor/doctor_report.h"
#include "stockbook/doctor/doctor_tables.h"

namespace stockbook::app {

// Values that are none: periods of another form, or unknown, or in another order than the dates of their bills; dates
// that are none or lie outside of their bill's period; numbers that are none; quantities below zero.
void ExaminePeriods(const ExaminedTables& tables, DoctorReport& report);
void ExamineDates(const ExaminedTables& tables, DoctorReport& report);
void ExamineNumbers(const ExaminedTables& tables, DoctorReport& report);

}  // namespace stockbook::app
