// How a window gets to its place once it is let go.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "tests/desktop/dragging/DragTest.h"
#include "tests/desktop/support/HeldWindowManager.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile::desktop {
namespace {

/// What a client is told between the release and the end.
struct Bound {
    std::size_t configurations;  ///< Moves and changes of size, as told to the client.
    std::size_t sizes;           ///< Different ones after one another, the one before included.
};

/// As measured, and one correction. Each is asked twice, for the position and for the size. Openbox
/// says once more where the drag ended. Kwin tiles the window first and says everything twice; its
/// tile goes only when the window is maximized and restored.
Bound boundOf(WindowManager::Kind kind) {
    switch (kind) {
        case WindowManager::Kind::openbox:
            return {3 + 1, 2};
        case WindowManager::Kind::xfwm4:
        case WindowManager::Kind::metacity:
            return {2 + 1, 2};
        case WindowManager::Kind::kwin:
            return {9 + 1, 5};
    }
    return {};
}

class AfterRelease : public DragTest {};

TEST_P(AfterRelease, theWindowGoesToItsPlaceInFewSteps) {
    start();
    const Bound bound = boundOf(GetParam());
    for (const DropPlace& place : dropPlaces(desktop().expected().visible(0))) {
        SCOPED_TRACE(place.command);
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(place.x, place.y);
        ASSERT_TRUE(highlight().waitUntilAt(area(place.command)));
        // The window still follows the pointer, which the program has looked at already.
        waitForWindowManager(window());
        const PixelRect before = window().client();
        window().forgetConfigurations();
        hand().letGo();
        ASSERT_TRUE(snaps(area(place.command)));
        window().roundTrip();

        std::vector<std::pair<int, int>> sizes{{before.width, before.height}};
        std::string told;
        for (const PixelRect& each : window().configurations()) {
            if (sizes.back() != std::pair(each.width, each.height)) {
                sizes.emplace_back(each.width, each.height);
            }
            told += toString(each) + ' ';
        }
        EXPECT_LE(window().configurations().size(), bound.configurations) << told;
        // Two: the old one and the new one, none in between and no way back.
        EXPECT_LE(sizes.size(), bound.sizes) << told;
        EXPECT_EQ(desktop().observer().messages(window().id(), "_NET_MOVERESIZE_WINDOW").size(), 2U)
            << "for the position and for the size";
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

TEST_P(AfterRelease, theWindowGoesToItsPlaceBySlowWindowManagersToo) {
    start();
    for (const DropPlace& place : dropPlaces(desktop().expected().visible(0))) {
        SCOPED_TRACE(place.command);
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().grip(window()));
        hand().moveTo(place.x, place.y);
        ASSERT_TRUE(highlight().waitUntilAt(area(place.command)));
        waitForWindowManager(window());
        {
            // Longer than the program waits for it.
            const HeldWindowManager held(desktop().desktop().windowManager(), desktop().observer());
            hand().letGo();
            ASSERT_TRUE(XClient::waitUntil([&] {
                return desktop()
                           .observer()
                           .messages(window().id(), "_NET_MOVERESIZE_WINDOW")
                           .size() >= 2;
            }));
        }
        EXPECT_TRUE(snaps(area(place.command)));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, AfterRelease, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
