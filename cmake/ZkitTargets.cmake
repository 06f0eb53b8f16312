# How the project's targets are compiled.

# Every target of the project: the language, warnings, and arithmetic that is the same everywhere.
function(zkit_compile target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off)
  if(ZKIT_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
  endif()
endfunction()

# Code in which fuzzers, if any are built, look for new paths.
function(zkit_compile_for_fuzzers target)
  if(ZKIT_BUILD_FUZZERS)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# A piece of the libraries: hidden unless exported, fit for a shared library.
function(zkit_compile_for_library target)
  zkit_compile(${target})
  set_target_properties(${target} PROPERTIES
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
  zkit_compile_for_fuzzers(${target})
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${target} PRIVATE ZKIT_STATIC)
  endif()
endfunction()

# One of the three libraries, zkit::<name>, from its sources.
function(zkit_library name)
  set(target zkit_${name})
  add_library(${target} ${ARGN})
  add_library(zkit::${name} ALIAS ${target})
  zkit_compile_for_library(${target})
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name} INSTALL_RPATH "$<IF:$<PLATFORM_ID:Linux>,\$ORIGIN,>" VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${target} PUBLIC ZKIT_STATIC)
  endif()
endfunction()

# The workers of all families for one instruction set: <family>_packed.cpp compiled with the set's flags.
function(zkit_packed_workers set flags)
  list(TRANSFORM ARGN APPEND _packed.cpp OUTPUT_VARIABLE sources)
  add_library(zkit_workers_${set} OBJECT ${sources})
  zkit_compile_for_library(zkit_workers_${set})
  target_compile_definitions(zkit_workers_${set} PRIVATE ZKIT_SET=${set})
  # They are unrolled by hand where that helps; the compiler's own unrolling runs out of registers.
  target_compile_options(zkit_workers_${set} PRIVATE ${flags} $<$<CONFIG:Release>:-O2>)
endfunction()
