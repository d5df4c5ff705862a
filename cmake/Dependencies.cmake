# What comes from the system. The packages are listed, with reasons, in scripts/packages.txt.

find_package(PkgConfig REQUIRED)
find_package(nlohmann_json 3.11 REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core DBus Widgets)

pkg_check_modules(utf8proc REQUIRED IMPORTED_TARGET libutf8proc)
pkg_check_modules(xcb REQUIRED IMPORTED_TARGET xcb xcb-randr xcb-res xcb-screensaver xcb-xfixes xcb-xinput
  xcb-xkb xcb-icccm xcb-ewmh)
pkg_check_modules(xkbcommon REQUIRED IMPORTED_TARGET xkbcommon)
pkg_check_modules(wayland REQUIRED IMPORTED_TARGET wayland-client)
pkg_check_modules(gio REQUIRED IMPORTED_TARGET gio-2.0 gio-unix-2.0)
