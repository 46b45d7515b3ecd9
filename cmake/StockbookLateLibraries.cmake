# SPDX-License-Identifier: MIT
# Libraries that are loaded by their first caller (databases/late/late_library.h): their headers are compiled against, and
# nothing is linked.

# stockbook_late_library(PREFIX source): tells the source, as PREFIX_FILE, by which name the loader knows the library that
# pkg_check_modules found as PREFIX, and where its headers are.
function(stockbook_late_library prefix source)
  list(GET ${prefix}_LINK_LIBRARIES 0 library)
  execute_process(COMMAND ${CMAKE_OBJDUMP} -p ${library} OUTPUT_VARIABLE parts ERROR_QUIET)
  if(NOT parts MATCHES "SONAME +([^ \n]+)")
    message(FATAL_ERROR "${library} does not tell its name (SONAME); is it a static library?")
  endif()
  set_property(SOURCE ${source} APPEND PROPERTY COMPILE_DEFINITIONS ${prefix}_FILE="${CMAKE_MATCH_1}")
  set_property(SOURCE ${source} APPEND PROPERTY INCLUDE_DIRECTORIES "${${prefix}_INCLUDE_DIRS}")
endfunction()
