# SPDX-License-Identifier: MIT
# The plugin by which Qt Designer and QUiLoader know the widget. It uses the shared libraries, as a program beside it does.
find_package(Qt6 ${STOCKBOOK_LEAST_QT} QUIET COMPONENTS UiPlugin)
if(NOT TARGET Qt6::UiPlugin)
  message(STATUS "Qt UiPlugin is missing (Debian: qt6-tools-dev), so the plugin for Qt Designer is not built")
  return()
endif()

file(GLOB stockbook_designer_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/designer/*.cc)
file(GLOB stockbook_designer_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/designer/*.h)
add_library(stockbook_designer MODULE ${stockbook_designer_sources})
set_target_properties(stockbook_designer PROPERTIES AUTOMOC ON AUTOGEN_TARGET_DEPENDS "${stockbook_designer_headers}"
  CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
  LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/plugins/designer)
target_link_libraries(stockbook_designer PRIVATE stockbook_switches stockbook_qt_shared Qt6::UiPlugin)
target_link_options(stockbook_designer PRIVATE -Wl,-z,defs)
if(STOCKBOOK_INSTALL)
  # Under the prefix it lies as it does under that of Qt, where Designer looks.
  # Below another prefix than the system's the loader does not look for the libraries; a package must not tell it where they are.
  cmake_path(ABSOLUTE_PATH QT6_INSTALL_PLUGINS BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE stockbook_plugins)
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    file(RELATIVE_PATH stockbook_to_libraries ${stockbook_plugins}/designer ${CMAKE_INSTALL_FULL_LIBDIR})
    set_property(TARGET stockbook_designer APPEND PROPERTY INSTALL_RPATH "$ORIGIN/${stockbook_to_libraries}")
    # What these libraries need lies beside them: the path is for their own needs, too.
    target_link_options(stockbook_designer PRIVATE -Wl,--disable-new-dtags)
  endif()
  install(TARGETS stockbook_designer LIBRARY DESTINATION ${QT6_INSTALL_PLUGINS}/designer COMPONENT designer)
endif()
