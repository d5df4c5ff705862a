#include "platform/freedesktop/login/AutostartEntry.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <system_error>
#include <utility>
#include <vector>

#include "base/AtomicFile.h"
#include "platform/freedesktop/login/DesktopEntryText.h"

namespace lumatile {

namespace {

constexpr std::string_view group = "Desktop Entry";
constexpr std::string_view hidden = "Hidden";

// What the session managers of GNOME and MATE, and their settings, call the user's switch.
constexpr std::array<std::string_view, 2> enableKeys{"X-GNOME-Autostart-enabled",
                                                     "X-MATE-Autostart-enabled"};

struct ReadFile {
    std::error_code error;
    std::optional<KeyFileText> entry;
};

ReadFile read(const std::filesystem::path& path) {
    std::string bytes;
    ReadFile result;
    result.error = AtomicFile::read(path, KeyFileText::maximumBytes, bytes);
    if (!result.error) {
        result.entry = KeyFileText::parse(bytes);
    }
    return result;
}

bool isMissing(const std::error_code& error) {
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

bool isExecutableFile(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) && access(path.c_str(), X_OK) == 0;
}

bool canBeStarted(const std::string& program) {
    if (program.find('/') != std::string::npos) {
        return std::filesystem::path(program).is_absolute() && isExecutableFile(program);
    }
    const char* path = std::getenv("PATH");
    std::string_view folders = path == nullptr ? "" : path;
    while (!folders.empty()) {
        const std::size_t length = std::min(folders.find(':'), folders.size());
        if (length > 0 &&
            isExecutableFile(std::filesystem::path(folders.substr(0, length)) / program)) {
            return true;
        }
        folders.remove_prefix(std::min(length + 1, folders.size()));
    }
    return false;
}

std::vector<std::string_view> names(std::string_view list) {
    std::vector<std::string_view> result;
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(':'), list.size());
        result.push_back(list.substr(0, length));
        list.remove_prefix(std::min(length + 1, list.size()));
    }
    return result;
}

}  // namespace

AutostartEntry::AutostartEntry(XdgFolders folders, std::filesystem::path binary,
                               std::string sessionNames)
    : folders_(std::move(folders)),
      binary_(std::move(binary)),
      sessionNames_(std::move(sessionNames)) {}

std::filesystem::path AutostartEntry::userFile() const {
    return folders_.configuration / "autostart" / fileName;
}

std::optional<KeyFileText> AutostartEntry::systemEntry() const {
    for (const auto& folder : folders_.systemConfigurations) {
        ReadFile file = read(folder / "autostart" / fileName);
        if (!isMissing(file.error)) {
            return std::move(file.entry);
        }
    }
    return std::nullopt;
}

LoginItem::Status AutostartEntry::status() {
    const ReadFile own =
        folders_.configuration.empty()
            ? ReadFile{std::make_error_code(std::errc::no_such_file_or_directory), std::nullopt}
            : read(userFile());
    if (!isMissing(own.error)) {
        // A file that cannot be read hides the other one all the same.
        return own.entry ? statusOf(*own.entry) : Status::notFound;
    }
    const auto everybodys = systemEntry();
    return everybodys ? statusOf(*everybodys) : Status::notRegistered;
}

LoginItem::Status AutostartEntry::statusOf(const KeyFileText& entry) const {
    const auto is = [&](std::string_view key) {
        return DesktopEntryText::boolean(entry.value(group, key));
    };
    if (is(hidden).value_or(false)) {
        return Status::notRegistered;
    }
    const bool isSwitchedOff =
        std::any_of(enableKeys.begin(), enableKeys.end(),
                    [&](std::string_view key) { return !is(key).value_or(true); });
    if (isSwitchedOff || !isMeantForThisSession(entry)) {
        return Status::requiresApproval;
    }
    const auto exec = entry.value(group, "Exec");
    const auto program = exec ? DesktopEntryText::program(*exec) : std::nullopt;
    const auto tried = entry.value(group, "TryExec");
    if (entry.value(group, "Type") != "Application" || !program || !canBeStarted(*program) ||
        (tried && !tried->empty() && !canBeStarted(std::string(*tried)))) {
        return Status::notFound;
    }
    return Status::enabled;
}

bool AutostartEntry::isMeantForThisSession(const KeyFileText& entry) const {
    const auto only = entry.value(group, "OnlyShowIn");
    const auto never = entry.value(group, "NotShowIn");
    for (const std::string_view name : names(sessionNames_)) {
        if (only && DesktopEntryText::listHolds(*only, name)) {
            return true;
        }
        if (never && DesktopEntryText::listHolds(*never, name)) {
            return false;
        }
    }
    return !only;
}

std::optional<KeyFileText> AutostartEntry::freshEntry() const {
    const auto exec = DesktopEntryText::exec(binary_.string());
    if (!exec || !binary_.is_absolute()) {
        return std::nullopt;
    }
    auto entry = KeyFileText::parse(
        "[Desktop Entry]\nType=Application\nVersion=1.0\nName=Lumatile\n"
        "Comment=Snaps windows into place and keeps OLED screens from burning in\n"
        "Icon=lumatile\nTerminal=false\n");
    entry->set(group, "Exec", *exec);
    entry->set(group, hidden, "false");
    for (const std::string_view key : enableKeys) {
        entry->set(group, key, "true");
    }
    return entry;
}

std::optional<std::string> AutostartEntry::registerItem() {
    const auto fresh = freshEntry();
    if (!fresh) {
        return "no entry can name the program " + binary_.string();
    }
    ReadFile own = read(userFile());
    if (!own.entry || !own.entry->hasGroup(group)) {
        return write(*fresh);
    }
    KeyFileText entry = *std::move(own.entry);
    for (const KeyFileText::Entry& each : fresh->entries()) {
        // A name or an icon that somebody has given it stays.
        const bool isOurs =
            each.key == "Exec" || each.key == "Type" || each.key == hidden ||
            std::find(enableKeys.begin(), enableKeys.end(), each.key) != enableKeys.end();
        if (isOurs || !entry.value(group, each.key)) {
            entry.set(group, each.key, each.value);
        }
    }
    // What kept it from this session, or tried for a program that is not there.
    for (const std::string_view key : {"OnlyShowIn", "NotShowIn", "TryExec"}) {
        if (entry.value(group, key)) {
            entry.remove(group, key);
        }
    }
    return write(entry);
}

std::optional<std::string> AutostartEntry::unregisterItem() {
    ReadFile own = read(userFile());
    const bool hidesNothing = !systemEntry();
    if (isMissing(own.error) && hidesNothing) {
        return std::nullopt;
    }
    const auto fresh = freshEntry();
    if (hidesNothing && own.entry && fresh && own.entry->text() == fresh->text()) {
        std::error_code error;
        std::filesystem::remove(userFile(), error);
        return error ? std::optional(userFile().string() + ": " + error.message()) : std::nullopt;
    }
    KeyFileText entry;
    if (own.entry && own.entry->hasGroup(group)) {
        entry = *std::move(own.entry);
    } else {
        entry.set(group, "Type", "Application");
        entry.set(group, "Name", "Lumatile");
    }
    entry.set(group, hidden, "true");
    for (const std::string_view key : enableKeys) {
        entry.set(group, key, "false");
    }
    return write(entry);
}

std::optional<std::string> AutostartEntry::write(const KeyFileText& entry) const {
    if (folders_.configuration.empty()) {
        return "the user has no folder for settings";
    }
    const std::filesystem::path file = userFile();
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    if (!error) {
        // A link to an entry for everybody is replaced; what it leads to is not ours to change.
        const std::filesystem::path target = std::filesystem::canonical(file, error);
        if (!error && access(target.c_str(), W_OK) != 0 &&
            std::filesystem::is_symlink(std::filesystem::symlink_status(file, error))) {
            std::filesystem::remove(file, error);
        }
        error = AtomicFile::replace(file, entry.text());
    }
    return error ? std::optional(file.string() + ": " + error.message()) : std::nullopt;
}

std::filesystem::path AutostartEntry::runningBinary() {
    constexpr std::string_view replaced = " (deleted)";
    std::error_code error;
    std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return {};
    }
    const std::string text = path.string();
    if (text.ends_with(replaced)) {
        const std::string former = text.substr(0, text.size() - replaced.size());
        if (!std::filesystem::exists(path, error) && std::filesystem::exists(former, error)) {
            return former;
        }
    }
    return path;
}

}  // namespace lumatile
