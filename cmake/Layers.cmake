# The architecture as link lines. A logic module may link the modules below it and nothing else; the
# check at the end of the configuration stops the build when one does.

# The libraries from outside that a logic module may name, each with the reason.
set(LUMATILE_LOGIC_LIBRARIES
  nlohmann_json::nlohmann_json  # the codecs of stored values
  PkgConfig::utf8proc           # names are cut by characters as a reader counts them
)

define_property(TARGET PROPERTY LUMATILE_LAYER)
set_property(GLOBAL PROPERTY LUMATILE_TARGETS "")

function(_lumatile_library name layer)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC lumatile_flags ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS})
  set_target_properties(${name} PROPERTIES LUMATILE_LAYER ${layer})
  set_property(GLOBAL APPEND PROPERTY LUMATILE_TARGETS ${name})
endfunction()

# lumatile_logic_module(NAME SOURCES … LINKS … PRIVATE_LINKS …): standard library and logic only.
function(lumatile_logic_module name)
  _lumatile_library(${name} logic ${ARGN})
endfunction()

# lumatile_application_library(NAME …): the conductor and what is beside it; toolkit-free as well.
function(lumatile_application_library name)
  _lumatile_library(${name} application ${ARGN})
endfunction()

# lumatile_view_library(NAME …): what the user sees, drawn with the toolkit. It may share its folder
# with other targets; the files that its sources name are its own.
function(lumatile_view_library name)
  _lumatile_library(${name} views ${ARGN})
endfunction()

# lumatile_adapter(NAME …): implements ports with a library from outside; links no other adapter.
function(lumatile_adapter name)
  _lumatile_library(${name} adapter ${ARGN})
endfunction()

function(lumatile_check_layers)
  get_property(targets GLOBAL PROPERTY LUMATILE_TARGETS)
  # The same for scripts/check-layers, which holds the includes against the links:
  # target|layer|folder|what it links|its sources
  set(table "LumatilePorts|ports|Lumatile||\n")
  foreach(target IN LISTS targets)
    get_target_property(layer ${target} LUMATILE_LAYER)
    get_target_property(links ${target} LINK_LIBRARIES)
    get_target_property(folder ${target} SOURCE_DIR)
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${folder}")
    get_target_property(sources ${target} SOURCES)
    list(JOIN links " " names)
    list(JOIN sources " " sources)
    string(APPEND table "${target}|${layer}|${folder}|${names}|${sources}\n")
    foreach(link IN LISTS links)
      if(NOT link OR link STREQUAL "lumatile_flags")
        continue()
      endif()
      set(link_layer "outside")
      if(TARGET ${link})
        get_target_property(of ${link} LUMATILE_LAYER)
        if(of)
          set(link_layer ${of})
        endif()
      endif()
      set(allowed FALSE)
      if(link_layer STREQUAL "logic")
        set(allowed TRUE)
      elseif(layer STREQUAL "adapter")
        # Ports live in the logic modules and in LumatilePorts.
        if(link_layer STREQUAL "outside" OR link_layer STREQUAL "ports")
          set(allowed TRUE)
        endif()
      elseif(layer STREQUAL "views")
        if(link_layer STREQUAL "application" OR link_layer STREQUAL "ports" OR link MATCHES "^Qt6::")
          set(allowed TRUE)
        endif()
      elseif(layer STREQUAL "application" AND link_layer STREQUAL "ports")
        set(allowed TRUE)
      elseif(layer STREQUAL "logic" AND link IN_LIST LUMATILE_LOGIC_LIBRARIES)
        set(allowed TRUE)
      endif()
      if(NOT allowed)
        message(FATAL_ERROR
          "Layers: ${target} (${layer}) links ${link} (${link_layer}), which its layer may not.")
      endif()
    endforeach()
  endforeach()
  file(WRITE "${PROJECT_BINARY_DIR}/layers.txt" "${table}")
endfunction()
