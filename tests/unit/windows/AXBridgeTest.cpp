#include "windows/AXBridge.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

class AXBridgeTest : public testing::Test {
protected:
    AXElementKey keyOf(WindowID id) { return {SimulatedAccessibility::element(id)}; }

    SimulatedDesktop desktop;
    AXBridge bridge{desktop.accessibility};
    ApplicationID editor = desktop.launch({.pid = 1});
    ApplicationID browser = desktop.launch({.pid = 2});
};

TEST_F(AXBridgeTest, trustIsThePlatformsAnswer) {
    EXPECT_TRUE(bridge.isTrusted(false));
    desktop.accessibility.setTrusted(false);
    EXPECT_FALSE(bridge.isTrusted(false));
    EXPECT_EQ(desktop.accessibility.promptsShown(), 0U);
    EXPECT_FALSE(bridge.isTrusted(true));
    EXPECT_EQ(desktop.accessibility.promptsShown(), 1U);
}

TEST_F(AXBridgeTest, theFocusedWindowIsThatOfTheFocusedApplication) {
    EXPECT_EQ(bridge.focusedWindow(), nullptr);
    const WindowID first = desktop.open(editor, Rect{0, 0, 100, 100});
    const WindowID second = desktop.open(browser, Rect{50, 50, 100, 100});
    ASSERT_NE(bridge.focusedWindow(), nullptr);
    EXPECT_EQ(bridge.focusedWindow()->key(), keyOf(second));
    desktop.programs.focus(first);
    EXPECT_EQ(bridge.focusedWindow()->key(), keyOf(first));
    desktop.programs.focusNothing();
    EXPECT_EQ(bridge.focusedWindow(), nullptr);
}

TEST_F(AXBridgeTest, withoutAReadableFocusThereIsNoFocusedWindow) {
    desktop.open(editor, Rect{0, 0, 100, 100});
    desktop.accessibility.systemWideFaults.unreadable = {"AXFocusedApplication"};
    EXPECT_EQ(bridge.focusedWindow(), nullptr);
    desktop.accessibility.systemWideFaults = {};
    desktop.programs.find(editor)->faults.unreadable = {"AXFocusedWindow"};
    EXPECT_EQ(bridge.focusedWindow(), nullptr);
}

TEST_F(AXBridgeTest, anApplicationWithoutFocusedWindowGivesItsMainWindow) {
    const WindowID window = desktop.open(editor, Rect{0, 0, 100, 100});
    desktop.programs.find(editor)->faults.unreadable = {"AXFocusedWindow"};
    ASSERT_NE(bridge.windowOfApplication(1), nullptr);
    EXPECT_EQ(bridge.windowOfApplication(1)->key(), keyOf(window));
    desktop.programs.find(editor)->faults.unreadable.insert("AXMainWindow");
    EXPECT_EQ(bridge.windowOfApplication(1), nullptr);
}

TEST_F(AXBridgeTest, aFocusedWindowThatIsNoElementCountsAsNone) {
    const WindowID window = desktop.open(editor, Rect{0, 0, 100, 100});
    desktop.programs.find(editor)->faults.answers.insert_or_assign(
        "AXFocusedWindow", AttributeValue(std::string("what?")));
    ASSERT_NE(bridge.windowOfApplication(1), nullptr);
    EXPECT_EQ(bridge.windowOfApplication(1)->key(), keyOf(window));
    EXPECT_EQ(bridge.focusedWindow(), nullptr);
}

TEST_F(AXBridgeTest, anUnknownProcessHasNoWindow) {
    EXPECT_EQ(bridge.windowOfApplication(4711), nullptr);
}

/// Parts nested in one another, the last `depth` levels below the window.
SimulatedWindowTraits nested(int depth) {
    SimulatedWindowTraits traits;
    traits.frame = {100, 100, 400, 300};
    for (int level = 0; level < depth; ++level) {
        SimulatedPart part;
        part.frame = {10, 10, 50, 50};
        if (level > 0) {
            part.parent = static_cast<std::size_t>(level - 1);
        }
        traits.parts.push_back(part);
    }
    return traits;
}

TEST_F(AXBridgeTest, overAButtonTheWindowAtThePointIsTheEnclosingOne) {
    const WindowID window = desktop.open(editor, nested(1));
    ASSERT_NE(bridge.windowAt({120, 120}), nullptr);
    EXPECT_EQ(bridge.windowAt({120, 120})->key(), keyOf(window));
    EXPECT_EQ(bridge.windowAt({450, 350})->key(), keyOf(window));
    EXPECT_EQ(bridge.windowAt({5, 5}), nullptr);
}

TEST_F(AXBridgeTest, elevenLevelsAreClimbedAndNotTwelve) {
    const WindowID window = desktop.open(editor, nested(11));
    ASSERT_NE(bridge.windowAt({120, 120}), nullptr);
    EXPECT_EQ(bridge.windowAt({120, 120})->key(), keyOf(window));
    desktop.programs.close(window);
    desktop.open(editor, nested(12));
    EXPECT_EQ(bridge.windowAt({120, 120}), nullptr);
}

TEST_F(AXBridgeTest, aBrokenParentChainEndsTheSearch) {
    const WindowID window = desktop.open(editor, nested(3));
    desktop.programs.find(window)->faults.answers.insert_or_assign(
        "AXRole", AttributeValue(std::string("AXUnknown")));
    EXPECT_EQ(bridge.windowAt({120, 120}), nullptr);
}

struct SnappableCase {
    const char* name;
    std::function<void(SimulatedWindow&)> change;
    bool expected;
};

TEST_F(AXBridgeTest, onlyOrdinaryMovableWindowsAreSnappable) {
    const std::vector<SnappableCase> cases = {
        {"standard window", [](SimulatedWindow&) {}, true},
        {"dialog", [](SimulatedWindow& w) { w.traits.subrole = "AXDialog"; }, false},
        {"floating palette", [](SimulatedWindow& w) { w.traits.subrole = "AXFloatingWindow"; },
         false},
        {"no window", [](SimulatedWindow& w) { w.traits.role = "AXGroup"; }, false},
        {"minimized", [](SimulatedWindow& w) { w.traits.isMinimized = true; }, false},
        {"full screen", [](SimulatedWindow& w) { w.traits.isFullScreen = true; }, false},
        {"not movable", [](SimulatedWindow& w) { w.traits.isMovable = false; }, false},
        {"maximized", [](SimulatedWindow& w) { w.traits.isMaximized = true; }, false},
        {"role unreadable", [](SimulatedWindow& w) { w.faults.unreadable = {"AXRole"}; }, false},
        {"subrole unreadable", [](SimulatedWindow& w) { w.faults.unreadable = {"AXSubrole"}; },
         false},
        {"position unreadable", [](SimulatedWindow& w) { w.faults.unreadable = {"AXPosition"}; },
         false},
        // A boolean that cannot be read is not true.
        {"minimized unreadable", [](SimulatedWindow& w) { w.faults.unreadable = {"AXMinimized"}; },
         true},
        {"full screen unreadable",
         [](SimulatedWindow& w) { w.faults.unreadable = {"AXFullScreen"}; }, true},
        {"minimized as a number",
         [](SimulatedWindow& w) {
             w.faults.answers.insert_or_assign("AXMinimized", AttributeValue(1.0));
         },
         false},
    };
    for (const SnappableCase& each : cases) {
        const WindowID window = desktop.open(editor, Rect{0, 0, 100, 100});
        each.change(*desktop.programs.find(window));
        EXPECT_EQ(bridge.isSnappable(SimulatedAccessibility::element(window)), each.expected)
            << each.name;
        desktop.programs.close(window);
    }
}

TEST_F(AXBridgeTest, theWindowsOfApplicationsComeInTheOrderOfTheProcesses) {
    const WindowID a = desktop.open(editor, Rect{0, 0, 100, 100});
    const WindowID b = desktop.open(browser, Rect{0, 0, 100, 100});
    SimulatedWindowTraits dialogTraits;
    dialogTraits.frame = {0, 0, 50, 50};
    dialogTraits.subrole = "AXDialog";
    const WindowID dialog = desktop.open(editor, dialogTraits);
    ASSERT_TRUE(desktop.isOpen(dialog));

    std::vector<AXElementKey> keys;
    for (const auto& window : bridge.windowsOfApplications({2, 4711, 1})) {
        keys.push_back(window->key());
    }
    EXPECT_EQ(keys, (std::vector<AXElementKey>{keyOf(b), keyOf(a)}));
}

TEST_F(AXBridgeTest, aHungApplicationCostsItsTimeOutAndTheOthersAreStillFound) {
    desktop.open(editor, Rect{0, 0, 100, 100});
    const WindowID b = desktop.open(browser, Rect{0, 0, 100, 100});
    desktop.programs.find(editor)->isHung = true;
    const double before = desktop.runLoop.now();
    const auto windows = bridge.windowsOfApplications({1, 2});
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows.front()->key(), keyOf(b));
    EXPECT_LE(desktop.runLoop.now() - before, 0.25 + 1e-6);
    EXPECT_GT(desktop.runLoop.now() - before, 0);
}

}  // namespace
}  // namespace lumatile
