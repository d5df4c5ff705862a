#pragma once

#include <memory>
#include <optional>

#include "platform/kwin/KWinSession.h"
#include "platform/simulated/SimulatedLog.h"
#include "tests/desktop/support/GLibRunLoop.h"
#include "tests/desktop/support/OtherProgramsWorkspace.h"
#include "tests/desktop/support/kwin/KWinDesktop.h"
#include "tests/desktop/support/kwin/OverheardOrders.h"
#include "tests/desktop/support/shifting/KWinShiftedWindow.h"
#include "tests/desktop/support/shifting/SessionEnvironment.h"
#include "tests/desktop/support/shifting/ShiftingDesk.h"

namespace lumatile::desktop {

/// A private KWin Wayland session as a session of the tables of cases. The adapters keep real time,
/// as KWin does; the application does not.
class KWinShiftingDesk : public ShiftingDesk {
public:
    explicit KWinShiftingDesk(const Setup& setup);
    KWinShiftingDesk(const KWinShiftingDesk&) = delete;
    KWinShiftingDesk& operator=(const KWinShiftingDesk&) = delete;
    ~KWinShiftingDesk() override { letGo(); }

    KWinDesktop& desktop() { return desktop_; }
    OverheardOrders& orders() { return orders_; }

    ApplicationConductor& conductor() override { return application_->conductor(); }
    SimulatedInput& input() override { return application_->input(); }
    SimulatedClock& clock() override { return time_.clock; }
    void advance(double seconds) override;
    void run(std::string_view nameKey) override { application_->run(nameKey); }

    const std::vector<std::string>& windowKinds() const override;
    using ShiftingDesk::open;
    std::unique_ptr<ShiftedWindow> open(const std::string& kind, const PixelRect& frame) override;
    std::unique_ptr<ShiftedWindow> openOther(const PixelRect& frame) override;
    std::unique_ptr<ShiftedWindow> openTerminal(int x, int y) override;
    bool heedsSteps() const override { return true; }
    std::unique_ptr<ShiftedWindow> openStill(StillWindow kind, const PixelRect& frame) override;

    std::string condition() override;
    void forget() override { orders_.forget(); }
    void addVirtualDesktop() override { desktop_.probe().addDesktop(); }
    void hold() override;
    void letGo() override;
    bool waitUntil(const std::function<bool()>& condition) override;
    void settle() override;

private:
    void serve();
    bool isHeard(const WindowState& state);
    bool isEverythingHeard();
    KWinShiftedWindow::Desk forWindows();
    std::unique_ptr<KWinShiftedWindow> openNative(const NativeWindow::Options& options);
    std::unique_ptr<ShiftedWindow> openShaded(const PixelRect& frame);
    std::unique_ptr<ShiftedWindow> openPanel();
    std::unique_ptr<ShiftedWindow> openIcons();

    KWinDesktop desktop_;
    OverheardOrders orders_;
    SessionEnvironment environment_;
    GLibRunLoop realTime_;
    SimulatedLog log_;
    std::unique_ptr<PresentSession> session_;
    std::optional<DesktopSession> adapters_;
    std::optional<OtherProgramsWorkspace> workspace_;
    VirtualTime time_;
    std::unique_ptr<ShiftingApplication> application_;
    bool isHeld_ = false;
    int opened_ = 0;
};

}  // namespace lumatile::desktop
