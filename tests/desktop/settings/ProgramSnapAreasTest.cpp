// The snap areas of the running program's settings, worked with a real mouse and real keys.

#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "Lumatile/settings/SettingsTexts.h"
#include "commands/BuiltInCommands.h"
#include "settings_core/GridEditorLayout.h"
#include "tests/desktop/settings/ProgramDesk.h"
#include "tests/desktop/support/KeyPosition.h"
#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {
namespace {

namespace S = SettingsTexts;

std::string text(std::string_view view) { return std::string(view); }

class ProgramSnapAreas : public testing::Test {
protected:
    void open() {
        desk.start(LumatileProcess::Settings().oledSettings);
        ASSERT_TRUE(desk.openSettings());
        ASSERT_TRUE(desk.click("list item", "Snap Areas"));
        ASSERT_TRUE(desk.tree().waitFor("label", text(S::selectAnArea)));
    }

    bool recordsNow() {
        return XClient::waitUntil([&] {
            const auto field = desk.tree().find("push button", text(S::shortcut));
            return field && field->description == S::typeAShortcut;
        });
    }

    ProgramDesk desk;
    InputDriver& input = desk.desktop().input();
};

TEST_F(ProgramSnapAreas, aShortcutThatWasRemovedWorksForAnotherArea) {
    const auto window = desk.desktop().openWindow({});
    open();
    ASSERT_TRUE(desk.click("list item", "Left Third"));
    ASSERT_TRUE(desk.tree().waitFor("label", "Shared with Top Third (Portrait)"));
    ASSERT_TRUE(desk.click("push button", text(S::removeShortcut)));
    ASSERT_TRUE(XClient::waitUntil(
        [&] { return !desk.tree().find("push button", text(S::removeShortcut)).has_value(); }));
    // A new area can be named at once.
    ASSERT_TRUE(desk.click("push button", text(S::newArea)));
    const auto name = desk.tree().waitFor("text", text(S::name));
    ASSERT_TRUE(name);
    ASSERT_TRUE(XClient::waitUntil([&] { return desk.tree().again(*name).isFocused(); }));
    input.press({}, KeyPosition::m);
    input.press({}, KeyPosition::enter);
    ASSERT_TRUE(desk.stores(R"(\"customName\":\"m\")"));
    ASSERT_TRUE(desk.click("push button", text(S::recordShortcut)));
    ASSERT_TRUE(recordsNow());
    input.press({KeyPosition::leftControl, KeyPosition::leftAlt}, KeyPosition::d);
    ASSERT_TRUE(XClient::waitUntil([&] {
        return desk.tree().find("push button", text(S::shortcut))->description == "Ctrl+Alt+D";
    }));
    window->activate();
    input.press({KeyPosition::leftControl, KeyPosition::leftAlt}, KeyPosition::d);
    EXPECT_TRUE(XClient::waitUntil([&] {
        return window->frame() == PixelRect{480, 270, 960, 540};
    })) << window->frame();
}

TEST_F(ProgramSnapAreas, aDrawingThatIsCutShortIsNeitherShownNorStored) {
    open();
    ASSERT_TRUE(desk.click("list item", "Left Half"));
    const std::string stored = GridEditorLayout::label(BuiltInCommands::defaults().front());
    const auto grid = desk.tree().waitFor("graphic", stored);
    ASSERT_TRUE(grid);
    const PixelRect place = desk.tree().extents(*grid);
    input.movePointer(place.x + place.width / 8, place.y + place.height / 8);
    input.buttonDown();
    input.movePointer(place.x + place.width / 3, place.y + place.height / 3);
    ASSERT_TRUE(XClient::waitUntil([&] { return desk.tree().again(*grid).name != stored; }));
    // By the keyboard, while the button is held.
    input.press({KeyPosition::leftControl}, KeyPosition::w);
    ASSERT_TRUE(XClient::waitUntil([&] { return desk.settingsWindow() == XCB_WINDOW_NONE; }));
    input.movePointer(place.x + place.width / 2, place.y + place.height / 2);
    input.buttonUp();
    ASSERT_TRUE(desk.openSettings());
    EXPECT_TRUE(desk.tree().waitFor("graphic", stored));
    EXPECT_FALSE(desk.tree().find("push button", text(S::restoreDefaultArea))->isEnabled());
    EXPECT_EQ(readFile(desk.program().settingsFile()).find("commands="), std::string::npos)
        << "nothing was edited";
}

TEST_F(ProgramSnapAreas, aClickOnTheSentenceLeadsToTheFirstRefusedArea) {
    XClient other(desk.desktop().display());
    constexpr std::uint16_t controlAndAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    for (const std::uint8_t key : {KeyPosition::d, KeyPosition::f}) {
        xcb_grab_key(other.connection(), 0, other.root(), controlAndAlt, key, XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
    }
    other.roundTrip();
    open();
    const auto sentence = desk.tree().waitFor("link", S::refusedShortcuts(2));
    ASSERT_TRUE(sentence);
    ASSERT_TRUE(desk.click("link", S::refusedShortcuts(2)));
    EXPECT_TRUE(desk.tree().waitFor("label", "Left Third"));
    EXPECT_TRUE(desk.tree().waitFor("label", text(S::refusedHere)));
    const auto row = desk.tree().find("list item", "Left Third");
    ASSERT_TRUE(row);
    EXPECT_EQ(row->description, S::refusedHere);
}

/// The menus of the settings, each by the role and the name of what opens it.
struct MenuButton {
    const char* section;
    const char* role;
    const char* name;
};

class ProgramMenus : public ProgramSnapAreas, public testing::WithParamInterface<MenuButton> {};

TEST_P(ProgramMenus, hangFromTheirButton) {
    desk.start();
    ASSERT_TRUE(desk.openSettings());
    ASSERT_TRUE(desk.click("list item", GetParam().section));
    const auto button = desk.tree().waitFor(GetParam().role, GetParam().name);
    ASSERT_TRUE(button);
    ASSERT_TRUE(desk.click(GetParam().role, GetParam().name));
    ASSERT_TRUE(desk.showsMenu());
    const PixelRect place = desk.tree().extents(*button);
    DesktopObserver& observer = desk.desktop().observer();
    const PixelRect menu = clientArea(observer, observer.unmanagedWindowOf(desk.program().pid()))
                               .value_or(PixelRect());
    // Their frames may share a line.
    const bool isBelow = std::abs(menu.y - (place.y + place.height)) <= 1;
    const bool isAbove = std::abs(menu.y + menu.height - place.y) <= 1;
    EXPECT_TRUE(isBelow || isAbove) << menu << " of " << place;
    EXPECT_EQ(menu.x, place.x) << menu << " of " << place;
    EXPECT_GE(menu.y, 0) << menu;
    EXPECT_LE(menu.y + menu.height, 1080) << menu;
}

INSTANTIATE_TEST_SUITE_P(Desktop, ProgramMenus,
                         testing::Values(MenuButton{"General", "button menu", "Run a Command"},
                                         MenuButton{"General", "combo box", "None"},
                                         MenuButton{"OLED Protection", "combo box", "5 min"}),
                         [](const testing::TestParamInfo<MenuButton>& button) {
                             std::string name = button.param.name;
                             std::erase(name, ' ');
                             return name;
                         });

}  // namespace
}  // namespace lumatile::desktop
