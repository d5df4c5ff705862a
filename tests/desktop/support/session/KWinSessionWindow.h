#pragma once

#include <memory>

#include "tests/desktop/support/TestWindow.h"
#include "tests/desktop/support/kwin/KWinProbe.h"
#include "tests/desktop/support/kwin/NativeWindow.h"
#include "tests/desktop/support/kwin/OverheardOrders.h"
#include "tests/desktop/support/kwin/ProbedWindow.h"
#include "tests/desktop/support/session/SessionProgram.h"
#include "tests/desktop/support/session/SessionWindow.h"

namespace lumatile::desktop {

/// A window of a private KWin session, whoever shows it and by whatever protocol.
class KWinSessionWindow : public SessionWindow {
public:
    /// @param orders outlives this
    KWinSessionWindow(ProbedWindow window, OverheardOrders& orders);

    /// What shows the window is kept for as long as this lives.
    void keep(std::shared_ptr<void> owner) { owner_ = std::move(owner); }

    /// @param program whose window it is
    void heedStepsOf(const SessionProgram& program);

    PixelRect frame() override;
    bool isAt(const PixelRect& wanted) override;
    bool mayBecome(const PixelRect& frame, const PixelRect& wanted) const override;
    bool hasSteps() const override { return columnWidth_ > 1 || rowHeight_ > 1; }
    void place(const PixelRect& wanted) override;
    void activate() override { window_.activate(); }
    bool isActive() override { return window_.state().active; }
    void askForFocus() override { window_.probe().activate(window_.id()); }
    void enter(SpecialState state) override;
    bool isIn(SpecialState state) override;
    std::optional<PixelRect> asked(const PixelRect& before) override;
    std::size_t timesAsked() override { return orders_.placings(window_.id()).size(); }
    std::vector<std::string> otherThanPlaces() override {
        return orders_.otherThanPlacings(window_.id());
    }
    std::vector<PixelRect> frames() override;
    std::vector<PixelRect> sizes() override;
    void forgetFrames() override { window_.probe().forgetFrames(); }

private:
    ProbedWindow window_;
    OverheardOrders& orders_;
    std::shared_ptr<void> owner_;
    int columnWidth_ = 1;
    int rowHeight_ = 1;
    bool isTiledRight_ = false;
};

}  // namespace lumatile::desktop
