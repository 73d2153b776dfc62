# The extension of LibreOffice: as a file, which "mirelo calc" gives to an office, and unpacked, where a link among the office's
# own extensions has all users have it. The office of a distribution lies below /usr.
if(NOT MIRELO_LIBREOFFICE)
  return()
endif()

set(MIRELO_EXTENSIONDIR lib/mirelo)
install(FILES ${CMAKE_BINARY_DIR}/mirelo.oxt DESTINATION ${MIRELO_EXTENSIONDIR} ${RUNTIME})
install(DIRECTORY ${CMAKE_BINARY_DIR}/extension/ DESTINATION ${MIRELO_EXTENSIONDIR}/extension ${RUNTIME})
set(link ${CMAKE_CURRENT_BINARY_DIR}/link/mirelo)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/link)
file(CREATE_LINK ../../../mirelo/extension ${link} SYMBOLIC)
install(FILES ${link} DESTINATION lib/libreoffice/share/extensions ${RUNTIME})
