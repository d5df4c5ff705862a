#pragma once

#include <functional>
#include <memory>

#include "tests/desktop/support/kwin/OverheardOrders.h"
#include "tests/desktop/support/kwin/ProbedWindow.h"
#include "tests/desktop/support/shifting/ShiftedWindow.h"

namespace lumatile::desktop {

/// Any window that KWin manages.
class KWinShiftedWindow : public ShiftedWindow {
public:
    /// What the desktop does for its windows.
    struct Desk {
        OverheardOrders& orders;
        std::function<void()> sync;    ///< Returns when what KWin has done is known.
        std::function<void()> settle;  ///< Returns when the application has heard of it, too.
    };

    /// @param owner of its program, which lives as long as this
    KWinShiftedWindow(Desk desk, ProbedWindow window, std::shared_ptr<void> owner);

    const std::string& id() const { return window_.id(); }

    PixelRect frame() override;
    void place(const PixelRect& wanted) override;
    void activate() override;
    void sendToDesktop(int desktop) override;
    std::string condition() override;
    std::size_t timesAsked() override { return desk_.orders.placings(window_.id()).size(); }
    std::vector<std::string> otherThanMoves() override {
        return desk_.orders.otherThanMoves(window_.id());
    }
    std::vector<PixelRect> geometries() override;
    void forgetGeometries() override { window_.probe().forgetFrames(); }

private:
    Desk desk_;
    ProbedWindow window_;
    std::shared_ptr<void> owner_;
};

}  // namespace lumatile::desktop
