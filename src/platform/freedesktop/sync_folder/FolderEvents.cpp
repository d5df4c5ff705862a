#include "platform/freedesktop/sync_folder/FolderEvents.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <system_error>
#include <utility>

#include "platform/freedesktop/sync_folder/CollisionCopyName.h"
#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"

namespace lumatile {

namespace {

namespace fs = std::filesystem;

constexpr unsigned ofFolder = IN_ONLYDIR | IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB;
// Not that a file was made: it is empty then, and closing it follows.
constexpr unsigned ofFiles = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE;
constexpr unsigned ofSubfolders = IN_CREATE | IN_MOVED_TO | IN_ATTRIB;

}  // namespace

FolderEvents::FolderEvents(const fs::path& folder)
    : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (descriptor_ < 0 || !folder.is_absolute()) {
        return;
    }
    // While one looks for what is there, it may change; each time is another attempt.
    constexpr int mostTries = 16;
    for (int tries = 0; tries < mostTries && !watchesFolder(folder.lexically_normal()); ++tries) {
    }
}

FolderEvents::FolderEvents(FolderEvents&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), awaited_(std::move(other.awaited_)) {}

FolderEvents& FolderEvents::operator=(FolderEvents&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    std::swap(awaited_, other.awaited_);
    return *this;
}

FolderEvents::~FolderEvents() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

/// @return false when a folder appeared that was found missing a moment before
bool FolderEvents::watchesFolder(const fs::path& folder) {
    awaited_.clear();
    if (watches(folder, ofFolder | ofFiles)) {
        return true;
    }
    for (fs::path below = folder; below.has_relative_path(); below = below.parent_path()) {
        if (!watches(below.parent_path(), ofFolder | ofSubfolders)) {
            continue;
        }
        awaited_ = below.filename().native();
        std::error_code error;
        return !fs::is_directory(below, error) || access(below.c_str(), R_OK | X_OK) != 0;
    }
    return true;
}

bool FolderEvents::watches(const fs::path& folder, unsigned events) const {
    return inotify_add_watch(descriptor_, folder.c_str(), events) >= 0;
}

bool FolderEvents::concerns(const std::string& name) const {
    if (!awaited_.empty()) {
        return name == awaited_;
    }
    return name == SyncFolderVisit::fileName ||
           CollisionCopyName::isCopyOf(SyncFolderVisit::fileName, name);
}

bool FolderEvents::consume() const {
    bool any = false;
    constexpr std::size_t room = 16384;
    alignas(inotify_event) std::array<char, room> buffer{};
    // While somebody fills the folder there is always more; the rest is told of once again.
    constexpr int mostReads = 16;
    for (int reads = 0; reads < mostReads; ++reads) {
        const ssize_t count = read(descriptor_, buffer.data(), buffer.size());
        if (count <= 0) {
            return any;
        }
        for (std::size_t place = 0; place < static_cast<std::size_t>(count);) {
            inotify_event event{};
            std::memcpy(&event, &buffer.at(place), sizeof event);
            // Without a name it is about the folder itself, or some were lost.
            const std::string name = event.len == 0 ? "" : &buffer.at(place + sizeof event);
            any = any || name.empty() || concerns(name);
            place += sizeof event + event.len;
        }
    }
    return any;
}

}  // namespace lumatile
