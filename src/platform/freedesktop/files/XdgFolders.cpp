#include "platform/freedesktop/files/XdgFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace lumatile {

namespace {

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

std::filesystem::path home() {
    std::filesystem::path named = variable("HOME");
    if (named.is_absolute()) {
        return named;
    }
    const passwd* user = getpwuid(getuid());
    return user == nullptr || user->pw_dir == nullptr ? std::filesystem::path()
                                                      : std::filesystem::path(user->pw_dir);
}

}  // namespace

XdgFolders XdgFolders::fromEnvironment() {
    XdgFolders folders;
    folders.configuration = variable("XDG_CONFIG_HOME");
    if (!folders.configuration.is_absolute()) {
        const std::filesystem::path base = home();
        folders.configuration = base.is_absolute() ? base / ".config" : std::filesystem::path();
    }
    std::string_view list = variable("XDG_CONFIG_DIRS");
    if (list.empty()) {
        list = "/etc/xdg";
    }
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(':'), list.size());
        std::filesystem::path folder = list.substr(0, length);
        if (folder.is_absolute()) {
            folders.systemConfigurations.push_back(std::move(folder));
        }
        list.remove_prefix(std::min(length + 1, list.size()));
    }
    return folders;
}

}  // namespace lumatile
