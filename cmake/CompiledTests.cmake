# Half of a build's time is spent on the tests' own sources. A build that watches src by the sanitizers can take them as another
# build has compiled them:
#
#   -D MIRELO_TESTS_OF=FOLDER   the build tree, of this checkout, whose tests' objects are linked
#
# What is watched then is all that is not tests: each library is linked whole and before the tests, so that of each inline
# function and template that both have, the one that is watched counts. What tests allocate, free, or hand to the C library is
# watched all the same; what they do by themselves is not, which is why the preset asan compiles everything.
set(MIRELO_TESTS_OF "" CACHE PATH "The build tree of this checkout whose compiled tests are linked; empty to compile them")

# The other build writes the lists of its objects when it is configured. So it is configured first, each time: else a source
# that was added to a test would be missing here in silence.
if(MIRELO_TESTS_OF)
  set(configure ${MIRELO_TESTS_OF})
  if(NOT EXISTS ${MIRELO_TESTS_OF}/CMakeCache.txt)
    get_filename_component(preset ${MIRELO_TESTS_OF} NAME)
    set(configure --preset ${preset})
  endif()
  execute_process(COMMAND ${CMAKE_COMMAND} ${configure} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endif()

# mirelo_compiled_once(TARGET OUT source...): OUT is what TARGET, which is of tests, is made of: these sources, which are told
# to such a build; in such a build the objects that the other one has made of them.
function(mirelo_compiled_once TARGET OUT)
  if(NOT MIRELO_TESTS_OF)
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/compiled_tests/${TARGET}.txt
      CONTENT "$<JOIN:$<TARGET_OBJECTS:${TARGET}>,\n>\n" TARGET ${TARGET})
    set(${OUT} ${ARGN} PARENT_SCOPE)
    return()
  endif()
  set(told ${MIRELO_TESTS_OF}/compiled_tests/${TARGET}.txt)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${told})
  file(STRINGS ${told} objects)
  set_property(GLOBAL APPEND PROPERTY MIRELO_COMPILED_TESTS ${objects})
  set_property(GLOBAL APPEND PROPERTY MIRELO_COMPILED_ONCE ${TARGET})
  set(${OUT} ${objects} PARENT_SCOPE)
endfunction()

# mirelo_link_compiled_once(TARGET): has TARGET, which is linked of such objects, wait for them, and puts libraries before them.
function(mirelo_link_compiled_once TARGET)
  if(NOT MIRELO_TESTS_OF)
    return()
  endif()
  set_target_properties(${TARGET} PROPERTIES LINKER_LANGUAGE CXX)
  add_dependencies(${TARGET} compiled_tests)
  cmake_language(EVAL CODE
    "cmake_language(DEFER DIRECTORY \"${CMAKE_SOURCE_DIR}\" CALL mirelo_link_libraries_first ${TARGET})")
endfunction()

# Has the other build bring its objects up to date, each time.
function(mirelo_compile_tests)
  get_property(objects GLOBAL PROPERTY MIRELO_COMPILED_TESTS)
  set(targets "")
  foreach(object IN LISTS objects)
    file(RELATIVE_PATH target ${MIRELO_TESTS_OF} ${object})
    list(APPEND targets ${target})
  endforeach()
  add_custom_target(compiled_tests BYPRODUCTS ${objects}
    COMMAND ${CMAKE_COMMAND} --build ${MIRELO_TESTS_OF} --target ${targets}
    COMMENT "Compiling tests in ${MIRELO_TESTS_OF}" VERBATIM)
endfunction()
if(MIRELO_TESTS_OF)
  cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL mirelo_compile_tests)
endif()

# mirelo_libraries_of(TARGET OUT): all our static libraries that TARGET is linked of.
function(mirelo_libraries_of TARGET OUT)
  set(found ${${OUT}})
  set(links "")
  foreach(property LINK_LIBRARIES INTERFACE_LINK_LIBRARIES)
    get_target_property(some ${TARGET} ${property})
    if(some)
      list(APPEND links ${some})
    endif()
  endforeach()
  foreach(link IN LISTS links)
    string(REGEX REPLACE "^\\$<[A-Z_]+:(.*)>$" "\\1" link "${link}")
    if(link MATCHES "^mirelo" AND TARGET ${link} AND NOT link IN_LIST found)
      list(APPEND found ${link})
      mirelo_libraries_of(${link} found)
    endif()
  endforeach()
  set(${OUT} ${found} PARENT_SCOPE)
endfunction()

# Not those that are compiled once, as the tests are.
function(mirelo_link_libraries_first TARGET)
  get_property(compiled_once GLOBAL PROPERTY MIRELO_COMPILED_ONCE)
  set(libraries "")
  mirelo_libraries_of(${TARGET} libraries)
  set(files "")
  foreach(library IN LISTS libraries)
    get_target_property(type ${library} TYPE)
    if(type STREQUAL STATIC_LIBRARY AND NOT library IN_LIST compiled_once)
      list(APPEND files $<TARGET_FILE:${library}>)
    endif()
  endforeach()
  if(files)
    target_link_options(${TARGET} BEFORE PRIVATE LINKER:--whole-archive ${files} LINKER:--no-whole-archive)
  endif()
endfunction()
