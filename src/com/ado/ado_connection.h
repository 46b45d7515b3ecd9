// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <memory>

#include "stockbook/platform/connection.h"

namespace stockbook::com {

// The control's connection over one that a host has opened with ADO, or with anything that has the same members: of the
// connection Execute and ConnectionString; of a recordset EOF, MoveNext, Close, Fields (Count, Item; Name, Value) and,
// where it has them, GetRows and CacheSize. They are called by name alone. Statements run as they stand; that a
// statement only reads, and ends, is for the host's connection to see to. It knows no moments, because ADO has none: a
// transaction of ADO holds off other writers or does not, as the host has set it up. Belongs to the apartment of its
// maker, and adds a reference to the object, which it keeps while a statement runs even if it is destroyed meanwhile.
// Nothing for no object.
std::shared_ptr<platform::Connection> OpenAdoConnection(IDispatch* connection);

}  // namespace stockbook::com
