// What the log says of shortcuts that other programs have, on a whole desktop.

#include "Lumatile/RefusedShortcutLog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Lumatile/SettingsViewModel.h"
#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

using Lines = std::vector<std::string>;

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr KeyCombination left{123, controlOption};
constexpr KeyCombination right{124, controlOption};
constexpr KeyCombination letterA{0, controlOption};

const std::string refused = "Lumatile: shortcuts that belong to other programs here: ";
const std::string freed = "Lumatile: shortcuts that other programs have let go and that work now: ";

struct DesktopWithPlayer : DesktopWithConductor {
    DesktopWithPlayer() {
        hotKeys.take(left, "Rewind of Player");
        hotKeys.take(right);
        start();
        conductor->openSettings();
        model().select(model().commands().front().id);
    }

    SettingsViewModel& model() { return *settingsWindow.model; }
    void record(const KeyCombination& keys) {
        model().record({keys.keyCode, keys.modifiers, true});
    }
};

TEST(RefusedShortcutLog, namesWhatIsRefusedOnce) {
    DesktopWithPlayer desk;
    const Lines start{refused + "Ctrl+Alt+Left (Rewind of Player), Ctrl+Alt+Right"};
    EXPECT_EQ(desk.log.lines(), start);
    desk.hotKeys.tellAvailability();
    desk.model().setRecording(true);
    desk.model().setRecording(false);
    desk.conductor->stopFeatures();
    desk.conductor->startFeatures();
    // Somebody else has it now, which makes no difference to the user.
    desk.hotKeys.take(left, "Back of Browser");
    desk.hotKeys.tellAvailability();
    EXPECT_EQ(desk.log.lines(), start);
}

TEST(RefusedShortcutLog, namesWhatIsRefusedLaterAndWhatIsHadAtLast) {
    DesktopWithPlayer desk;
    Lines lines = desk.log.lines();
    desk.hotKeys.release(left);
    desk.hotKeys.tellAvailability();
    lines.push_back(freed + "Ctrl+Alt+Left");
    EXPECT_EQ(desk.log.lines(), lines);
    desk.hotKeys.tellAvailability();
    EXPECT_EQ(desk.log.lines(), lines);

    // The user chooses one that somebody has, and one that was free is lost meanwhile.
    desk.hotKeys.take(letterA, "Play of Player");
    desk.hotKeys.take({126, controlOption}, "Louder of Player");
    desk.record(letterA);
    lines.push_back(refused + "Ctrl+Alt+A (Play of Player), Ctrl+Alt+Up (Louder of Player)");
    EXPECT_EQ(desk.log.lines(), lines);

    // One comes and others go in one round.
    desk.hotKeys.release(right);
    desk.hotKeys.release({126, controlOption});
    desk.hotKeys.take({125, controlOption});
    desk.hotKeys.tellAvailability();
    lines.push_back(refused + "Ctrl+Alt+Down");
    lines.push_back(freed + "Ctrl+Alt+Right, Ctrl+Alt+Up");
    EXPECT_EQ(desk.log.lines(), lines);
}

TEST(RefusedShortcutLog, isSilentAboutWhatIsNotWantedAnyMore) {
    DesktopWithPlayer desk;
    Lines lines = desk.log.lines();
    desk.record(letterA);
    EXPECT_EQ(desk.log.lines(), lines);
    desk.hotKeys.release(left);
    desk.hotKeys.tellAvailability();
    EXPECT_EQ(desk.log.lines(), lines);
    desk.hotKeys.take(left);
    desk.record(left);
    lines.push_back(refused + "Ctrl+Alt+Left");
    EXPECT_EQ(desk.log.lines(), lines) << "wanted anew";
}

TEST(RefusedShortcutLog, namesTheKeysAsTheLayoutDoes) {
    DesktopWithPlayer desk;
    desk.hotKeys.take(letterA);
    desk.keyCodes.print(letterA.keyCode, "Q");
    desk.record(letterA);
    EXPECT_EQ(desk.log.lines().back(), refused + "Ctrl+Alt+Q");
}

}  // namespace
}  // namespace lumatile
