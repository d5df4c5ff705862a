// Windows dragged by any place in them, with Alt held.

#include <gtest/gtest.h>

#include "tests/desktop/dragging/DragTest.h"

namespace lumatile::desktop {
namespace {

class AltDrag : public DragTest {};

TEST_P(AltDrag, fromAnywhereInTheWindow) {
    SnapDesktop::Setup setup = setupOn(MonitorLayout::landscape());
    setup.options.movesWithAlt = true;
    start(setup);
    struct {
        DropPlace place;
        PixelRect becomes;
    } const cases[] = {{{"left", 2, 500}, {0, 0, 960, 1080}},
                       {{"bottomRight", 1917, 1060}, {960, 540, 960, 540}},
                       {{"maximize", 900, 2}, {0, 0, 1920, 1080}}};
    for (const auto& [place, becomes] : cases) {
        SCOPED_TRACE(place.command);
        ASSERT_TRUE(prepare());
        ASSERT_TRUE(hand().gripWithAlt(window()));
        hand().moveTo(place.x, place.y);
        hand().letGo();
        EXPECT_TRUE(snaps(becomes));
    }
    EXPECT_EQ(desktop().endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, AltDrag, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
