#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "geometry/Rect.h"
#include "windows/AttributeValue.h"
#include "windows/Element.h"

namespace lumatile {

/// What the windows of every display system are read by.
struct WindowReading {
    std::string_view subrole;
    bool isMinimized = false;
    bool isFullScreen = false;
    std::function<Rect()> frame;  ///< Accessibility space; called where it is asked for alone.

    /// @return nothing for what is not read of windows here: "AXParent" among others
    std::optional<AttributeValue> read(std::string_view attribute) const;
};

/// One of an application's windows.
struct ApplicationWindow {
    Element element;
    bool isOpen = false;       ///< An ordinary window that is not minimized.
    bool isElsewhere = false;  ///< On a virtual desktop that is not shown.
};

/// What the applications of every display system are read by.
struct ApplicationReading {
    std::vector<ApplicationWindow> windows;  ///< The topmost first.
    std::optional<Element> focused;          ///< Absent while the focus is with another one.
    bool isFocusOnFurniture = false;         ///< The focus is on a panel or desktop of its own.

    /// @return nothing for an application without windows, and for "AXFocusedWindow" and
    ///         "AXMainWindow" where the focus is on furniture. The main window is the topmost open
    ///         one, those that are not shown come last.
    std::optional<AttributeValue> read(std::string_view attribute) const;
};

}  // namespace lumatile
