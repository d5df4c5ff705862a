#pragma once

#include <filesystem>
#include <string>

namespace lumatile {

/// The kernel's queue of what happens in a folder, from the moment of making on: to the shared file
/// in it and its copies, and to the folder itself. Where the folder is not there yet, the nearest
/// one above it that is there is watched for it to appear. Making it waits for the file system.
class FolderEvents {
public:
    explicit FolderEvents(const std::filesystem::path& folder);
    FolderEvents(FolderEvents&& other) noexcept;
    FolderEvents& operator=(FolderEvents&& other) noexcept;
    FolderEvents(const FolderEvents&) = delete;
    FolderEvents& operator=(const FolderEvents&) = delete;
    ~FolderEvents();

    /// Readable when something has happened; negative when the kernel has no queue left.
    int descriptor() const { return descriptor_; }

    /// Takes what is queued, without waiting.
    /// @return whether any of it may have changed what a visit sees
    bool consume() const;

private:
    bool watchesFolder(const std::filesystem::path& folder);
    bool watches(const std::filesystem::path& folder, unsigned events) const;
    bool concerns(const std::string& name) const;

    int descriptor_ = -1;
    std::string
        awaited_;  ///< The name that has to appear; empty when the folder itself is watched.
};

}  // namespace lumatile
