# SPDX-License-Identifier: MIT
# The type library of the component and the header with its interfaces, made by MinGW's widl into the build folder. Sets
# stockbook_type_library (the file), stockbook_type_library_folder (from where tq_stockbook.h is included) and the target
# stockbook_type_library.

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(stockbook_widl_prefix x86_64)
  set(stockbook_widl_width -m64)
else()
  set(stockbook_widl_prefix i686)
  set(stockbook_widl_width -m32)
endif()
find_program(STOCKBOOK_WIDL ${stockbook_widl_prefix}-w64-mingw32-widl)
if(NOT STOCKBOOK_WIDL)
  message(FATAL_ERROR "The type library needs ${stockbook_widl_prefix}-w64-mingw32-widl (Debian: mingw-w64-tools)")
endif()
# Wine's copy of the library of automation's own types. It is read for names and identifiers alone: one serves both widths.
find_path(STOCKBOOK_STDOLE stdole2.tlb NO_CMAKE_FIND_ROOT_PATH
  PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows /usr/lib64/wine/x86_64-windows
        /usr/local/lib/wine/x86_64-windows /opt/wine-stable/lib64/wine/x86_64-windows)
if(NOT STOCKBOOK_STDOLE)
  message(FATAL_ERROR "The type library refers to stdole2.tlb, which is in no folder of Wine's that is known here (Debian: "
                      "libwine). Where it lies elsewhere, give its folder: -DSTOCKBOOK_STDOLE=...")
endif()

set(stockbook_type_library_folder ${PROJECT_BINARY_DIR}/type_library)
set(stockbook_type_library ${stockbook_type_library_folder}/tq_stockbook.tlb)
set(stockbook_idl ${PROJECT_SOURCE_DIR}/src/com/library/tq_stockbook.idl)
set(stockbook_idl_folder ${PROJECT_SOURCE_DIR}/src/com/library/idl)
set(stockbook_widl ${STOCKBOOK_WIDL} ${stockbook_widl_width} -I ${stockbook_idl_folder} -L ${STOCKBOOK_STDOLE})
file(MAKE_DIRECTORY ${stockbook_type_library_folder})
add_custom_command(
  OUTPUT ${stockbook_type_library} ${stockbook_type_library_folder}/tq_stockbook.h
  COMMAND ${stockbook_widl} -t -o ${stockbook_type_library} ${stockbook_idl}
  COMMAND ${stockbook_widl} -h -o ${stockbook_type_library_folder}/tq_stockbook.h ${stockbook_idl}
  DEPENDS ${stockbook_idl} ${stockbook_idl_folder}/oaidl.idl ${stockbook_idl_folder}/ocidl.idl
  COMMENT "The type library tqStockbook" VERBATIM)
add_custom_target(stockbook_type_library DEPENDS ${stockbook_type_library})
