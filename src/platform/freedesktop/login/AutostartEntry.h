#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/freedesktop/files/KeyFileText.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "ports/LoginItem.h"

namespace lumatile {

/// The entry of this program among what the session starts, "autostart/lumatile.desktop" in the
/// user's settings. An entry of that name for everybody holds where the user has none.
class AutostartEntry final : public LoginItem {
public:
    static constexpr std::string_view fileName = "lumatile.desktop";

    /// @param binary the running program, an absolute path
    /// @param sessionNames what the session calls itself (XDG_CURRENT_DESKTOP), by colons
    AutostartEntry(XdgFolders folders, std::filesystem::path binary, std::string sessionNames);

    /// Whether the session will start what the entry names.
    Status status() override;

    /// Writes the user's entry: the running program, switched on. What others have written into it
    /// stays, such as a delay.
    std::optional<std::string> registerItem() override;

    /// Switches the user's entry off; where it held nothing but what this program writes and hides
    /// no entry for everybody, removes it.
    std::optional<std::string> unregisterItem() override;

    /// The file that this process runs, also after an update has put a newer one in its place;
    /// empty when that cannot be found out.
    static std::filesystem::path runningBinary();

private:
    std::filesystem::path userFile() const;
    std::optional<KeyFileText> systemEntry() const;
    Status statusOf(const KeyFileText& entry) const;
    bool isMeantForThisSession(const KeyFileText& entry) const;
    std::optional<std::string> write(const KeyFileText& entry) const;
    std::optional<KeyFileText> freshEntry() const;

    XdgFolders folders_;
    std::filesystem::path binary_;
    std::string sessionNames_;
};

}  // namespace lumatile
