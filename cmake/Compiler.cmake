# Flags of every target of this project.

add_library(lumatile_flags INTERFACE)
target_include_directories(lumatile_flags INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(lumatile_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wnull-dereference -Werror
)
# gcc 12 sees overlapping copies in its own string concatenation that cannot happen (its bug 105651).
target_compile_options(lumatile_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# Geometry agrees bit for bit only where no multiply-add is fused.
target_compile_options(lumatile_flags INTERFACE -ffp-contract=off)

# What stays in memory for years is to be small: -O3 and unused sections made it a sixth larger.
target_compile_options(lumatile_flags INTERFACE
  $<$<CONFIG:Release>:-O2> $<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
target_link_options(lumatile_flags INTERFACE $<$<CONFIG:Release>:-Wl,--gc-sections>)

if(LUMATILE_SANITIZE)
  # A null pointer that is followed stops in the address sanitizer by itself. The check of every
  # access for null and alignment made the programs twice as large, and a compositor that hashes the
  # programs which connect to it spent most of a test's time on that.
  set(lumatile_sanitizers -fsanitize=address,undefined -fno-sanitize=null,alignment)
  # gcc 12 reports null dereferences inside instrumented standard-library code that is sound.
  target_compile_options(lumatile_flags INTERFACE
    ${lumatile_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer
    -Wno-null-dereference -Wno-maybe-uninitialized)
  target_link_options(lumatile_flags INTERFACE ${lumatile_sanitizers})
endif()

if(LUMATILE_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "LUMATILE_FUZZ needs Clang, which the fuzzer belongs to.")
  endif()
  # The fuzzer is led by what the code that it calls counts, so every library is instrumented; only
  # the fuzz targets link its main function.
  target_compile_options(lumatile_flags INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(lumatile_flags INTERFACE -fsanitize=address,undefined)
endif()
