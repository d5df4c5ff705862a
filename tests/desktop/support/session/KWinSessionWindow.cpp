#include "tests/desktop/support/session/KWinSessionWindow.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/PixelSpace.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {
namespace {

PixelRect pixelsOf(const Rect& rect) {
    return {static_cast<int>(std::floor(rect.x)), static_cast<int>(std::floor(rect.y)),
            static_cast<int>(std::floor(rect.width)), static_cast<int>(std::floor(rect.height))};
}

/// Whether `size` is what whole steps of `step` make of `wanted`.
bool isStepped(double size, double wanted, int step) {
    return step > 1 ? size <= wanted && size > wanted - step : size == wanted;
}

bool isStepped(const Rect& frame, const PixelRect& wanted, int columnWidth, int rowHeight) {
    return frame.x == wanted.x && frame.y == wanted.y &&
           isStepped(frame.width, wanted.width, columnWidth) &&
           isStepped(frame.height, wanted.height, rowHeight);
}

void addDifferent(std::vector<PixelRect>& rects, const PixelRect& rect) {
    if (std::find(rects.begin(), rects.end(), rect) == rects.end()) {
        rects.push_back(rect);
    }
}

}  // namespace

KWinSessionWindow::KWinSessionWindow(ProbedWindow window, OverheardOrders& orders)
    : window_(std::move(window)), orders_(orders) {}

void KWinSessionWindow::heedStepsOf(const SessionProgram& program) {
    columnWidth_ = program.columnWidth;
    rowHeight_ = program.rowHeight;
}

PixelRect KWinSessionWindow::frame() { return pixelsOf(window_.frame()); }

bool KWinSessionWindow::isAt(const PixelRect& wanted) {
    return isStepped(window_.frame(), wanted, columnWidth_, rowHeight_);
}

bool KWinSessionWindow::mayBecome(const PixelRect& frame, const PixelRect& wanted) const {
    return isStepped(rectOf(frame), wanted, columnWidth_, rowHeight_);
}

void KWinSessionWindow::place(const PixelRect& wanted) {
    window_.probe().place(window_.id(), rectOf(wanted));
    if (!waitInSession([&] { return isAt(wanted); })) {
        std::ostringstream text;
        text << "the window is not where it was placed, but " << window_.state();
        throw DesktopError(text.str());
    }
}

void KWinSessionWindow::enter(SpecialState state) {
    KWinProbe& probe = window_.probe();
    const std::string& id = window_.id();
    const Rect before = window_.frame();
    switch (state) {
        case SpecialState::maximized:
            probe.maximize(id, true, true);
            break;
        case SpecialState::maximizedVertically:
            probe.maximize(id, false, true);
            break;
        case SpecialState::maximizedHorizontally:
            probe.maximize(id, true, false);
            break;
        case SpecialState::tiled:
            activate();
            // A second one to the same side lifts the tile, also one that is gone by then.
            isTiledRight_ = !isTiledRight_;
            probe.shortcut(isTiledRight_ ? "slotWindowQuickTileRight" : "slotWindowQuickTileLeft");
            break;
        case SpecialState::shaded:
            probe.shade(id, true);
            break;
        case SpecialState::minimized:
            probe.minimize(id, true);
            break;
        case SpecialState::fullScreen:
            probe.fullScreen(id, true);
            break;
    }
    // One that is minimized keeps its frame; a program may draw another one a while after the rest.
    const bool staysInPlace = state == SpecialState::minimized;
    if (!waitInSession(
            [&] { return isIn(state) && (staysInPlace || window_.frame() != before); })) {
        std::ostringstream text;
        text << "the window does not become " << state << ", but " << window_.state();
        throw DesktopError(text.str());
    }
}

bool KWinSessionWindow::isIn(SpecialState state) {
    const WindowState now = window_.state();
    switch (state) {
        case SpecialState::maximized:
            return now.maximizedHorizontally && now.maximizedVertically;
        case SpecialState::maximizedVertically:
            return now.maximizedVertically && !now.maximizedHorizontally;
        case SpecialState::maximizedHorizontally:
            return now.maximizedHorizontally && !now.maximizedVertically;
        case SpecialState::tiled:
            return now.tiled;
        case SpecialState::shaded:
            return now.shaded;
        case SpecialState::minimized:
            return now.minimized;
        case SpecialState::fullScreen:
            return now.fullScreen;
    }
    return false;
}

std::optional<PixelRect> KWinSessionWindow::asked(const PixelRect& before) {
    const auto placings = orders_.placings(window_.id());
    if (placings.empty()) {
        return std::nullopt;
    }
    Rect asked = rectOf(before);
    for (const OverheardOrders::Placing& placing : placings) {
        asked = placing.appliedTo(asked);
    }
    return pixelsOf(asked);
}

std::vector<PixelRect> KWinSessionWindow::frames() {
    window_.probe().sync();
    std::vector<PixelRect> result;
    for (const Rect& frame : window_.probe().framesOf(window_.id())) {
        result.push_back(pixelsOf(frame));
    }
    return result;
}

std::vector<PixelRect> KWinSessionWindow::sizes() {
    // What KWin draws round it has always the same size.
    std::vector<PixelRect> result;
    for (const PixelRect& frame : frames()) {
        addDifferent(result, {0, 0, frame.width, frame.height});
    }
    return result;
}

}  // namespace lumatile::desktop
