// The ring that windows are walked round, and where it begins and ends.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/desktop/shifting/ShiftingTest.h"
#include "tests/desktop/shifting/WindowCondition.h"
#include "tests/desktop/support/ShiftingDesktop.h"

namespace lumatile::desktop {
namespace {

using testing::Each;
using testing::Field;
using testing::IsEmpty;

class Ring : public ShiftingTest {};

const PixelRect opened{400, 300, 640, 480};

TEST_P(Ring, isWalkedInOrderByTheWindowsOfTwoPrograms) {
    ShiftingDesktop shifting(GetParam());
    const auto logo =
        shifting.desktop().openProgram({"xlogo", "-geometry", "300x250+1200+300"}, "XLogo");
    const PixelRect logoHome = shifting.frame(logo.window);
    const auto window = shifting.open(opened);
    const auto conditions = [&] {
        return std::pair(WindowCondition::of(shifting.observer(), window->id()),
                         WindowCondition::of(shifting.observer(), logo.window));
    };
    const auto before = conditions();
    const DesktopCondition desktopBefore = DesktopCondition::of(shifting.observer());
    shifting.observer().forget();
    window->forgetConfigurations();
    for (int round = 0; round < 2; ++round) {
        for (const Offset& offset : ShiftingDesktop::ring) {
            shifting.step();
            ASSERT_EQ(shifting.frame(window->id()), shifted(opened, offset));
            ASSERT_EQ(shifting.frame(logo.window), shifted(logoHome, offset));
            ASSERT_EQ(conditions(), before);
            ASSERT_EQ(DesktopCondition::of(shifting.observer()), desktopBefore);
        }
    }
    EXPECT_EQ(shifting.conductor().orbit().trackedCount(), 2U);
    // What was asked of the window manager, beside what it made of it.
    for (const xcb_window_t id : {window->id(), logo.window}) {
        EXPECT_THAT(shifting.otherThanMoves(id), IsEmpty());
        EXPECT_EQ(shifting.observer().messages(id, "_NET_MOVERESIZE_WINDOW").size(),
                  2 * ShiftingDesktop::ring.size())
            << "one write a step";
    }
    window->roundTrip();
    const PixelRect client = window->client();
    EXPECT_GE(window->configurations().size(), 2 * ShiftingDesktop::ring.size());
    EXPECT_THAT(window->configurations(), Each(Field(&PixelRect::width, client.width)));
    EXPECT_THAT(window->configurations(), Each(Field(&PixelRect::height, client.height)));
}

TEST_P(Ring, isTheSameForEveryKindOfFrameAndUnderACompositor) {
    WindowManager::Options composited;
    composited.compositing = true;
    ShiftingDesktop shifting(GetParam(), ShiftingDesktop::shiftOnly, composited);
    using Kind = TestWindow::Kind;
    std::vector<std::unique_ptr<TestWindow>> windows;
    for (const Kind kind : {Kind::decorated, Kind::undecorated, Kind::clientSide, Kind::dialog}) {
        windows.push_back(shifting.open(opened, kind));
    }
    for (const Offset& offset : ShiftingDesktop::ring) {
        shifting.step();
        for (const auto& window : windows) {
            // A dialog is no ordinary window.
            const bool isDialog = window == windows.back();
            ASSERT_EQ(shifting.frame(window->id()), isDialog ? opened : shifted(opened, offset));
        }
    }
}

TEST_P(Ring, beginsAnewRoundThePlaceToWhichTheUserMovesAWindow) {
    ShiftingDesktop shifting(GetParam());
    const auto window = shifting.open(opened);
    const auto other = shifting.open({1100, 200, 400, 300});
    shifting.step(3);
    const PixelRect moved{700, 400, 640, 480};
    window->place(moved);
    shifting.step();
    EXPECT_EQ(shifting.frame(window->id()), moved) << "left where the user wants it";
    EXPECT_EQ(shifting.frame(other->id()),
              shifted({1100, 200, 400, 300}, ShiftingDesktop::ring[3]));
    for (std::size_t point = 4; point < ShiftingDesktop::ring.size(); ++point) {
        shifting.step();
        ASSERT_EQ(shifting.frame(window->id()), shifted(moved, ShiftingDesktop::ring[point]));
    }
    const PixelRect resized{700, 400, 500, 360};
    window->place(resized);
    shifting.step();
    EXPECT_EQ(shifting.frame(window->id()), resized);
    shifting.step();
    EXPECT_EQ(shifting.frame(window->id()), shifted(resized, ShiftingDesktop::ring[1]));
}

TEST_P(Ring, endsAtHomeForWindowsThatTheUserHasNotMoved) {
    ShiftingDesktop shifting(GetParam());
    const auto logo =
        shifting.desktop().openProgram({"xlogo", "-geometry", "300x250+1200+300"}, "XLogo");
    const PixelRect logoHome = shifting.frame(logo.window);
    const auto window = shifting.open(opened);
    const auto dragged = shifting.open({200, 500, 400, 300});
    shifting.step(7);
    const PixelRect there{260, 420, 400, 300};
    dragged->place(there);
    const DesktopCondition before = DesktopCondition::of(shifting.observer());
    shifting.conductor().stopFeatures();
    EXPECT_EQ(shifting.frame(window->id()), opened);
    EXPECT_EQ(shifting.frame(logo.window), logoHome);
    EXPECT_EQ(shifting.frame(dragged->id()), there) << "the user's own last word";
    EXPECT_EQ(DesktopCondition::of(shifting.observer()), before);
    shifting.step(20);
    EXPECT_EQ(shifting.frame(window->id()), opened);
}

TEST_P(Ring, doesNotDriftInAThousandSteps) {
    ShiftingDesktop shifting(GetParam());
    const auto logo =
        shifting.desktop().openProgram({"xlogo", "-geometry", "300x250+1200+300"}, "XLogo");
    const PixelRect logoHome = shifting.frame(logo.window);
    const auto window = shifting.open(opened);
    const auto clientSide = shifting.open({300, 500, 500, 400}, TestWindow::Kind::clientSide);
    const DesktopCondition before = DesktopCondition::of(shifting.observer());
    constexpr int steps = 1000;
    for (int taken = 1; taken <= steps; ++taken) {
        shifting.step();
        const Offset& offset = ShiftingDesktop::ring[static_cast<std::size_t>(taken - 1) %
                                                     ShiftingDesktop::ring.size()];
        ASSERT_EQ(shifting.frame(window->id()), shifted(opened, offset)) << "step " << taken;
        ASSERT_EQ(shifting.frame(logo.window), shifted(logoHome, offset)) << "step " << taken;
        ASSERT_EQ(shifting.frame(clientSide->id()), shifted({300, 500, 500, 400}, offset))
            << "step " << taken;
    }
    EXPECT_EQ(DesktopCondition::of(shifting.observer()), before);
    shifting.conductor().stopFeatures();
    EXPECT_EQ(shifting.frame(window->id()), opened);
    EXPECT_EQ(shifting.frame(logo.window), logoHome);
    EXPECT_EQ(shifting.frame(clientSide->id()), (PixelRect{300, 500, 500, 400}));
}

TEST_P(Ring, waitsForTheButtonWhileTheWindowIsUnderTheHand) {
    ShiftingDesktop shifting(GetParam());
    const auto window = shifting.open(opened);
    shifting.input().pressButton();
    shifting.step(4);
    EXPECT_EQ(shifting.frame(window->id()), opened);
    shifting.input().releaseButton();
    shifting.step();
    EXPECT_EQ(shifting.frame(window->id()), shifted(opened, ShiftingDesktop::ring[0]));
}

INSTANTIATE_TEST_SUITE_P(Shifting, Ring, testing::ValuesIn(WindowManager::kinds),
                         ShiftingTest::nameOf);

}  // namespace
}  // namespace lumatile::desktop
