#include "platform/windows/WindowReading.h"

#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "tests/unit/platform/windows/NumberedElement.h"
#include "windows/AttributeName.h"

namespace lumatile {
namespace {

template <typename Value>
std::optional<Value> as(const std::optional<AttributeValue>& value) {
    const Value* held = value ? std::get_if<Value>(&*value) : nullptr;
    return held != nullptr ? std::optional(*held) : std::nullopt;
}

int elementIn(const std::optional<AttributeValue>& value) {
    const auto element = as<Element>(value);
    return element ? numberOf(*element) : 0;
}

TEST(WindowReading, tellsWhatIsKnownOfAWindow) {
    const WindowReading window{"AXDialog", true, false, [] { return Rect{1, 2, 3, 4}; }};
    EXPECT_EQ(as<std::string>(window.read(AttributeName::role)), "AXWindow");
    EXPECT_EQ(as<std::string>(window.read(AttributeName::subrole)), "AXDialog");
    EXPECT_EQ(as<Point>(window.read(AttributeName::position)), (Point{1, 2}));
    EXPECT_EQ(as<Size>(window.read(AttributeName::size)), (Size{3, 4}));
    EXPECT_EQ(as<bool>(window.read(AttributeName::minimized)), true);
    EXPECT_EQ(as<bool>(window.read(AttributeName::fullScreen)), false);
    EXPECT_FALSE(window.read(AttributeName::parent));
    EXPECT_FALSE(window.read("AXTitle"));
}

TEST(WindowReading, asksForTheFrameOnlyWhereItIsRead) {
    int asked = 0;
    const WindowReading window{"AXDialog", false, false, [&] {
                                   ++asked;
                                   return Rect{};
                               }};
    window.read(AttributeName::role);
    window.read(AttributeName::minimized);
    EXPECT_EQ(asked, 0);
    window.read(AttributeName::size);
    EXPECT_EQ(asked, 1);
}

class ApplicationReadingTest : public testing::Test {
protected:
    /// Windows 1, 2 and 3, the topmost first, all of them open.
    ApplicationReading application{{{NumberedElement::of(1), true, false},
                                    {NumberedElement::of(2), true, false},
                                    {NumberedElement::of(3), true, false}},
                                   std::nullopt,
                                   false};
};

TEST_F(ApplicationReadingTest, withoutWindowsThereIsNone) {
    application.windows.clear();
    application.focused = NumberedElement::of(1);
    EXPECT_FALSE(application.read(AttributeName::role));
    EXPECT_FALSE(application.read(AttributeName::windows));
    EXPECT_FALSE(application.read(AttributeName::focusedWindow));
}

TEST_F(ApplicationReadingTest, listsItsWindowsFromTheTop) {
    const auto windows = as<std::vector<Element>>(application.read(AttributeName::windows));
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 3U);
    EXPECT_EQ(numberOf(windows->front()), 1);
    EXPECT_EQ(numberOf(windows->back()), 3);
}

TEST_F(ApplicationReadingTest, hasAFocusedWindowOnlyWithTheFocus) {
    EXPECT_FALSE(application.read(AttributeName::focusedWindow));
    application.focused = NumberedElement::of(2);
    EXPECT_EQ(elementIn(application.read(AttributeName::focusedWindow)), 2);
}

TEST_F(ApplicationReadingTest, theMainWindowIsTheTopmostOpenOne) {
    application.windows[0].isOpen = false;
    EXPECT_EQ(elementIn(application.read(AttributeName::mainWindow)), 2);
}

TEST_F(ApplicationReadingTest, whatIsNotShownIsTheMainWindowOnlyWhenAllAre) {
    application.windows[0].isElsewhere = true;
    application.windows[1].isElsewhere = true;
    EXPECT_EQ(elementIn(application.read(AttributeName::mainWindow)), 3);
    application.windows[2].isElsewhere = true;
    EXPECT_EQ(elementIn(application.read(AttributeName::mainWindow)), 1);
}

TEST_F(ApplicationReadingTest, noneIsOpenNoneIsTheMainWindow) {
    for (ApplicationWindow& window : application.windows) {
        window.isOpen = false;
    }
    EXPECT_FALSE(application.read(AttributeName::mainWindow));
}

TEST_F(ApplicationReadingTest, aFocusOnFurnitureLeavesTheListAlone) {
    application.focused = NumberedElement::of(1);
    application.isFocusOnFurniture = true;
    EXPECT_FALSE(application.read(AttributeName::focusedWindow));
    EXPECT_FALSE(application.read(AttributeName::mainWindow));
    EXPECT_TRUE(application.read(AttributeName::windows));
    EXPECT_EQ(as<std::string>(application.read(AttributeName::role)), "AXApplication");
}

}  // namespace
}  // namespace lumatile
