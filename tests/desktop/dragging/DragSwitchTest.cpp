// The preference that switches dragging, changed by another program while the program runs.

#include <gtest/gtest.h>

#include "tests/desktop/dragging/SessionDragTest.h"
#include "tests/desktop/dragging/SettingsEditor.h"

namespace lumatile::desktop {
namespace {

class DragSwitch : public SessionDragTest {
protected:
    static constexpr const char* key = "dragToSnapEnabled";
};

TEST_P(DragSwitch, offInMidDragShowsNothingMore) {
    start();
    SettingsEditor settings(desk().program().settingsFile());
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    ASSERT_TRUE(settings.set(key, "false"));
    hand().moveTo(2, 500);
    hand().letGo();
    EXPECT_TRUE(isLeftAlone());
    EXPECT_EQ(highlight().timesShown(), 0);

    ASSERT_TRUE(settings.set(key, "true"));
    expectNextDragSnaps();
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(DragSwitch, onInMidDragShowsTheTarget) {
    start();
    SettingsEditor settings(desk().program().settingsFile());
    ASSERT_TRUE(settings.set(key, "false"));
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(900, 600);
    ASSERT_TRUE(settings.set(key, "true"));
    hand().moveTo(2, 500);
    EXPECT_TRUE(highlight().waitUntilAt(area("left")));
    hand().letGo();
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desk().endProgram(), "");
}

TEST_P(DragSwitch, offLeavesATargetThatIsShownAsItIs) {
    start();
    SettingsEditor settings(desk().program().settingsFile());
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(grip());
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    ASSERT_TRUE(settings.set(key, "false"));
    hand().moveTo(2, 1060);
    hand().letGo();
    EXPECT_TRUE(snaps(area("left"))) << "what is shown is what a release does";
    EXPECT_TRUE(highlight().waitUntilHidden());
    EXPECT_EQ(highlight().timesShown(), 1);
    EXPECT_EQ(desk().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, DragSwitch, testing::ValuesIn(sessionKinds()), nameOfSession);

}  // namespace
}  // namespace lumatile::desktop
