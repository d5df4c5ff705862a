#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/windows/WindowKind.h"
#include "platform/x11/X11Extents.h"
#include "platform/x11/X11SizeHints.h"
#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// What the properties of a window say of it.
struct X11WindowFacts {
    std::optional<WindowKind> statedKind;
    bool isTransient = false;  ///< Belongs to another window.

    bool isHidden = false;  ///< As the window manager reports it: minimized.
    bool isIconic = false;  ///< Not mapped by the window manager, for whatever reason.
    bool isFullScreen = false;
    bool isMaximizedHorizontally = false;
    bool isMaximizedVertically = false;
    bool isShaded = false;
    std::optional<std::uint32_t> desktop;  ///< Virtual desktop; `everyDesktop` for all of them.

    bool allowsMove = true;
    bool allowsResize = true;

    X11Extents decoration;
    X11Extents shadow;
    bool statesShadow = false;  ///< Draws its own decoration; a maximized one has no shadow.
    X11SizeHints sizeHints;

    std::optional<Pid> statedPid;            ///< By its own word.
    std::optional<std::string> windowClass;  ///< In small letters.
    std::optional<std::string> gtkApplication;
    std::optional<std::string> desktopFile;

    static constexpr std::uint32_t everyDesktop = 0xffffffffU;

    /// No type counts as normal, unless the window belongs to another one.
    WindowKind kind() const {
        return statedKind.value_or(isTransient ? WindowKind::dialog : WindowKind::normal);
    }

    bool isMaximized() const { return isMaximizedHorizontally || isMaximizedVertically; }

    /// The desktop file's id where the window states one, else its class.
    std::optional<std::string> identifier() const {
        return gtkApplication ? gtkApplication : desktopFile ? desktopFile : windowClass;
    }
};

}  // namespace lumatile
