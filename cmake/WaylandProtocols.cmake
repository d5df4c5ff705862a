# Protocols of Wayland as libraries. Their code is what wayland-scanner writes, so it is held against
# neither our warnings nor our analysis.

pkg_get_variable(LUMATILE_WAYLAND_SCANNER wayland-scanner wayland_scanner)
pkg_get_variable(LUMATILE_WAYLAND_PROTOCOLS wayland-protocols pkgdatadir)
find_package(PlasmaWaylandProtocols REQUIRED)

# The code of all of them, for the analysis, which builds nothing else.
add_custom_target(wayland_protocol_code)

# add_wayland_protocols(NAME FILE.xml …): the client's side of all of them. The header of FILE.xml is
# <FILE-client-protocol.h>.
function(add_wayland_protocols name)
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/${name}")
  file(MAKE_DIRECTORY "${folder}")
  set(generated "")
  foreach(description IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH description)
    cmake_path(GET description STEM LAST_ONLY stem)
    set(code "${folder}/${stem}-protocol.c")
    set(header "${folder}/${stem}-client-protocol.h")
    add_custom_command(OUTPUT "${code}" DEPENDS "${description}" VERBATIM
      COMMAND "${LUMATILE_WAYLAND_SCANNER}" private-code "${description}" "${code}")
    add_custom_command(OUTPUT "${header}" DEPENDS "${description}" VERBATIM
      COMMAND "${LUMATILE_WAYLAND_SCANNER}" client-header "${description}" "${header}")
    list(APPEND generated "${code}" "${header}")
  endforeach()
  add_custom_target(${name}Code DEPENDS ${generated})
  add_dependencies(wayland_protocol_code ${name}Code)
  add_library(${name} STATIC ${generated})
  add_dependencies(${name} ${name}Code)
  target_include_directories(${name} SYSTEM PUBLIC "${folder}")
  target_link_libraries(${name} PUBLIC PkgConfig::wayland)
endfunction()
