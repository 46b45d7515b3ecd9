# SPDX-License-Identifier: MIT
# The Windows component: the room `com`, and of it tqStockbook.dll, which needs no other file.

enable_language(RC)
include(cmake/StockbookTypeLibrary.cmake)

stockbook_room(com DEPENDS base columns platform control sheet
  LINK ole32 oleaut32 uuid user32 gdi32 advapi32 comctl32 imm32 oleacc shlwapi msimg32)
add_dependencies(stockbook_com stockbook_type_library)
target_include_directories(stockbook_com SYSTEM PUBLIC ${stockbook_type_library_folder})
target_compile_definitions(stockbook_com PUBLIC UNICODE _UNICODE NOMINMAX STRICT WINVER=0x0A00 _WIN32_WINNT=0x0A00)
# It alone is compiled with initguid.h.
set_source_files_properties(src/com/library/tq_stockbook.cc PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)


set(stockbook_component_folder ${PROJECT_SOURCE_DIR}/src/com/component)
string(REPLACE "." "," stockbook_version_numbers ${PROJECT_VERSION})
set(stockbook_resources ${PROJECT_BINARY_DIR}/component.rc)
configure_file(${stockbook_component_folder}/component.rc.in ${stockbook_resources} @ONLY)
set_source_files_properties(${stockbook_resources} PROPERTIES
  COMPILE_OPTIONS "-I${stockbook_type_library_folder};-I${stockbook_component_folder}"
  OBJECT_DEPENDS "${stockbook_type_library};${stockbook_component_folder}/stockbook.bmp")
add_library(stockbook_component MODULE $<TARGET_OBJECTS:stockbook_com> ${stockbook_component_folder}/component.def
  ${stockbook_resources})
set_target_properties(stockbook_component PROPERTIES OUTPUT_NAME tqStockbook PREFIX "" LINKER_LANGUAGE CXX
  LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
target_link_libraries(stockbook_component PRIVATE stockbook_switches stockbook_com)
# -s: without names of the inside, which nobody could use and which are most of the file.
target_link_options(stockbook_component PRIVATE -static -s)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # The four entrances are exported without the decoration of their calling convention.
  target_link_options(stockbook_component PRIVATE -Wl,--enable-stdcall-fixup)
endif()

# What goes into the zip: a folder for each width. The other width's build folder lies beside this one.
if(PROJECT_IS_TOP_LEVEL)
  add_subdirectory(examples/windows)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(stockbook_width x64)
  else()
    set(stockbook_width x86)
  endif()
  install(FILES $<TARGET_FILE:stockbook_component> $<TARGET_FILE:stockbook_component_host>
    DESTINATION ${stockbook_width} COMPONENT windows)
  install(FILES ${stockbook_type_library} DESTINATION ${stockbook_width} RENAME tqStockbook.tlb COMPONENT windows)
  install(FILES ${stockbook_type_library_folder}/tq_stockbook.h examples/windows/host.cc examples/windows/event_sink.cc
    examples/windows/event_sink.h examples/windows/journal.vbs DESTINATION samples COMPONENT windows)
  install(FILES LICENSE DESTINATION . COMPONENT windows)
  install(FILES docs/windows.md docs/keys.md DESTINATION docs COMPONENT windows)
  install(DIRECTORY docs/windows DESTINATION docs COMPONENT windows)
  install(FILES docs/decisions/0030-a-connection-of-ado-has-no-moments.md DESTINATION docs/decisions COMPONENT windows)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME Stockbook-${PROJECT_VERSION}-Windows)
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
  set(CPACK_INSTALL_CMAKE_PROJECTS "")
  foreach(width x64 x86)
    list(APPEND CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR}/../windows-${width};Stockbook;windows;/")
  endforeach()
  include(CPack)
endif()
