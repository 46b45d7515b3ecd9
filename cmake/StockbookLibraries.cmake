# SPDX-License-Identifier: MIT
# The libraries that hosts link, put together from the rooms: `Stockbook::Base`, `::Core`, `::Sheet`, `::Databases` (with
# `::Sqlite`, `::Postgres`, `::Odbc`, `::Desktop` for what it was built with), `::SheetWidget` and `::Qt`. Each is static, shared or
# both; in a tree that takes this one in, `Stockbook::Core` is the shared one where BUILD_SHARED_LIBS says so.

# Before version 1 each minor version may break programs that were linked before, and has a name of its own for the loader.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(stockbook_soversion ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
  set(stockbook_soversion ${PROJECT_VERSION_MAJOR})
endif()

configure_file(${PROJECT_SOURCE_DIR}/cmake/install/version.h.in ${PROJECT_BINARY_DIR}/include/stockbook/version.h @ONLY)

# stockbook_library(NAME EXPORTED ROOMS room... [DEPENDS name...] [LINK target...] [PRIVATE_LINK target...]): the library
# libstockbook-NAME, for hosts Stockbook::EXPORTED. LINK is what the host's own code sees of it, PRIVATE_LINK is not.
function(stockbook_library name exported)
  cmake_parse_arguments(LIBRARY "" "" "ROOMS;DEPENDS;LINK;PRIVATE_LINK" ${ARGN})
  string(REPLACE "-" "_" target stockbook_${name})
  set(objects "")
  foreach(room IN LISTS LIBRARY_ROOMS)
    list(APPEND objects $<TARGET_OBJECTS:stockbook_${room}>)
  endforeach()
  foreach(kind IN ITEMS Static Shared)
    string(TOUPPER ${kind} type)
    if(NOT STOCKBOOK_${type})
      continue()
    endif()
    string(TOLOWER ${target}_${kind} library)
    add_library(${library} ${type} ${objects})
    set_target_properties(${library} PROPERTIES OUTPUT_NAME stockbook-${name} EXPORT_NAME ${exported}${kind}
      LINKER_LANGUAGE CXX AUTOMOC OFF AUTORCC OFF AUTOUIC OFF)
    target_compile_features(${library} INTERFACE cxx_std_20)
    target_include_directories(${library} INTERFACE
      "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include;${PROJECT_BINARY_DIR}/include>"
      "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    foreach(other IN LISTS LIBRARY_DEPENDS)
      string(REPLACE "-" "_" other stockbook_${other}_${kind})
      string(TOLOWER ${other} other)
      target_link_libraries(${library} PUBLIC ${other})
    endforeach()
    target_link_libraries(${library} PUBLIC ${LIBRARY_LINK} PRIVATE ${LIBRARY_PRIVATE_LINK})
    if(kind STREQUAL "Shared")
      set_target_properties(${library} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${stockbook_soversion})
      # In a folder where the loader does not look, a library finds the others of ours beside it. A distribution wants no such path.
      if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
        set_target_properties(${library} PROPERTIES INSTALL_RPATH "$ORIGIN")
      endif()
      # What it uses and is not linked to is told when it is built, not when a host is.
      target_link_options(${library} PRIVATE -Wl,-z,defs -Wl,-z,relro,-z,now)
    endif()
    if(STOCKBOOK_INSTALL)
      install(TARGETS ${library} EXPORT Stockbook${exported}${kind}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development)
    endif()
    if(kind STREQUAL "Static" OR BUILD_SHARED_LIBS OR NOT STOCKBOOK_STATIC)
      set(chosen ${library})
    endif()
  endforeach()
  add_library(Stockbook::${exported} ALIAS ${chosen})
  set_property(GLOBAL APPEND PROPERTY STOCKBOOK_LIBRARIES ${name})
  set_property(GLOBAL PROPERTY STOCKBOOK_EXPORTED_${name} ${exported})
  set_property(GLOBAL PROPERTY STOCKBOOK_DEPENDS_${name} ${LIBRARY_DEPENDS})
endfunction()

stockbook_library(base Base ROOMS base columns platform)
stockbook_library(core Core ROOMS journal grid interaction control DEPENDS base)
stockbook_library(sheet Sheet ROOMS sheet DEPENDS base)
if(NOT STOCKBOOK_CORE_ONLY)
  stockbook_library(databases Databases ROOMS databases DEPENDS base PRIVATE_LINK SQLite::SQLite3 ${CMAKE_DL_LIBS})
  stockbook_library(sheet-widget SheetWidget ROOMS qt_sheet DEPENDS sheet LINK Qt6::Widgets)
  stockbook_library(qt Qt ROOMS qt DEPENDS core sheet-widget LINK Qt6::Widgets)
  get_target_property(stockbook_databases_library Stockbook::Databases ALIASED_TARGET)
  # What each needs is in the library of them all, and loaded with its first connection.
  set(stockbook_drivers Sqlite)
  foreach(driver IN ITEMS Postgres Odbc Desktop)
    string(TOLOWER ${driver} folder)
    if(NOT folder IN_LIST stockbook_missing_drivers)
      list(APPEND stockbook_drivers ${driver})
    endif()
  endforeach()
  foreach(driver IN LISTS stockbook_drivers)
    add_library(Stockbook::${driver} ALIAS ${stockbook_databases_library})
  endforeach()
endif()
if(STOCKBOOK_INSTALL)
  include(cmake/StockbookInstall.cmake)
endif()
