#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"

#include <sys/stat.h>
#include <sys/statfs.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <system_error>
#include <vector>

#include "base/AtomicFile.h"
#include "platform/freedesktop/sync_folder/CollisionCopyName.h"
#include "preference_sync/SharedSetCodec.h"

namespace lumatile {

namespace {

namespace fs = std::filesystem;

// A folder with more names is none that was made for this; looking on would only take time.
constexpr std::size_t mostNames = 10'000;
// Copies that are read in one visit; the rest follow when these are put aside.
constexpr std::size_t mostCopies = 16;

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

struct Copy {
    fs::path path;
    std::string text;
    SharedSet set;
};

/// The copies in the folder that can be read; others may still be arriving.
std::vector<Copy> copiesIn(const fs::path& folder) {
    std::vector<fs::path> paths;
    std::error_code error;
    std::size_t names = 0;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path name = entry->path().filename();
        if (++names > mostNames) {
            break;
        }
        if (CollisionCopyName::isCopyOf(SyncFolderVisit::fileName, name.native())) {
            paths.push_back(entry->path());
        }
    }
    std::sort(paths.begin(), paths.end());
    std::vector<Copy> copies;
    for (const fs::path& path : paths) {
        std::string text;
        if (copies.size() == mostCopies ||
            AtomicFile::read(path, SharedSetCodec::largestText, text)) {
            continue;
        }
        if (auto set = SharedSetCodec::parse(text)) {
            copies.push_back({path, std::move(text), std::move(*set)});
        }
    }
    return copies;
}

/// A name in the folder for what is put aside that nothing else has; the one that is asked for
/// where the same text lies there already.
fs::path freePlace(const fs::path& aside, const std::string& name, const std::string& text) {
    constexpr int mostTries = 1000;
    const fs::path wanted(name);
    for (int number = 1; number < mostTries; ++number) {
        fs::path place = aside / wanted;
        if (number > 1) {
            place = aside / (wanted.stem().native() + "-" + std::to_string(number) +
                             wanted.extension().native());
        }
        std::error_code error;
        if (!fs::exists(fs::symlink_status(place, error))) {
            return place;
        }
        std::string there;
        if (!AtomicFile::read(place, SharedSetCodec::largestText, there) && there == text) {
            return place;
        }
    }
    return {};
}

/// Renames a file into the folder for copies.
/// @return whether it lies there now
bool putAside(const fs::path& folder, const fs::path& file, const std::string& name,
              const std::string& text) {
    const fs::path aside = folder / SyncFolderVisit::asideName;
    std::error_code error;
    fs::create_directory(aside, error);
    const fs::path place = freePlace(aside, name, text);
    if (place.empty()) {
        return false;
    }
    fs::rename(file, place, error);
    return !error;
}

/// A name that tells of which time the settings are, the same on every computer.
std::string nameOfTime(const SharedSet& set) {
    constexpr double perSecond = 1000;
    return "lumatile-settings.from-" + std::to_string(std::llround(changeTime(set) * perSecond)) +
           ".json";
}

}  // namespace

SyncFolderVisit::SyncFolderVisit(const Errand& errand) {
    look(errand);
    if (file == File::unreachable) {
        return;
    }
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

void SyncFolderVisit::settleCopies(const Errand& errand) {
    const std::vector<Copy> copies = copiesIn(errand.folder);
    if (copies.empty()) {
        return;
    }
    if (isTooSoon(errand)) {
        awaitsRest = true;
        return;
    }
    const auto newest =
        std::max_element(copies.begin(), copies.end(), [](const Copy& one, const Copy& other) {
            return changeTime(one.set) < changeTime(other.set);
        });
    const fs::path path = errand.folder / fileName;
    const double time = changeTime(newest->set);
    if ((file == File::absent && errand.mayBegin) ||
        (file == File::good && time > changeTime(set)) ||
        (file == File::damaged && time > errand.knownTime)) {
        // What it replaces is kept as well; where that fails, nothing is replaced.
        if (file == File::good) {
            const fs::path aside = errand.folder / asideName;
            std::error_code ignored;
            fs::create_directory(aside, ignored);
            const fs::path place = freePlace(aside, nameOfTime(set), text);
            if (place.empty() || AtomicFile::replace(place, text)) {
                return;
            }
            ++copiesPutAside;
        } else if (file == File::damaged) {
            if (!putAside(errand.folder, path, "lumatile-settings.damaged.json", "")) {
                return;
            }
            ++copiesPutAside;
        }
        if (const std::error_code error = AtomicFile::replace(path, newest->text)) {
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
    for (const Copy& copy : copies) {
        if (putAside(errand.folder, copy.path, copy.path.filename().native(), copy.text)) {
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
            if (!putAside(errand.folder, path, "lumatile-settings.damaged.json", "")) {
                writeFailure = std::make_error_code(std::errc::permission_denied).message();
                return;
            }
            ++copiesPutAside;
        }
    }
    if (const std::error_code error = AtomicFile::replace(path, *errand.text)) {
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
