// SPDX-License-Identifier: MIT
#pragma once

#include "com/ado/late_bound.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::com {

// Reads all that an ADO recordset has left and closes it, whatever happens. Rows come in portions by GetRows; where
// there is no such member, one by one. Throws platform::Error.
platform::Recordset ReadRecordset(LateBound recordset, KnownClasses& classes);

}  // namespace stockbook::com
