#pragma once

#include <memory>
#include <optional>

#include "tests/desktop/support/ShiftingDesktop.h"
#include "tests/desktop/support/shifting/ShiftedWindow.h"

namespace lumatile::desktop {

/// Any window on an X server; its program lives as long as this.
class X11ShiftedWindow : public ShiftedWindow {
public:
    /// @param desktop outlives this
    X11ShiftedWindow(ShiftingDesktop& desktop, std::unique_ptr<TestWindow> window);
    X11ShiftedWindow(ShiftingDesktop& desktop, TestDesktop::Program program);

    /// Of another client of this process.
    X11ShiftedWindow(ShiftingDesktop& desktop, xcb_window_t id, std::unique_ptr<XClient> owner);

    PixelRect frame() override { return desktop_.frame(id_); }
    void place(const PixelRect& wanted) override;
    void activate() override;
    void sendToDesktop(int desktop) override;
    std::string condition() override;
    std::size_t timesAsked() override;
    std::vector<std::string> otherThanMoves() override;

    /// Of the windows of this process alone; those of the client area.
    std::vector<PixelRect> geometries() override;
    void forgetGeometries() override { ownWindow().forgetConfigurations(); }

private:
    TestWindow& ownWindow();

    ShiftingDesktop& desktop_;
    xcb_window_t id_;
    std::unique_ptr<TestWindow> window_;
    std::optional<ChildProcess> process_;
    std::unique_ptr<XClient> owner_;
};

}  // namespace lumatile::desktop
