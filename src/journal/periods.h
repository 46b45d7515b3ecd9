// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/connection.h"

namespace stockbook::journal {

// The accounting periods in the database are texts that sort in time order, such as 2004-03.

// Reads the newest period; "" if it cannot be read.
std::string NewestAccPeriod(platform::Connection* connection);

// The earliest period; throws platform::Error when there is none.
std::string EarliestAccPeriod(platform::Connection* connection);

// The caption of a period's row: 2004-03 and 合计 (total) give 2004年03月合计.
std::string PeriodCaption(std::string_view period, std::string_view word);

}  // namespace stockbook::journal
