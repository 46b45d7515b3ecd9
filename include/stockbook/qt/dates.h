// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>

#include "stockbook/base/date.h"

namespace stockbook::qt {

// The day at midnight; the zero date, which is none, for an invalid day and for years outside 100..9999.
inline base::Date FromQDate(const QDate& day) {
  if (!day.isValid()) return {};
  return base::Date::FromParts({.year = day.year(), .month = day.month(), .day = day.day()}).value_or(base::Date());
}

// The day without its time; an invalid one for the zero date.
inline QDate ToQDate(base::Date date) {
  const base::DateParts parts = date.parts();
  return date.IsZero() ? QDate() : QDate(parts.year, parts.month, parts.day);
}

}  // namespace stockbook::qt
