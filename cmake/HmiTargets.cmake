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

# hmi_public_headers(<target> <headers>...): the headers of <target> an application includes, named one
# by one: they are installed, and in the build tree they alone stand in the target's public include
# folder (links to the sources, so that in-tree users see exactly what an installed one sees).
set(HMI_PUBLIC_INCLUDE_ROOT ${CMAKE_BINARY_DIR}/include)
function(hmi_public_headers target)
  set(dir ${HMI_PUBLIC_INCLUDE_ROOT}/${target})
  file(MAKE_DIRECTORY ${dir})
  foreach(header IN LISTS ARGN)
    get_filename_component(path ${header} ABSOLUTE)
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${path} ${dir}/${name} SYMBOLIC)
    set_property(GLOBAL APPEND PROPERTY HMI_PUBLIC_HEADERS ${path})
    set_property(GLOBAL APPEND PROPERTY HMI_PUBLIC_HEADER_NAMES_${target} ${name})
  endforeach()
endfunction()
