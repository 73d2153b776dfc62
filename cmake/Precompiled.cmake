# Headers compiled once for many sources: what most of src includes of the standard library, and what nearly every test
# includes. Sources include what they use all the same: what is shipped is built without.
#
#   mirelo_use_precompiled(TARGET mirelo_precompiled)        for a library of src
#   mirelo_use_precompiled(TARGET mirelo_test_precompiled)   for a program or library of tests
#
# A header serves programs and what an office loads, so all that use it are compiled for any address.
set(any_address -fPIC)
if(WIN32)
  set(any_address "")  # everything is there
endif()

file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled.cpp CONTENT "// Only carries a precompiled header.\n")
function(mirelo_precompile NAME)
  cmake_parse_arguments(ARG "" "" "HEADERS;LINK" ${ARGN})
  add_library(${NAME} OBJECT ${CMAKE_BINARY_DIR}/precompiled.cpp)
  target_link_libraries(${NAME} PRIVATE mirelo_options ${ARG_LINK})
  target_compile_options(${NAME} PRIVATE ${any_address})
  target_precompile_headers(${NAME} PRIVATE ${ARG_HEADERS})
endfunction()

function(mirelo_use_precompiled TARGET PRECOMPILED)
  if(TARGET ${PRECOMPILED})
    target_compile_options(${TARGET} PRIVATE ${any_address})
    target_precompile_headers(${TARGET} REUSE_FROM ${PRECOMPILED})
  endif()
endfunction()

if(MIRELO_TESTS AND CMAKE_BUILD_TYPE STREQUAL "Debug")
  mirelo_precompile(mirelo_precompiled
    HEADERS
      <algorithm> <array> <charconv> <chrono> <cmath> <cstddef> <cstdint> <cstring> <filesystem> <functional> <map> <memory>
      <optional> <set> <span> <string> <string_view> <system_error> <unordered_map> <utility> <variant> <vector>)
endif()
