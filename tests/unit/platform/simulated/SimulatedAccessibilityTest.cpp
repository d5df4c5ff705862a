#include "platform/simulated/SimulatedAccessibility.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"
#include "windows/AXBridge.h"

namespace lumatile {
namespace {

struct Desk : SimulatedDesktop {
    ApplicationID editor = prepare();
    WindowID window = open(editor, Rect{100, 100, 640, 480});
    AXBridge bridge{accessibility};

    static Element element(WindowID id) { return SimulatedAccessibility::element(id); }
    SimulatedWindow& model() { return *programs.find(window); }

private:
    ApplicationID prepare() {
        plug("main", {0, 0, 1920, 1080});
        return launch({.pid = 100, .applicationId = "editor"});
    }
};

using Texts = std::vector<std::string>;

TEST(SimulatedAccessibility, anOrdinaryWindowAnswersEveryAttribute) {
    Desk desk;
    const Element window = Desk::element(desk.window);
    auto& accessibility = desk.accessibility;
    EXPECT_EQ(accessibility.read(window, AttributeName::position), AttributeValue(Point{100, 100}));
    EXPECT_EQ(accessibility.read(window, AttributeName::size), AttributeValue(Size{640, 480}));
    EXPECT_EQ(accessibility.read(window, AttributeName::role),
              AttributeValue(std::string("AXWindow")));
    EXPECT_EQ(accessibility.read(window, AttributeName::subrole),
              AttributeValue(std::string("AXStandardWindow")));
    EXPECT_EQ(accessibility.read(window, AttributeName::minimized), AttributeValue(false));
    EXPECT_EQ(accessibility.read(window, AttributeName::fullScreen), AttributeValue(false));
    EXPECT_EQ(accessibility.isSettable(window, AttributeName::position), true);
    EXPECT_EQ(accessibility.isSettable(window, AttributeName::role), false);
    EXPECT_FALSE(accessibility.isSettable(window, "AXNothing"));
    EXPECT_EQ(accessibility.pid(window), 100);
    EXPECT_FALSE(accessibility.read(window, "AXNothing"));
    EXPECT_FALSE(accessibility.read(window, AttributeName::windows));
    EXPECT_TRUE(desk.bridge.isSnappable(window));
}

TEST(SimulatedAccessibility, elementsFromSeparateReadsAreEqual) {
    Desk desk;
    const WindowID other = desk.open(desk.editor, Rect{0, 0, 100, 100});
    const auto first = desk.bridge.focusedWindow();
    const auto second = desk.bridge.windowOfApplication(100);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->key(), second->key());
    EXPECT_EQ(std::hash<AXElementKey>()(first->key()), std::hash<AXElementKey>()(second->key()));
    EXPECT_EQ(first->key(), AXElementKey{Desk::element(other)});
    EXPECT_FALSE(first->key() == AXElementKey{Desk::element(desk.window)});
    // An application's element is the same, asked for by pid or by focus.
    const auto focused = desk.accessibility.read(desk.accessibility.systemWideElement(),
                                                 AttributeName::focusedApplication);
    ASSERT_TRUE(focused && std::holds_alternative<Element>(*focused));
    EXPECT_TRUE(std::get<Element>(*focused)->equals(*desk.accessibility.applicationElement(100)));
}

TEST(SimulatedAccessibility, anApplicationWithoutAKnownProcessCanStillBeAsked) {
    Desk desk;
    const ApplicationID stranger = desk.launch({});
    const WindowID window = desk.open(stranger, Rect{0, 0, 100, 100});
    const auto focused = desk.bridge.focusedWindow();
    ASSERT_TRUE(focused);
    EXPECT_EQ(focused->key(), AXElementKey{Desk::element(window)});
    EXPECT_FALSE(focused->pid());
}

TEST(SimulatedAccessibility, anElementOfAPidWithoutAProcessAnswersNothing) {
    Desk desk;
    const Element nobody = desk.accessibility.applicationElement(4711);
    EXPECT_FALSE(desk.accessibility.read(nobody, AttributeName::windows));
    EXPECT_FALSE(desk.accessibility.pid(nobody));
}

TEST(SimulatedAccessibility, aClosedWindowAnswersNothing) {
    Desk desk;
    const AXWindow window(desk.accessibility, Desk::element(desk.window));
    EXPECT_TRUE(window.isWindow());
    desk.quit(desk.editor);
    EXPECT_FALSE(window.isWindow());
    EXPECT_FALSE(window.frame());
    EXPECT_FALSE(window.pid());
    EXPECT_FALSE(desk.accessibility.write(window.element(), AttributeName::position, Point{0, 0}));
    EXPECT_FALSE(desk.accessibility.isSettable(window.element(), AttributeName::position));
}

TEST(SimulatedAccessibility, focusAndMainWindowFollowWhatCanBeSeen) {
    Desk desk;
    SimulatedWindowTraits traits;
    traits.frame = {0, 0, 200, 100};
    traits.subrole = "AXDialog";
    const WindowID dialog = desk.open(desk.editor, traits);
    const auto read = [&](std::string_view attribute) -> std::optional<AXElementKey> {
        const auto value =
            desk.accessibility.read(desk.accessibility.applicationElement(100), attribute);
        return value ? std::optional(AXElementKey{std::get<Element>(*value)}) : std::nullopt;
    };
    EXPECT_EQ(read(AttributeName::focusedWindow), AXElementKey{Desk::element(dialog)});
    EXPECT_EQ(read(AttributeName::mainWindow), AXElementKey{Desk::element(desk.window)});
    desk.programs.close(dialog);
    EXPECT_EQ(read(AttributeName::focusedWindow), AXElementKey{Desk::element(desk.window)});
    desk.programs.minimize(desk.window);
    EXPECT_FALSE(read(AttributeName::focusedWindow));
    EXPECT_EQ(read(AttributeName::mainWindow), AXElementKey{Desk::element(desk.window)});
}

TEST(SimulatedAccessibility, theInnermostPartIsFoundAndItsChainLeadsToTheWindow) {
    Desk desk;
    auto& parts = desk.model().traits.parts;
    parts.push_back({{0, 0, 640, 40}, "AXToolbar", std::nullopt});
    parts.push_back({{10, 5, 30, 30}, "AXButton", 0});
    const auto button = desk.accessibility.elementAtPoint({115, 110});
    ASSERT_TRUE(button);
    EXPECT_EQ(desk.accessibility.read(*button, AttributeName::role),
              AttributeValue(std::string("AXButton")));
    EXPECT_EQ(desk.accessibility.read(*button, AttributeName::position),
              AttributeValue(Point{110, 105}));
    EXPECT_EQ(desk.accessibility.pid(*button), 100);
    EXPECT_FALSE(desk.accessibility.write(*button, AttributeName::position, Point{0, 0}));
    const auto window = desk.bridge.windowAt({115, 110});
    ASSERT_TRUE(window);
    EXPECT_EQ(window->key(), AXElementKey{Desk::element(desk.window)});
}

TEST(SimulatedAccessibility, aChainOfElevenLevelsIsClimbedAndNoLongerOne) {
    for (const std::size_t depth : {11U, 12U}) {
        Desk desk;
        for (std::size_t level = 0; level < depth; ++level) {
            desk.model().traits.parts.push_back(
                {{0, 0, 50, 50},
                 "AXGroup",
                 level == 0 ? std::nullopt : std::optional<std::size_t>(level - 1)});
        }
        EXPECT_EQ(desk.bridge.windowAt({110, 110}) != nullptr, depth == 11) << depth;
    }
}

TEST(SimulatedAccessibility, nothingIsFoundOnTheEmptyDesktopOrBehindAMinimizedWindow) {
    Desk desk;
    EXPECT_FALSE(desk.accessibility.elementAtPoint({5, 5}));
    const WindowID upper = desk.open(desk.editor, Rect{100, 100, 100, 100});
    EXPECT_EQ(desk.bridge.windowAt({150, 150})->key(), AXElementKey{Desk::element(upper)});
    desk.programs.minimize(upper);
    EXPECT_EQ(desk.bridge.windowAt({150, 150})->key(), AXElementKey{Desk::element(desk.window)});
    desk.programs.setHidden(desk.editor, true);
    EXPECT_FALSE(desk.accessibility.elementAtPoint({150, 150}));
}

TEST(SimulatedAccessibility, onlyStandardWindowsInSightAreEnumerated) {
    Desk desk;
    const auto openLike = [&](auto change) {
        SimulatedWindowTraits traits;
        traits.frame = {0, 0, 300, 200};
        change(traits);
        desk.open(desk.editor, traits);
    };
    openLike([](auto& traits) { traits.subrole = "AXDialog"; });
    openLike([](auto& traits) { traits.role = "AXSheet"; });
    openLike([](auto& traits) { traits.isMinimized = true; });
    openLike([](auto& traits) { traits.isFullScreen = true; });
    openLike([](auto& traits) { traits.isMovable = false; });
    openLike([](auto& traits) { traits.isMaximized = true; });
    const auto windows = desk.bridge.windowsOfApplications({4711, 100});
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows[0]->key(), AXElementKey{Desk::element(desk.window)});
}

TEST(SimulatedAccessibility, valuesOfTheWrongTypeOrOutOfAllBoundsAreNotWritten) {
    Desk desk;
    const Element window = Desk::element(desk.window);
    auto& accessibility = desk.accessibility;
    EXPECT_FALSE(accessibility.write(window, AttributeName::position, Size{1, 1}));
    EXPECT_FALSE(accessibility.write(window, AttributeName::size, Point{1, 1}));
    EXPECT_FALSE(accessibility.write(window, AttributeName::role, std::string("AXButton")));
    for (const double bad : {std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(), -1e300}) {
        EXPECT_FALSE(accessibility.write(window, AttributeName::position, Point{bad, 0}));
        EXPECT_FALSE(accessibility.write(window, AttributeName::size, Size{1, bad}));
    }
    EXPECT_EQ(desk.frame(desk.window), (Rect{100, 100, 640, 480}));
    EXPECT_FALSE(accessibility.write(accessibility.applicationElement(100),
                                     AttributeName::enhancedUserInterface, true));
    EXPECT_FALSE(accessibility.write(accessibility.systemWideElement(), AttributeName::position,
                                     Point{0, 0}));
}

TEST(SimulatedAccessibility, elementsOfAnotherPlatformAreRefused) {
    class Foreign final : public ElementHandle {
    public:
        bool equals(const ElementHandle& other) const override { return this == &other; }
        std::size_t hash() const override { return 0; }
    };
    Desk desk;
    const Element foreign = std::make_shared<Foreign>();
    for (const Element& element : {foreign, Element()}) {
        EXPECT_FALSE(desk.accessibility.read(element, AttributeName::role));
        EXPECT_FALSE(desk.accessibility.write(element, AttributeName::position, Point{}));
        EXPECT_FALSE(desk.accessibility.isSettable(element, AttributeName::position));
        EXPECT_FALSE(desk.accessibility.pid(element));
        desk.accessibility.setMessagingTimeout(element, 1);
    }
    EXPECT_FALSE(Desk::element(desk.window)->equals(*foreign));
}

TEST(SimulatedAccessibility, aHungApplicationCostsItsTimeoutAndFails) {
    Desk desk;
    desk.programs.find(desk.editor)->isHung = true;
    const Element window = Desk::element(desk.window);
    EXPECT_FALSE(desk.accessibility.read(window, AttributeName::position));
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.25));
    desk.accessibility.setMessagingTimeout(desk.accessibility.applicationElement(100), 0.1);
    EXPECT_FALSE(desk.accessibility.write(window, AttributeName::position, Point{0, 0}));
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.35));
    // Longer waits than the cap cannot be had; a window may have its own.
    desk.accessibility.setMessagingTimeout(window, 60);
    EXPECT_FALSE(desk.accessibility.isSettable(window, AttributeName::position));
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.6));

    // What the system itself knows costs nothing.
    EXPECT_EQ(desk.accessibility.pid(window), 100);
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.6));

    desk.programs.find(desk.editor)->isHung = false;
    EXPECT_EQ(desk.accessibility.read(window, AttributeName::position),
              AttributeValue(Point{100, 100}));
}

TEST(SimulatedAccessibility, oneHungApplicationCannotStallTheEnumerationOfTheOthers) {
    Desk desk;
    const ApplicationID hung = desk.launch({.pid = 50});
    desk.open(hung, Rect{0, 0, 100, 100});
    desk.programs.find(hung)->isHung = true;
    EXPECT_EQ(desk.bridge.windowsOfApplications({50, 100}).size(), 1U);
    EXPECT_EQ(desk.clock.sinceStart(), SimulatedClock::fromSeconds(0.25));
}

TEST(SimulatedAccessibility, orderedFaultsTouchTheirAttributeAlone) {
    Desk desk;
    const Element window = Desk::element(desk.window);
    SimulatedFaults& faults = desk.model().faults;
    faults.unreadable.emplace(AttributeName::size);
    EXPECT_FALSE(desk.accessibility.read(window, AttributeName::size));
    EXPECT_TRUE(desk.accessibility.read(window, AttributeName::position));
    EXPECT_FALSE(desk.accessibility.isSettable(window, AttributeName::size));
    faults.unwritable.emplace(AttributeName::position);
    EXPECT_FALSE(desk.accessibility.write(window, AttributeName::position, Point{0, 0}));
    EXPECT_TRUE(desk.accessibility.write(window, AttributeName::size, Size{10, 10}));
    faults.answers[std::string(AttributeName::minimized)] = 1.0;
    EXPECT_EQ(desk.accessibility.read(window, AttributeName::minimized), AttributeValue(1.0));
    EXPECT_FALSE(desk.bridge.isSnappable(window));
    faults.isPidUnreadable = true;
    EXPECT_FALSE(desk.accessibility.pid(window));
    EXPECT_EQ(desk.accessibility.pid(desk.accessibility.applicationElement(100)), 100);
    desk.accessibility.systemWideFaults.unreadable.emplace(AttributeName::focusedApplication);
    EXPECT_FALSE(desk.bridge.focusedWindow());
}

TEST(SimulatedAccessibility, withoutPermissionNothingCanBeReadOrWritten) {
    Desk desk;
    desk.accessibility.setTrusted(false);
    const Element window = Desk::element(desk.window);
    EXPECT_FALSE(desk.accessibility.isTrusted(false));
    EXPECT_EQ(desk.accessibility.promptsShown(), 0U);
    EXPECT_FALSE(desk.accessibility.isTrusted(true));
    EXPECT_EQ(desk.accessibility.promptsShown(), 1U);
    EXPECT_FALSE(desk.accessibility.read(window, AttributeName::role));
    EXPECT_FALSE(desk.accessibility.write(window, AttributeName::position, Point{0, 0}));
    EXPECT_FALSE(desk.accessibility.pid(window));
    EXPECT_FALSE(desk.accessibility.elementAtPoint({150, 150}));
    desk.accessibility.setTrusted(true);
    EXPECT_TRUE(desk.accessibility.isTrusted(true));
    EXPECT_EQ(desk.accessibility.promptsShown(), 1U);
}

TEST(SimulatedTraffic, everyAccessIsRecordedInOrder) {
    Desk desk;
    desk.programs.find(desk.editor)->traits.enhancedUserInterface = true;
    desk.model().faults.unwritable.emplace(AttributeName::size);
    AXWindow(desk.accessibility, Desk::element(desk.window)).setFrame({0, 0, 300, 200});
    EXPECT_EQ(desk.traffic.texts(),
              (Texts{"pid", "read AXEnhancedUserInterface", "write AXEnhancedUserInterface",
                     "write AXPosition", "write AXSize failed", "write AXPosition",
                     "write AXEnhancedUserInterface"}));
    EXPECT_EQ(desk.traffic.texts(desk.window),
              (Texts{"pid", "write AXPosition", "write AXSize failed", "write AXPosition"}));
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 5U);
    EXPECT_EQ(desk.traffic.record()[3].value, AttributeValue(Point{0, 0}));
    desk.traffic.clear();
    EXPECT_TRUE(desk.traffic.record().empty());
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
}

TEST(SimulatedTraffic, theRecordIsBoundedAndTheCountsAreNot) {
    Desk desk;
    const Element window = Desk::element(desk.window);
    for (std::size_t i = 0; i < SimulatedTraffic::capacity + 10; ++i) {
        desk.accessibility.read(window, i < 10 ? AttributeName::size : AttributeName::role);
    }
    EXPECT_EQ(desk.traffic.record().size(), SimulatedTraffic::capacity);
    EXPECT_EQ(desk.traffic.record().front().attribute, AttributeName::role);
    EXPECT_EQ(desk.traffic.count(AccessKind::read), SimulatedTraffic::capacity + 10);
}

TEST(SimulatedTraffic, somethingCanHappenBetweenTwoCalls) {
    Desk desk;
    const AXWindow window(desk.accessibility, Desk::element(desk.window));
    // The application quits after the position was read, before the size is.
    desk.traffic.before(2, [&] { desk.quit(desk.editor); });
    EXPECT_FALSE(window.frame());
    EXPECT_EQ(desk.traffic.texts(), (Texts{"read AXPosition", "read AXSize failed"}));
    EXPECT_EQ(desk.traffic.openOrders(), 0U);
}

TEST(SimulatedTraffic, anOrderMayWaitForACertainAccess) {
    Desk desk;
    AXWindow window(desk.accessibility, Desk::element(desk.window));
    desk.traffic.before(AccessKind::write, AttributeName::position, 2,
                        [&] { desk.programs.close(desk.window); });
    window.setFrame({0, 0, 300, 200});
    EXPECT_EQ(desk.traffic.texts(desk.window),
              (Texts{"pid", "write AXPosition", "write AXSize", "write AXPosition failed"}));
}

}  // namespace
}  // namespace lumatile
