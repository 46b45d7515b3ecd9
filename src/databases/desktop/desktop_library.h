// SPDX-License-Identifier: MIT
#pragma once

#include <mdbtools.h>

#include "databases/late/late_library.h"

namespace stockbook::databases {

// libmdb, which brings a library of lists and texts, is loaded for the first desktop file. Its functions are called as
// ever.
inline constexpr LateLibrary kDesktopLibrary("libmdb.so.3");

inline constinit const LateFunction<decltype(::mdb_close)> mdb_close(kDesktopLibrary, "mdb_close");
inline constinit const LateFunction<decltype(::mdb_crack_row)> mdb_crack_row(kDesktopLibrary, "mdb_crack_row");
inline constinit const LateFunction<decltype(::mdb_free_tabledef)> mdb_free_tabledef(kDesktopLibrary,
                                                                                     "mdb_free_tabledef");
inline constinit const LateFunction<decltype(::mdb_map_find_next)> mdb_map_find_next(kDesktopLibrary,
                                                                                     "mdb_map_find_next");
inline constinit const LateFunction<decltype(::mdb_open)> mdb_open(kDesktopLibrary, "mdb_open");
inline constinit const LateFunction<decltype(::mdb_read_alt_pg)> mdb_read_alt_pg(kDesktopLibrary, "mdb_read_alt_pg");
inline constinit const LateFunction<decltype(::mdb_read_columns)> mdb_read_columns(kDesktopLibrary, "mdb_read_columns");
inline constinit const LateFunction<decltype(::mdb_read_indices)> mdb_read_indices(kDesktopLibrary, "mdb_read_indices");
inline constinit const LateFunction<decltype(::mdb_read_pg)> mdb_read_pg(kDesktopLibrary, "mdb_read_pg");
inline constinit const LateFunction<decltype(::mdb_read_table)> mdb_read_table(kDesktopLibrary, "mdb_read_table");

// All of them, for the process that reads files: it is a copy of a host with threads, one of which may hold the
// loader's lock in that moment. Throws platform::Error where the library is not installed.
inline void LoadDesktopLibrary() {
  mdb_close.Load();
  mdb_crack_row.Load();
  mdb_free_tabledef.Load();
  mdb_map_find_next.Load();
  mdb_open.Load();
  mdb_read_alt_pg.Load();
  mdb_read_columns.Load();
  mdb_read_indices.Load();
  mdb_read_pg.Load();
  mdb_read_table.Load();
}

}  // namespace stockbook::databases
