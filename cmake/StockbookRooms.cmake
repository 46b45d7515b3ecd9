# SPDX-License-Identifier: MIT
# One static library per room, with its arrows as link dependencies, and the compiler switches that all targets share.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(stockbook_switches INTERFACE)
target_compile_features(stockbook_switches INTERFACE cxx_std_20)
target_include_directories(stockbook_switches INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(stockbook_switches INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                                    -Wnon-virtual-dtor -Woverloaded-virtual -Werror -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees overlapping copies in std::string's own operator+ where there are none.
  target_compile_options(stockbook_switches INTERFACE -Wno-restrict)
endif()
if(STOCKBOOK_SANITIZE)
  target_compile_options(stockbook_switches INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                      -fno-omit-frame-pointer -Wno-maybe-uninitialized)
  target_link_options(stockbook_switches INTERFACE -fsanitize=address,undefined)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# The target all_verify_interface_header_sets compiles every header alone; nothing else builds it.
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

# stockbook_room(NAME [DEPENDS room...] [LINK target...]): the library `stockbook_NAME` of src/NAME.
function(stockbook_room name)
  cmake_parse_arguments(ROOM "" "" "DEPENDS;LINK" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.cc)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.h)
  if(sources)
    add_library(stockbook_${name} STATIC ${sources})
    set(scope PUBLIC)
  else()
    add_library(stockbook_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_sources(stockbook_${name} ${scope} FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src FILES ${headers})
  target_link_libraries(stockbook_${name} ${scope} stockbook_switches ${ROOM_LINK})
  foreach(room IN LISTS ROOM_DEPENDS)
    target_link_libraries(stockbook_${name} ${scope} stockbook_${room})
  endforeach()
  if(name STREQUAL "qt" AND sources)
    # A new header alone does not trigger moc, unless moc depends on it by name.
    set_target_properties(stockbook_${name} PROPERTIES AUTOMOC ON AUTORCC ON AUTOGEN_TARGET_DEPENDS "${headers}")
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

# stockbook_program(TARGET): puts the program into the build folder. For a build inside the tree, whatever its preset,
# build/<name> is a link to the program built last: a target of its own, because another preset may have changed it.
function(stockbook_program target)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
  cmake_path(GET CMAKE_BINARY_DIR PARENT_PATH parent)
  if(parent STREQUAL "${PROJECT_SOURCE_DIR}/build")
    cmake_path(GET CMAKE_BINARY_DIR FILENAME folder)
    add_custom_target(${target}_link ALL
      COMMAND ${CMAKE_COMMAND} -E create_symlink ${folder}/${target} ${parent}/${target}
      COMMENT "build/${target} is the program of ${folder}" VERBATIM)
    add_dependencies(${target}_link ${target})
  endif()
endfunction()
