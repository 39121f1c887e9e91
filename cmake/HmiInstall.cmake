# Installing: the two libraries with the headers an application includes in one folder, the CMake package
# HmiWidgets::HmiWidgets, the Designer plugin, hmi-panel and hmi-table; and a Debian package (cpack -G DEB).
# Every destination is relative, so `cmake --install <build> --prefix <dir>` relocates the whole tree.
include(CMakePackageConfigHelpers)

set(HMI_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/HmiWidgets)

# Designer looks in the designer/ folder of Qt's plugin folder. Taken relative to Qt's own prefix, the
# plugin lands there when installed to that prefix (/usr for Debian's Qt).
function(hmi_qt_plugin_dir out)
  if(DEFINED QT${QT_VERSION_MAJOR}_INSTALL_PLUGINS)
    set(dir ${QT${QT_VERSION_MAJOR}_INSTALL_PLUGINS})
    set(prefix ${QT${QT_VERSION_MAJOR}_INSTALL_PREFIX})
  elseif(TARGET ${QT}::qmake)
    # Qt 5's CMake files do not say; its qmake does.
    get_target_property(qmake ${QT}::qmake IMPORTED_LOCATION)
    execute_process(COMMAND ${qmake} -query QT_INSTALL_PLUGINS OUTPUT_VARIABLE dir OUTPUT_STRIP_TRAILING_WHITESPACE)
    execute_process(COMMAND ${qmake} -query QT_INSTALL_PREFIX OUTPUT_VARIABLE prefix OUTPUT_STRIP_TRAILING_WHITESPACE)
  endif()
  if(NOT dir)
    message(WARNING "HmiWidgets: Qt's plugin folder is unknown; the Designer plugin goes to lib/qt${QT_VERSION_MAJOR}/plugins")
    set(dir lib/qt${QT_VERSION_MAJOR}/plugins)
  elseif(IS_ABSOLUTE "${dir}")
    file(RELATIVE_PATH dir ${prefix} ${dir})
  endif()
  set(${out} ${dir} PARENT_SCOPE)
endfunction()
hmi_qt_plugin_dir(hmi_qt_plugins)
set(HMI_INSTALL_DESIGNERDIR ${hmi_qt_plugins}/designer CACHE STRING
    "Where the Designer plugin is installed, relative to the install prefix")

# Installed programs and the plugin find our libraries relative to their own place, under any prefix.
function(hmi_install_rpath target dir)
  file(RELATIVE_PATH rel /${dir} /${CMAKE_INSTALL_LIBDIR})
  string(REGEX REPLACE "/$" "" rel "${rel}")
  if(rel)
    set(rel /${rel})
  endif()
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN${rel}")
endfunction()

set_target_properties(HmiWidgets HmiPlatform PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
hmi_install_rpath(HmiWidgets ${CMAKE_INSTALL_LIBDIR})
install(TARGETS HmiWidgets HmiPlatform HmiCallbacks EXPORT HmiWidgetsTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The headers named by hmi_public_headers(), the generated export headers among them, in one folder.
get_property(hmi_headers GLOBAL PROPERTY HMI_PUBLIC_HEADERS)
# A header dropped from a list leaves the build tree's public folder too.
foreach(target HmiWidgets HmiPlatform HmiCallbacks)
  get_property(names GLOBAL PROPERTY HMI_PUBLIC_HEADER_NAMES_${target})
  file(GLOB staged RELATIVE ${HMI_PUBLIC_INCLUDE_ROOT}/${target} ${HMI_PUBLIC_INCLUDE_ROOT}/${target}/*)
  list(REMOVE_ITEM staged ${names})
  foreach(name IN LISTS staged)
    file(REMOVE ${HMI_PUBLIC_INCLUDE_ROOT}/${target}/${name})
  endforeach()
endforeach()
install(FILES ${hmi_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/HmiWidgets)

if(TARGET hmiwidgetsplugin)
  hmi_install_rpath(hmiwidgetsplugin ${HMI_INSTALL_DESIGNERDIR})
  install(TARGETS hmiwidgetsplugin LIBRARY DESTINATION ${HMI_INSTALL_DESIGNERDIR})
endif()
foreach(tool hmi-panel hmi-table)
  if(TARGET ${tool})
    hmi_install_rpath(${tool} ${CMAKE_INSTALL_BINDIR})
    install(TARGETS ${tool} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endforeach()

# The package finds the Qt it was built with, at least its minor version, and refuses the other major.
set(HMI_QT_MIN_VERSION ${${QT}_VERSION_MAJOR}.${${QT}_VERSION_MINOR})
if(QT_VERSION_MAJOR EQUAL 5)
  set(HMI_OTHER_QT_MAJOR 6)
else()
  set(HMI_OTHER_QT_MAJOR 5)
endif()
install(EXPORT HmiWidgetsTargets NAMESPACE HmiWidgets:: DESTINATION ${HMI_INSTALL_CMAKEDIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/HmiWidgetsConfig.cmake.in
  ${CMAKE_BINARY_DIR}/HmiWidgetsConfig.cmake INSTALL_DESTINATION ${HMI_INSTALL_CMAKEDIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/HmiWidgetsConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/HmiWidgetsConfig.cmake ${CMAKE_BINARY_DIR}/HmiWidgetsConfigVersion.cmake
  DESTINATION ${HMI_INSTALL_CMAKEDIR})

include(${CMAKE_CURRENT_LIST_DIR}/HmiPackage.cmake)
