#include "tests/desktop/support/shifting/KWinShiftedWindow.h"

#include <cmath>
#include <sstream>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/PixelSpace.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {
namespace {

/// @throws DesktopError for fractions, which a shift never leaves on a screen of scale 1
PixelRect pixelsOf(const Rect& rect) {
    const auto whole = [](double value) {
        if (std::floor(value) != value) {
            throw DesktopError("the window lies between pixels");
        }
        return static_cast<int>(value);
    };
    return {whole(rect.x), whole(rect.y), whole(rect.width), whole(rect.height)};
}

}  // namespace

KWinShiftedWindow::KWinShiftedWindow(Desk desk, ProbedWindow window, std::shared_ptr<void> owner)
    : desk_(std::move(desk)), window_(std::move(window)), owner_(std::move(owner)) {}

PixelRect KWinShiftedWindow::frame() {
    desk_.sync();
    return pixelsOf(window_.frame());
}

void KWinShiftedWindow::place(const PixelRect& wanted) {
    window_.place(rectOf(wanted));
    desk_.settle();
}

void KWinShiftedWindow::activate() {
    window_.activate();
    desk_.settle();
}

void KWinShiftedWindow::sendToDesktop(int desktop) {
    const int number = desktop + 1;
    window_.probe().sendToDesktop(window_.id(), number);
    if (!waitInSession([&] { return window_.state().desktop == number; })) {
        throw DesktopError("the window stays on its virtual desktop");
    }
}

std::string KWinShiftedWindow::condition() {
    desk_.sync();
    WindowState state = window_.state();
    state.frame = {};
    std::ostringstream text;
    text << state;
    return text.str();
}

std::vector<PixelRect> KWinShiftedWindow::geometries() {
    desk_.sync();
    std::vector<PixelRect> result;
    for (const Rect& frame : window_.probe().framesOf(window_.id())) {
        result.push_back(pixelsOf(frame));
    }
    return result;
}

}  // namespace lumatile::desktop
