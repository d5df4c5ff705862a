#pragma once

#include <filesystem>
#include <vector>

namespace lumatile {

/// Where the desktops keep settings and data, as the environment says at the time of making.
struct XdgFolders {
    /// The user's; empty where the user has no home.
    std::filesystem::path configuration;

    /// Everybody's, the most important first.
    std::vector<std::filesystem::path> systemConfigurations;

    /// Of programs: the user's, where there is a home, and then everybody's.
    std::vector<std::filesystem::path> data;

    /// Paths in the environment that are not absolute are ignored, as the desktops ignore them.
    static XdgFolders fromEnvironment();
};

}  // namespace lumatile
