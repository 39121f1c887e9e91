# The Debian package of an installed build: `cpack -G DEB` in the build folder. One package per Qt major;
# both hold the same file names, so they conflict.
set(CPACK_GENERATOR DEB)
if(QT_VERSION_MAJOR EQUAL 5)
  set(CPACK_PACKAGE_NAME hmiwidgets-qt5)
  set(CPACK_DEBIAN_PACKAGE_CONFLICTS hmiwidgets)
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qtbase5-dev")
else()
  set(CPACK_PACKAGE_NAME hmiwidgets)
  set(CPACK_DEBIAN_PACKAGE_CONFLICTS hmiwidgets-qt5)
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-base-dev")
endif()
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "HmiWidgets maintainers <maintainers@users.noreply.c-seed-5a057a28.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Operator-panel widgets for CNC machine HMIs (Qt ${QT_VERSION_MAJOR})")
set(CPACK_PACKAGE_DESCRIPTION "Qt widgets for the operator panels of CNC machine controllers: buttons bound \
to controller bits, parameter tables, tab pages, pictures and keypads, with the Qt Designer plugin that \
places them on forms, the panel application hmi-panel, the table tool hmi-table, and the headers and CMake \
package (find_package(HmiWidgets)) to build applications with them.")
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# Depends from the linked Qt and C++ libraries, as dpkg-shlibdeps finds them; our own libraries are in the
# package itself and found there through their relative RPATH.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_STRIP_FILES ON)
include(CPack)
