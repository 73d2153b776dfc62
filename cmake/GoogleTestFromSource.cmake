# GoogleTest for a machine that Debian has no package of it for: compiled of the sources in its package googletest.
set(sources /usr/src/googletest)
if(NOT EXISTS ${sources}/googletest/src/gtest-all.cc)
  message(FATAL_ERROR "GoogleTest's sources are not in ${sources}: install the package googletest")
endif()

add_library(mirelo_googletest STATIC
  ${sources}/googletest/src/gtest-all.cc
  ${sources}/googlemock/src/gmock-all.cc)
target_include_directories(mirelo_googletest PRIVATE ${sources}/googletest ${sources}/googlemock)
target_include_directories(mirelo_googletest SYSTEM PUBLIC
  ${sources}/googletest/include ${sources}/googlemock/include)
set_target_properties(mirelo_googletest PROPERTIES UNITY_BUILD OFF)
add_library(GTest::gmock ALIAS mirelo_googletest)

add_library(mirelo_googletest_main STATIC ${sources}/googlemock/src/gmock_main.cc)
target_link_libraries(mirelo_googletest_main PUBLIC mirelo_googletest)
add_library(GTest::gmock_main ALIAS mirelo_googletest_main)
