#include "Lumatile/SettingsDifferences.h"

#include <gtest/gtest.h>

#include "commands/CommandStore.h"

namespace lumatile {
namespace {

class SettingsDifferences : public testing::Test {
protected:
    void expect(const std::string& inLocal, const std::string& inRemote) const {
        EXPECT_EQ(settingsDifferences(local, remote), (ConflictDifferences{inLocal, inRemote}));
    }

    SharedSettings local{CommandStore().commands, {}};
    SharedSettings remote = local;
};

TEST_F(SettingsDifferences, thereMayBeNone) { expect("no difference", "no difference"); }

TEST_F(SettingsDifferences, shortcutsAreCountedAndSwitchesNamed) {
    for (std::size_t index : {0U, 1U, 2U}) {
        local.commands[index].shortcut.reset();
    }
    local.oled.orbitEnabled = false;
    local.oled.orbitAmplitude = 5;
    expect("3 shortcuts, pixel shift off", "3 shortcuts, pixel shift on");
}

TEST_F(SettingsDifferences, areasAreCountedOnTheSideThatHasThem) {
    local.commands.front().targetSegments.clear();
    CommandStore store(local.commands);
    ASSERT_TRUE(store.addCustomArea(0, 0, 2, 2));
    local.commands = store.commands;
    expect("1 area, 1 area of its own", "1 area, 1 area missing");
    ASSERT_TRUE(store.addCustomArea(0, 0, 3, 3));
    local.commands = store.commands;
    remote.commands.front().visibleInMenuBar = !remote.commands.front().visibleInMenuBar;
    remote.commands.back().visibleInMenuBar = !remote.commands.back().visibleInMenuBar;
    expect("1 area, 1 name or menu entry, 2 areas of its own",
           "1 area, 1 name or menu entry, 2 areas missing");
}

TEST_F(SettingsDifferences, ofEffectsThatAreOnBothTheirSettingsAreSaid) {
    remote.oled.orbitStepInterval = 30;
    remote.oled.jitterTolerance = 2.5;
    remote.oled.idleDimStrength = 0.4;
    remote.oled.idleThreshold = 90;
    expect(
        "pixel shift 2 px every 5 min in pauses, edge jitter 3 px, idle dimming 30 % after 5 min",
        "pixel shift 2 px every 30 s in pauses, edge jitter 2.5 px, idle dimming 40 % after 90 "
        "s");
    remote.oled = local.oled;
    remote.oled.idleDimEnabled = false;
    local.oled.idleDimStrength = 0.1;
    expect("idle dimming on", "idle dimming off");
}

}  // namespace
}  // namespace lumatile
