# Compile rules that every target of this project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

add_library(zel_rules INTERFACE)
target_compile_options(zel_rules INTERFACE
  -Wall -Wextra -Wconversion -Wshadow
  -ffp-contract=off # one rounding per written operation, on every machine
  -fsigned-char     # the delete tag and CharArr compare characters as signed
  $<$<BOOL:${ZEL_WERROR}>:-Werror>)
# How much of its own state the library checks; see zel/core/detail/check.h.
if(ZEL_SANITIZE)
  set(zel_checks 2)
elseif(CMAKE_BUILD_TYPE STREQUAL Debug)
  set(zel_checks 1)
else()
  set(zel_checks 0)
endif()
target_compile_definitions(zel_rules INTERFACE ZEL_CHECKS=${zel_checks})
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # x87 arithmetic would keep excess precision and move the snapping points.
  target_compile_options(zel_rules INTERFACE -msse2 -mfpmath=sse)
endif()

if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # What clang means by -Wconversion and gcc does not.
  target_compile_options(zel_rules INTERFACE -Wno-sign-conversion)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # gcc 12 sees overlaps and overruns inside std::string that are not there (its bug 105651).
  target_compile_options(zel_rules INTERFACE -Wno-restrict -Wno-array-bounds)
  # Its SLP vectoriser drops the rounding of (double)(float)x where two such values stand side by
  # side. tests/differential compares the optimised library with an unoptimised one.
  target_compile_options(zel_rules INTERFACE -fno-tree-slp-vectorize)
endif()

if(ZEL_SANITIZE)
  add_compile_options(-fsanitize=${ZEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZEL_SANITIZE})
  # Instrumented, gcc takes members of the standard library's own classes for uninitialised.
  target_compile_options(zel_rules INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# zel_add_test(NAME source... [INTERNAL] [LIBS library...])
# One test program. It links the shared library that users get; INTERNAL links the object files
# instead, for tests of parts that are not exported.
function(zel_add_test name)
  cmake_parse_arguments(ARG "INTERNAL" "" "LIBS" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE
    zel_rules zel_test_support $<IF:$<BOOL:${ARG_INTERNAL}>,zel_objects,zel> GTest::gtest_main
    ${ARG_LIBS})
  # Most of a test's compile time is GoogleTest's headers and the optimising of code that runs once.
  target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
  if(CMAKE_CROSSCOMPILING) # each start of the emulator takes longer than most cases
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 1200)
    return()
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    PROPERTIES TIMEOUT 300)
endfunction()

# zel_add_fault_test(NAME source...): a test program whose heap can be made to refuse, see
# tests/faults/refusing_allocator.h. It links the object files: every report to kwErrorMessage()
# then goes through the linker, which leads it to the test. Linux only.
function(zel_add_fault_test name)
  zel_add_test(${name} INTERNAL ${ARGN} ${PROJECT_SOURCE_DIR}/tests/faults/refusing_allocator.cpp)
  target_link_options(${name} PRIVATE -Wl,--wrap=_Z14kwErrorMessagei)
endfunction()
