#include "platform/freedesktop/sync_folder/SyncFolderCopies.h"

#include <algorithm>
#include <cmath>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "platform/freedesktop/sync_folder/CollisionCopyName.h"
#include "platform/freedesktop/sync_folder/SyncFolderVisit.h"
#include "preference_sync/SharedSetCodec.h"

namespace lumatile::SyncFolderCopies {

namespace {

namespace fs = std::filesystem;

// Of those that can be read: a bound for the memory that they take together.
constexpr std::size_t mostCopies = 16;

/// The names behind `after`, in their order; one more than are looked at.
std::vector<std::string> namesIn(const fs::path& folder, const std::string& after) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = entry->path().filename().native();
        if (name > after && CollisionCopyName::isCopyOf(SyncFolderVisit::fileName, name)) {
            names.push_back(std::move(name));
            std::push_heap(names.begin(), names.end());
            if (names.size() > mostLooked + 1) {
                std::pop_heap(names.begin(), names.end());
                names.pop_back();
            }
        }
    }
    std::sort_heap(names.begin(), names.end());
    return names;
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

/// A name that tells of which time the settings are, the same on every computer.
std::string nameOfTime(const SharedSet& set) {
    constexpr double perSecond = 1000;
    return "lumatile-settings.from-" + std::to_string(std::llround(changeTime(set) * perSecond)) +
           ".json";
}

fs::path folderForCopies(const fs::path& folder) {
    fs::path aside = folder / SyncFolderVisit::asideName;
    std::error_code ignored;  // Whoever needs it finds out.
    fs::create_directory(aside, ignored);
    return aside;
}

}  // namespace

Found find(const fs::path& folder, const std::string& after) {
    Found found;
    const std::vector<std::string> names = namesIn(folder, after);
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (index == mostLooked || found.copies.size() == mostCopies) {
            found.lookedTo = names[index - 1];
            break;
        }
        fs::path path = folder / names[index];
        std::string text;
        if (AtomicFile::read(path, SharedSetCodec::largestText, text)) {
            continue;
        }
        if (auto set = SharedSetCodec::parse(text)) {
            found.copies.push_back({std::move(path), std::move(text), *std::move(set)});
        }
    }
    return found;
}

bool putAside(const fs::path& folder, const fs::path& file, const std::string& name,
              const std::string& text) {
    const fs::path place = freePlace(folderForCopies(folder), name, text);
    if (place.empty()) {
        return false;
    }
    std::error_code error;
    fs::rename(file, place, error);
    return !error;
}

bool keep(const fs::path& folder, const std::string& text, const SharedSet& set,
          const std::string& writer) {
    const fs::path place = freePlace(folderForCopies(folder), nameOfTime(set), text);
    return !place.empty() && !AtomicFile::replace(place, text, writer);
}

}  // namespace lumatile::SyncFolderCopies
