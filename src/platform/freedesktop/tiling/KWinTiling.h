#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/files/XdgFolders.h"
#include "platform/freedesktop/tiling/TilingSetting.h"

namespace lumatile {

/// KWin's switches, in the group "Windows" of "kwinrc": the user's file over those for everybody.
class KWinTiling final : public TilingSetting {
public:
    /// @param session the user's bus; outlives this
    KWinTiling(XdgFolders folders, BusConnection& session);

    bool exists() override { return true; }

    /// As KWin itself reads the files: what is neither empty nor a word for "no" is on.
    std::optional<bool> lookup(std::string_view key) override;

    /// Not where the administrator has made it immutable.
    bool canSwitchOff() override;

    /// Writes the user's file, in which everything else stays, and asks KWin to read it.
    bool switchOff() override;

private:
    /// What the files say about one key.
    struct Found {
        std::optional<bool> value;
        bool isImmutable = false;
    };

    Found find(std::string_view name) const;
    std::filesystem::path userFile() const;

    XdgFolders folders_;
    BusConnection& session_;
};

}  // namespace lumatile
