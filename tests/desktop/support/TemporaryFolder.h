#pragma once

#include <filesystem>
#include <string_view>

namespace lumatile::desktop {

/// A fresh folder that only the owner may enter, removed with everything in it at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

    /// Writes `text` to a file below the folder, making the folders on the way.
    std::filesystem::path write(const std::filesystem::path& relative, std::string_view text) const;

private:
    std::filesystem::path path_;
};

/// The whole text of a file; empty when it cannot be read.
std::string readFile(const std::filesystem::path& path);

}  // namespace lumatile::desktop
