#include "displays/DisplayService.h"

#include <gtest/gtest.h>

#include "displays/NSScreenProvider.h"
#include "tests/unit/displays/FixedScreenList.h"

namespace lumatile {
namespace {

struct Displays {
    explicit Displays(const std::vector<Rect>& platformFrames) {
        for (const Rect& frame : platformFrames) {
            list.list.push_back(FixedScreenList::bare(frame));
        }
    }

    FixedScreenList list;
    DisplayService service{std::make_shared<NSScreenProvider>(list)};
};

TEST(DisplayService, rightHalfStaysTheRightHalfOnALargerNeighbour) {
    Displays displays({{0, 0, 1440, 900}, {1440, -540, 2560, 1440}});
    EXPECT_EQ(displays.service.frameOnNeighbour({720, 0, 720, 900}, 1),
              (Rect{2720, 0, 1280, 1440}));
}

TEST(DisplayService, nextWrapsFromTheLastScreenToTheFirst) {
    Displays displays({{0, 0, 100, 100}, {100, 0, 100, 100}, {200, 0, 100, 100}});
    EXPECT_EQ(displays.service.frameOnNeighbour({210, 10, 50, 50}, 1), (Rect{10, 10, 50, 50}));
}

TEST(DisplayService, previousWrapsFromTheFirstScreenToTheLast) {
    Displays displays({{0, 0, 100, 100}, {100, 0, 100, 100}, {200, 0, 100, 100}});
    EXPECT_EQ(displays.service.frameOnNeighbour({10, 10, 50, 50}, -1), (Rect{210, 10, 50, 50}));
}

TEST(DisplayService, theOrderIsThePlatformsAndNotThePosition) {
    Displays displays({{0, 0, 100, 100}, {200, 0, 100, 100}, {100, 0, 100, 100}});
    EXPECT_EQ(displays.service.frameOnNeighbour({10, 10, 50, 50}, 1), (Rect{210, 10, 50, 50}));
}

TEST(DisplayService, withOneScreenTheFrameIsUnchanged) {
    Displays displays({{0, 0, 100, 100}});
    const Rect frame{10, 10, 50, 50};
    EXPECT_EQ(displays.service.frameOnNeighbour(frame, 1), frame);
    EXPECT_EQ(displays.service.frameOnNeighbour(frame, -1), frame);
}

TEST(DisplayService, withoutScreensTheFrameIsUnchanged) {
    Displays displays({});
    const Rect frame{10, 10, 50, 50};
    EXPECT_EQ(displays.service.frameOnNeighbour(frame, 1), frame);
}

TEST(DisplayService, aFrameBetweenScreensCountsAsOnTheFirst) {
    Displays displays({{0, 0, 100, 100}, {300, 0, 100, 100}});
    EXPECT_EQ(displays.service.frameOnNeighbour({150, 0, 100, 100}, 1), (Rect{450, 0, 100, 100}));
}

TEST(DisplayService, mirroredScreensAreOneStopEach) {
    // Two screens with the same visible frame: the first match is where the window counts as being.
    Displays displays({{0, 0, 100, 100}, {0, 0, 100, 100}, {100, 0, 100, 100}});
    EXPECT_EQ(displays.service.frameOnNeighbour({10, 10, 50, 50}, -1), (Rect{110, 10, 50, 50}));
}

}  // namespace
}  // namespace lumatile
