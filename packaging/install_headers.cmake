# Run by cmake --install. Installs the headers below `source` that `roots` include, directly or not, under
# `destination` of the prefix, and says so when one of them does not exist.
cmake_minimum_required(VERSION 3.25)

set(found)
while(roots)
  list(POP_FRONT roots file)
  file(STRINGS ${file} lines REGEX "^#include \"")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^#include \"([^\"]+)\".*" "\\1" name "${line}")
    if(NOT EXISTS ${source}/${name})
      message(FATAL_ERROR "${file} includes ${name}, which is not below ${source}")
    endif()
    if(NOT name IN_LIST found)
      list(APPEND found ${name})
      list(APPEND roots ${source}/${name})
    endif()
  endforeach()
endwhile()

foreach(name IN LISTS found)
  get_filename_component(folder ${name} DIRECTORY)
  file(INSTALL DESTINATION ${CMAKE_INSTALL_PREFIX}/${destination}/${folder} TYPE FILE FILES ${source}/${name})
endforeach()
