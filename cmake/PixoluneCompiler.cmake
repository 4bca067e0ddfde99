# How every target of the project is compiled.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# A fresh clone finds nothing in a cache.
if(NOT DEFINED ENV{CI})
  find_program(CCACHE_PROGRAM ccache)
endif()
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
set(PIXOLUNE_PRECOMPILE_DEFAULT ON)
if(CMAKE_CXX_COMPILER_LAUNCHER)
  set(PIXOLUNE_PRECOMPILE_DEFAULT OFF)
endif()

option(PIXOLUNE_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

add_library(pixolune_options INTERFACE)
target_include_directories(pixolune_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(pixolune_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Werror
  # Results are exact to the last bit: no product may be fused into a sum.
  -ffp-contract=off)
if(PIXOLUNE_FUZZ)
  target_compile_options(pixolune_options INTERFACE -Wno-error -DFUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(PIXOLUNE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer -O1 -g1)
  add_link_options(-fsanitize=address,undefined)
endif()
