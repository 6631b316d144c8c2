# The native build: the portable engines as 32-bit Linux code over the fake
# operating-system seam, for sanitizers, fuzzing and instruction counts.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  message(FATAL_ERROR "the native build needs clang (CC=clang CXX=clang++): libFuzzer is clang's")
endif()
add_compile_options(-m32)
add_link_options(-m32)

# QV_QUICK: no sanitizers, no fuzz targets or benchmarks; the configuration
# tools/mutants.py rebuilds once per mutant.
option(QV_QUICK "native tests only, without sanitizers" OFF)
if(QV_QUICK)
  set(QV_SANITIZE)
else()
  set(QV_SANITIZE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
endif()
set(QV_NATIVE_INCLUDES ${CMAKE_SOURCE_DIR}/include ${CMAKE_SOURCE_DIR}/resources ${CMAKE_SOURCE_DIR}/tests/native)

# The engines and the fake seam, three times: for the tests (sanitizers), for
# the fuzz targets (sanitizers and the coverage instrumentation libFuzzer
# steers by), and for the benchmarks (optimised, uninstrumented).
foreach(kind test fuzz bench)
  if(QV_QUICK AND NOT kind STREQUAL "test")
    continue()
  endif()
  add_library(qvnative_${kind} STATIC ${QV_PORTABLE_SOURCES} ${CMAKE_SOURCE_DIR}/tests/native/fake_os.cpp)
  target_include_directories(qvnative_${kind} PUBLIC ${QV_NATIVE_INCLUDES})
  target_compile_options(qvnative_${kind} PRIVATE ${QV_LIBRARY_FLAGS})
endforeach()
if(NOT QV_QUICK)
  foreach(kind test fuzz)
    target_compile_options(qvnative_${kind} PUBLIC ${QV_SANITIZE})
    target_link_options(qvnative_${kind} PUBLIC ${QV_SANITIZE})
  endforeach()
  target_compile_options(qvnative_fuzz PRIVATE -fsanitize=fuzzer-no-link)
  target_compile_options(qvnative_bench PUBLIC -O2 -DNDEBUG)
endif()

set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(t gtest gtest_main)
  target_compile_options(${t} PRIVATE ${QV_SANITIZE})
endforeach()

# Sanitizer settings for every native test run: leaks are faults, except the
# documented ones listed in the suppressions file.
set(QV_SANITIZER_ENV "ASAN_OPTIONS=detect_leaks=1;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/native/lsan.supp;UBSAN_OPTIONS=print_stacktrace=1")
add_subdirectory(tests/native)
if(NOT QV_QUICK)
  add_subdirectory(tests/fuzz)
  add_subdirectory(bench)
endif()
