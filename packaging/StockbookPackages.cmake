# SPDX-License-Identifier: MIT
# The Debian packages, one of each component: `cpack -G DEB` in the build folder. They are built below /usr, or libraries would
# not lie in the folder of their architecture: -DCMAKE_INSTALL_PREFIX=/usr.

# A component without a file would be an error of CPack, so only those that have one are packaged.
# Libraries of two numbers can be installed beside each other, so the number is part of the name.
if(NOT DEFINED stockbook_soversion)
  set(stockbook_soversion ${PROJECT_VERSION_MAJOR})
endif()
set(stockbook_package_library libstockbook${stockbook_soversion})
set(stockbook_package_development libstockbook-dev)
set(stockbook_package_designer qt6-stockbook-designer)
set(stockbook_package_program stockbook)
set(stockbook_package_documentation stockbook-doc)
get_cmake_property(stockbook_installed COMPONENTS)
set(CPACK_COMPONENTS_ALL "")
foreach(component library development designer program documentation)
  if(component IN_LIST stockbook_installed)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
  endif()
endforeach()
if(NOT CPACK_COMPONENTS_ALL)
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME stockbook)
set(CPACK_PACKAGE_VENDOR Stockbook)
set(CPACK_PACKAGE_CONTACT "${STOCKBOOK_MAINTAINER}")
# The first line of each description is its summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${STOCKBOOK_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Packages of one build need each other in the same version.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(about "Stockbook shows the stock journals of an inventory: every receipt and issue of
a product, or of a supplier, customer or project, in date order, with the
running quantity, amount and average price after each line, an opening row,
and a total row for every accounting period.
")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${stockbook_package_library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "stock journals as an embeddable control - libraries
${about}
This package contains the shared libraries.")
# The loader's cache is renewed by a trigger. CPack would write scripts that call ldconfig, which is not done any more; it leaves
# out those that are named here, and these are nowhere.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/deb/triggers
  ${CMAKE_CURRENT_BINARY_DIR}/none/postinst ${CMAKE_CURRENT_BINARY_DIR}/none/postrm)
# By which other packages find out what they depend on. A plugin has no version, and CPack says so.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${stockbook_package_development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qt6-base-dev, libsqlite3-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "stockbook-doc, qt6-stockbook-designer")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "stock journals as an embeddable control - development files
${about}
This package contains what a program is built with: headers, libraries, and
the files by which CMake and pkg-config find them.")

set(CPACK_DEBIAN_DESIGNER_PACKAGE_NAME ${stockbook_package_designer})
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_ENHANCES designer-qt6)
set(CPACK_DEBIAN_DESIGNER_DESCRIPTION "stock journals as an embeddable control - Qt Designer plugin
${about}
This package contains the plugin by which Qt Designer offers the control.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME ${stockbook_package_program})
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "stock journals of an inventory
${about}
Journals are searched, cut to ranges, plotted, printed, and exported as PDF,
CSV or workbook. Inventories are read and never written to: files of its own,
desktop database files, PostgreSQL servers, and databases behind ODBC drivers.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME ${stockbook_package_documentation})
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION "stock journals as an embeddable control - documentation
${about}
This package contains the guide, the reference and the examples, as web pages
and for Qt Assistant.")
if("documentation" IN_LIST CPACK_COMPONENTS_ALL)
  install(FILES deb/doc-base DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc-base RENAME stockbook-doc.stockbook
    COMPONENT documentation)
endif()

# Libraries that are loaded by their first caller are nothing that dpkg-shlibdeps sees. The program says so where one is missing.
set(late_libraries "")
find_package(PkgConfig QUIET)
foreach(late "STOCKBOOK_DESKTOP_FILES_LIBRARY libmdb" "STOCKBOOK_POSTGRES_LIBRARY libpq" "STOCKBOOK_ODBC_LIBRARY odbc"
    "STOCKBOOK_XLSX_WRITER xlsxwriter" "STOCKBOOK_ZIP libzip" "STOCKBOOK_PLPLOT plplot" "STOCKBOOK_CAIRO cairo")
  separate_arguments(late)
  list(POP_FRONT late prefix)
  if(${prefix}_FOUND AND PkgConfig_FOUND)
    # Where a library lies is known only in the folder that looked for it.
    pkg_check_modules(STOCKBOOK_PACKAGED_${prefix} QUIET IMPORTED_TARGET ${late})
    list(GET STOCKBOOK_PACKAGED_${prefix}_LINK_LIBRARIES 0 library)
    file(REAL_PATH ${library} library)
    execute_process(COMMAND dpkg-query -S ${library} OUTPUT_VARIABLE owner RESULT_VARIABLE unknown ERROR_QUIET)
    if(NOT unknown AND owner MATCHES "^([^:]+):")
      list(APPEND late_libraries ${CMAKE_MATCH_1})
    endif()
  endif()
endforeach()
if(STOCKBOOK_PLPLOT_FOUND)
  list(APPEND late_libraries plplot-driver-cairo)
endif()
list(APPEND late_libraries fonts-noto-cjk qt6-translations-l10n)
list(JOIN late_libraries ", " CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS)

# Programs and plugins are linked with the libraries of this build, which are nowhere on the machine.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
if("library" IN_LIST CPACK_COMPONENTS_ALL)
  set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
  set(CPACK_COMPONENT_DESIGNER_DEPENDS library)
endif()

# Every package says who may copy it, what has changed, and why what lintian minds is no mistake.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(package ${stockbook_package_${component}})
  set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
  set(overrides deb/lintian-overrides.in)
  if(component STREQUAL "library")
    set(overrides deb/library.lintian-overrides.in)
  endif()
  configure_file(${overrides} ${package}.overrides @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${package}.overrides DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides
    RENAME ${package} COMPONENT ${component})
  install(FILES deb/copyright DESTINATION ${folder} COMPONENT ${component})
  if(Python3_FOUND AND STOCKBOOK_GZIP)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian.gz DESTINATION ${folder} COMPONENT ${component})
  endif()
endforeach()
if(Python3_FOUND AND STOCKBOOK_GZIP)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md deb/make-changelog)
  execute_process(COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/deb/make-changelog
      ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE} ${STOCKBOOK_MAINTAINER}
    OUTPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${STOCKBOOK_GZIP} -9nf changelog.Debian WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    COMMAND_ERROR_IS_FATAL ANY)
endif()

include(CPack)
