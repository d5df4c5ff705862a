#include "tests/desktop/support/session/X11SessionWindow.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "tests/desktop/support/AskedFrame.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/WindowActivation.h"
#include "tests/desktop/support/WindowPlacing.h"

namespace lumatile::desktop {
namespace {

constexpr const char* vertically = "_NET_WM_STATE_MAXIMIZED_VERT";
constexpr const char* horizontally = "_NET_WM_STATE_MAXIMIZED_HORZ";
constexpr const char* shaded = "_NET_WM_STATE_SHADED";
constexpr const char* fullScreen = "_NET_WM_STATE_FULLSCREEN";
constexpr const char* hidden = "_NET_WM_STATE_HIDDEN";

/// Whether whole steps of `step` make `size` of `wanted`, or the window manager disregards them.
bool isStepped(int size, int wanted, int step) { return size <= wanted && size > wanted - step; }

}  // namespace

X11SessionWindow::X11SessionWindow(Desk desk, std::unique_ptr<TestWindow> window)
    : desk_(std::move(desk)), own_(std::move(window)), id_(own_->id()) {
    if (own_->kind() == TestWindow::Kind::sizeIncrement) {
        columnWidth_ = TestWindow::stepWidth;
        rowHeight_ = TestWindow::stepHeight;
    }
}

X11SessionWindow::X11SessionWindow(Desk desk, xcb_window_t window, const SessionProgram& program)
    : desk_(std::move(desk)),
      id_(window),
      columnWidth_(program.columnWidth),
      rowHeight_(program.rowHeight) {}

PixelRect X11SessionWindow::frame() {
    const std::optional<PixelRect> frame = outerFrame(*desk_.observer, id_);
    if (!frame) {
        throw DesktopError("the window is gone");
    }
    return *frame;
}

bool X11SessionWindow::mayBecome(const PixelRect& frame, const PixelRect& wanted) const {
    return frame.x == wanted.x && frame.y == wanted.y &&
           isStepped(frame.width, wanted.width, columnWidth_) &&
           isStepped(frame.height, wanted.height, rowHeight_);
}

void X11SessionWindow::place(const PixelRect& wanted) {
    if (desk_.isPutOutOfItsTile && own_) {
        setStates({vertically, horizontally}, true);
        setStates({vertically, horizontally}, false);
    }
    placeWindow(*desk_.observer, id_, wanted,
                [&](const PixelRect& frame) { return mayBecome(frame, wanted); });
}

void X11SessionWindow::activate() { activateWindow(*desk_.observer, id_); }

bool X11SessionWindow::isActive() { return desk_.observer->activeWindow() == id_; }

void X11SessionWindow::askForFocus() {
    constexpr std::uint32_t fromPager = 2;
    desk_.observer->ask(id_, "_NET_ACTIVE_WINDOW", {fromPager, XCB_CURRENT_TIME, 0});
    desk_.observer->roundTrip();
}

bool X11SessionWindow::hasState(const char* name) {
    const std::vector<std::uint32_t> states = desk_.observer->cardinals(id_, "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), desk_.observer->atom(name)) != states.end();
}

void X11SessionWindow::setStates(const std::vector<std::string>& states, bool on) {
    if (!own_) {
        throw DesktopError("a program's window is left as it is");
    }
    own_->setState(states, on);
}

void X11SessionWindow::enter(SpecialState state) {
    switch (state) {
        case SpecialState::maximized:
            return setStates({vertically, horizontally}, true);
        case SpecialState::maximizedVertically:
            return setStates({vertically}, true);
        case SpecialState::maximizedHorizontally:
            return setStates({horizontally}, true);
        case SpecialState::shaded:
            return setStates({shaded}, true);
        case SpecialState::fullScreen:
            return setStates({fullScreen}, true);
        case SpecialState::minimized:
            return minimize();
        case SpecialState::tiled:
            break;
    }
    throw DesktopError("no window manager is asked for a tile");
}

void X11SessionWindow::minimize() {
    constexpr std::uint32_t iconicState = 3;
    desk_.observer->ask(id_, "WM_CHANGE_STATE", {iconicState});
    if (!XClient::waitUntil([&] { return hasState(hidden) && !isActive(); })) {
        throw DesktopError("the window is not minimized");
    }
}

bool X11SessionWindow::isIn(SpecialState state) {
    switch (state) {
        case SpecialState::maximized:
            return hasState(vertically) && hasState(horizontally);
        case SpecialState::maximizedVertically:
            return hasState(vertically) && !hasState(horizontally);
        case SpecialState::maximizedHorizontally:
            return hasState(horizontally) && !hasState(vertically);
        case SpecialState::shaded:
            return hasState(shaded);
        case SpecialState::minimized:
            return hasState(hidden);
        case SpecialState::fullScreen:
            return hasState(fullScreen);
        case SpecialState::tiled:
            break;
    }
    return false;
}

std::optional<PixelRect> X11SessionWindow::asked(const PixelRect& before) {
    return askedFrame(*desk_.observer, id_, before);
}

std::size_t X11SessionWindow::timesAsked() {
    return desk_.observer->messages(id_, "_NET_MOVERESIZE_WINDOW").size();
}

std::vector<std::string> X11SessionWindow::otherThanPlaces() {
    std::vector<std::string> result;
    for (const RootMessage& message : desk_.observer->messages(id_)) {
        // The focus is what the test itself asks for.
        if (message.type != "_NET_MOVERESIZE_WINDOW" && message.type != "_NET_ACTIVE_WINDOW") {
            std::ostringstream text;
            text << message;
            result.push_back(text.str());
        }
    }
    return result;
}

void X11SessionWindow::forgetFrames() {
    if (!seen_) {
        seen_ = std::make_unique<OuterRectangles>(desk_.display, id_);
    }
    seen_->forget();
}

std::vector<PixelRect> X11SessionWindow::frames() { return seen_->outer(); }

std::vector<PixelRect> X11SessionWindow::sizes() { return seen_->clientSizes(); }

}  // namespace lumatile::desktop
