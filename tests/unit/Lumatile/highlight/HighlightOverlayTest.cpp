#include "Lumatile/highlight/HighlightOverlay.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "ports/HighlightSurface.h"
#include "ports/Translucency.h"

namespace lumatile {
namespace {

class SwitchedTranslucency final : public Translucency {
public:
    bool isAvailable() override { return available; }

    bool available = true;
};

/// The toolkit has one screen of 800 × 800 here; the screens of the desk are the port's.
class HighlightOverlayTest : public testing::Test {
protected:
    HighlightOverlayTest() {
        desk_.plug("main", {0, 0, 1920, 1080});
        desk_.plug("tall", {1920, 0, 1080, 1920});
        desk_.addPanel("main", ScreenEdge::bottom, 60);
    }

    bool isVisible() const { return overlay_.window().isVisible(); }
    const Size& pitch() const { return overlay_.view().cellPitch; }

    SimulatedClock clock_;
    SimulatedRunLoop runLoop_{clock_};
    SimulatedScreens desk_;
    SwitchedTranslucency translucency_;
    HighlightOverlay overlay_{desk_, translucency_, runLoop_};
};

TEST_F(HighlightOverlayTest, aCellIsOfTheVisibleFrameOfTheMidpointsScreen) {
    overlay_.show({0, 0, 960, 1020});
    EXPECT_EQ(pitch(), (Size{80, 85})) << "24 by 12 of 1920 by 1020";
    overlay_.show({1920, 960, 1080, 960});
    EXPECT_EQ(pitch(), (Size{90, 80})) << "12 by 24 of 1080 by 1920, not of the frame";
}

TEST_F(HighlightOverlayTest, amongOverlappingScreensTheFirstCounts) {
    desk_.plug("mirror", {0, 0, 1200, 600});
    overlay_.show({0, 0, 400, 400});
    EXPECT_EQ(pitch(), (Size{80, 85}));
}

TEST_F(HighlightOverlayTest, aMidpointOnAPanelStillHasItsScreen) {
    overlay_.show({0, 1040, 100, 30});
    EXPECT_EQ(pitch(), (Size{80, 85}));
}

TEST_F(HighlightOverlayTest, withoutAScreenACellIsOfTheFrameItself) {
    overlay_.show({-500, -500, 240, 360});
    EXPECT_EQ(pitch(), (Size{20, 15})) << "portrait";
    overlay_.show({-500, -500, 360, 240});
    EXPECT_EQ(pitch(), (Size{15, 20})) << "landscape";
    overlay_.show({-500, -500, 240, 240});
    EXPECT_EQ(pitch(), (Size{10, 20})) << "square counts as landscape";
}

TEST_F(HighlightOverlayTest, liesWhereTheFrameIs) {
    overlay_.show({100, 50, 320, 240});
    EXPECT_EQ(overlay_.window().geometry(), QRect(100, 50, 320, 240));
    EXPECT_EQ(overlay_.view().geometry(), QRect(0, 0, 320, 240));
    EXPECT_TRUE(overlay_.view().isVisible());
}

TEST_F(HighlightOverlayTest, fadesInAndOut) {
    EXPECT_FALSE(isVisible());
    overlay_.show({100, 50, 320, 240});
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(overlay_.window().windowOpacity(), 0);
    runLoop_.advance(0.06);
    EXPECT_NEAR(overlay_.window().windowOpacity(), 0.5, 0.01);
    runLoop_.advance(0.061);
    EXPECT_EQ(overlay_.window().windowOpacity(), 1);
    overlay_.hide();
    runLoop_.advance(0.06);
    EXPECT_NEAR(overlay_.window().windowOpacity(), 0.5, 0.01);
    EXPECT_TRUE(isVisible());
    runLoop_.advance(0.061);
    EXPECT_FALSE(isVisible());
}

TEST_F(HighlightOverlayTest, hidingDuringTheFadeInEndsHidden) {
    overlay_.show({100, 50, 320, 240});
    runLoop_.advance(0.04);
    overlay_.hide();
    runLoop_.advance(0.121);
    EXPECT_FALSE(isVisible());
}

TEST_F(HighlightOverlayTest, aHiddenWindowIsKeptForTwoSecondsAndNoLonger) {
    overlay_.show({100, 50, 320, 240});
    runLoop_.advance(1);
    const WId window = overlay_.window().internalWinId();
    ASSERT_NE(window, WId{0});
    overlay_.hide();
    runLoop_.advance(0.121 + 1.9);
    overlay_.show({10, 20, 300, 200});
    EXPECT_EQ(overlay_.window().internalWinId(), window) << "the drag has come back";
    runLoop_.advance(10);
    EXPECT_EQ(overlay_.window().internalWinId(), window) << "it is shown";
    overlay_.hide();
    runLoop_.advance(0.121 + 2.001);
    EXPECT_EQ(overlay_.window().internalWinId(), WId{0}) << "it takes megabytes";
    EXPECT_EQ(runLoop_.timerCount(), 0U);
}

TEST_F(HighlightOverlayTest, aShapeIsThereAlsoInTheNextWindow) {
    translucency_.available = false;
    for (int round = 0; round < 2; ++round) {
        overlay_.show({100, 50, 320, 240});
        EXPECT_FALSE(overlay_.window().mask().isEmpty());
        EXPECT_EQ(overlay_.window().mask(), overlay_.view().shape());
        overlay_.hide();
        runLoop_.advance(10);
    }
}

TEST_F(HighlightOverlayTest, withoutACompositorNothingRunsWhileItIsShown) {
    translucency_.available = false;
    overlay_.show({100, 50, 320, 240});
    EXPECT_TRUE(isVisible());
    runLoop_.advance(0.119);
    EXPECT_EQ(overlay_.window().windowOpacity(), 0) << "nobody would see the steps";
    runLoop_.advance(0.002);
    EXPECT_EQ(overlay_.window().windowOpacity(), 1);
    EXPECT_EQ(runLoop_.timerCount(), 0U);
    overlay_.hide();
    runLoop_.advance(0.119);
    EXPECT_TRUE(isVisible());
    runLoop_.advance(0.002);
    EXPECT_FALSE(isVisible());
}

TEST_F(HighlightOverlayTest, showingDuringTheFadeOutComesBackElsewhere) {
    overlay_.show({100, 50, 320, 240});
    runLoop_.advance(1);
    overlay_.hide();
    runLoop_.advance(0.09);
    overlay_.show({10, 20, 300, 200});
    EXPECT_NEAR(overlay_.window().windowOpacity(), 0.25, 0.01);
    EXPECT_EQ(overlay_.window().geometry(), QRect(10, 20, 300, 200));
    runLoop_.advance(1);
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(overlay_.window().windowOpacity(), 1);
}

TEST_F(HighlightOverlayTest, anotherFrameMovesItWithoutHidingOrFading) {
    overlay_.show({100, 50, 320, 240});
    runLoop_.advance(1);
    overlay_.show({10, 20, 300, 200});
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(overlay_.window().windowOpacity(), 1);
    EXPECT_EQ(overlay_.view().size(), QSize(300, 200));
    EXPECT_EQ(runLoop_.timerCount(), 0U);
}

TEST_F(HighlightOverlayTest, hidingWhatIsNotShownDoesNothing) {
    overlay_.hide();
    EXPECT_EQ(runLoop_.timerCount(), 0U);
    EXPECT_FALSE(isVisible());
}

TEST_F(HighlightOverlayTest, aFrameThatNoWindowCouldHaveHidesWhatIsShown) {
    overlay_.show({100, 50, std::nan(""), 240});
    EXPECT_FALSE(isVisible());
    overlay_.show({100, 50, 320, 240});
    overlay_.show({0, 0, 1e9, 1e9});
    runLoop_.advance(1);
    EXPECT_FALSE(isVisible());
}

TEST_F(HighlightOverlayTest, takesAShapeOnlyWhereNothingIsTranslucent) {
    overlay_.show({100, 50, 320, 240});
    EXPECT_TRUE(overlay_.window().mask().isEmpty());
    EXPECT_FALSE(overlay_.view().isSolid);
    // The compositor goes, and comes back.
    translucency_.available = false;
    overlay_.show({10, 20, 300, 200});
    EXPECT_TRUE(overlay_.view().isSolid);
    EXPECT_TRUE(isVisible());
    EXPECT_EQ(overlay_.window().mask(), overlay_.view().shape());
    EXPECT_FALSE(overlay_.window().testAttribute(Qt::WA_TranslucentBackground));
    translucency_.available = true;
    overlay_.show({100, 50, 320, 240});
    EXPECT_TRUE(isVisible());
    EXPECT_TRUE(overlay_.window().mask().isEmpty());
    EXPECT_FALSE(overlay_.view().isSolid);
    EXPECT_TRUE(overlay_.window().testAttribute(Qt::WA_TranslucentBackground));
}

TEST_F(HighlightOverlayTest, neverTakesFocusOrMouse) {
    const Qt::WindowFlags flags = overlay_.window().windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowTransparentForInput));
    EXPECT_TRUE(flags.testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(flags.testFlag(Qt::X11BypassWindowManagerHint));
    EXPECT_TRUE(flags.testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(overlay_.window().testAttribute(Qt::WA_ShowWithoutActivating));
}

/// What the session shows the highlight on, in memory.
class SimulatedSurface final : public HighlightSurface {
public:
    bool isAvailable() override { return available; }

    bool show(const Rect& frame, const Draw& draw) override {
        if (!(frame.width > 0)) {
            return false;
        }
        constexpr double scale = 1.5;
        constexpr double margin = 1;
        shown = frame;
        width = static_cast<int>((frame.width + 2 * margin) * scale);
        height = static_cast<int>((frame.height + 2 * margin) * scale);
        pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
        draw({pixels, width, height, scale, {margin, margin, frame.width, frame.height}});
        return true;
    }
    void setOpacity(double value) override { opacity = value; }
    void hide() override { shown.reset(); }
    void release() override {
        hide();
        pixels.clear();
    }

    std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }

    bool available = true;
    std::optional<Rect> shown;
    double opacity = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

class HighlightOnSurfaceTest : public HighlightOverlayTest {
protected:
    SimulatedSurface surface_;
    HighlightOverlay onSurface_{desk_, translucency_, runLoop_, &surface_};
};

TEST_F(HighlightOnSurfaceTest, isDrawnToThePixelWithoutAWindow) {
    const Rect frame{100, 50, 320, 240};
    onSurface_.show(frame);
    EXPECT_EQ(surface_.shown, frame);
    EXPECT_FALSE(onSurface_.window().isVisible());
    // Outside of the panel, which begins 3 points inside the frame, and that 1 inside the picture.
    EXPECT_EQ(surface_.at(0, 0), 0U);
    EXPECT_EQ(surface_.at(surface_.width - 1, surface_.height - 1), 0U);
    // The band, 4 points inside of everything, is all of the accent.
    EXPECT_EQ(surface_.at(surface_.width / 2, 10) >> 24U, 0xffU);
    // The panel lets what lies below shine through.
    const std::uint32_t inside = surface_.at(surface_.width / 2, surface_.height / 2) >> 24U;
    EXPECT_GT(inside, 0x70U);
    EXPECT_LT(inside, 0xa0U);
    EXPECT_EQ(surface_.at(surface_.width / 2, surface_.height - 3), 0U);
    EXPECT_NE(surface_.at(surface_.width / 2, surface_.height - 6), 0U) << "the outline";
}

TEST_F(HighlightOnSurfaceTest, fadesInAndOutAndGivesTheMemoryBack) {
    onSurface_.show({100, 50, 320, 240});
    EXPECT_EQ(surface_.opacity, 0);
    runLoop_.advance(0.06);
    EXPECT_GT(surface_.opacity, 0);
    EXPECT_LT(surface_.opacity, 1);
    runLoop_.advance(0.07);
    EXPECT_EQ(surface_.opacity, 1);
    onSurface_.hide();
    runLoop_.advance(0.13);
    EXPECT_EQ(surface_.opacity, 0);
    EXPECT_EQ(surface_.shown, std::nullopt);
    EXPECT_FALSE(surface_.pixels.empty()) << "for the next time";
    runLoop_.advance(2.1);
    EXPECT_TRUE(surface_.pixels.empty());
}

TEST_F(HighlightOnSurfaceTest, aFrameThatNoWindowCouldHaveHidesIt) {
    onSurface_.show({100, 50, 320, 240});
    runLoop_.advance(0.2);
    onSurface_.show({100, 50, 0, 240});
    runLoop_.advance(0.2);
    EXPECT_EQ(surface_.shown, std::nullopt);
}

TEST_F(HighlightOnSurfaceTest, isAWindowWhereTheSurfaceIsNotToBeHad) {
    surface_.available = false;
    onSurface_.show({100, 50, 320, 240});
    EXPECT_TRUE(onSurface_.window().isVisible());
    EXPECT_EQ(surface_.shown, std::nullopt);
}

}  // namespace
}  // namespace lumatile
