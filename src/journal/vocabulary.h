// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "base/journal_type.h"

namespace stockbook::journal {

// The one source of the names that depend on the journal type. A type outside of the four gives "" everywhere.

// Table of the journal's subjects.
std::string_view SubjectTable(base::tqJournalTypeContants type);
// Class tree of the subjects.
std::string_view ClassTable(base::tqJournalTypeContants type);
// Key field of the subject table; suppliers and customers share one.
std::string_view SubjectKeyField(base::tqJournalTypeContants type);
// The journal type's long name, for the host's use.
std::string_view FmtName(base::tqJournalTypeContants type);

}  // namespace stockbook::journal
