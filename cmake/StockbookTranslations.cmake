# SPDX-License-Identifier: MIT
# The English texts of the reference host, in its program. They are in apps/stockbook/translations/stockbook_en.ts, which
# Qt Linguist edits. Without lrelease the host is built and speaks Chinese alone.
find_program(STOCKBOOK_LRELEASE lrelease HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS} /usr/lib/qt6/bin
  DOC "Qt's lrelease, which makes the English texts of the reference host (Debian: qt6-l10n-tools)")

# stockbook_translations(target source): makes the texts a part of the target, and says so to the source that loads them.
function(stockbook_translations target source)
  if(NOT STOCKBOOK_LRELEASE)
    message(STATUS "lrelease is not here (Debian: qt6-l10n-tools); the reference host speaks Chinese alone")
    return()
  endif()
  set(texts ${CMAKE_CURRENT_SOURCE_DIR}/translations/stockbook_en.ts)
  set(released ${CMAKE_CURRENT_BINARY_DIR}/stockbook_en.qm)
  add_custom_command(OUTPUT ${released} COMMAND ${STOCKBOOK_LRELEASE} -silent ${texts} -qm ${released} DEPENDS ${texts}
    COMMENT "Releasing the English texts" VERBATIM)
  # A list of resources names files beside itself.
  configure_file(${CMAKE_CURRENT_SOURCE_DIR}/translations/translations.qrc ${CMAKE_CURRENT_BINARY_DIR}/translations.qrc COPYONLY)
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/stockbook_translations.cc)
  add_custom_command(OUTPUT ${resources}
    COMMAND Qt6::rcc --name stockbook_translations --output ${resources} ${CMAKE_CURRENT_BINARY_DIR}/translations.qrc
    DEPENDS ${released} ${CMAKE_CURRENT_BINARY_DIR}/translations.qrc VERBATIM)
  # Apart from the target, since it is not ours to keep free of warnings.
  add_library(stockbook_translations STATIC ${resources})
  set_target_properties(stockbook_translations PROPERTIES AUTOMOC OFF UNITY_BUILD OFF)
  target_link_libraries(stockbook_translations PRIVATE Qt6::Core)
  target_link_libraries(${target} PRIVATE stockbook_translations)
  set_source_files_properties(${source} PROPERTIES COMPILE_DEFINITIONS STOCKBOOK_SPEAKS_ENGLISH)
endfunction()
