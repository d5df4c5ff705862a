#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace lumatile {

/// A command file that could not be read or written.
class CommandFileError : public std::runtime_error {
public:
    CommandFileError(std::filesystem::path path, std::string reason);

    const std::filesystem::path& path() const noexcept { return path_; }

    /// Why, in words for the user.
    const std::string& reason() const noexcept { return reason_; }

private:
    std::filesystem::path path_;
    std::string reason_;
};

}  // namespace lumatile
