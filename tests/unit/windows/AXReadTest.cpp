#include "windows/AXRead.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

struct BooleanCase {
    const char* name;
    AXValue answer;
    std::optional<bool> expected;
};

TEST(AXRead, aBooleanIsTakenFromBooleansAndNumbersAlone) {
    const std::vector<BooleanCase> cases = {
        {"true", AXValue(true), true},
        {"false", AXValue(false), false},
        {"one", AXValue(1.0), true},
        {"zero", AXValue(0.0), false},
        {"a fraction", AXValue(0.5), true},
        {"text", AXValue(std::string("true")), std::nullopt},
        {"a point", AXValue(Point{1, 1}), std::nullopt},
    };
    SimulatedDesktop desktop;
    const ApplicationID application = desktop.launch({.pid = 7});
    const WindowID window = desktop.open(application, Rect{10, 20, 300, 200});
    const AXElement element = SimulatedAccessibility::element(window);
    for (const BooleanCase& each : cases) {
        desktop.programs.find(window)->faults.answers.insert_or_assign("AXMinimized", each.answer);
        EXPECT_EQ(AXRead::boolean(desktop.accessibility, element, "AXMinimized"), each.expected)
            << each.name;
    }
    desktop.programs.find(window)->faults.unreadable.insert("AXMinimized");
    EXPECT_EQ(AXRead::boolean(desktop.accessibility, element, "AXMinimized"), std::nullopt);
}

TEST(AXRead, anotherTypeThanTheOneWantedIsAbsent) {
    SimulatedDesktop desktop;
    const ApplicationID application = desktop.launch({.pid = 7});
    const WindowID window = desktop.open(application, Rect{10, 20, 300, 200});
    const AXElement element = SimulatedAccessibility::element(window);
    EXPECT_EQ(AXRead::value<Point>(desktop.accessibility, element, "AXPosition"), (Point{10, 20}));
    EXPECT_EQ(AXRead::value<Size>(desktop.accessibility, element, "AXPosition"), std::nullopt);
    EXPECT_EQ(AXRead::value<double>(desktop.accessibility, element, "AXPosition"), std::nullopt);
}

TEST(AXRead, anEmptyHandleIsNoElement) {
    SimulatedDesktop desktop;
    const ApplicationID application = desktop.launch({.pid = 7});
    const WindowID window = desktop.open(application, Rect{10, 20, 300, 200});
    desktop.programs.find(window)->faults.answers.insert_or_assign("AXParent",
                                                                   AXValue(AXElement()));
    EXPECT_EQ(
        AXRead::element(desktop.accessibility, SimulatedAccessibility::element(window), "AXParent"),
        std::nullopt);
}

}  // namespace
}  // namespace lumatile
