# SPDX-License-Identifier: MIT
# The Windows component: the room `com`.

enable_language(RC)
include(cmake/StockbookTypeLibrary.cmake)

stockbook_room(com DEPENDS base columns platform control sheet
  LINK ole32 oleaut32 uuid user32 gdi32 advapi32 comctl32 imm32 oleacc shlwapi msimg32)
add_dependencies(stockbook_com stockbook_type_library)
target_include_directories(stockbook_com SYSTEM PUBLIC ${stockbook_type_library_folder})
target_compile_definitions(stockbook_com PUBLIC UNICODE _UNICODE NOMINMAX STRICT WINVER=0x0A00 _WIN32_WINNT=0x0A00)
# It alone is compiled with initguid.h.
set_source_files_properties(src/com/library/tq_stockbook.cc PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)

