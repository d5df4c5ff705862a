// The settings window on a real desktop: real keys, real scales.

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/desktop/settings/SettingsDesk.h"
#include "tests/desktop/support/KeyPosition.h"

namespace lumatile::desktop {
namespace {

class SettingsOnDesktop : public testing::TestWithParam<WindowManager::Kind> {};

WindowManager::Options withItsOwnBindings() {
    WindowManager::Options options;
    options.ownBindings = true;
    return options;
}

TEST_P(SettingsOnDesktop, theRecorderGetsKeysThatTheDesktopHasTaken) {
    SettingsDesk desk(GetParam(), withItsOwnBindings());
    desk.tell("section commands");
    desk.tell("select 0");
    ASSERT_TRUE(desk.click("Record Shortcut"));
    ASSERT_TRUE(desk.hears("recording 1"));
    // Every desktop goes from window to window by it.
    desk.desktop().input().press({KeyPosition::leftAlt}, KeyPosition::tab);
    EXPECT_TRUE(desk.hears("recording 0"));
    EXPECT_TRUE(desk.hears("shortcut 48 2048"));
}

TEST_P(SettingsOnDesktop, theRecorderTellsPhysicalKeys) {
    SettingsDesk desk(GetParam(), {});
    desk.tell("section commands");
    desk.tell("select 0");
    ASSERT_TRUE(desk.click("Record Shortcut"));
    ASSERT_TRUE(desk.hears("recording 1"));
    desk.desktop().input().press(
        {KeyPosition::leftControl, KeyPosition::leftSuper, KeyPosition::leftShift}, KeyPosition::j);
    EXPECT_TRUE(desk.hears("shortcut 38 4864"));
}

TEST_P(SettingsOnDesktop, theFrameOfTheRecorderIsReachedByTabAndBeginsByReturn) {
    SettingsDesk desk(GetParam(), {});
    InputDriver& input = desk.desktop().input();
    desk.tell("section commands");
    desk.tell("select 0");
    // The switch is what follows the frame with the field and its cross.
    ASSERT_TRUE(desk.click("Shortcut is on"));
    ASSERT_TRUE(desk.hears("shortcut 123 6144 off"));
    input.press({KeyPosition::leftShift}, KeyPosition::tab);
    input.press({KeyPosition::leftShift}, KeyPosition::tab);
    input.press({}, KeyPosition::enter);
    ASSERT_TRUE(desk.hears("recording 1"));
    input.press({}, KeyPosition::escape);
    ASSERT_TRUE(desk.hears("recording 0"));
    // The frame has the keyboard again.
    input.press({}, KeyPosition::space);
    ASSERT_TRUE(desk.hears("recording 1"));
    input.press({KeyPosition::leftControl, KeyPosition::leftAlt}, KeyPosition::j);
    EXPECT_TRUE(desk.hears("recording 0"));
}

TEST_P(SettingsOnDesktop, aKeyWithoutACodeEndsTheRecordingWithAWord) {
    SettingsDesk desk(GetParam(), {});
    desk.tell("section commands");
    desk.tell("select 0");
    ASSERT_TRUE(desk.click("Record Shortcut"));
    ASSERT_TRUE(desk.hears("recording 1"));
    desk.desktop().input().press({KeyPosition::leftControl}, KeyPosition::printScreen);
    ASSERT_TRUE(desk.hears("recording 0"));
    EXPECT_TRUE(desk.hears("refused, no code"));
}

INSTANTIATE_TEST_SUITE_P(Desktop, SettingsOnDesktop, testing::ValuesIn(WindowManager::kinds),
                         [](const testing::TestParamInfo<WindowManager::Kind>& kind) {
                             return toString(kind.param);
                         });

struct Scale {
    const char* name;
    Environment variables;
    double factor;
};

/// A state of the page of snap areas, and how the program is told to show it.
struct AreaPicture {
    const char* name;
    std::vector<std::string> orders;
};

const std::vector<AreaPicture> areaPictures{
    {"none", {}},
    {"portrait", {"select 27"}},
    {"refused", {"refuse 2 3 15", "select 2"}},
    {"own", {"add", "add"}},
};

class SettingsAtScale : public testing::TestWithParam<Scale> {};

TEST_P(SettingsAtScale, everySectionIsDrawnWhole) {
    WindowManager::Options options;
    SettingsDesk desk(WindowManager::Kind::openbox, options, GetParam().variables);
    std::filesystem::create_directories(LUMATILE_PICTURES);
    for (const std::string section : {"general", "commands", "oled", "about"}) {
        const std::string file = std::string(LUMATILE_PICTURES) + "/settings-" + section + '-' +
                                 GetParam().name + ".png";
        std::filesystem::remove(file);
        desk.tell("section " + section);
        if (section == "commands") {
            desk.tell("select 8");
        }
        desk.tell("picture " + file);
        ASSERT_TRUE(desk.hears("saved"));
        const QImage picture(QString::fromStdString(file));
        ASSERT_FALSE(picture.isNull());
        EXPECT_GE(picture.width(), 860 * GetParam().factor);
        EXPECT_GE(picture.height(), 540 * GetParam().factor);
    }
}

TEST_P(SettingsAtScale, theRecorderHasItsSizeInTheSmallestWindow) {
    SettingsDesk desk(WindowManager::Kind::openbox, {}, GetParam().variables);
    desk.tell("section commands");
    desk.tell("least");
    for (const AreaPicture& each : areaPictures) {
        for (const std::string& order : each.orders) {
            desk.tell(order);
        }
        const std::string file =
            std::string(LUMATILE_PICTURES) + "/areas-" + each.name + '-' + GetParam().name + ".png";
        desk.tell("picture " + file);
        ASSERT_TRUE(desk.hears("saved"));
        if (!each.orders.empty()) {
            desk.tell("field");
            EXPECT_TRUE(desk.hears("field 180 24")) << each.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, SettingsAtScale,
                         testing::Values(Scale{"1", {}, 1},
                                         Scale{"1.5", {{"QT_SCALE_FACTOR", "1.5"}}, 1.5},
                                         Scale{"2", {{"QT_SCALE_FACTOR", "2"}}, 2},
                                         Scale{"large-text", {{"QT_FONT_DPI", "144"}}, 1}),
                         [](const testing::TestParamInfo<Scale>& scale) {
                             std::string name = scale.param.name;
                             std::replace_if(
                                 name.begin(), name.end(),
                                 [](char letter) { return letter == '.' || letter == '-'; }, '_');
                             return "scale_" + name;
                         });

}  // namespace
}  // namespace lumatile::desktop
