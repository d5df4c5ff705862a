// Windows dragged on two monitors, to the edges that these share as well.

#include <gtest/gtest.h>

#include "tests/desktop/dragging/DragTest.h"

namespace lumatile::desktop {
namespace {

class TwoMonitors : public DragTest {
protected:
    /// Drops at every place of both monitors.
    /// @param from on one of them
    void expectAllDrops(const MonitorLayout& layout, const PixelRect& from) {
        start(layout);
        for (std::size_t monitor = 0; monitor < layout.monitors.size(); ++monitor) {
            for (const DropPlace& place : dropPlaces(layout.monitors[monitor])) {
                expectDrop(place, monitor, from);
            }
        }
        EXPECT_EQ(desktop().endProgram(), "");
    }
};

TEST_P(TwoMonitors, everyEdgeAndCornerOfBoth) {
    expectAllDrops(MonitorLayout::landscapeAndPortrait(), {700, 500, 700, 400});
}

TEST_P(TwoMonitors, everyEdgeAndCornerOfBothWhereThePrimaryIsNotFirst) {
    expectAllDrops(MonitorLayout::portraitAndPrimaryLandscape(), {1300, 600, 700, 400});
}

INSTANTIATE_TEST_SUITE_P(Desktop, TwoMonitors, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
