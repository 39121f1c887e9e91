# Helpers shared by the folder CMakeLists files.

# The folders that contribute sources to HmiWidgets (and, for designer files, to hmiwidgetsplugin):
# common/, AbstractButton/ and every widget folder that has a CMakeLists.txt.
function(hmi_collect_widget_dirs out)
  set(dirs common AbstractButton)
  foreach(widget BitButton FunctionButton ButtonGroup KeypadButton PictureButton TableWidget TabWidget
                 DynamicImage GridSplitter MdiArea SubWindow)
    if(EXISTS ${CMAKE_SOURCE_DIR}/${widget}/CMakeLists.txt)
      list(APPEND dirs ${widget})
    endif()
  endforeach()
  set(${out} ${dirs} PARENT_SCOPE)
endfunction()

# hmi_designer_sources(<files>...): designer-side files of a widget folder; they go to the plugin only.
function(hmi_designer_sources)
  if(TARGET hmiwidgetsplugin)
    target_sources(hmiwidgetsplugin PRIVATE ${ARGN})
  endif()
endfunction()
