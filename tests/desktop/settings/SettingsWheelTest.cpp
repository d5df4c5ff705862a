// A real wheel over the controls of the settings.

#include <gtest/gtest.h>

#include <string>

#include "tests/desktop/settings/ProgramDesk.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint8_t wheelUp = 4;
constexpr std::uint8_t wheelDown = 5;

class SettingsWheel : public testing::Test {
protected:
    SettingsWheel() {
        desk.start(R"({"orbitStepInterval":300,"idleDimStrength":0.3})");
        EXPECT_TRUE(desk.openSettings());
        EXPECT_TRUE(desk.click("list item", "OLED Protection"));
        EXPECT_TRUE(desk.tree().waitFor("check box", "Drift windows"));
    }

    int heightOf(const std::string& heading) {
        return desk.tree().extents(*desk.tree().find("label", heading)).y;
    }

    /// Over the middle of a control, which stays where it is on the screen or scrolls away.
    void turnOver(const AccessibleNode& control, std::uint8_t direction) {
        const PixelRect place = desk.tree().extents(control);
        InputDriver& input = desk.desktop().input();
        input.movePointer(place.x + place.width / 2, place.y + place.height / 2);
        input.buttonDown(direction);
        input.buttonUp(direction);
    }

    bool scrolls(const AccessibleNode& control, std::uint8_t direction) {
        const int before = heightOf("Window Orbit");
        turnOver(control, direction);
        return XClient::waitUntil([&] {
            const int now = heightOf("Window Orbit");
            return direction == wheelDown ? now < before : now > before;
        });
    }

    ProgramDesk desk;
};

TEST_F(SettingsWheel, scrollsThePageOverSliderAndChoices) {
    const auto distance = desk.tree().find("slider", "Distance");
    const auto interval = desk.tree().find("combo box", "5 min");
    ASSERT_TRUE(distance && interval);
    EXPECT_TRUE(scrolls(*distance, wheelDown));
    EXPECT_TRUE(scrolls(*interval, wheelUp));
    EXPECT_EQ(desk.tree().value(*distance).front(), 2);
    EXPECT_TRUE(desk.tree().find("combo box", "5 min"));
}

TEST_F(SettingsWheel, changesASliderOnceItWasClickedInto) {
    const auto distance = desk.tree().find("slider", "Distance");
    ASSERT_TRUE(distance);
    ASSERT_TRUE(desk.click("slider", "Distance"));
    ASSERT_TRUE(XClient::waitUntil([&] { return desk.tree().again(*distance).isFocused(); }));
    const double clicked = desk.tree().value(*distance).front();
    const int before = heightOf("Window Orbit");
    turnOver(*distance, clicked > 3 ? wheelDown : wheelUp);
    EXPECT_TRUE(
        XClient::waitUntil([&] { return desk.tree().value(*distance).front() != clicked; }));
    EXPECT_EQ(heightOf("Window Orbit"), before);
}

}  // namespace
}  // namespace lumatile::desktop
