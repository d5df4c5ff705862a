# lumatile_status_pictures(TARGET): the status item's pictures as resources of a program.
function(lumatile_status_pictures target)
  set(folder "${PROJECT_SOURCE_DIR}/src/Lumatile/resources")
  set(files)
  foreach(size 16 22 24 32)
    list(APPEND files "${folder}/MenuBarIcon-${size}.svg" "${folder}/MenuBarIconPaused-${size}.svg")
  endforeach()
  qt_add_resources(${target} status_pictures PREFIX /status BASE "${folder}" FILES ${files})
endfunction()
