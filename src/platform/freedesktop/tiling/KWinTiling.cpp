#include "platform/freedesktop/tiling/KWinTiling.h"

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/AtomicFile.h"
#include "onboarding/SystemTiling.h"
#include "platform/freedesktop/files/KeyFileText.h"

namespace lumatile {

namespace {

constexpr std::string_view fileName = "kwinrc";
constexpr std::string_view group = "Windows";
constexpr std::array<std::string_view, 2> names{"ElectricBorderTiling", "ElectricBorderMaximize"};

std::optional<std::string_view> nameOf(std::string_view key) {
    if (key == SystemTiling::edgeDragKey) {
        return names[0];
    }
    if (key == SystemTiling::menuBarDragKey) {
        return names[1];
    }
    return std::nullopt;
}

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& letter : result) {
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        }
    }
    return result;
}

bool isOn(std::string_view value) {
    const std::string word = lower(value);
    return !word.empty() && word != "false" && word != "no" && word != "off" && word != "0";
}

/// A key without the options behind it ("Key[$i]"), and those.
std::pair<std::string_view, std::string_view> parted(std::string_view key) {
    const auto bracket = key.find("[$");
    return bracket == std::string_view::npos
               ? std::pair(key, std::string_view())
               : std::pair(key.substr(0, bracket), key.substr(bracket));
}

std::optional<KeyFileText> read(const std::filesystem::path& path) {
    std::string bytes;
    return AtomicFile::read(path, KeyFileText::maximumBytes, bytes) ? std::nullopt
                                                                    : KeyFileText::parse(bytes);
}

/// "[$i]" on a line of its own before every group: nothing in the file may be overruled.
bool isWholeFileImmutable(const KeyFileText& file) { return file.text().starts_with("[$i]\n"); }

}  // namespace

KWinTiling::KWinTiling(XdgFolders folders, BusConnection& session)
    : folders_(std::move(folders)), session_(session) {}

std::filesystem::path KWinTiling::userFile() const { return folders_.configuration / fileName; }

KWinTiling::Found KWinTiling::find(std::string_view name) const {
    // The least important first; each overrules those before, up to one that is immutable.
    std::vector<std::filesystem::path> files;
    const auto& system = folders_.systemConfigurations;
    for (auto folder = system.rbegin(); folder != system.rend(); ++folder) {
        files.push_back(*folder / fileName);
    }
    if (!folders_.configuration.empty()) {
        files.push_back(userFile());
    }
    Found found;
    for (const auto& path : files) {
        const auto file = read(path);
        if (!file || found.isImmutable) {
            continue;
        }
        bool isImmutable = isWholeFileImmutable(*file) || file->hasGroup("Windows][$i");
        for (const KeyFileText::Entry& entry : file->entries()) {
            const auto [key, options] = parted(entry.key);
            if ((entry.group != group && entry.group != "Windows][$i") || key != name) {
                continue;
            }
            if (options.find('d') != std::string_view::npos) {
                found.value.reset();  // Deleted: as it came.
            } else {
                found.value = isOn(entry.value);
            }
            isImmutable = isImmutable || options.find('i') != std::string_view::npos;
        }
        found.isImmutable = isImmutable;
    }
    return found;
}

std::optional<bool> KWinTiling::lookup(std::string_view key) {
    const auto name = nameOf(key);
    return name ? find(*name).value : std::nullopt;
}

bool KWinTiling::canSwitchOff() {
    return !folders_.configuration.empty() &&
           std::none_of(names.begin(), names.end(),
                        [&](std::string_view name) { return find(name).isImmutable; });
}

bool KWinTiling::switchOff() {
    if (!canSwitchOff()) {
        return false;
    }
    std::error_code ignored;
    std::filesystem::create_directories(folders_.configuration, ignored);
    std::string bytes;
    const std::error_code error = AtomicFile::read(userFile(), KeyFileText::maximumBytes, bytes);
    if (error && error != std::errc::no_such_file_or_directory) {
        return false;
    }
    auto file = KeyFileText::parse(bytes);
    if (!file) {
        return false;  // Not a file of KWin's, so not ours to write over.
    }
    for (const std::string_view name : names) {
        file->remove(group, std::string(name) + "[$d]");
        file->set(group, name, "false");
    }
    if (AtomicFile::replace(userFile(), file->text())) {
        return false;
    }
    constexpr BusConnection::Method reconfigure{"org.kde.KWin", "/KWin", "org.kde.KWin",
                                                "reconfigure"};
    constexpr int patience = 5000;  // Nothing depends on the answer.
    session_.call(reconfigure, nullptr, patience, false, [](const BusConnection::Reply&) {});
    return true;
}

}  // namespace lumatile
