# The Debian packages mirelo and mirelo-dev, which cpack makes; scripts/package does it with an optimised build.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME mirelo)
set(CPACK_PACKAGE_VENDOR "Mirelo")
set(CPACK_PACKAGE_CONTACT "Mirelo developers <mirelo@example.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# One package for each part.
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME mirelo)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${MIRELO_OFFICE_FOLDER}/program)  # what the extension is linked with
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "libreoffice-calc")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Mirelo asks QuoteTracker over HTTP for snapshots or listens to its Level I stream, works out the volume between two
requests, and keeps a quote table in a workbook that Excel and LibreOffice open.
.
The package also holds an extension of LibreOffice Calc, by which quotes come into the document on the screen, and quotetracker, a stand-in for QuoteTracker to try things out with.")

# What the archives need below them, and whoever asks for it: MireloConfig.cmake.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME mirelo-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libcurl4-openssl-dev, libsqlite3-dev, libsodium-dev, libpugixml-dev, libzip-dev, libxlsxwriter-dev, pkg-config")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "cmake (>= 3.25), g++ (>= 4:12)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS mirelo)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "This package holds the library: headers, static libraries and examples for programs that use Mirelo as the
macros of a spreadsheet do.")

include(CPack)
