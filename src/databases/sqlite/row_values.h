// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <string_view>

#include "databases/dialect/typed_sql.h"
#include "stockbook/base/value.h"

namespace stockbook::databases {

// Reads a stored value in the form that a translated expression gives it; texts keep their bytes.
base::Value ReadValue(sqlite3_value* stored, Form form);

// The bytes of a text or blob.
std::string_view BytesOf(sqlite3_value* stored);

// The value as a function's result, in the forms that translated statements use between functions.
void WriteValue(sqlite3_context* context, const base::Value& value);

// Whether a text is clean UTF-8 without NUL.
bool IsCleanText(std::string_view bytes);

}  // namespace stockbook::databases
