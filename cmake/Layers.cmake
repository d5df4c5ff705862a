# The architecture as link lines: what a target may link follows from its layer, and the check at the
# end of the configuration stops the build when it links anything else. From the bottom to the top:
#
#   logic        the standard library and logic
#   ports        headers of what the application needs of a desktop
#   helper       a library from outside made handy, for adapters
#   adapter      ports, implemented with a library from outside; links no other adapter
#   model        the desktop in memory, which tests run the application on; no program links it
#   application  the conductor and the rules beside it; toolkit-free
#   views        what the user sees, drawn with the toolkit
#   program      an executable: the only one that knows every adapter

# The libraries from outside that a logic module may name, each with the reason.
set(LUMATILE_LOGIC_LIBRARIES
  nlohmann_json::nlohmann_json  # the codecs of stored values
  PkgConfig::utf8proc           # names are cut by characters as a reader counts them
)

# What a target of each layer may link. "outside" is every library that is not ours.
set(LUMATILE_MAY_LINK_logic logic)
set(LUMATILE_MAY_LINK_ports logic)
set(LUMATILE_MAY_LINK_helper logic ports helper outside)
set(LUMATILE_MAY_LINK_adapter logic ports helper outside)
set(LUMATILE_MAY_LINK_model logic ports)
set(LUMATILE_MAY_LINK_application logic ports)
set(LUMATILE_MAY_LINK_views logic ports application toolkit)
set(LUMATILE_MAY_LINK_program logic ports helper adapter application views outside)

set_property(GLOBAL PROPERTY LUMATILE_TARGETS "")

# _lumatile_target(NAME LAYER FOLDER…): the folders are those whose files are the target's own.
function(_lumatile_target name layer)
  set_target_properties(${name} PROPERTIES LUMATILE_LAYER ${layer} LUMATILE_FOLDERS "${ARGN}")
  set_property(GLOBAL APPEND PROPERTY LUMATILE_TARGETS ${name})
endfunction()

function(_lumatile_library name layer)
  cmake_parse_arguments(arg "" "" "FOLDERS;SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC lumatile_flags ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS})
  set(folders "${CMAKE_CURRENT_SOURCE_DIR}")
  if(arg_FOLDERS)
    list(TRANSFORM arg_FOLDERS PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE folders)
  endif()
  _lumatile_target(${name} ${layer} ${folders})
endfunction()

# lumatile_logic_module(NAME SOURCES … LINKS … PRIVATE_LINKS …); the others alike.
function(lumatile_logic_module name)
  _lumatile_library(${name} logic ${ARGN})
endfunction()

function(lumatile_application_library name)
  _lumatile_library(${name} application ${ARGN})
endfunction()

# lumatile_view_library(NAME FOLDERS … SOURCES … LINKS …): in folders below the application's.
function(lumatile_view_library name)
  _lumatile_library(${name} views ${ARGN})
endfunction()

function(lumatile_helper name)
  _lumatile_library(${name} helper ${ARGN})
endfunction()

function(lumatile_adapter name)
  _lumatile_library(${name} adapter ${ARGN})
endfunction()

# lumatile_model(NAME …): built only where something links it, so never for the programs.
function(lumatile_model name)
  _lumatile_library(${name} model ${ARGN})
  set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL TRUE)
endfunction()

function(_lumatile_headers name layer)
  cmake_parse_arguments(arg "" "" "LINKS" ${ARGN})
  add_library(${name} INTERFACE)
  target_link_libraries(${name} INTERFACE lumatile_flags ${arg_LINKS})
  _lumatile_target(${name} ${layer} "${CMAKE_CURRENT_SOURCE_DIR}")
endfunction()

# lumatile_ports(NAME LINKS …) and lumatile_helper_headers(NAME LINKS …): headers alone.
function(lumatile_ports name)
  _lumatile_headers(${name} ports ${ARGN})
endfunction()

function(lumatile_helper_headers name)
  _lumatile_headers(${name} helper ${ARGN})
endfunction()

# lumatile_program(NAME FOLDERS … SOURCES … LINKS …): the sources and the folders are its own.
function(lumatile_program name)
  cmake_parse_arguments(arg "" "" "FOLDERS;SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE lumatile_flags ${arg_LINKS})
  set(places ${arg_SOURCES} ${arg_FOLDERS})
  list(TRANSFORM places PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  _lumatile_target(${name} program ${places})
endfunction()

# The layer of what a target links: one of ours, "toolkit" or "outside".
function(_lumatile_layer_of link result)
  set(layer "outside")
  if(link MATCHES "^Qt6::")
    set(layer "toolkit")
  elseif(TARGET ${link})
    get_target_property(of ${link} LUMATILE_LAYER)
    if(of)
      set(layer ${of})
    endif()
  endif()
  set(${result} ${layer} PARENT_SCOPE)
endfunction()

# What the target links; for a group of targets, its members.
function(_lumatile_links target result)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    get_target_property(links ${target} INTERFACE_LINK_LIBRARIES)
  else()
    get_target_property(links ${target} LINK_LIBRARIES)
  endif()
  set(all "")
  foreach(link IN LISTS links)
    if(NOT link OR link STREQUAL "lumatile_flags")
      continue()
    endif()
    set(is_group FALSE)
    if(TARGET ${link})
      get_target_property(link_type ${link} TYPE)
      get_target_property(link_layer ${link} LUMATILE_LAYER)
      get_target_property(imported ${link} IMPORTED)
      if(link_type STREQUAL "INTERFACE_LIBRARY" AND NOT link_layer AND NOT imported)
        set(is_group TRUE)
      endif()
    endif()
    if(is_group)
      _lumatile_links(${link} members)
      list(APPEND all ${members})
    else()
      list(APPEND all ${link})
    endif()
  endforeach()
  set(${result} "${all}" PARENT_SCOPE)
endfunction()

function(lumatile_check_layers)
  get_property(targets GLOBAL PROPERTY LUMATILE_TARGETS)
  # The same for scripts/check-layers, which holds the includes against the links:
  # target|layer|its folders or files|what it links
  set(table "")
  foreach(target IN LISTS targets)
    get_target_property(layer ${target} LUMATILE_LAYER)
    get_target_property(places ${target} LUMATILE_FOLDERS)
    _lumatile_links(${target} links)
    set(relative "")
    foreach(place IN LISTS places)
      file(REAL_PATH "${place}" place)
      file(RELATIVE_PATH place "${PROJECT_SOURCE_DIR}/src" "${place}")
      list(APPEND relative "${place}")
    endforeach()
    list(JOIN relative " " relative)
    list(JOIN links " " names)
    string(APPEND table "${target}|${layer}|${relative}|${names}\n")
    foreach(link IN LISTS links)
      _lumatile_layer_of(${link} link_layer)
      set(allowed "${LUMATILE_MAY_LINK_${layer}}")
      if("outside" IN_LIST allowed)
        list(APPEND allowed toolkit)
      endif()
      if(link_layer IN_LIST allowed)
        continue()
      endif()
      if(layer STREQUAL "logic" AND link IN_LIST LUMATILE_LOGIC_LIBRARIES)
        continue()
      endif()
      message(FATAL_ERROR
        "Layers: ${target} (${layer}) links ${link} (${link_layer}), which its layer may not.")
    endforeach()
  endforeach()
  file(WRITE "${PROJECT_BINARY_DIR}/layers.txt" "${table}")
endfunction()
