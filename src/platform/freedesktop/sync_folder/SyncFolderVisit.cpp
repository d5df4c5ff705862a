#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"

#include <sys/stat.h>
#include <sys/statfs.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "base/AtomicFile.h"
#include "platform/freedesktop/sync_folder/SyncFolderCopies.h"
#include "preference_sync/SharedSetCodec.h"

namespace lumatile {

namespace {

namespace fs = std::filesystem;

/// File systems whose files other computers, or programs behind the kernel's back, change.
bool isRemoteFileSystem(const fs::path& folder) {
    struct statfs status {};
    if (statfs(folder.c_str(), &status) != 0) {
        return false;
    }
    constexpr std::array<unsigned long, 10> remote{
        0x6969,      // NFS
        0x517b,      // SMB
        0xff534d42,  // CIFS
        0xfe534d42,  // SMB 2
        0x65735546,  // FUSE: sshfs and the mounts of desktops and cloud clients
        0x01021997,  // 9P
        0x00c36400,  // Ceph
        0x5346414f,  // AFS
        0x6b414653,  // AFS of the kernel
        0x73757245,  // Coda
    };
    const auto type = static_cast<unsigned long>(status.f_type) & 0xffffffffUL;
    return std::find(remote.begin(), remote.end(), type) != remote.end();
}

/// The time since a file got its name or its contents; nothing where it cannot be told.
std::optional<double> millisecondsSinceChange(const fs::path& file) {
    struct stat status {};
    timespec now{};
    if (stat(file.c_str(), &status) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0) {
        return std::nullopt;
    }
    constexpr double perSecond = 1000;
    constexpr double perNanosecond = 1e-6;
    return static_cast<double>(now.tv_sec - status.st_ctim.tv_sec) * perSecond +
           static_cast<double>(now.tv_nsec - status.st_ctim.tv_nsec) * perNanosecond;
}

}  // namespace

SyncFolderVisit::SyncFolderVisit(const Errand& errand) {
    copiesAfter = errand.copiesAfter;
    look(errand);
    if (file == File::unreachable) {
        return;
    }
    if (errand.clears) {
        AtomicFile::removeLeftovers(errand.folder, errand.writer);
        AtomicFile::removeLeftovers(errand.folder / asideName, errand.writer);
    }
    keep(errand);
    settleCopies(errand);
    if (errand.text && !awaitsRest) {
        write(errand);
    }
}

bool SyncFolderVisit::isTooSoon(const Errand& errand) const {
    if (file != File::good || isOwn || errand.own == text) {
        return false;
    }
    // A clock that was set, or a server with another one, must not keep anything back.
    const std::optional<double> age = millisecondsSinceChange(errand.folder / fileName);
    return age && *age >= 0 && *age < errand.restMilliseconds;
}

void SyncFolderVisit::look(const Errand& errand) {
    struct stat status {};
    if (!errand.folder.is_absolute() || errand.folder.native().find('\0') != std::string::npos) {
        readFailure = "not an absolute path";
    } else if (stat(errand.folder.c_str(), &status) != 0) {
        readFailure = std::generic_category().message(errno);
    } else if (!S_ISDIR(status.st_mode)) {
        readFailure = std::make_error_code(std::errc::not_a_directory).message();
    } else {
        isRemote = isRemoteFileSystem(errand.folder);
        readFile(errand.folder);
    }
}

void SyncFolderVisit::readFile(const fs::path& folder) {
    text.clear();
    const std::error_code error =
        AtomicFile::read(folder / fileName, SharedSetCodec::largestText, text);
    if (error == std::errc::no_such_file_or_directory) {
        file = File::absent;
        return;
    }
    // Too large, or no file at all, is not what another computer wrote.
    if (error && error != std::errc::file_too_large && error != std::errc::is_a_directory &&
        error != std::errc::invalid_argument) {
        file = File::unreachable;
        readFailure = error.message();
        return;
    }
    auto parsed = error ? std::nullopt : SharedSetCodec::parse(text);
    file = parsed ? File::good : File::damaged;
    if (parsed) {
        set = std::move(*parsed);
    } else {
        text.clear();
    }
}

void SyncFolderVisit::keep(const Errand& errand) {
    for (const std::string& unused : errand.toKeep) {
        const auto parsed = SharedSetCodec::parse(unused);
        if (parsed && !SyncFolderCopies::keep(errand.folder, unused, *parsed, errand.writer)) {
            writeFailure = std::make_error_code(std::errc::permission_denied).message();
            return;
        }
        ++kept;
    }
}

void SyncFolderVisit::settleCopies(const Errand& errand) {
    SyncFolderCopies::Found found = SyncFolderCopies::find(errand.folder, errand.copiesAfter);
    const std::vector<SyncFolderCopies::Copy>& copies = found.copies;
    if (!copies.empty() && isTooSoon(errand)) {
        awaitsRest = true;
        return;
    }
    copiesAfter = std::move(found.lookedTo);
    if (copies.empty()) {
        return;
    }
    const auto newest =
        std::max_element(copies.begin(), copies.end(), [](const auto& one, const auto& other) {
            return changeTime(one.set) < changeTime(other.set);
        });
    const fs::path path = errand.folder / fileName;
    const double time = changeTime(newest->set);
    if ((file == File::absent && errand.mayBegin) ||
        (file == File::good && time > changeTime(set)) ||
        (file == File::damaged && time > errand.knownTime)) {
        // What it replaces is kept as well; where that fails, nothing is replaced.
        if (file == File::good) {
            if (!SyncFolderCopies::keep(errand.folder, text, set, errand.writer)) {
                return;
            }
            ++copiesPutAside;
        } else if (file == File::damaged) {
            if (!SyncFolderCopies::putAside(errand.folder, path, "lumatile-settings.damaged.json",
                                            "")) {
                return;
            }
            ++copiesPutAside;
        }
        if (const std::error_code error = AtomicFile::replace(path, newest->text, errand.writer)) {
            writeFailure = error.message();
            readFile(errand.folder);
            return;
        }
        file = File::good;
        isOwn = true;
        text = newest->text;
        set = newest->set;
    }
    if (file != File::good) {
        return;  // Nothing better lies there; the copies stay for when the file has gone.
    }
    for (const SyncFolderCopies::Copy& copy : copies) {
        if (SyncFolderCopies::putAside(errand.folder, copy.path, copy.path.filename().native(),
                                       copy.text)) {
            ++copiesPutAside;
        }
    }
}

void SyncFolderVisit::write(const Errand& errand) {
    if (isTooSoon(errand)) {
        awaitsRest = true;
        return;
    }
    const fs::path path = errand.folder / fileName;
    const bool isAsExpected =
        file == File::good ? errand.over == text : file == File::absent && !errand.over;
    if (!isAsExpected) {
        if (file == File::good || !errand.overAnything) {
            return;
        }
        if (file == File::damaged) {
            if (!SyncFolderCopies::putAside(errand.folder, path, "lumatile-settings.damaged.json",
                                            "")) {
                writeFailure = std::make_error_code(std::errc::permission_denied).message();
                return;
            }
            ++copiesPutAside;
        }
    } else if (errand.keepsReplaced && file == File::good) {
        if (!SyncFolderCopies::keep(errand.folder, text, set, errand.writer)) {
            writeFailure = std::make_error_code(std::errc::permission_denied).message();
            return;
        }
        hasKeptReplaced = true;
    }
    if (const std::error_code error = AtomicFile::replace(path, *errand.text, errand.writer)) {
        writeFailure = error.message();
        return;
    }
    hasWritten = true;
    isOwn = true;
    file = File::good;
    text = *errand.text;
    set = SharedSetCodec::parse(text).value_or(SharedSet{});
}

}  // namespace lumatile
