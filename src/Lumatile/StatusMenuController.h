#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/SnapCommand.h"
#include "ports/StatusItem.h"

namespace lumatile {

/// The program's status item: an icon that shows whether windows are being protected, and a menu of
/// status lines, commands and fixed actions. Knows the rest of the program through closures alone.
/// Owned by a shared pointer; a menu that outlives it does nothing when it opens.
class StatusMenuController : public std::enable_shared_from_this<StatusMenuController> {
public:
    struct Closures {
        std::function<void(const SnapCommand&)> run;
        std::function<void()> openSettings;
        std::function<void()> openAbout;
        std::function<void()> checkForUpdates;
        std::function<std::vector<std::string>()> oledStatusLines;
        std::function<bool()> isExaggerated;
        std::function<void(bool)> setExaggerated;
        std::function<void()> terminate;  ///< Ends the program.
    };

    static constexpr const char* imageActive = "MenuBarIcon";
    static constexpr const char* imagePaused = "MenuBarIconPaused";

    /// Shows the protection as off. There is no menu before the first `rebuild`.
    /// @param statusItem outlives the controller
    StatusMenuController(StatusItem& statusItem, Closures closures);
    StatusMenuController(const StatusMenuController&) = delete;
    StatusMenuController& operator=(const StatusMenuController&) = delete;
    ~StatusMenuController() = default;

    /// Installs a new menu. It has as many status lines as there are at this moment.
    /// @param commands in the order of the store
    void rebuild(const std::vector<SnapCommand>& commands);

    /// Shows by the icon whether the protection moves windows.
    void setProtected(bool active);

    /// Refreshes the status lines; to be called each time before the user sees the menu. Lines
    /// beyond those of the last `rebuild` are not shown; missing ones leave the old text.
    void menuWillOpen();

    /// Where a check item for the demonstration mode stands in the menu; the menu built here has
    /// none.
    std::optional<std::size_t> exaggerateItem;

private:
    StatusMenuItem itemOf(const MenuEntry& entry) const;
    ClosureMenuItem itemOf(const SnapCommand& command) const;
    ClosureMenuItem itemOf(ActionID action) const;
    /// As many as the menu has items for, at most.
    std::vector<StatusLine> presentStatusLines() const;
    void refreshExaggerateItem();

    StatusItem& statusItem_;
    Closures closures_;
    std::size_t statusLineItems_ = 0;  ///< They are the first items of the menu.
};

}  // namespace lumatile
