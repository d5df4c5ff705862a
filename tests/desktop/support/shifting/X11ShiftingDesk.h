#pragma once

#include <optional>

#include "tests/desktop/support/HeldWindowManager.h"
#include "tests/desktop/support/ShiftingDesktop.h"
#include "tests/desktop/support/shifting/ShiftingDesk.h"

namespace lumatile::desktop {

/// A window manager on a private X server as a session of the tables of cases.
class X11ShiftingDesk : public ShiftingDesk {
public:
    X11ShiftingDesk(WindowManager::Kind windowManager, const Setup& setup);

    ShiftingDesktop& desktop() { return desktop_; }

    ApplicationConductor& conductor() override { return desktop_.conductor(); }
    SimulatedInput& input() override { return desktop_.input(); }
    SimulatedClock& clock() override { return desktop_.clock(); }
    void advance(double seconds) override { desktop_.advance(seconds); }
    void run(std::string_view nameKey) override { desktop_.run(nameKey); }

    const std::vector<std::string>& windowKinds() const override;
    using ShiftingDesk::open;
    std::unique_ptr<ShiftedWindow> open(const std::string& kind, const PixelRect& frame) override;
    std::unique_ptr<ShiftedWindow> openOther(const PixelRect& frame) override;
    std::unique_ptr<ShiftedWindow> openTerminal(int x, int y) override;
    bool heedsSteps() const override { return windowManager_ != WindowManager::Kind::xfwm4; }
    std::unique_ptr<ShiftedWindow> openStill(StillWindow kind, const PixelRect& frame) override;

    std::string condition() override;
    void forget() override { desktop_.observer().forget(); }
    void addVirtualDesktop() override;
    void hold() override;
    void letGo() override { held_.reset(); }
    bool waitUntil(const std::function<bool()>& condition) override {
        return XClient::waitUntil(condition);
    }
    void settle() override { desktop_.settle(); }

private:
    std::unique_ptr<ShiftedWindow> openIn(const std::vector<std::string>& states,
                                          const PixelRect& frame);
    std::unique_ptr<ShiftedWindow> openMinimized(const PixelRect& frame);
    std::unique_ptr<ShiftedWindow> shown(TestWindow::Kind kind);

    WindowManager::Kind windowManager_;
    ShiftingDesktop desktop_;
    std::optional<HeldWindowManager> held_;
};

}  // namespace lumatile::desktop
