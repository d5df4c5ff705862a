#pragma once

#include <filesystem>
#include <vector>

namespace lumatile {

/// Where the desktops keep settings, as the environment says at the time of making.
struct XdgFolders {
    /// The user's; empty where the user has no home.
    std::filesystem::path configuration;

    /// Everybody's, the most important first.
    std::vector<std::filesystem::path> systemConfigurations;

    /// Paths in the environment that are not absolute are ignored, as the desktops ignore them.
    static XdgFolders fromEnvironment();
};

}  // namespace lumatile
