# SPDX-License-Identifier: MIT
# One static library per room, with its arrows as link dependencies, and the compiler switches that all targets share.
# Nothing here changes a setting of a project that this tree is part of.

if(PROJECT_IS_TOP_LEVEL)
  if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
  endif()
  find_program(CCACHE_PROGRAM ccache)
  if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
  endif()
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  # The target all_verify_interface_header_sets compiles every header alone; nothing else builds it.
  set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)

# What every target of this tree is compiled with, and where it finds the headers that are not public. Linked PRIVATE, so that
# no host has to be free of our warnings, or sees those headers.
add_library(stockbook_switches INTERFACE)
target_include_directories(stockbook_switches INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_features(stockbook_switches INTERFACE cxx_std_20)
target_compile_options(stockbook_switches INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                                    -Woverloaded-virtual
                                                    $<$<BOOL:${STOCKBOOK_WERROR}>:-Werror> -ffp-contract=off)
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Windows")
  # No interface of COM has a virtual destructor; its objects are deleted as what they are.
  target_compile_options(stockbook_switches INTERFACE -Wnon-virtual-dtor)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees overlapping copies in std::string's own operator+ where there are none, under the sanitizers variables
  # that nothing was written to, and headers in all sources that were joined.
  target_compile_options(stockbook_switches INTERFACE -Wno-restrict -Wno-subobject-linkage
                                                      $<$<BOOL:${STOCKBOOK_SANITIZE}>:-Wno-maybe-uninitialized>)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Windows" AND CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Sums that are rounded as 64-bit programs round them: the older unit keeps more digits for as long as it likes. Hosts
  # call with a stack that is aligned to four bytes.
  target_compile_options(stockbook_switches INTERFACE -msse2 -mfpmath=sse -mstackrealign)
endif()
if(STOCKBOOK_SANITIZE)
  target_compile_options(stockbook_switches INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                      -fno-omit-frame-pointer)
  target_link_options(stockbook_switches INTERFACE -fsanitize=address,undefined)
  target_compile_definitions(stockbook_switches INTERFACE STOCKBOOK_SANITIZED)
endif()

if(STOCKBOOK_HARDEN)
  # A compiler that defines _FORTIFY_SOURCE by itself minds its being defined again. Where Qt asks for -fPIC, that comes
  # later and wins.
  target_compile_options(stockbook_switches INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong
                                                      $<IF:$<BOOL:$<TARGET_PROPERTY:POSITION_INDEPENDENT_CODE>>,,-fPIE>)
  target_link_options(stockbook_switches INTERFACE -pie -Wl,-z,relro,-z,now)
endif()

# stockbook_compile_together(TARGET): its sources are compiled as STOCKBOOK_JOIN and STOCKBOOK_PRECOMPILE say.
function(stockbook_compile_together target)
  if(STOCKBOOK_JOIN)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 10)
  endif()
  if(STOCKBOOK_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE <algorithm> <functional> <map> <memory> <optional> <string> <vector>
      $<$<IN_LIST:Qt6::Widgets,$<TARGET_PROPERTY:LINK_LIBRARIES>>:<QtWidgets$<ANGLE-R>>)
  endif()
endfunction()

# stockbook_room(NAME [FOLDER folder] [DEPENDS room...] [LINK target...] [WITHOUT folder...]): the library `stockbook_NAME` of
# src/NAME, or of another folder of src, but for the folders that are left out. Its public headers are in include/stockbook/NAME;
# those beside the sources are for targets of this tree, which find them by stockbook_switches. Hosts link the libraries of
# StockbookLibraries.cmake, which are put together from rooms.
# A folder that is a library of its own shares the public headers' place with its room: each goes where its source is.
function(stockbook_room name)
  cmake_parse_arguments(ROOM "" "FOLDER" "DEPENDS;LINK;WITHOUT" ${ARGN})
  set(folder ${name})
  if(ROOM_FOLDER)
    set(folder ${ROOM_FOLDER})
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cc)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/stockbook/${folder}/*.h)
  file(GLOB_RECURSE private_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.h)
  foreach(without IN LISTS ROOM_WITHOUT)
    foreach(header IN LISTS headers)
      cmake_path(GET header STEM stem)
      if(EXISTS ${PROJECT_SOURCE_DIR}/src/${folder}/${without}/${stem}.cc)
        list(REMOVE_ITEM headers ${header})
      endif()
    endforeach()
    list(FILTER sources EXCLUDE REGEX "/src/${folder}/${without}/")
    list(FILTER headers EXCLUDE REGEX "/stockbook/${folder}/${without}/")
    list(FILTER private_headers EXCLUDE REGEX "/src/${folder}/${without}/")
  endforeach()
  if(ROOM_FOLDER)
    cmake_path(GET folder PARENT_PATH parent)
    foreach(source IN LISTS sources)
      cmake_path(GET source STEM stem)
      if(EXISTS ${PROJECT_SOURCE_DIR}/include/stockbook/${parent}/${stem}.h)
        list(APPEND headers ${PROJECT_SOURCE_DIR}/include/stockbook/${parent}/${stem}.h)
      endif()
    endforeach()
  endif()
  if(sources)
    add_library(stockbook_${name} STATIC ${sources})
    target_link_libraries(stockbook_${name} PRIVATE $<BUILD_INTERFACE:stockbook_switches>)
    target_include_directories(stockbook_${name} PUBLIC ${PROJECT_BINARY_DIR}/include)
    stockbook_compile_together(stockbook_${name})
    # What a shared library shows is marked by STOCKBOOK_API. A function of ours is never replaced by one of the program.
    set_target_properties(stockbook_${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    if(STOCKBOOK_SHARED)
      set_target_properties(stockbook_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
      target_compile_options(stockbook_${name} PRIVATE -fno-semantic-interposition)
    endif()
    set(scope PUBLIC)
  else()
    add_library(stockbook_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_sources(stockbook_${name} ${scope} FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/include FILES ${headers})
  target_compile_features(stockbook_${name} ${scope} cxx_std_20)
  target_link_libraries(stockbook_${name} ${scope} ${ROOM_LINK})
  foreach(room IN LISTS ROOM_DEPENDS)
    target_link_libraries(stockbook_${name} ${scope} stockbook_${room})
  endforeach()
  if(folder MATCHES "^qt" AND sources)
    # A new header alone does not trigger moc, unless moc depends on it by name.
    set_target_properties(stockbook_${name} PROPERTIES AUTOMOC ON AUTORCC ON AUTOGEN_TARGET_DEPENDS "${headers};${private_headers}")
  endif()
  if(PROJECT_IS_TOP_LEVEL AND private_headers)
    # They are compiled alone, too.
    add_library(stockbook_${name}_inside INTERFACE)
    target_sources(stockbook_${name}_inside INTERFACE
      FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src FILES ${private_headers})
    target_link_libraries(stockbook_${name}_inside INTERFACE stockbook_switches stockbook_${name})
  endif()
endfunction()

# stockbook_check_headers(TARGET FOLDER BASE LINK target...): compiles the headers of a folder that is not a library
# alone as well; they are included from BASE.
function(stockbook_check_headers target folder base)
  cmake_parse_arguments(CHECKED "" "" "LINK" ${ARGN})
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${folder}/*.h)
  if(headers)
    add_library(${target} INTERFACE)
    target_sources(${target} INTERFACE FILE_SET HEADERS BASE_DIRS ${base} FILES ${headers})
    target_link_libraries(${target} INTERFACE stockbook_switches ${CHECKED_LINK})
  endif()
endfunction()

# stockbook_executable(TARGET NAME source...): a program that is called NAME; only its target has the prefix that keeps
# it apart from those of a host.
function(stockbook_executable target name)
  add_executable(${target} ${ARGN})
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name})
  target_link_libraries(${target} PRIVATE stockbook_switches)
endfunction()

# stockbook_program(TARGET NAME): puts the program into the build folder. For a build inside the tree, whatever its
# preset, build/NAME is a link to the program built last: a target of its own, because another preset may have changed
# it.
function(stockbook_program target name)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
  cmake_path(GET PROJECT_BINARY_DIR PARENT_PATH parent)
  if(parent STREQUAL "${PROJECT_SOURCE_DIR}/build")
    cmake_path(GET PROJECT_BINARY_DIR FILENAME folder)
    add_custom_target(${target}_link ALL
      COMMAND ${CMAKE_COMMAND} -E create_symlink ${folder}/${name} ${parent}/${name}
      COMMENT "build/${name} is the program of ${folder}" VERBATIM)
    add_dependencies(${target}_link ${target})
  endif()
endfunction()
