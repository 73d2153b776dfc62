# Writes down what CTest is to run of one test program: an entry a suite. It runs after each link of the program, as
#   cmake -D PROGRAM=... -D PREFIX=... -D ONLY=... -D ENVIRONMENT=... -D COST=... -D OUTPUT=... -P ListSuites.cmake
# PREFIX stands before the suites' names, ONLY is a regular expression that chooses among them, ENVIRONMENT may be empty.
#
# An entry a suite and not one a test: thousands of starts, each of which maps the same libraries and, under the
# sanitizers, the same shadow memory, took longer than the tests.

execute_process(COMMAND ${PROGRAM} --gtest_list_tests
  OUTPUT_VARIABLE listed RESULT_VARIABLE result TIMEOUT 60)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} cannot list its tests: ${result}\n${listed}")
endif()

# Suites stand at the start of a line and end in a point, tests are indented; behind both may stand a comment.
string(REGEX MATCHALL "(^|\n)[A-Za-z_][^\n. ]*[.]" suites "${listed}")
list(TRANSFORM suites REPLACE "[\n.]" "")
list(FILTER suites INCLUDE REGEX "${ONLY}")
if(NOT suites)
  message(FATAL_ERROR "${PROGRAM} has no suite that matches \"${ONLY}\"")
endif()

set(entries "")
foreach(suite IN LISTS suites)
  string(APPEND entries "add_test(\"${PREFIX}.${suite}\" \"${PROGRAM}\" \"--gtest_filter=${suite}.*\")\n"
    # For suites that hang: under the sanitizers and beside others the longest take two minutes.
    "set_tests_properties(\"${PREFIX}.${suite}\" PROPERTIES TIMEOUT 600 COST ${COST} ENVIRONMENT \"${ENVIRONMENT}\")\n")
endforeach()
file(WRITE ${OUTPUT} "${entries}")
