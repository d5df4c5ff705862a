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

/// The folder that a variable names, else one below the home; empty where there is neither.
std::filesystem::path ofUser(const char* name, const char* belowHome) {
    std::filesystem::path named = variable(name);
    if (named.is_absolute()) {
        return named;
    }
    const std::filesystem::path base = home();
    return base.is_absolute() ? base / belowHome : std::filesystem::path();
}

void addList(const char* name, std::string_view usual,
             std::vector<std::filesystem::path>& folders) {
    std::string_view list = variable(name);
    if (list.empty()) {
        list = usual;
    }
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(':'), list.size());
        std::filesystem::path folder = list.substr(0, length);
        if (folder.is_absolute()) {
            folders.push_back(std::move(folder));
        }
        list.remove_prefix(std::min(length + 1, list.size()));
    }
}

}  // namespace

XdgFolders XdgFolders::fromEnvironment() {
    XdgFolders folders;
    folders.configuration = ofUser("XDG_CONFIG_HOME", ".config");
    addList("XDG_CONFIG_DIRS", "/etc/xdg", folders.systemConfigurations);
    if (std::filesystem::path own = ofUser("XDG_DATA_HOME", ".local/share"); !own.empty()) {
        folders.data.push_back(std::move(own));
    }
    addList("XDG_DATA_DIRS", "/usr/local/share:/usr/share", folders.data);
    return folders;
}

}  // namespace lumatile
