#include "tests/desktop/dragging/SettingsEditor.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

SettingsEditor::SettingsEditor(std::filesystem::path file)
    : file_(std::move(file)), watch_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (watch_ < 0 || inotify_add_watch(watch_, file_.parent_path().c_str(),
                                        IN_MOVED_TO | IN_CLOSE_NOWRITE) < 0) {
        throw DesktopError("cannot watch " + file_.parent_path().string());
    }
}

SettingsEditor::~SettingsEditor() { close(watch_); }

bool SettingsEditor::set(const std::string& key, const std::string& value) {
    std::ostringstream text;
    std::ifstream before(file_);
    for (std::string line; std::getline(before, line);) {
        if (!line.starts_with(key + "=")) {
            text << line << '\n';
        }
    }
    before.close();
    text << key << '=' << value << '\n';
    // What was read until now was the old file.
    wasRead();
    isReplaced_ = false;
    isRead_ = false;
    // Outside of the watched folder, so that the renaming is all that there is to notice.
    const std::filesystem::path draft = file_.parent_path().parent_path() / "draft";
    std::ofstream(draft) << text.str();
    std::filesystem::rename(draft, file_);
    return XClient::waitUntil([this] { return wasRead(); }, Deadline::usual(), {watch_});
}

bool SettingsEditor::wasRead() {
    alignas(inotify_event) std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(watch_, buffer.data(), buffer.size())) > 0;) {
        for (std::size_t offset = 0; offset < static_cast<std::size_t>(count);) {
            const auto& event = reinterpret_cast<const inotify_event&>(buffer.at(offset));
            offset += sizeof event + event.len;
            if (event.len == 0 || std::string_view(event.name) != file_.filename().string()) {
                continue;
            }
            isReplaced_ = isReplaced_ || (event.mask & IN_MOVED_TO) != 0;
            isRead_ = isRead_ || (isReplaced_ && (event.mask & IN_CLOSE_NOWRITE) != 0);
        }
    }
    return isRead_;
}

}  // namespace lumatile::desktop
