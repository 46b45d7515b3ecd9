// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "stockbook/base/date.h"
#include "stockbook/import/import_sentence.h"

namespace stockbook::app {

// A date as people write it into tables: 2025-2-9, 2025/2/9, 2025.2.9, 2025年2月9日, 20250209, and a time behind it.
// The year comes first, because 2/9/2025 is two different days. Nothing for any other text, a day that does not exist,
// or a year outside 1900 to 2199, which is a typing error and would create a period of its own; `why` then continues
// "the date ...".
std::optional<base::Date> ReadImportDate(std::string_view text, ImportSentence& why);

}  // namespace stockbook::app
