#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "ports/StatusMenuItem.h"

namespace lumatile {

/// The picture of the status item.
struct StatusImage {
    std::string name;         ///< Of a packaged picture.
    std::string description;  ///< What a screen reader says.
    bool isTemplate = true;   ///< Its shape alone counts; it takes the colour of the bar's texts.

    bool operator==(const StatusImage&) const = default;
};

/// Port: the tray icon of the program, and its menu. It is there once it has a picture.
/// A desktop that has no bar at present keeps everything for the time when it has one.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// A picture that is missing leaves the item without one.
    virtual void setImage(const StatusImage& image) = 0;

    /// Installs a menu in place of the one before. May be called by an item of that one.
    /// @param menuWillOpen called each time before the user sees the menu
    virtual void setMenu(StatusMenu menu, std::function<void()> menuWillOpen) = 0;

    /// Changes the status line at `index` of the installed menu in place. Nothing happens when
    /// there is no status line there.
    virtual void setStatusLine(std::size_t index, const StatusLine& line) = 0;

    /// Sets or clears the check mark of the item at `index` of the installed menu in place. Nothing
    /// happens when nothing can be checked there.
    virtual void setChecked(std::size_t index, bool checked) = 0;
};

}  // namespace lumatile
