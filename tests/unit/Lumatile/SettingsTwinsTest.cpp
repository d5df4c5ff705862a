// Shortcuts of landscape areas and of their portrait twins, as the settings edit them.

#include <gtest/gtest.h>

#include <algorithm>

#include "Lumatile/SettingsViewModel.h"
#include "commands/BuiltInCommands.h"
#include "commands/CommandStore.h"

namespace lumatile {
namespace {

constexpr std::uint32_t controlOption = ClassicModifier::control | ClassicModifier::option;
constexpr Shortcut controlOptionA{0, controlOption, true};
constexpr Shortcut controlOptionB{11, controlOption, true};
constexpr const char* leftThird = "command.leftThird";

class SettingsTwins : public testing::TestWithParam<Axis> {
protected:
    SettingsTwins() : model(BuiltInCommands::defaults(), OLEDSettings::recommended) {
        model.onChange = [this](const auto&) { ++told; };
    }

    const SnapCommand& area(const char* key, Axis axis) {
        const auto found = std::find_if(
            model.commands().begin(), model.commands().end(),
            [&](const SnapCommand& each) { return each.nameKey == key && each.axis == axis; });
        return *found;
    }

    void select(const char* key, Axis axis) { model.select(area(key, axis).id); }

    bool anyBindingHas(const Shortcut& shortcut) {
        const auto bindings = CommandStore(model.commands()).hotkeyBindings();
        return std::any_of(bindings.begin(), bindings.end(),
                           [&](const SnapCommand& each) { return each.shortcut == shortcut; });
    }

    SettingsViewModel model;
    int told = 0;
};

TEST_P(SettingsTwins, recordingSwitchingAndRemovingActOnBoth) {
    const Shortcut before = *area(leftThird, Axis::horizontal).shortcut;
    select(leftThird, GetParam());
    model.setShortcutEnabled(false);
    EXPECT_FALSE(anyBindingHas(before)) << "not through the twin either";
    EXPECT_EQ(told, 1);
    model.setShortcutEnabled(true);
    EXPECT_TRUE(anyBindingHas(before));
    model.removeShortcut();
    EXPECT_FALSE(anyBindingHas(before));
    EXPECT_EQ(told, 3);
    model.record(controlOptionA);
    EXPECT_EQ(area(leftThird, Axis::horizontal).shortcut, controlOptionA);
    EXPECT_EQ(area(leftThird, Axis::vertical).shortcut, controlOptionA);
    EXPECT_EQ(told, 4);
}

TEST_P(SettingsTwins, whatOneOfThemLostAnotherAreaCanHave) {
    const Shortcut before = *area(leftThird, Axis::horizontal).shortcut;
    select(leftThird, GetParam());
    model.removeShortcut();
    model.addCustomArea();
    model.record(before);
    EXPECT_EQ(model.refusal(), std::nullopt);
    EXPECT_EQ(model.selected()->shortcut, before);
}

TEST_P(SettingsTwins, aTwinThatIsOffWithTheSameKeysFollows) {
    std::vector<SnapCommand> commands = model.commands();
    for (SnapCommand& each : commands) {
        if (each.nameKey == leftThird && each.axis != GetParam()) {
            each.shortcut->enabled = false;
        }
    }
    model.replace(commands, OLEDSettings::recommended);
    select(leftThird, GetParam());
    ASSERT_TRUE(model.sharingTwin(*model.selected()));
    model.removeShortcut();
    EXPECT_EQ(area(leftThird, Axis::horizontal).shortcut, std::nullopt);
    EXPECT_EQ(area(leftThird, Axis::vertical).shortcut, std::nullopt);
}

TEST_P(SettingsTwins, thatDifferHaveEachTheirOwn) {
    std::vector<SnapCommand> commands = model.commands();
    for (SnapCommand& each : commands) {
        if (each.nameKey == leftThird && each.axis != GetParam()) {
            each.shortcut = controlOptionB;
        }
    }
    model.replace(commands, OLEDSettings::recommended);
    select(leftThird, GetParam());
    EXPECT_EQ(model.sharingTwin(*model.selected()), std::nullopt);
    model.record(controlOptionA);
    model.setShortcutEnabled(false);
    model.removeShortcut();
    const Axis other = GetParam() == Axis::horizontal ? Axis::vertical : Axis::horizontal;
    EXPECT_EQ(area(leftThird, GetParam()).shortcut, std::nullopt);
    EXPECT_EQ(area(leftThird, other).shortcut, controlOptionB);
    model.record(controlOptionB);
    EXPECT_EQ(model.refusal(), std::nullopt) << "a twin may have the same";
    EXPECT_TRUE(model.sharingTwin(*model.selected()));
}

INSTANTIATE_TEST_SUITE_P(Axes, SettingsTwins, testing::Values(Axis::horizontal, Axis::vertical),
                         [](const testing::TestParamInfo<Axis>& axis) {
                             return axis.param == Axis::horizontal ? "landscape" : "portrait";
                         });

}  // namespace
}  // namespace lumatile
