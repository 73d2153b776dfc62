# The library as other people's programs find it: Mirelo::mirelo, the machine as its host (Mirelo::linux), and the
# spreadsheet in memory (Mirelo::workbook).

set(libraries mirelo mirelo_options)
foreach(part automation terminal forms host spreadsheet wire linux workbook curl headless poll proc sodium sqlite)
  set_target_properties(mirelo_${part} PROPERTIES EXPORT_NAME ${part})
  list(APPEND libraries mirelo_${part})
endforeach()
set_target_properties(mirelo_options PROPERTIES EXPORT_NAME options)

install(TARGETS ${libraries} EXPORT MireloTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} ${DEVELOPMENT}
  INCLUDES DESTINATION ${MIRELO_INCLUDEDIR})
install(EXPORT MireloTargets NAMESPACE Mirelo:: DESTINATION ${MIRELO_CMAKEDIR} ${DEVELOPMENT})

include(CMakePackageConfigHelpers)
configure_package_config_file(MireloConfig.cmake.in MireloConfig.cmake INSTALL_DESTINATION ${MIRELO_CMAKEDIR}
  NO_SET_AND_CHECK_MACRO)
# Before version 1 nothing is promised from one minor version to the next.
write_basic_package_version_file(MireloConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/MireloConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/MireloConfigVersion.cmake
  DESTINATION ${MIRELO_CMAKEDIR} ${DEVELOPMENT})

# Which headers those are is asked when they are installed, so that no list can fall behind.
install(FILES mirelo.h mirelo_host.h DESTINATION ${MIRELO_INCLUDEDIR} ${DEVELOPMENT})
install(CODE "
  set(source ${CMAKE_SOURCE_DIR}/src)
  set(roots ${CMAKE_CURRENT_SOURCE_DIR}/mirelo.h ${CMAKE_CURRENT_SOURCE_DIR}/mirelo_host.h)
  set(destination ${MIRELO_INCLUDEDIR})
  include(${CMAKE_CURRENT_SOURCE_DIR}/install_headers.cmake)"
  ${DEVELOPMENT})
