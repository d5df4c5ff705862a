#include "tests/desktop/support/shifting/X11ShiftedWindow.h"

#include <sstream>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/WindowActivation.h"
#include "tests/desktop/support/WindowPlacing.h"
#include "tests/desktop/support/shifting/WindowCondition.h"

namespace lumatile::desktop {

X11ShiftedWindow::X11ShiftedWindow(ShiftingDesktop& desktop, std::unique_ptr<TestWindow> window)
    : desktop_(desktop), id_(window->id()), window_(std::move(window)) {}

X11ShiftedWindow::X11ShiftedWindow(ShiftingDesktop& desktop, TestDesktop::Program program)
    : desktop_(desktop), id_(program.window), process_(std::move(program.process)) {}

X11ShiftedWindow::X11ShiftedWindow(ShiftingDesktop& desktop, xcb_window_t id,
                                   std::unique_ptr<XClient> owner)
    : desktop_(desktop), id_(id), owner_(std::move(owner)) {}

void X11ShiftedWindow::place(const PixelRect& wanted) {
    placeWindow(desktop_.observer(), id_, wanted);
}

void X11ShiftedWindow::activate() { activateWindow(desktop_.observer(), id_); }

void X11ShiftedWindow::sendToDesktop(int desktop) {
    constexpr std::uint32_t fromPager = 2;
    const auto wanted = static_cast<std::uint32_t>(desktop);
    DesktopObserver& observer = desktop_.observer();
    observer.ask(id_, "_NET_WM_DESKTOP", {wanted, fromPager});
    if (!XClient::waitUntil([&] { return observer.cardinal(id_, "_NET_WM_DESKTOP") == wanted; })) {
        throw DesktopError("the window stays on its virtual desktop");
    }
}

std::string X11ShiftedWindow::condition() {
    std::ostringstream text;
    text << WindowCondition::of(desktop_.observer(), id_);
    return text.str();
}

std::size_t X11ShiftedWindow::timesAsked() {
    return desktop_.observer().messages(id_, "_NET_MOVERESIZE_WINDOW").size();
}

std::vector<std::string> X11ShiftedWindow::otherThanMoves() {
    std::vector<std::string> result;
    for (const RootMessage& message : desktop_.otherThanMoves(id_)) {
        std::ostringstream text;
        text << message;
        result.push_back(text.str());
    }
    return result;
}

std::vector<PixelRect> X11ShiftedWindow::geometries() {
    ownWindow().roundTrip();
    return ownWindow().configurations();
}

TestWindow& X11ShiftedWindow::ownWindow() {
    if (!window_) {
        throw DesktopError("the geometries of another process are not known");
    }
    return *window_;
}

}  // namespace lumatile::desktop
