// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "journal/inventory.h"

namespace stockbook::journal {

// The accounting periods in the database are texts that sort in time order, such as 2004-03.

// Reads the newest period; "" when there is none, or if its statement fails.
std::string NewestAccPeriod(const Inventory& inventory);

// The earliest period; throws platform::Error when there is none.
std::string EarliestAccPeriod(platform::Connection* connection);

// The caption of a period's row: 2004-03 and 合计 (total) give 2004年03月合计. Without a period it is the word alone.
std::string PeriodCaption(std::string_view period, std::string_view word);

}  // namespace stockbook::journal
