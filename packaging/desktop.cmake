# What a person's desktop and shells want to know: pages for man, completions, an entry of the menu with its icon.

set(manual ${CMAKE_CURRENT_BINARY_DIR}/manual)
set(programs mirelo mirelo-windows quotetracker)
set(pages)
set(completions)
foreach(program IN LISTS programs)
  list(APPEND pages ${manual}/${program}.1)
  list(APPEND completions ${manual}/${program}.bash ${manual}/${program}.fish ${manual}/_${program})
endforeach()
add_custom_command(
  OUTPUT ${pages} ${completions}
  COMMAND write_manual ${manual}
  DEPENDS write_manual
  COMMENT "Writing the manual pages")
add_custom_target(mirelo_manual_pages ALL DEPENDS ${pages} ${completions})

install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 ${RUNTIME})
foreach(program IN LISTS programs)
  # bash finds the file by the program's name, fish by its ending too.
  install(FILES ${manual}/${program}.bash DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions
    RENAME ${program} ${RUNTIME})
  install(FILES ${manual}/${program}.fish DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/fish/vendor_completions.d ${RUNTIME})
  # zsh by a name with an underscore in front, in the folder that Debian has it look into.
  install(FILES ${manual}/_${program} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions ${RUNTIME})
endforeach()

install(FILES mirelo.desktop DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications ${RUNTIME})
install(FILES mirelo.svg DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor/scalable/apps ${RUNTIME})
