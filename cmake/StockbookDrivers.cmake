# SPDX-License-Identifier: MIT
# The client libraries of databases beside the embedded one. What is missing, or switched off, is left out of the room
# `databases`, and the program says so when it is asked for. Sets stockbook_driver_definitions (STOCKBOOK_WITH_… for what is
# there), stockbook_driver_includes and stockbook_missing_drivers (folders of the room).

set(stockbook_driver_definitions "")
set(stockbook_driver_includes "")
set(stockbook_missing_drivers "")
find_package(PkgConfig QUIET)

# stockbook_driver(NAME FOLDER MODULE): the driver of the option STOCKBOOK_NAME, in src/databases/FOLDER, needs MODULE. Its
# headers alone are taken: the library is loaded by the first that calls it (databases/late/late_library.h).
macro(stockbook_driver name folder module)
  if(STOCKBOOK_${name} AND PkgConfig_FOUND)
    pkg_check_modules(STOCKBOOK_${name}_LIBRARY QUIET IMPORTED_TARGET ${module})
  endif()
  if(STOCKBOOK_${name} AND STOCKBOOK_${name}_LIBRARY_FOUND)
    list(APPEND stockbook_driver_includes ${STOCKBOOK_${name}_LIBRARY_INCLUDE_DIRS})
    list(APPEND stockbook_driver_definitions STOCKBOOK_WITH_${name})
  else()
    list(APPEND stockbook_missing_drivers ${folder})
    message(STATUS "Stockbook is built without src/databases/${folder}: ${module} is missing or switched off")
  endif()
endmacro()

stockbook_driver(DESKTOP_FILES desktop libmdb)
stockbook_driver(POSTGRES postgres libpq)
stockbook_driver(ODBC odbc odbc)
