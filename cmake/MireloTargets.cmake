# The few kinds of targets that the project has, each with the same warnings, sanitizers and include root.
#
#   mirelo_room(file...)                                 sources of a subsystem room, part of the library mirelo
#   mirelo_library(NAME SOURCES file... [LINK target...])   values, ports or an adapter: static, named mirelo_NAME
#   mirelo_program(NAME SOURCES file... [LINK target...])   an executable in bin/
#   mirelo_test(NAME SOURCES file... [LINK target...] [COST n])   a GoogleTest program whose suites CTest runs one by one
#   mirelo_suites(PREFIX PROGRAM target [ONLY regex] [ENVIRONMENT name=value])   some of them once more, in other surroundings
#   mirelo_bench(NAME SOURCES file... [LINK target...])     a Google Benchmark program
#   mirelo_fuzz(NAME SOURCES file... [LINK target...])      a libFuzzer program; only compiled where MIRELO_FUZZ is off

# With ccache a build of sources that were built before, in this folder or another, only links. The cache must be told
# that precompiled headers are meant, and the compilers to keep the time out of them. By the compiler's list of what a source
# includes it knows a source again without preprocessing it, which took clang a quarter of the time of each source anew. It looks at
# these files after the compiler. So it must not be told to overlook their times: what was compiled of a file that changed
# meanwhile would be kept for what the file holds then.
find_program(MIRELO_CCACHE ccache)
if(MIRELO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_DEPEND=1
    CCACHE_SLOPPINESS=pch_defines,time_macros ${MIRELO_CCACHE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
  else()
    add_compile_options(-fpch-preprocess)
  endif()
endif()

# The sources of a target are compiled in batches, each batch as one: what they all include is then read once, and what
# templates make of it is made once, which takes a third of the time. So names in the unnamed namespaces of one target's
# sources must differ. What ./test builds has larger ones (CMakePresets.json), which take another quarter off; who edits much
# configures with 1, and waits for one source then.
set(MIRELO_BATCH 10 CACHE STRING "How many sources of a target are compiled as one: 1 for each by itself, 0 for all")
if(NOT MIRELO_BATCH EQUAL 1)
  set(CMAKE_UNITY_BUILD ON)
  set(CMAKE_UNITY_BUILD_BATCH_SIZE ${MIRELO_BATCH})
endif()
# Those of tests are more to a batch: of what they include, fixtures and matchers, most is templates. Batches of 40 take three
# fifths of the time of batches of 10, which a build from nothing notices more than one behind a changed test does.
set(MIRELO_TEST_BATCH 40 CACHE STRING "The same of the sources of a program of tests")

# Programs of tests are many, and this linker is the quickest.
find_program(MIRELO_LLD ld.lld)
if(MIRELO_LLD AND CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_link_options(-fuse-ld=lld)
endif()

add_library(mirelo_options INTERFACE)
target_include_directories(mirelo_options INTERFACE $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/src>)
target_compile_features(mirelo_options INTERFACE cxx_std_20)
# The warnings are ours: who uses the installed library has their own.
target_compile_options(mirelo_options INTERFACE
  "$<BUILD_INTERFACE:-Wall;-Wextra;-Wpedantic;-Wconversion;-Werror=return-type>")
# The check of virtual tables is off: it opens a pipe, so it cries wolf where a test takes all descriptors away.
if(MIRELO_SANITIZE)
  target_compile_options(mirelo_options INTERFACE
    -fsanitize=${MIRELO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined
    -fno-sanitize=vptr)
  # At addresses that are known when they are linked nothing is relocated at the start, which is a third of what it costs;
  # tests start thousands of processes.
  target_link_options(mirelo_options INTERFACE -fsanitize=${MIRELO_SANITIZE}
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-no-pie>
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,MODULE_LIBRARY>:-shared-libasan>)
  # An office, which was built without the sanitizers, loads what was built with them if it has been given their runtime before all
  # else (tests/calc).
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libclang_rt.asan-${CMAKE_SYSTEM_PROCESSOR}.so
    OUTPUT_VARIABLE MIRELO_SANITIZER_RUNTIME OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(MIRELO_TESTS AND NOT EXISTS ${MIRELO_SANITIZER_RUNTIME})
    message(FATAL_ERROR "the tests under the sanitizers are built with clang and its address sanitizer as a shared library: "
      "install libclang-rt-dev (scripts/install test), and configure with --preset asan")
  endif()
endif()
if(MIRELO_COVERAGE)
  enable_language(C)
  add_library(mirelo_count_exits OBJECT ${CMAKE_SOURCE_DIR}/cmake/count_exits.c)
  target_compile_definitions(mirelo_count_exits PRIVATE "MIRELO_UNCOUNTED=\"${CMAKE_BINARY_DIR}/uncounted.log\"")
  target_link_libraries(mirelo_options INTERFACE $<TARGET_OBJECTS:mirelo_count_exits>)
  target_link_options(mirelo_options INTERFACE -Wl,--wrap=_exit,--wrap=__gcov_exit,--wrap=__gcov_dump)
endif()
# What the sources of tests are compiled with beside these.
add_library(mirelo_test_options INTERFACE)
# Their lines are known to debuggers, their variables are not: a quarter of their time.
target_compile_options(mirelo_test_options INTERFACE $<$<CONFIG:Debug>:-g1>)
if(MIRELO_FUZZ)
  # The fuzzer is led by what it reaches in the libraries, not only in its own few lines.
  target_compile_options(mirelo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

include(Precompiled)
include(CompiledTests)

# The system itself: the subsystem rooms know each other both ways, so they are one library.
add_library(mirelo STATIC)
target_link_libraries(mirelo PUBLIC mirelo_options mirelo_host mirelo_forms mirelo_automation)
mirelo_use_precompiled(mirelo mirelo_precompiled)

function(mirelo_room)
  foreach(source IN LISTS ARGN)
    target_sources(mirelo PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${source})
  endforeach()
endfunction()

function(mirelo_library NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  if(WIN32)
    mirelo_leave_out_for_windows(ARG_SOURCES ARG_LINK)
  endif()
  add_library(mirelo_${NAME} STATIC ${ARG_SOURCES})
  target_link_libraries(mirelo_${NAME} PUBLIC mirelo_options ${ARG_LINK})
  mirelo_use_precompiled(mirelo_${NAME} mirelo_precompiled)
endfunction()

function(mirelo_program NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${NAME} ${ARG_SOURCES})
  target_link_libraries(${NAME} PRIVATE mirelo_options ${ARG_LINK})
endfunction()

# Where no run before has told how long tests take, those of the highest COST begin first: long ones, so that none is waited
# for alone.
function(mirelo_test NAME)
  cmake_parse_arguments(ARG "" "COST" "SOURCES;LINK" ${ARGN})
  if(WIN32)
    mirelo_leave_out_for_windows(ARG_SOURCES ARG_LINK)
    if(NOT ARG_SOURCES)
      return()
    endif()
  endif()
  mirelo_compiled_once(test_${NAME} sources ${ARG_SOURCES})
  add_executable(test_${NAME} ${sources})
  mirelo_link_compiled_once(test_${NAME})
  if(CMAKE_UNITY_BUILD)
    set_target_properties(test_${NAME} PROPERTIES UNITY_BUILD_BATCH_SIZE ${MIRELO_TEST_BATCH})
  endif()
  target_include_directories(test_${NAME} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(test_${NAME} PRIVATE mirelo_options mirelo_test_options ${ARG_LINK} GTest::gmock_main)
  mirelo_use_precompiled(test_${NAME} mirelo_test_precompiled)
  if(WIN32)
    target_link_libraries(test_${NAME} PRIVATE mirelo_posix_sockets mirelo_windows)
    # An entry a program: the start of each costs more there than its tests, and nothing runs while it is built.
    add_test(NAME ${NAME} COMMAND test_${NAME} --gtest_brief=1)
    set_tests_properties(${NAME} PROPERTIES TIMEOUT 300)
  else()
    mirelo_suites(${NAME} PROGRAM test_${NAME} COST ${ARG_COST})
  endif()
endfunction()

# Has CTest run the suites of the test program TARGET, named PREFIX.Suite: all of them, or those that match ONLY.
function(mirelo_suites PREFIX)
  cmake_parse_arguments(ARG "" "PROGRAM;ONLY;ENVIRONMENT;COST" "" ${ARGN})
  set(suites ${CMAKE_CURRENT_BINARY_DIR}/${PREFIX}_suites.cmake)
  if(NOT ARG_ONLY)
    set(ARG_ONLY ".")
  endif()
  if(NOT ARG_COST)
    set(ARG_COST 0)
  endif()
  add_custom_command(TARGET ${ARG_PROGRAM} POST_BUILD BYPRODUCTS ${suites}
    COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:${ARG_PROGRAM}> -D PREFIX=${PREFIX} -D ONLY=${ARG_ONLY}
      -D ENVIRONMENT=${ARG_ENVIRONMENT} -D COST=${ARG_COST} -D OUTPUT=${suites} -P ${PROJECT_SOURCE_DIR}/cmake/ListSuites.cmake
    VERBATIM)
  # A program that was not built fails as a test of its own, and hides none of the others.
  set(look ${CMAKE_CURRENT_BINARY_DIR}/${PREFIX}_look.cmake)
  file(CONFIGURE OUTPUT ${look} @ONLY CONTENT [[
if(EXISTS "@suites@")
  include("@suites@")
else()
  add_test("@PREFIX@.NotBuilt" "@ARG_PROGRAM@-is-not-built")
endif()
]])
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${look})
endfunction()

# In a build of tests, benchmarks and fuzz targets are compiled so that none goes stale, by a target of their own: who only
# tests does not wait for them.
function(mirelo_stands_beside_tests TARGET)
  if(NOT MIRELO_TESTS)
    return()
  endif()
  set_target_properties(${TARGET} PROPERTIES EXCLUDE_FROM_ALL ON)
  if(NOT TARGET beside_tests)
    add_custom_target(beside_tests)
  endif()
  add_dependencies(beside_tests ${TARGET})
endfunction()

function(mirelo_bench NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(bench_${NAME} ${ARG_SOURCES})
  target_include_directories(bench_${NAME} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(bench_${NAME} PRIVATE mirelo_options ${ARG_LINK} benchmark::benchmark)
  mirelo_stands_beside_tests(bench_${NAME})
endfunction()

function(mirelo_fuzz NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  if(MIRELO_FUZZ)
    add_executable(fuzz_${NAME} ${ARG_SOURCES})
    target_compile_options(fuzz_${NAME} PRIVATE -fsanitize=fuzzer)
    target_link_options(fuzz_${NAME} PRIVATE -fsanitize=fuzzer)
  else()
    add_library(fuzz_${NAME} OBJECT ${ARG_SOURCES})
  endif()
  target_include_directories(fuzz_${NAME} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(fuzz_${NAME} PRIVATE mirelo_options ${ARG_LINK})
  mirelo_stands_beside_tests(fuzz_${NAME})
endfunction()
