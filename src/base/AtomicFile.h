#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace lumatile {

/// Files that are read whole within a bound and replaced in one step.
struct AtomicFile {
    AtomicFile() = delete;

    /// Replaces `path` by a file of `bytes` that only its owner may read and write (0600). The
    /// bytes reach the disk before the name does: after a failure, a crash or a power cut there is
    /// the old file or the new one, never a part of either. A symbolic link stays and the file
    /// that it leads to is replaced. What is no regular file is left alone and refused.
    /// @return why it could not be written; `false` as a boolean when it was. Only a failure to
    /// flush the folder is told after the new file is in place.
    /// @param writer is part of the temporary file's name, for `removeLeftovers`
    static std::error_code replace(const std::filesystem::path& path, std::string_view bytes,
                                   std::string_view writer = {});

    /// Removes the temporary files that a process of this `writer` has left in `folder` when it was
    /// killed; not those that are being written, nor anybody else's.
    static void removeLeftovers(const std::filesystem::path& folder, std::string_view writer);

    /// Reads a regular file into `bytes`; pipes and devices, which may never end, are refused.
    /// @return why it could not be read, `std::errc::file_too_large` past `maxBytes`
    static std::error_code read(const std::filesystem::path& path, std::size_t maxBytes,
                                std::string& bytes);
};

}  // namespace lumatile
