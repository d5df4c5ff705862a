// Windows that the shift leaves alone, and one that it moves although nobody sees it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <utility>

#include "tests/desktop/support/shifting/ShiftingDesk.h"

namespace lumatile::desktop {
namespace {

using testing::IsEmpty;

const PixelRect opened{400, 300, 640, 480};
const PixelRect elsewhere{1100, 200, 400, 300};

/// A ring and a half in which an ordinary window moves, and `window` is not even asked to.
void expectUntouched(ShiftingDesk& desk, ShiftedWindow& window) {
    const auto ordinary = desk.open(elsewhere);
    desk.settle();
    const PixelRect frame = window.frame();
    const std::string condition = window.condition();
    const std::string deskCondition = desk.condition();
    desk.forget();
    for (std::size_t taken = 0; taken < 24; ++taken) {
        desk.step();
        const Offset& offset = ShiftingDesk::ring[taken % ShiftingDesk::ring.size()];
        ASSERT_EQ(ordinary->frame(), shifted(elsewhere, offset));
        ASSERT_EQ(window.frame(), frame);
    }
    desk.conductor().stopFeatures();
    EXPECT_EQ(window.frame(), frame);
    EXPECT_EQ(window.condition(), condition);
    EXPECT_EQ(desk.condition(), deskCondition);
    EXPECT_EQ(window.timesAsked(), 0U);
    EXPECT_THAT(window.otherThanMoves(), IsEmpty());
}

struct StillCase {
    ShiftingKind session;
    StillWindow window;
    const char* name;
};

std::ostream& operator<<(std::ostream& stream, const StillCase& each) {
    return stream << each.session << ", " << each.name;
}

class UntouchedWindows : public testing::TestWithParam<StillCase> {};

TEST_P(UntouchedWindows, areNotEvenAsked) {
    const auto desk = GetParam().session.start({});
    const auto window = desk->openStill(GetParam().window, opened);
    expectUntouched(*desk, *window);
}

std::vector<StillCase> stillCases() {
    constexpr std::array<std::pair<StillWindow, const char*>, 10> windows{
        {{StillWindow::maximized, "maximized"},
         {StillWindow::maximizedVertically, "maximizedVertically"},
         {StillWindow::maximizedHorizontally, "maximizedHorizontally"},
         {StillWindow::fullScreen, "fullScreen"},
         {StillWindow::minimized, "minimized"},
         {StillWindow::shaded, "shaded"},
         {StillWindow::panel, "panel"},
         {StillWindow::icons, "icons"},
         {StillWindow::dialog, "dialog"},
         {StillWindow::unmanaged, "unmanaged"}}};
    std::vector<StillCase> cases;
    for (const ShiftingKind& session : shiftingKinds()) {
        for (const auto& [window, name] : windows) {
            cases.push_back({session, window, name});
        }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Shifting, UntouchedWindows, testing::ValuesIn(stillCases()),
                         [](const testing::TestParamInfo<StillCase>& each) {
                             return each.param.session.name + "_" + each.param.name;
                         });

class BlacklistedWindows : public ShiftingTest {};

TEST_P(BlacklistedWindows, areNotEvenAskedWhileTheBlacklistNamesThem) {
    const auto desk = start();
    const PixelRect home{700, 600, 300, 280};
    const auto other = desk->openOther(home);
    desk->step();
    EXPECT_EQ(other->frame(), shifted(home, ShiftingDesk::ring[0]))
        << "what the blacklist takes out moves without it";
    desk->conductor().blacklist().addToUserList(desk->otherId());
    const PixelRect frame = other->frame();
    desk->forget();
    desk->step(3);
    EXPECT_EQ(other->frame(), frame);
    EXPECT_EQ(other->timesAsked(), 0U);
    EXPECT_THAT(other->otherThanMoves(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Shifting, BlacklistedWindows, testing::ValuesIn(shiftingKinds()),
                         ShiftingTest::nameOf);

class WindowsElsewhere : public ShiftingTest {};

TEST_P(WindowsElsewhere, moveOnTheirVirtualDesktopAndStayThere) {
    const auto desk = start();
    desk->addVirtualDesktop();
    const auto window = desk->open(opened);
    const auto visible = desk->open(elsewhere);
    window->sendToDesktop(1);
    visible->activate();
    desk->settle();
    const std::string condition = window->condition();
    const std::string deskCondition = desk->condition();
    desk->forget();
    for (const Offset& offset : ShiftingDesk::ring) {
        desk->step();
        ASSERT_EQ(window->frame(), shifted(opened, offset));
        ASSERT_EQ(visible->frame(), shifted(elsewhere, offset));
        ASSERT_EQ(window->condition(), condition);
        ASSERT_EQ(desk->condition(), deskCondition);
    }
    EXPECT_THAT(window->otherThanMoves(), IsEmpty());
    desk->conductor().stopFeatures();
    EXPECT_EQ(window->frame(), opened);
    EXPECT_EQ(window->condition(), condition);
}

INSTANTIATE_TEST_SUITE_P(Shifting, WindowsElsewhere, testing::ValuesIn(shiftingKinds()),
                         ShiftingTest::nameOf);

}  // namespace
}  // namespace lumatile::desktop
