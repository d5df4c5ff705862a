#pragma once

#include <string>
#include <utility>

#include "tests/desktop/support/kwin/KWinProbe.h"

namespace lumatile::desktop {

/// Any window on a private KWin, by the id that KWin has for it.
class ProbedWindow {
public:
    /// @param probe outlives this
    ProbedWindow(KWinProbe& probe, std::string id) : probe_(&probe), id_(std::move(id)) {}

    const std::string& id() const { return id_; }
    KWinProbe& probe() const { return *probe_; }

    /// As the compositor has told it.
    /// @throws DesktopError when the window is gone
    WindowState state() const;
    Rect frame() const { return state().frame; }

    /// Asks the compositor for a place of the outer frame and waits for it.
    void place(const Rect& wanted) const;

    void activate() const;

private:
    KWinProbe* probe_;
    std::string id_;
};

}  // namespace lumatile::desktop
