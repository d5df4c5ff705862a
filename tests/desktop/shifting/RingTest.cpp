// The ring that windows are walked round, and where it begins and ends.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/desktop/support/shifting/ShiftingDesk.h"

namespace lumatile::desktop {
namespace {

using testing::Each;
using testing::Field;
using testing::IsEmpty;

class Ring : public ShiftingTest {};

const PixelRect opened{400, 300, 640, 480};
const PixelRect otherHome{1200, 300, 300, 280};

TEST_P(Ring, isWalkedInOrderByTheWindowsOfTwoPrograms) {
    const auto desk = start();
    const auto other = desk->openOther(otherHome);
    const auto window = desk->open(opened);
    desk->settle();
    const std::string windowBefore = window->condition();
    const std::string otherBefore = other->condition();
    const std::string deskBefore = desk->condition();
    desk->forget();
    window->forgetGeometries();
    for (int round = 0; round < 2; ++round) {
        for (const Offset& offset : ShiftingDesk::ring) {
            desk->step();
            ASSERT_EQ(window->frame(), shifted(opened, offset));
            ASSERT_EQ(other->frame(), shifted(otherHome, offset));
            ASSERT_EQ(window->condition(), windowBefore);
            ASSERT_EQ(other->condition(), otherBefore);
            ASSERT_EQ(desk->condition(), deskBefore);
        }
    }
    EXPECT_EQ(desk->conductor().orbit().trackedCount(), 2U);
    // What was asked of the desktop, beside what it made of it.
    constexpr std::size_t steps = 2 * ShiftingDesk::ring.size();
    for (ShiftedWindow* const each : {window.get(), other.get()}) {
        EXPECT_THAT(each->otherThanMoves(), IsEmpty());
        EXPECT_EQ(each->timesAsked(), steps) << "one write a step";
    }
    const std::vector<PixelRect> geometries = window->geometries();
    ASSERT_GE(geometries.size(), steps);
    EXPECT_THAT(geometries, Each(Field(&PixelRect::width, geometries.front().width)));
    EXPECT_THAT(geometries, Each(Field(&PixelRect::height, geometries.front().height)));
}

TEST_P(Ring, isTheSameForEveryKindOfFrameAndUnderACompositor) {
    const auto desk = start({.isComposited = true});
    std::vector<std::unique_ptr<ShiftedWindow>> windows;
    for (const std::string& kind : desk->windowKinds()) {
        windows.push_back(desk->open(kind, opened));
    }
    // A dialog is no ordinary window.
    const auto dialog = desk->openStill(StillWindow::dialog, opened);
    const PixelRect dialogHome = dialog->frame();
    for (const Offset& offset : ShiftingDesk::ring) {
        desk->step();
        for (const auto& window : windows) {
            ASSERT_EQ(window->frame(), shifted(opened, offset));
        }
        ASSERT_EQ(dialog->frame(), dialogHome);
    }
}

TEST_P(Ring, beginsAnewRoundThePlaceToWhichTheUserMovesAWindow) {
    const auto desk = start();
    const auto window = desk->open(opened);
    const auto other = desk->open({1100, 200, 400, 300});
    desk->step(3);
    const PixelRect moved{700, 400, 640, 480};
    window->place(moved);
    desk->step();
    EXPECT_EQ(window->frame(), moved) << "left where the user wants it";
    EXPECT_EQ(other->frame(), shifted({1100, 200, 400, 300}, ShiftingDesk::ring[3]));
    for (std::size_t point = 4; point < ShiftingDesk::ring.size(); ++point) {
        desk->step();
        ASSERT_EQ(window->frame(), shifted(moved, ShiftingDesk::ring[point]));
    }
    const PixelRect resized{700, 400, 500, 360};
    window->place(resized);
    desk->step();
    EXPECT_EQ(window->frame(), resized);
    desk->step();
    EXPECT_EQ(window->frame(), shifted(resized, ShiftingDesk::ring[1]));
}

TEST_P(Ring, endsAtHomeForWindowsThatTheUserHasNotMoved) {
    const auto desk = start();
    const auto other = desk->openOther(otherHome);
    const auto window = desk->open(opened);
    const auto dragged = desk->open({200, 500, 400, 300});
    desk->step(7);
    const PixelRect there{260, 420, 400, 300};
    dragged->place(there);
    const std::string before = desk->condition();
    desk->conductor().stopFeatures();
    EXPECT_EQ(window->frame(), opened);
    EXPECT_EQ(other->frame(), otherHome);
    EXPECT_EQ(dragged->frame(), there) << "the user's own last word";
    EXPECT_EQ(desk->condition(), before);
    desk->step(20);
    EXPECT_EQ(window->frame(), opened);
}

TEST_P(Ring, doesNotDriftInAThousandSteps) {
    const auto desk = start();
    const auto other = desk->openOther(otherHome);
    const auto window = desk->open(opened);
    const auto another = desk->open(desk->windowKinds().back(), {300, 500, 500, 400});
    const std::string before = desk->condition();
    constexpr int steps = 1000;
    for (int taken = 1; taken <= steps; ++taken) {
        desk->step();
        const Offset& offset =
            ShiftingDesk::ring[static_cast<std::size_t>(taken - 1) % ShiftingDesk::ring.size()];
        ASSERT_EQ(window->frame(), shifted(opened, offset)) << "step " << taken;
        ASSERT_EQ(other->frame(), shifted(otherHome, offset)) << "step " << taken;
        ASSERT_EQ(another->frame(), shifted({300, 500, 500, 400}, offset)) << "step " << taken;
    }
    EXPECT_EQ(desk->condition(), before);
    desk->conductor().stopFeatures();
    EXPECT_EQ(window->frame(), opened);
    EXPECT_EQ(other->frame(), otherHome);
    EXPECT_EQ(another->frame(), (PixelRect{300, 500, 500, 400}));
}

TEST_P(Ring, waitsForTheButtonWhileTheWindowIsUnderTheHand) {
    const auto desk = start();
    const auto window = desk->open(opened);
    desk->input().pressButton();
    desk->step(4);
    EXPECT_EQ(window->frame(), opened);
    desk->input().releaseButton();
    desk->step();
    EXPECT_EQ(window->frame(), shifted(opened, ShiftingDesk::ring[0]));
}

INSTANTIATE_TEST_SUITE_P(Shifting, Ring, testing::ValuesIn(shiftingKinds()), ShiftingTest::nameOf);

}  // namespace
}  // namespace lumatile::desktop
