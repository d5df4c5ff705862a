#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace lumatile {

class AccessibilityPlatform;
class DimOverlays;
class HighlightSurface;
class HotKeyPlatform;
class InputState;
class KeyCodes;
class MouseEventSource;
class ScreenList;
class Translucency;
class Workspace;

/// What a window system needs of the run loop.
struct SessionEvents {
    int descriptor = -1;             ///< Readable when the window system has told something.
    std::function<void()> dispatch;  ///< For when it is, and each time before the loop blocks.
    std::function<bool()> isLost;    ///< Whether the window system is gone; nothing works then.
};

/// What a window system gives the program: the ports behind which it is hidden. This value and its
/// copies own them; the session that made it outlives them.
///
/// How a session is made. Each kind has a folder below platform/ with a class that finds it
/// (`PresentSession`) and then makes this value; the program asks every kind in turn and takes the
/// first that is present. Nothing else asks which one it is. What a window system cannot do is a
/// port that answers so, as each port says for itself, and a sentence in
/// `SessionFacts::shortcomings`; a function below that has nothing to do is empty.
struct DesktopSession {
    AccessibilityPlatform& accessibility;
    ScreenList& screenList;
    HotKeyPlatform& hotKeys;
    Workspace& workspace;
    InputState& inputState;
    MouseEventSource& mouseTaps;
    DimOverlays& dimOverlays;
    Translucency& translucency;  ///< Of the surface on which the highlight is drawn.
    KeyCodes& keyCodes;          ///< What the keys of this desktop are, and what is on them.
    SessionEvents events;

    /// What the window manager calls itself; empty when there is none or it does not say.
    std::function<std::string()> windowManagerName;

    /// Calls `appeared`, now or later, when there is a bar of a kind that only this window system
    /// knows: one into which programs put small windows. Empty where there is no such kind.
    std::function<void(std::function<void()> appeared)> watchOlderTray;

    std::shared_ptr<void> owner;  ///< What all of this belongs to.

    /// What the highlight is drawn on; nothing where a window of the toolkit will do.
    HighlightSurface* highlightSurface = nullptr;

    /// Whether the desktop's own snapping at the edges rests by itself while windows are snapped
    /// there by this program.
    bool holdsEdgesBack = false;

    /// Brings the window of this program that has this title in front and gives it the keyboard, as
    /// soon as it is there. Empty where the toolkit can by itself.
    std::function<void(std::string_view title)> bringToFront = {};
};

}  // namespace lumatile
