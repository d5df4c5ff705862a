#include "windows/AttributeReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

struct BooleanCase {
    const char* name;
    AttributeValue answer;
    std::optional<bool> expected;
};

TEST(AttributeReader, aBooleanIsTakenFromBooleansAndNumbersAlone) {
    const std::vector<BooleanCase> cases = {
        {"true", AttributeValue(true), true},
        {"false", AttributeValue(false), false},
        {"one", AttributeValue(1.0), true},
        {"zero", AttributeValue(0.0), false},
        {"a fraction", AttributeValue(0.5), true},
        {"text", AttributeValue(std::string("true")), std::nullopt},
        {"a point", AttributeValue(Point{1, 1}), std::nullopt},
    };
    SimulatedDesktop desktop;
    const ApplicationID application = desktop.launch({.pid = 7});
    const WindowID window = desktop.open(application, Rect{10, 20, 300, 200});
    const Element element = SimulatedAccessibility::element(window);
    for (const BooleanCase& each : cases) {
        desktop.programs.find(window)->faults.answers.insert_or_assign("AXMinimized", each.answer);
        EXPECT_EQ(AttributeReader::boolean(desktop.accessibility, element, "AXMinimized"),
                  each.expected)
            << each.name;
    }
    desktop.programs.find(window)->faults.unreadable.insert("AXMinimized");
    EXPECT_EQ(AttributeReader::boolean(desktop.accessibility, element, "AXMinimized"),
              std::nullopt);
}

TEST(AttributeReader, anotherTypeThanTheOneWantedIsAbsent) {
    SimulatedDesktop desktop;
    const ApplicationID application = desktop.launch({.pid = 7});
    const WindowID window = desktop.open(application, Rect{10, 20, 300, 200});
    const Element element = SimulatedAccessibility::element(window);
    EXPECT_EQ(AttributeReader::value<Point>(desktop.accessibility, element, "AXPosition"),
              (Point{10, 20}));
    EXPECT_EQ(AttributeReader::value<Size>(desktop.accessibility, element, "AXPosition"),
              std::nullopt);
    EXPECT_EQ(AttributeReader::value<double>(desktop.accessibility, element, "AXPosition"),
              std::nullopt);
}

TEST(AttributeReader, anEmptyHandleIsNoElement) {
    SimulatedDesktop desktop;
    const ApplicationID application = desktop.launch({.pid = 7});
    const WindowID window = desktop.open(application, Rect{10, 20, 300, 200});
    desktop.programs.find(window)->faults.answers.insert_or_assign("AXParent",
                                                                   AttributeValue(Element()));
    EXPECT_EQ(AttributeReader::element(desktop.accessibility,
                                       SimulatedAccessibility::element(window), "AXParent"),
              std::nullopt);
}

}  // namespace
}  // namespace lumatile
