# SPDX-License-Identifier: MIT
# For Windows, where no package has SQLite: the room `databases` with the embedded database alone, from the source of SQLite
# that tools/install-sqlite fetches. For tests and benchmarks; nothing of it is in the component. Sets
# stockbook_test_database to whether it is there.

set(STOCKBOOK_SQLITE ${PROJECT_SOURCE_DIR}/build/sqlite CACHE PATH "The folder with sqlite3.c and sqlite3.h, for Windows")
set(stockbook_test_database OFF)
if(EXISTS ${STOCKBOOK_SQLITE}/sqlite3.c AND EXISTS ${STOCKBOOK_SQLITE}/sqlite3.h)
  # The C compiler of the same family, not that of this system.
  if(NOT CMAKE_C_COMPILER)
    string(REGEX REPLACE "g[+][+]" "gcc" CMAKE_C_COMPILER "${CMAKE_CXX_COMPILER}")
  endif()
  enable_language(C)
  set(stockbook_test_database ON)
  add_library(stockbook_sqlite STATIC ${STOCKBOOK_SQLITE}/sqlite3.c)
  target_include_directories(stockbook_sqlite SYSTEM PUBLIC ${STOCKBOOK_SQLITE})
  target_compile_definitions(stockbook_sqlite PRIVATE SQLITE_OMIT_LOAD_EXTENSION)
  # It reads a small file, once: compiling it well takes longer.
  target_compile_options(stockbook_sqlite PRIVATE -O1)
  add_library(SQLite::SQLite3 ALIAS stockbook_sqlite)
  stockbook_room(databases DEPENDS base columns platform LINK SQLite::SQLite3 WITHOUT desktop odbc postgres late)
  # localtime_r is of POSIX.
  target_compile_definitions(stockbook_databases PRIVATE _POSIX_C_SOURCE=200809L)
else()
  message(STATUS "The tests that load journals are skipped: ${STOCKBOOK_SQLITE} has no source of SQLite (tools/install-sqlite)")
endif()
