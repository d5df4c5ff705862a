#include "windows/AXWindow.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"
#include "windows/AXBridge.h"

namespace lumatile {
namespace {

class AXWindowTest : public testing::Test {
protected:
    AXWindow window() { return {desktop.accessibility, SimulatedAccessibility::element(id)}; }

    std::vector<std::string> windowTraffic() { return desktop.traffic.texts(id); }

    SimulatedFaults& faults() { return desktop.programs.find(id)->faults; }

    SimulatedDesktop desktop;
    ApplicationID application = desktop.launch({.pid = 42});
    WindowID id = desktop.open(application, Rect{100, 100, 400, 300});
};

TEST_F(AXWindowTest, settingAFrameWritesPositionSizeAndPositionAgain) {
    desktop.traffic.clear();
    window().setFrame({0, 0, 960, 1080});
    EXPECT_EQ(windowTraffic(), (std::vector<std::string>{"pid", "write AXPosition", "write AXSize",
                                                         "write AXPosition"}));
    EXPECT_EQ(desktop.seen(id), (Rect{0, 0, 960, 1080}));
}

TEST_F(AXWindowTest, theWritesOfAFrameBelongTogetherAndNothingElseDoes) {
    desktop.programs.find(application)->traits.enhancedUserInterface = true;
    const Element element = SimulatedAccessibility::element(id);
    std::vector<std::pair<std::string, bool>> joined;
    const auto note = [&](std::string_view attribute, std::size_t nth) {
        desktop.traffic.before(AccessKind::write, attribute, nth,
                               [&joined, &element, this, name = std::string(attribute)] {
                                   const Element& now = desktop.accessibility.joinedElement();
                                   joined.emplace_back(name, now && now->equals(*element));
                               });
    };
    note("AXEnhancedUserInterface", 1);
    note("AXPosition", 1);
    note("AXSize", 1);
    note("AXPosition", 2);
    note("AXEnhancedUserInterface", 2);
    window().setFrame({0, 0, 960, 1080});
    EXPECT_EQ(joined,
              (std::vector<std::pair<std::string, bool>>{{"AXEnhancedUserInterface", false},
                                                         {"AXPosition", true},
                                                         {"AXSize", true},
                                                         {"AXPosition", true},
                                                         {"AXEnhancedUserInterface", false}}));
    EXPECT_FALSE(desktop.accessibility.joinedElement());
}

TEST_F(AXWindowTest, settingAPositionIsASingleWriteAndKeepsTheSize) {
    desktop.traffic.clear();
    window().setPosition({7, 8});
    EXPECT_EQ(windowTraffic(), (std::vector<std::string>{"write AXPosition"}));
    EXPECT_EQ(desktop.seen(id), (Rect{7, 8, 400, 300}));
}

TEST_F(AXWindowTest, theFrameIsAbsentWhenPositionOrSizeCannotBeRead) {
    EXPECT_EQ(window().frame(), (Rect{100, 100, 400, 300}));
    faults().unreadable = {"AXPosition"};
    EXPECT_EQ(window().frame(), std::nullopt);
    faults().unreadable = {"AXSize"};
    EXPECT_EQ(window().frame(), std::nullopt);
}

TEST_F(AXWindowTest, theFrameIsAbsentWhenAnAttributeHasAnotherType) {
    faults().answers.insert_or_assign("AXSize", AttributeValue(Point{400, 300}));
    EXPECT_EQ(window().frame(), std::nullopt);
}

TEST_F(AXWindowTest, aWindowThatCannotBeMovedIsStillResized) {
    faults().unwritable = {"AXPosition"};
    window().setFrame({0, 0, 960, 1080});
    EXPECT_EQ(desktop.seen(id), (Rect{100, 100, 960, 1080}));
}

TEST_F(AXWindowTest, twoReadsOfTheSameWindowHaveEqualKeys) {
    const AXBridge bridge(desktop.accessibility);
    const auto first = bridge.focusedWindow();
    const auto second = bridge.windowOfApplication(42);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->element(), second->element());
    EXPECT_EQ(first->key(), second->key());

    std::unordered_map<AXElementKey, int> map;
    map[first->key()] = 1;
    map[second->key()] += 1;
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(map[first->key()], 2);
}

TEST_F(AXWindowTest, differentWindowsHaveDifferentKeys) {
    const WindowID other = desktop.open(application, Rect{0, 0, 100, 100});
    EXPECT_NE(window().key(),
              AXWindow(desktop.accessibility, SimulatedAccessibility::element(other)).key());
}

TEST_F(AXWindowTest, aWindowWhoseApplicationHasQuitHasNoProcessAndIsNoWindow) {
    AXWindow remembered = window();
    EXPECT_EQ(remembered.pid(), 42);
    EXPECT_TRUE(remembered.isWindow());
    desktop.quit(application);
    EXPECT_EQ(remembered.pid(), std::nullopt);
    EXPECT_FALSE(remembered.isWindow());
    EXPECT_EQ(remembered.frame(), std::nullopt);
    remembered.setFrame({0, 0, 10, 10});
}

TEST_F(AXWindowTest, isNoWindowWhenItsRoleIsAnotherOrCannotBeRead) {
    faults().answers.insert_or_assign("AXRole", AttributeValue(std::string("AXGroup")));
    EXPECT_FALSE(window().isWindow());
    faults().answers.clear();
    faults().unreadable = {"AXRole"};
    EXPECT_FALSE(window().isWindow());
}

TEST(AXWindowEnhanced, theModeIsOffWhileTheFrameIsSetAndOnAgainAfterwards) {
    SimulatedDesktop desktop;
    const ApplicationID application = desktop.launch({.pid = 42, .enhancedUserInterface = true});
    const WindowID id = desktop.open(application, Rect{100, 100, 400, 300});
    desktop.traffic.clear();
    AXWindow(desktop.accessibility, SimulatedAccessibility::element(id))
        .setFrame({0, 0, 960, 1080});

    std::vector<std::string> writes;
    for (const AttributeAccess& access : desktop.traffic.record()) {
        if (access.kind == AccessKind::write) {
            std::string text = access.attribute;
            if (const bool* flag = std::get_if<bool>(&*access.value)) {
                text += *flag ? " true" : " false";
            }
            writes.push_back(text);
        }
    }
    EXPECT_EQ(writes,
              (std::vector<std::string>{"AXEnhancedUserInterface false", "AXPosition", "AXSize",
                                        "AXPosition", "AXEnhancedUserInterface true"}));
    EXPECT_EQ(desktop.programs.find(application)->traits.enhancedUserInterface, true);
}

TEST(AXWindowEnhanced, anApplicationThatSaysNoOrNothingIsLeftUntouched) {
    for (const std::optional<bool> mode : {std::optional<bool>(false), std::optional<bool>()}) {
        SimulatedDesktop desktop;
        const ApplicationID application =
            desktop.launch({.pid = 42, .enhancedUserInterface = mode});
        const WindowID id = desktop.open(application, Rect{100, 100, 400, 300});
        desktop.traffic.clear();
        AXWindow(desktop.accessibility, SimulatedAccessibility::element(id))
            .setFrame({0, 0, 960, 1080});
        EXPECT_EQ(desktop.traffic.count(AccessKind::write), 3U);
        EXPECT_EQ(desktop.programs.find(application)->traits.enhancedUserInterface, mode);
    }
}

}  // namespace
}  // namespace lumatile
