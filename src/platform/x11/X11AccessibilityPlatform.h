#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/windows/PlacingWrites.h"
#include "platform/windows/WriteTimeouts.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Element.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11WindowWriter.h"
#include "windows/AccessibilityPlatform.h"
#include "windows/PlacingWish.h"

namespace lumatile {

/// The windows of an X desktop, as the window manager knows them.
///
/// Windows ("AXWindow") are those on the window manager's list; every other X window has no role.
/// An application is a process, or, for programs whose process is not known, a client of the
/// server. The parent of an X window is its parent in the server's tree, that of a window manager's
/// frame is the client in it, and that of a client is its application.
class X11AccessibilityPlatform final : public AccessibilityPlatform {
public:
    /// All outlive the platform.
    /// @param longestTimeout seconds that a writing waits unless a shorter time-out is set
    X11AccessibilityPlatform(X11Connection& connection, X11Monitors& monitors,
                             X11WindowMirror& mirror,
                             double longestTimeout = X11WindowWriter::longestTimeout);

    /// Whether a window manager lives that places windows when it is asked to. There is no
    /// permission that could be asked for.
    bool isTrusted(bool prompt) override;

    /// An X desktop has no such request.
    bool isPermissionPromptOnScreen() override { return false; }

    TrustObstacle trustObstacle() override;

    /// Notes that the server is a guest in a session of another display system, where the lack of a
    /// window manager is no fault that the user could mend.
    void noteGuestServer() { isGuestServer_ = true; }

    Element systemWideElement() override;
    Element applicationElement(Pid pid) override;
    std::optional<Element> elementAtPoint(const Point& point) override;
    std::optional<AttributeValue> read(const Element& element, std::string_view attribute) override;

    /// "AXPosition" and "AXSize" of windows alone can be written.
    bool write(const Element& element, std::string_view attribute,
               const AttributeValue& value) override;

    /// Writes to one window reach the window manager as one message.
    void beginJoinedWrites(const Element& element) override { writes_.begin(element); }
    void endJoinedWrites() override { writes_.end(); }

    /// Position and size: no for a window whose manager says so, and for one that the user has
    /// maximized (on either axis), shaded or made full-screen; writing takes it out of the first
    /// two all the same.
    std::optional<bool> isSettable(const Element& element, std::string_view attribute) override;

    std::optional<Pid> pid(const Element& element) override;
    void setMessagingTimeout(const Element& element, double seconds) override;

private:
    /// Whether the window manager says that it carries out what windows are placed by.
    bool takesMoves();

    X11Window* windowOf(const X11Element& element);
    /// Whether a window only takes input and shows nothing. kwin lays such a one over the screen
    /// while it moves a window.
    bool isUnseen(xcb_window_t window);

    /// The topmost managed window at a place on the root.
    std::optional<Element> shownAt(int x, int y);

    Element elementOf(const X11Window& window) const;
    Element applicationOf(const X11Window& window) const;
    bool belongsTo(const X11Window& window, const X11Element& application) const;
    std::vector<X11Window*> windowsOf(const X11Element& application);
    bool carryOut(const X11Element& target, const PlacingWish& wish);
    /// As it is, or, while a press is dealt with, as it was then.
    Rect frameOf(const X11Window& window);

    std::optional<AttributeValue> readSystemWide(std::string_view attribute);
    std::optional<AttributeValue> readApplication(const X11Element& element,
                                                  std::string_view attribute);
    std::optional<AttributeValue> readWindow(const X11Window& window, std::string_view attribute);
    std::optional<Element> parentOf(const X11Element& element);

    X11Connection& connection_;
    X11Monitors& monitors_;
    X11WindowMirror& mirror_;
    X11WindowWriter writer_;
    WriteTimeouts timeouts_;
    PlacingWrites writes_;
    bool isGuestServer_ = false;
};

}  // namespace lumatile
