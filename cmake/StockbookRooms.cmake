# SPDX-License-Identifier: MIT
# One static library per room of the house, with its arrows as link dependencies, and the switches that every target shares.

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
if(STOCKBOOK_SANITIZE)
  target_compile_options(stockbook_switches INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                      -fno-omit-frame-pointer)
  target_link_options(stockbook_switches INTERFACE -fsanitize=address,undefined)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# stockbook_room(NAME [DEPENDS room...] [LINK target...]): the library `stockbook_NAME` of src/NAME.
function(stockbook_room name)
  cmake_parse_arguments(ROOM "" "" "DEPENDS;LINK" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.cc)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.h)
  if(sources)
    add_library(stockbook_${name} STATIC ${sources} ${headers})
    set(scope PUBLIC)
  else()
    add_library(stockbook_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_link_libraries(stockbook_${name} ${scope} stockbook_switches ${ROOM_LINK})
  foreach(room IN LISTS ROOM_DEPENDS)
    target_link_libraries(stockbook_${name} ${scope} stockbook_${room})
  endforeach()
  if(name STREQUAL "qt" AND sources)
    set_target_properties(stockbook_${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  endif()
endfunction()

# The folder of the program: build/ of the source tree whatever the preset, the build folder itself elsewhere.
cmake_path(IS_PREFIX PROJECT_SOURCE_DIR ${CMAKE_BINARY_DIR} NORMALIZE STOCKBOOK_BUILDS_INSIDE)
if(STOCKBOOK_BUILDS_INSIDE)
  set(STOCKBOOK_PROGRAM_DIR ${PROJECT_SOURCE_DIR}/build)
else()
  set(STOCKBOOK_PROGRAM_DIR ${CMAKE_BINARY_DIR})
endif()
