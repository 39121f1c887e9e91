# Installs the build BUILD into WORK/prefix and uses it from there: the files in their places, the
# installed tools running on their own RPATH, the Designer plugin resolving our library from the prefix,
# and the consumer application configured with find_package(HmiWidgets) alone, built and run on a form
# the installed hmi-table filled. Variables: see tests/install/CMakeLists.txt.
set(prefix ${WORK}/prefix)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
# Nothing may come from the build tree or another Qt plugin folder.
unset(ENV{LD_LIBRARY_PATH})
unset(ENV{QT_PLUGIN_PATH})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}: exit ${status}\n${out}\n${err}")
  endif()
  set(out "${out}" PARENT_SCOPE)
endfunction()

function(expect_file path)
  if(NOT EXISTS ${prefix}/${path})
    file(GLOB_RECURSE installed RELATIVE ${prefix} ${prefix}/*)
    list(FILTER installed EXCLUDE REGEX "^${INCLUDEDIR}/")
    message(FATAL_ERROR "not installed: ${path}\ninstalled (headers left out):\n${installed}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

expect_file(${LIBDIR}/libHmiWidgets.so)
expect_file(${LIBDIR}/libHmiPlatform.so)
expect_file(${LIBDIR}/cmake/HmiWidgets/HmiWidgetsConfig.cmake)
expect_file(${INCLUDEDIR}/HmiWidgets/hmiwidgets_export.h)
expect_file(${INCLUDEDIR}/HmiWidgets/hmiplatform_export.h)
expect_file(${BINDIR}/hmi-table)
# The headers are the widgets, the services a panel application implements or calls, the widget
# factory, what these include and the export headers: nothing more, nothing less.
set(expected_headers
  PictureButton.h abstractbutton.h bitbutton.h buttonface.h buttongroup.h buttonlook.h buttonrendercache.h
  dynamicimage.h functionbutton.h gridsplitter.h hmiplatform_export.h hmiuiupdateinterface.h
  hmiwidgets_export.h inputwidget.h interactionstate.h keyfacebutton.h keypadbutton.h mdiarea.h
  nkeypadstruct.h norvointerface_z3.h paintedbutton.h qeltapp.h stackedwidget.h subwindow.h tablewidget.h
  tabwidget.h textdata.h updatevariableinterface.h widgetfactory.h)
file(GLOB_RECURSE headers RELATIVE ${prefix}/${INCLUDEDIR} ${prefix}/${INCLUDEDIR}/*)
list(TRANSFORM expected_headers PREPEND HmiWidgets/)
list(SORT headers)
list(SORT expected_headers)
if(NOT headers STREQUAL expected_headers)
  message(FATAL_ERROR "installed headers:\n${headers}\nexpected:\n${expected_headers}")
endif()

# The installed tools run on their own: the table tool fills the form the consumer loads below.
run(${prefix}/${BINDIR}/hmi-table write ${DATA}/panel.ui parameters ${DATA}/cells.tsv -o ${WORK}/panel.ui)
if(PANEL)
  expect_file(${BINDIR}/hmi-panel)
  run(${prefix}/${BINDIR}/hmi-panel --help)
  if(NOT out MATCHES "Usage: [^\n]*hmi-panel")
    message(FATAL_ERROR "hmi-panel --help says:\n${out}")
  endif()
endif()

set(plugin_dir "")
if(DESIGNERDIR)
  set(plugin_dir ${prefix}/${DESIGNERDIR})
  expect_file(${DESIGNERDIR}/libhmiwidgetsplugin.so)
  # Designer loads the plugin alone: it must find our library in the prefix itself.
  run(ldd ${plugin_dir}/libhmiwidgetsplugin.so)
  if(NOT out MATCHES "libHmiWidgets[^\n]*=> ${prefix}/${LIBDIR}/")
    message(FATAL_ERROR "the installed plugin does not resolve libHmiWidgets under ${prefix}:\n${out}")
  endif()
endif()

run(${CMAKE_COMMAND} -S ${DATA}/consumer -B ${WORK}/consumer -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${CXX}
    -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DCMAKE_PREFIX_PATH=${prefix} -DQt${QT_MAJOR}_DIR=${QT_PACKAGE_DIR})
file(STRINGS ${WORK}/consumer/CMakeCache.txt found REGEX "^HmiWidgets_DIR:")
if(NOT found STREQUAL "HmiWidgets_DIR:PATH=${prefix}/${LIBDIR}/cmake/HmiWidgets")
  message(FATAL_ERROR "the consumer found another HmiWidgets: ${found}")
endif()
run(${CMAKE_COMMAND} --build ${WORK}/consumer --parallel 2)
run(${WORK}/consumer/consumer ${WORK}/panel.ui ${plugin_dir})
message(STATUS "consumer says:\n${out}")
if(NOT out MATCHES "^Qt ${QT_MAJOR}\\.")
  message(FATAL_ERROR "the consumer got another Qt than this build's Qt ${QT_MAJOR}")
endif()
