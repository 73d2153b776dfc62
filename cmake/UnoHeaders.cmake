# What sources that speak with LibreOffice are compiled and linked with: the target mirelo_uno_api.
#
# LibreOffice comes with descriptions of its interfaces, not with headers. These are made once: all of them, 26 MB in two
# seconds, since choosing some takes a list that is longer than what it saves.
set(MIRELO_OFFICE_FOLDER /usr/lib/libreoffice CACHE PATH "Where LibreOffice is installed")
find_program(MIRELO_CPPUMAKER cppumaker PATHS ${MIRELO_OFFICE_FOLDER}/sdk/bin NO_DEFAULT_PATH)
find_program(MIRELO_UNOIDL_WRITE unoidl-write PATHS ${MIRELO_OFFICE_FOLDER}/sdk/bin NO_DEFAULT_PATH)
find_path(MIRELO_UNO_INCLUDE cppuhelper/weak.hxx PATHS /usr/include/libreoffice ${MIRELO_OFFICE_FOLDER}/sdk/include NO_DEFAULT_PATH)
if(NOT MIRELO_CPPUMAKER OR NOT MIRELO_UNOIDL_WRITE OR NOT MIRELO_UNO_INCLUDE)
  message(FATAL_ERROR "What the component of LibreOffice is built with is missing: install the package libreoffice-dev "
    "(scripts/install test), or leave the component out with -D MIRELO_LIBREOFFICE=OFF")
endif()

set(headers ${CMAKE_BINARY_DIR}/uno_headers)
add_custom_command(OUTPUT ${headers}/made
  COMMAND ${MIRELO_CPPUMAKER} -Gc -O${headers}
    ${MIRELO_OFFICE_FOLDER}/program/types.rdb ${MIRELO_OFFICE_FOLDER}/program/types/offapi.rdb
  COMMAND ${CMAKE_COMMAND} -E touch ${headers}/made
  DEPENDS ${CMAKE_CURRENT_LIST_FILE} ${MIRELO_OFFICE_FOLDER}/program/types/offapi.rdb
  COMMENT "Making headers of LibreOffice's interfaces" VERBATIM)
add_custom_target(mirelo_uno_headers DEPENDS ${headers}/made)

add_library(mirelo_uno_api INTERFACE)
add_dependencies(mirelo_uno_api mirelo_uno_headers)
target_include_directories(mirelo_uno_api SYSTEM INTERFACE ${headers} ${MIRELO_UNO_INCLUDE})
target_compile_definitions(mirelo_uno_api INTERFACE LINUX UNX CPPU_ENV=gcc3)
# Not by the names that libreoffice-dev has for them: they find one another in their own folder alone.
foreach(library IN ITEMS cppu cppuhelpergcc3 salhelpergcc3 sal)
  find_library(MIRELO_UNO_${library} libuno_${library}.so.3 PATHS ${MIRELO_OFFICE_FOLDER}/program NO_DEFAULT_PATH REQUIRED)
  target_link_libraries(mirelo_uno_api INTERFACE ${MIRELO_UNO_${library}})
endforeach()
