// Windows dragged by their title bars, with real mouse events.

#include <gtest/gtest.h>

#include "tests/desktop/dragging/DragHand.h"
#include "tests/desktop/snapping/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

class DragToEdge : public OnEveryWindowManager {
protected:
    void start(const MonitorLayout& layout = MonitorLayout::landscape()) {
        SnapDesktop::Setup setup;
        setup.windowManager = GetParam();
        setup.layout = layout;
        desktop_ = std::make_unique<SnapDesktop>(setup);
        window_ = desktop_->desktop().openWindow({});
        hand_ = std::make_unique<DragHand>(desktop_->input());
    }

    SnapDesktop& desktop() { return *desktop_; }
    TestWindow& window() { return *window_; }
    DragHand& hand() { return *hand_; }

private:
    std::unique_ptr<SnapDesktop> desktop_;
    std::unique_ptr<TestWindow> window_;
    std::unique_ptr<DragHand> hand_;
};

TEST_P(DragToEdge, everyEdgeAndCornerOfALandscapeScreen) {
    start();
    struct {
        int x;
        int y;
        PixelRect becomes;
    } const cases[] = {
        {2, 500, {0, 0, 960, 1080}},        {2, 30, {0, 0, 960, 540}},
        {2, 1060, {0, 540, 960, 540}},      {900, 2, {0, 0, 1920, 1080}},
        {300, 1077, {0, 0, 640, 1080}},     {900, 1077, {640, 0, 640, 1080}},
        {1500, 1077, {1280, 0, 640, 1080}}, {1917, 500, {960, 0, 960, 1080}},
        {1917, 30, {960, 0, 960, 540}},     {1917, 1060, {960, 540, 960, 540}},
    };
    for (const auto& [x, y, becomes] : cases) {
        SCOPED_TRACE(std::to_string(x) + ", " + std::to_string(y));
        ASSERT_TRUE(desktop().settle(window()));
        window().place({500, 300, 700, 450});
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(x, y);
        hand().letGo();
        EXPECT_TRUE(reaches(window(), becomes));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, DragToEdge,
                         testing::Values(WindowManager::Kind::openbox, WindowManager::Kind::xfwm4,
                                         WindowManager::Kind::kwin),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
