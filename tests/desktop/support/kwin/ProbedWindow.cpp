#include "tests/desktop/support/kwin/ProbedWindow.h"

#include <sstream>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {

WindowState ProbedWindow::state() const {
    const auto state = probe_->window(id_);
    if (!state) {
        throw DesktopError("the window is gone");
    }
    return *state;
}

void ProbedWindow::place(const Rect& wanted) const {
    probe_->place(id_, wanted);
    if (!waitInSession([&] { return frame() == wanted; })) {
        std::ostringstream text;
        text << "the window is not where it was placed, but " << state();
        throw DesktopError(text.str());
    }
}

void ProbedWindow::activate() const {
    probe_->activate(id_);
    if (!waitInSession([&] { return state().active; })) {
        throw DesktopError("the window does not become active");
    }
}

}  // namespace lumatile::desktop
