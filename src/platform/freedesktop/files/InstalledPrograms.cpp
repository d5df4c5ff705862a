#include "platform/freedesktop/files/InstalledPrograms.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

namespace {

using Program = GObjectHandle<GDesktopAppInfo>;

}  // namespace

bool InstalledPrograms::hasAny(const Names& names) {
    return std::any_of(names.begin(), names.end(), [](const char* name) {
        return Program(g_desktop_app_info_new(name)) != nullptr;
    });
}

bool InstalledPrograms::start(const Names& names) {
    return std::any_of(names.begin(), names.end(), [](const char* name) {
        const Program program(g_desktop_app_info_new(name));
        // NOLINTNEXTLINE(*-reinterpret-cast): the library's classes are laid out so.
        auto* info = reinterpret_cast<GAppInfo*>(program.get());
        return program && g_app_info_launch(info, nullptr, nullptr, nullptr) != 0;
    });
}

}  // namespace lumatile
