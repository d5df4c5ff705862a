#include "platform/freedesktop/files/DesktopEntries.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <system_error>

#include "platform/freedesktop/files/KeyFileText.h"
#include "platform/freedesktop/files/XdgFolders.h"

namespace lumatile {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view suffix = ".desktop";

// More than any system has; memory goes by what is installed, and by what windows call themselves.
constexpr std::size_t mostEntries = 4000;
constexpr std::size_t mostNames = 1000;
constexpr std::uintmax_t largestFile = KeyFileText::maximumBytes;

std::string classIn(const fs::path& file) {
    std::error_code error;
    // What is no file might never end, and opening a pipe waits.
    if (!fs::is_regular_file(file, error)) {
        return {};
    }
    const std::uintmax_t size = fs::file_size(file, error);
    if (error || size > largestFile) {
        return {};
    }
    std::ifstream stream(file, std::ios::binary);
    std::string text(size, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    const auto entry = KeyFileText::parse(text);
    return std::string(entry ? entry->value("Desktop Entry", "StartupWMClass").value_or("")
                             : std::string_view());
}

}  // namespace

DesktopEntries DesktopEntries::ofEnvironment() {
    std::vector<fs::path> folders;
    for (const fs::path& data : XdgFolders::fromEnvironment().data) {
        folders.push_back(data / "applications");
    }
    return DesktopEntries(std::move(folders));
}

std::string DesktopEntries::inSmallLetters(std::string_view text) {
    std::string small(text);
    std::transform(small.begin(), small.end(), small.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return small;
}

std::string DesktopEntries::idOf(const std::string& name) {
    if (const auto known = known_.find(name); known != known_.end()) {
        return known->second;
    }
    if (const Stamps now = stamps(); listed_ != now) {
        list();
        listed_ = now;
    }
    const std::optional<std::string> id = find(name);
    if (id || unread_.empty()) {
        if (known_.size() == mostNames) {
            known_.clear();
        }
        known_.emplace(name, id.value_or(name));
    }
    return id.value_or(name);
}

std::optional<std::string> DesktopEntries::find(const std::string& name) {
    const std::string small = inSmallLetters(name);
    if (const auto id = ids_.find(small); id != ids_.end()) {
        return id->second;
    }
    readSome();
    const auto id = classes_.find(small);
    return id != classes_.end() ? std::optional(id->second) : std::nullopt;
}

DesktopEntries::Stamps DesktopEntries::stamps() const {
    Stamps stamps;
    for (const fs::path& folder : folders_) {
        std::error_code error;
        const fs::file_time_type time = fs::last_write_time(folder, error);
        stamps.push_back(error ? std::nullopt : std::optional(time));
    }
    return stamps;
}

void DesktopEntries::list() {
    ids_.clear();
    classes_.clear();
    unread_.clear();
    known_.clear();
    for (const fs::path& folder : folders_) {
        listFolder(folder);
    }
    std::reverse(unread_.begin(), unread_.end());
}

void DesktopEntries::listFolder(const fs::path& folder) {
    std::error_code error;
    std::vector<std::pair<std::string, fs::path>> found;
    for (fs::recursive_directory_iterator
             entry(folder, fs::directory_options::skip_permission_denied, error),
         end;
         !error && entry != end && found.size() < mostEntries; entry.increment(error)) {
        std::error_code unknown;
        if (entry->is_directory(unknown)) {
            continue;
        }
        std::string id = entry->path().lexically_relative(folder).string();
        if (id.ends_with(suffix)) {
            id.resize(id.size() - suffix.size());
            std::replace(id.begin(), id.end(), '/', '-');
            found.emplace_back(std::move(id), entry->path());
        }
    }
    // Whatever order the file system has them in: of two that say the same, one counts everywhere.
    std::sort(found.begin(), found.end());
    for (auto& [id, path] : found) {
        if (ids_.size() < mostEntries && ids_.try_emplace(inSmallLetters(id), id).second) {
            unread_.emplace_back(std::move(path), std::move(id));
        }
    }
}

void DesktopEntries::readSome() {
    for (std::size_t read = 0; read < filesAtOnce && !unread_.empty(); ++read) {
        const auto [path, id] = std::move(unread_.back());
        unread_.pop_back();
        const std::string stated = classIn(path);
        if (!stated.empty()) {
            classes_.try_emplace(inSmallLetters(stated), id);
        }
    }
}

}  // namespace lumatile
