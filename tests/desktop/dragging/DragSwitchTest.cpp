// The preference that switches dragging, changed by another program while the program runs.

#include <gtest/gtest.h>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/dragging/SettingsEditor.h"

namespace lumatile::desktop {
namespace {

class DragSwitch : public DragTest {
protected:
    static constexpr const char* key = "dragToSnapEnabled";
};

TEST_P(DragSwitch, offInMidDragShowsNothingMore) {
    start();
    SettingsEditor settings(desktop().program().settingsFile());
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(hand().grip(window()));
    ASSERT_TRUE(settings.set(key, "false"));
    hand().moveTo(2, 500);
    hand().letGo();
    EXPECT_TRUE(isLeftAlone());
    EXPECT_EQ(highlight().timesShown(), 0);

    ASSERT_TRUE(settings.set(key, "true"));
    expectDrop({"right", 1917, 500}, 0);
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragSwitch, onInMidDragShowsTheTarget) {
    start();
    SettingsEditor settings(desktop().program().settingsFile());
    ASSERT_TRUE(settings.set(key, "false"));
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(hand().grip(window()));
    hand().moveTo(900, 600);
    ASSERT_TRUE(settings.set(key, "true"));
    hand().moveTo(2, 500);
    EXPECT_TRUE(highlight().waitUntilAt(area("left")));
    hand().letGo();
    EXPECT_TRUE(snaps(area("left")));
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(DragSwitch, offLeavesATargetThatIsShownAsItIs) {
    start();
    SettingsEditor settings(desktop().program().settingsFile());
    ASSERT_TRUE(prepare());
    ASSERT_TRUE(hand().grip(window()));
    hand().moveTo(2, 500);
    ASSERT_TRUE(highlight().waitUntilAt(area("left")));
    ASSERT_TRUE(settings.set(key, "false"));
    hand().moveTo(2, 1060);
    hand().letGo();
    EXPECT_TRUE(snaps(area("left"))) << "what is shown is what a release does";
    EXPECT_TRUE(highlight().waitUntilHidden());
    EXPECT_EQ(highlight().timesShown(), 1);
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, DragSwitch, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
