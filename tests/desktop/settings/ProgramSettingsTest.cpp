// The settings of the running program: what they tell a screen reader, and what becomes of what is
// done in them with mouse and keyboard.

#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "Lumatile/SyncStatusText.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "commands/BuiltInCommands.h"
#include "onboarding/HostDesktop.h"
#include "onboarding/TipTexts.h"
#include "onboarding/Vocabulary.h"
#include "settings_core/GridEditorLayout.h"
#include "settings_core/SettingsSection.h"
#include "tests/desktop/settings/ProgramDesk.h"
#include "tests/desktop/support/EventWait.h"
#include "tests/desktop/support/StatusBar.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAreArray;
using Texts = std::vector<std::string>;

constexpr const char* everythingOff =
    R"({"orbitEnabled":false,"jitterEnabled":false,"idleDimEnabled":false})";

/// In the words of the desktop that the tests run on.
std::string say(std::string_view text) {
    static const Vocabulary vocabulary = Vocabulary::of(HostDesktop::find("", "Openbox"));
    return vocabulary.apply(text);
}

std::string said(const char* role, std::string_view text) {
    return std::string(role) + ": " + say(text);
}

/// Everything with a meaning that shows, in the order in which it is read, the sidebar left out.
Texts told(const AccessibleTree& tree) {
    constexpr std::array furniture{"filler", "frame", "graphic", "layered pane", "scroll bar"};
    Texts texts;
    bool isInPage = false;
    for (const AccessibleNode& node : tree.showing()) {
        isInPage = isInPage || node.role == "layered pane";
        if (isInPage && (!node.name.empty() || std::find(furniture.begin(), furniture.end(),
                                                         node.role) == furniture.end())) {
            texts.push_back(node.role + ": " + node.name);
        }
    }
    return texts;
}

Texts switchRow(std::string_view text) { return {said("label", text), said("check box", text)}; }

Texts sliderRow(std::string_view text, const std::string& value) {
    return {said("label", text), said("slider", text), "label: " + value};
}

Texts joined(const std::vector<Texts>& parts) {
    Texts all;
    for (const Texts& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Texts group(std::string_view text) { return {said("panel", text), said("label", text)}; }

TEST(ProgramSettings, tellAScreenReaderAllTheirTexts) {
    namespace S = SettingsTexts;
    ProgramDesk desk;
    desk.start();
    ASSERT_TRUE(desk.openSettings());
    const AccessibleTree& tree = desk.tree();
    ASSERT_TRUE(tree.waitFor("check box", say(S::launchAtLogin)));
    EXPECT_TRUE(tree.find("frame", say(S::windowTitle)));
    EXPECT_TRUE(tree.find("list", say(S::sidebar)));
    EXPECT_THAT(
        told(tree),
        ElementsAreArray(joined({
            {said("label", title(SettingsSection::general))},
            switchRow(S::launchAtLogin),
            switchRow(S::dragToSnap),
            switchRow(S::automaticUpdates),
            group(S::windowTiling),
            {said("label", TipTexts::tilingIsOff.text)},
            group(S::sync),
            {said("label", S::shareThrough), said("combo box", S::shareNot),
             said("label", SyncStatusText::lastSynced({}, {})), said("button menu", S::runCommand),
             said("push button", S::checkForUpdates), said("push button", S::quit)},
        })));
    EXPECT_FALSE(tree.find("check box", say(S::launchAtLogin))->isChecked());
    EXPECT_TRUE(tree.find("check box", say(S::dragToSnap))->isChecked());

    ASSERT_TRUE(desk.click("list item", say(title(SettingsSection::oled))));
    ASSERT_TRUE(tree.waitFor("check box", say(S::driftWindows)));
    EXPECT_THAT(
        told(tree),
        ElementsAreArray(joined({
            {said("label", title(SettingsSection::oled)), said("label", TipTexts::protection.text)},
            group(S::windowOrbit),
            switchRow(S::driftWindows),
            sliderRow(S::distance, "2 px"),
            {said("label", S::moveEvery), "combo box: 5 min"},
            switchRow(S::waitForPause),
            {said("label", S::orbitNote)},
            group(S::edgeJitter),
            switchRow(S::varyEdges),
            sliderRow(S::range, "3 px"),
            {said("label", S::jitterNote)},
            group(S::idleDimming),
            switchRow(S::dimWhenIdle),
            sliderRow(S::after, "5 min"),
            sliderRow(S::strength, "30%"),
            {said("label", S::dimNote), said("label", S::statusNote),
             said("push button", S::restoreRecommended)},
        })));
    const auto isOn = [&](std::string_view name) {
        return tree.find("check box", say(name))->isChecked();
    };
    EXPECT_TRUE(isOn(S::driftWindows) && isOn(S::waitForPause) && isOn(S::varyEdges) &&
                isOn(S::dimWhenIdle));
    const auto value = [&](std::string_view name) {
        return tree.value(*tree.find("slider", say(name)));
    };
    EXPECT_EQ(value(S::distance), (std::vector<double>{2, 1, 6, 1}));
    EXPECT_EQ(value(S::range), (std::vector<double>{3, 1, 6, 1}));
    EXPECT_EQ(value(S::after), (std::vector<double>{5, 1, 30, 1}));
    EXPECT_EQ(value(S::strength), (std::vector<double>{30, 10, 80, 5}));
    EXPECT_EQ(tree.labels(*tree.find("combo box", "5 min")), Texts{say(S::moveEvery)});

    // What is done over the bus counts like anything else.
    ASSERT_TRUE(tree.act(*tree.find("check box", say(S::driftWindows)), "Toggle"));
    EXPECT_TRUE(desk.stores(R"(\"orbitEnabled\":false)"));
    EXPECT_FALSE(isOn(S::driftWindows));
    EXPECT_FALSE(tree.find("slider", say(S::distance))->isEnabled());
    ASSERT_TRUE(tree.setValue(*tree.find("slider", say(S::strength)), 54));
    EXPECT_TRUE(desk.stores(R"(\"idleDimStrength\":0.55)"));
    EXPECT_TRUE(tree.find("label", "55%"));

    ASSERT_TRUE(desk.click("list item", say(title(SettingsSection::about))));
    ASSERT_TRUE(tree.waitFor("label", say(S::description)));
    EXPECT_THAT(told(tree), ElementsAreArray(joined({
                                {said("label", S::programName), said("label", S::description),
                                 "label: " + S::version(LUMATILE_VERSION),
                                 said("label", S::licences), said("text", S::licences)},
                            })));
    EXPECT_THAT(tree.text(*tree.find("text", say(S::licences))),
                testing::AllOf(testing::HasSubstr("MIT License"),
                               testing::HasSubstr("SIL OPEN FONT LICENSE")));
    EXPECT_TRUE(LumatileProcess::isClean(desk.program().stop())) << desk.program().output();
    EXPECT_EQ(desk.program().output(), "");
}

TEST(ProgramSettings, tellAScreenReaderOfTheSnapAreas) {
    namespace S = SettingsTexts;
    ProgramDesk desk;
    desk.start(everythingOff);
    ASSERT_TRUE(desk.openSettings());
    const AccessibleTree& tree = desk.tree();
    ASSERT_TRUE(desk.click("list item", say(title(SettingsSection::commands))));
    ASSERT_TRUE(tree.waitFor("label", say(S::selectAnArea)));
    EXPECT_TRUE(tree.find("list", say(S::builtIn)));
    EXPECT_TRUE(tree.find("list item", say(S::noAreas)));
    EXPECT_FALSE(tree.find("push button", say(S::deleteThisArea))->isEnabled());

    ASSERT_TRUE(desk.click("list item", "Left Half"));
    const SnapCommand left = BuiltInCommands::defaults().front();
    ASSERT_TRUE(tree.waitFor("graphic", GridEditorLayout::label(left)));
    for (const std::string& text :
         {std::string("Left Half"), say(S::shortcut), say(S::dragForBuiltIn), say(S::arrowKeys)}) {
        EXPECT_TRUE(tree.find("label", text)) << text;
    }
    EXPECT_EQ(tree.find("push button", say(S::shortcut))->description, "Ctrl+Alt+Left");
    EXPECT_TRUE(tree.find("push button", say(S::recordShortcut)));
    EXPECT_TRUE(tree.find("check box", say(S::shortcutOn))->isChecked());
    EXPECT_TRUE(tree.find("push button", say(S::removeShortcut)));
    EXPECT_FALSE(tree.find("push button", say(S::restoreDefaultArea))->isEnabled());

    ASSERT_TRUE(tree.act(*tree.find("push button", say(S::newArea)), "Press"));
    const std::string label =
        "Snap area grid, 24 by 12 cells. Area: 12 by 6 cells, starting at column 7, row 4. Drag to "
        "change it.";
    ASSERT_TRUE(tree.waitFor("graphic", label));
    EXPECT_TRUE(desk.stores(R"(\"customName\":\"Custom Area\")"));
    EXPECT_TRUE(tree.find("label", say(S::dragForCustom)));
    EXPECT_TRUE(tree.find("label", say(S::name)));
    EXPECT_EQ(tree.text(*tree.find("text", say(S::name))), "Custom Area");
    EXPECT_EQ(tree.find("push button", say(S::shortcut))->description, say(S::clickToRecord));
    EXPECT_TRUE(tree.find("list", say(S::yourAreas)));
    EXPECT_TRUE(tree.find("text", say(S::name))->isFocused());
    EXPECT_TRUE(tree.find("push button", say(S::deleteArea)));
    EXPECT_TRUE(tree.find("push button", say(S::deleteThisArea))->isEnabled());
}

TEST(ProgramSettings, theIconInTheBarFollowsTheSwitches) {
    ProgramDesk desk;
    StatusBar bar(desk.bus());
    desk.start();
    const QString item = bar.waitForItem();
    ASSERT_FALSE(item.isEmpty());
    EXPECT_EQ(bar.toolTip(item), "Lumatile");
    const QByteArray on = bar.picture(item, 22);
    // Started by the signal; its time never comes.
    QTimer newIcon;
    newIcon.setInterval(std::chrono::hours(1));
    ASSERT_TRUE(bar.connect(item, "NewIcon", &newIcon, SLOT(start())));
    ASSERT_TRUE(desk.openSettings());
    ASSERT_TRUE(desk.click("check box", "Snap by dragging windows to screen edges"));
    EXPECT_TRUE(desk.stores("dragToSnapEnabled=false"));
    ASSERT_TRUE(desk.click("list item", "OLED Protection"));
    ASSERT_TRUE(desk.click("check box", "Drift windows"));
    EXPECT_TRUE(desk.stores(R"(\"orbitEnabled\":false)"));
    ASSERT_TRUE(desk.click("check box", "Vary where window edges sit"));
    EXPECT_TRUE(desk.stores(R"(\"jitterEnabled\":false)"));
    ASSERT_TRUE(waitForEvents([&] { return newIcon.isActive(); }));
    EXPECT_EQ(bar.toolTip(item), "Lumatile, protection off");
    EXPECT_NE(bar.picture(item, 22), on);
    ASSERT_TRUE(bar.open(item));
    EXPECT_EQ(bar.menu(item).front().label(), "Pixel shift: off");
    newIcon.stop();
    ASSERT_TRUE(desk.click("check box", "Drift windows"));
    ASSERT_TRUE(waitForEvents([&] { return newIcon.isActive(); }));
    EXPECT_EQ(bar.toolTip(item), "Lumatile");
    EXPECT_EQ(bar.picture(item, 22), on);
}

TEST(ProgramSettings, aRecordedShortcutSnapsAtOnce) {
    ProgramDesk desk;
    desk.start(everythingOff);
    const auto window = desk.desktop().openWindow({});
    ASSERT_TRUE(desk.openSettings());
    ASSERT_TRUE(desk.click("list item", "Snap Areas"));
    ASSERT_TRUE(desk.click("list item", "Left Half"));
    ASSERT_TRUE(desk.click("push button", "Record Shortcut"));
    ASSERT_TRUE(XClient::waitUntil([&] {
        return desk.tree().find("push button", "Shortcut")->description == "Type a shortcut…";
    }));
    InputDriver& input = desk.desktop().input();
    input.press({KeyPosition::leftControl, KeyPosition::leftSuper}, KeyPosition::j);
    ASSERT_TRUE(desk.stores(R"(\"shortcut\":{\"carbonKeyCode\":38,\"carbonModifiers\":4352)"));
    EXPECT_EQ(desk.tree().find("push button", "Shortcut")->description, "Ctrl+Super+J");
    window->activate();
    input.press({KeyPosition::leftControl, KeyPosition::leftSuper}, KeyPosition::j);
    EXPECT_TRUE(XClient::waitUntil([&] {
        return window->frame() == PixelRect{0, 0, 960, 1080};
    })) << window->frame();
}

TEST(ProgramSettings, recordingEndsWhenAnotherWindowIsClicked) {
    ProgramDesk desk;
    desk.start(everythingOff);
    TestWindow::Options place;
    place.area = {20, 40, 200, 200};
    const auto window = desk.desktop().openWindow(place);
    ASSERT_TRUE(desk.openSettings());
    ASSERT_TRUE(desk.click("list item", "Snap Areas"));
    ASSERT_TRUE(desk.click("list item", "Left Half"));
    ASSERT_TRUE(desk.click("push button", "Record Shortcut"));
    const auto shown = [&] { return desk.tree().find("push button", "Shortcut")->description; };
    ASSERT_TRUE(XClient::waitUntil([&] { return shown() == "Type a shortcut…"; }));
    InputDriver& input = desk.desktop().input();
    input.movePointer(120, 140);
    input.buttonDown();
    input.buttonUp();
    ASSERT_TRUE(XClient::waitUntil([&] { return window->isActive(); }));
    EXPECT_TRUE(XClient::waitUntil([&] { return shown() == "Ctrl+Alt+Left"; })) << shown();
    // And our keys work again.
    input.press({KeyPosition::leftControl, KeyPosition::leftAlt}, KeyPosition::left);
    EXPECT_TRUE(XClient::waitUntil([&] {
        return window->frame() == PixelRect{0, 0, 960, 1080};
    })) << window->frame();
}

TEST(ProgramSettings, aCommandChosenThereIsForTheWindowBehind) {
    ProgramDesk desk;
    desk.start(everythingOff);
    const auto window = desk.desktop().openWindow({});
    ASSERT_TRUE(desk.openSettings());
    const auto settings = desk.tree().find("frame", "Lumatile Settings");
    ASSERT_TRUE(settings);
    const PixelRect before = desk.tree().extents(*settings);
    EXPECT_EQ(before.width, 920);
    EXPECT_EQ(before.height, 600);
    // The frame around it may be wider on one side.
    EXPECT_NEAR(before.x + before.width / 2.0, 960, 5);
    EXPECT_NEAR(before.y + before.height / 2.0, 540, 30);
    // Flags, then from the sixth item on the smallest size.
    const auto hints =
        desk.desktop().observer().cardinals(desk.settingsWindow(), "WM_NORMAL_HINTS");
    ASSERT_GE(hints.size(), 7U);
    EXPECT_EQ(hints[5], 860U);
    EXPECT_EQ(hints[6], 540U);
    ASSERT_TRUE(desk.click("button menu", "Run a Command"));
    ASSERT_TRUE(desk.showsMenu());
    InputDriver& input = desk.desktop().input();
    input.press({}, KeyPosition::down);
    input.press({}, KeyPosition::down);
    input.press({}, KeyPosition::enter);
    EXPECT_TRUE(XClient::waitUntil([&] {
        return window->frame() == PixelRect{960, 0, 960, 1080};
    })) << window->frame();
    EXPECT_EQ(desk.desktop().observer().activeWindow(), desk.settingsWindow());
    EXPECT_EQ(desk.tree().extents(*settings), before);
}

TEST(ProgramSettings, areWorkedByTheKeyboardAlone) {
    ProgramDesk desk;
    desk.start(everythingOff);
    ASSERT_TRUE(desk.openSettings());
    ASSERT_TRUE(desk.tree().waitFor("check box", "Snap by dragging windows to screen edges"));
    InputDriver& input = desk.desktop().input();
    // Down the sidebar, and by the letter of a control.
    input.press({}, KeyPosition::down);
    input.press({}, KeyPosition::down);
    ASSERT_TRUE(desk.tree().waitFor("check box", "Drift windows"));
    input.press({KeyPosition::leftAlt}, KeyPosition::d);
    EXPECT_TRUE(desk.stores(R"(\"orbitEnabled\":true)"));
    input.press({KeyPosition::leftControl}, KeyPosition::w);
    ASSERT_TRUE(XClient::waitUntil([&] { return desk.settingsWindow() == XCB_WINDOW_NONE; }));
    ASSERT_TRUE(desk.openSettings());
    EXPECT_TRUE(desk.tree().waitFor("check box", "Drift windows")) << "the section shown last";
    input.press({KeyPosition::leftControl}, KeyPosition::q);
    EXPECT_EQ(desk.program().wait(), (ChildProcess::Exit{0, 0})) << desk.program().output();
    EXPECT_EQ(desk.program().output(), "");
}

/// A window that says when the user last typed in it, as those of toolkits do.
class TypedInWindow : public TestWindow {
public:
    explicit TypedInWindow(const std::string& display) : TestWindow(display, Options()) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                   XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_KEY_PRESS;
        xcb_change_window_attributes(connection(), id(), XCB_CW_EVENT_MASK, &mask);
        roundTrip();
    }

    int typed = 0;

protected:
    void handle(const xcb_generic_event_t& event) override {
        if ((event.response_type & 0x7f) == XCB_KEY_PRESS) {
            ++typed;
            setCardinals(id(), "_NET_WM_USER_TIME", XCB_ATOM_CARDINAL,
                         {reinterpret_cast<const xcb_key_press_event_t&>(event).time});
        }
        TestWindow::handle(event);
    }
};

class SettingsInFront : public testing::TestWithParam<WindowManager::Kind> {};

TEST_P(SettingsInFront, comeBeforeTheWindowThatTheUserWorksIn) {
    ProgramDesk desk(GetParam());
    desk.start(everythingOff);
    const auto window = desk.desktop().openWindow({});
    desk.desktop().input().press({}, KeyPosition::a);
    EXPECT_TRUE(desk.openSettings());
    window->activate();
    desk.desktop().input().press({}, KeyPosition::a);
    EXPECT_TRUE(desk.openSettings()) << "the second time too";
    constexpr std::uint32_t iconic = 3;
    desk.desktop().observer().ask(desk.settingsWindow(), "WM_CHANGE_STATE", {iconic});
    ASSERT_TRUE(XClient::waitUntil(
        [&] { return desk.desktop().observer().activeWindow() != desk.settingsWindow(); }));
    EXPECT_TRUE(desk.openSettings()) << "minimized too";
}

TEST_P(SettingsInFront, comeBeforeAWindowThatHasJustBeenTypedIn) {
    ProgramDesk desk(GetParam());
    desk.start(everythingOff);
    TypedInWindow window(desk.desktop().display());
    window.mapActive();
    for (int time = 1; time <= 2; ++time) {
        desk.desktop().input().press({}, KeyPosition::a);
        ASSERT_TRUE(XClient::waitUntil([&] { return window.typed == time; }));
        waitForWindowManager(window);
        EXPECT_TRUE(desk.openSettings()) << time;
        window.activate();
    }
}

INSTANTIATE_TEST_SUITE_P(Desktop, SettingsInFront, testing::ValuesIn(WindowManager::kinds),
                         [](const testing::TestParamInfo<WindowManager::Kind>& kind) {
                             return toString(kind.param);
                         });

}  // namespace
}  // namespace lumatile::desktop
