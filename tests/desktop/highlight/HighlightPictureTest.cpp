// What the user sees of the highlight, against the reference over the background.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>

#include "tests/desktop/highlight/HighlightDesk.h"
#include "tests/desktop/highlight/Picture.h"
#include "tests/desktop/support/Compositor.h"
#include "tests/desktop/support/TestDesktop.h"
#include "tests/support/HighlightReference.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint32_t light = 0xe8edf2;
constexpr std::uint32_t dark = 0x181c24;

reference::Color channelsOf(std::uint32_t color) {
    return {static_cast<double>(color >> 16 & 0xff), static_cast<double>(color >> 8 & 0xff),
            static_cast<double>(color & 0xff)};
}

/// The largest differences of a picture of a frame from the reference.
struct Difference {
    double plain = 0;
    double edge = 0;

    // The layers' rounding, then the compositor's.
    bool isSmall() const { return plain <= 3 && edge <= 22; }
};

Difference differenceOf(const QImage& picture, std::uint32_t background, const Size& pitch,
                        double scale) {
    const reference::Drawing drawing{{0, 0, picture.width() / scale, picture.height() / scale},
                                     {pitch.width / scale, pitch.height / scale}};
    Difference result;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const auto covered = drawing.coverage(x, y, scale);
            const auto expected = reference::Drawing::color(covered, channelsOf(background));
            const auto shown = channelsOf(picture.pixel(x, y));
            double& worst = covered.isEdge ? result.edge : result.plain;
            for (std::size_t i = 0; i < expected.size(); ++i) {
                worst = std::max(worst, std::abs(shown[i] - expected[i]));
            }
        }
    }
    return result;
}

/// Windows of one colour over every monitor, and the highlight above.
class Scene {
public:
    Scene(const MonitorLayout& layout, std::uint32_t color, const Environment& scale,
          bool isComposited = true)
        : desktop_(layout, WindowManager::Kind::openbox), color_(color) {
        if (isComposited) {
            compositor_.emplace(desktop_.session());
        }
        for (const PixelRect& monitor : layout.monitors) {
            TestWindow::Options options;
            options.kind = TestWindow::Kind::undecorated;
            options.area = monitor;
            options.color = color;
            backdrops_.push_back(desktop_.openWindow(options));
        }
        highlight_ = std::make_unique<HighlightDesk>(desktop_.session(), desktop_.display(), scale);
    }

    HighlightDesk& highlight() { return *highlight_; }
    std::optional<Compositor>& compositor() { return compositor_; }

    PixelRect onRoot(const PixelRect& frame) {
        const PixelRect& primary = desktop_.server().layout().primaryMonitor();
        return {frame.x + primary.x, frame.y + primary.y, frame.width, frame.height};
    }

    /// Shows a frame (accessibility space) and waits until the root shows it as it should.
    void expect(const PixelRect& frame, const Size& pitch, double scale) {
        highlight_->show(frame);
        const PixelRect area = onRoot(frame);
        ASSERT_TRUE(highlight_->waitUntilShown(area, 4));
        Difference difference;
        const bool isRight = XClient::waitUntil(
            [&] {
                const QImage picture = pictureOf(*highlight_, area);
                // A quick look first: the outline's middle on the left.
                if (!picture.isNull() && picture.pixel(static_cast<int>(3 * scale),
                                                       area.height / 2) != (0xff000000 | color_)) {
                    difference = differenceOf(picture, color_, pitch, scale);
                    return difference.isSmall();
                }
                return false;
            },
            Deadline::in(std::chrono::seconds(40)));
        EXPECT_TRUE(isRight) << "plain " << difference.plain << ", edges " << difference.edge;
        // Beside the frame nothing has changed.
        const QImage around = pictureOf(
            *highlight_, {std::max(0, area.x - 4), std::max(0, area.y - 4), 3, area.height});
        EXPECT_EQ(around.pixel(0, area.height / 2) & 0xffffff, color_);
    }

    void keep(const PixelRect& frame, const std::string& name) {
        const PixelRect area = onRoot(frame);
        keepPicture(
            pictureOf(*highlight_, {area.x - 20, area.y - 20, area.width + 40, area.height + 40}),
            name);
    }

private:
    TestDesktop desktop_;
    std::uint32_t color_;
    std::optional<Compositor> compositor_;
    std::vector<std::unique_ptr<TestWindow>> backdrops_;
    std::unique_ptr<HighlightDesk> highlight_;
};

class ScaledHighlightTest : public testing::TestWithParam<const char*> {
protected:
    double scale() const { return std::stod(GetParam()); }
    Environment environment() const { return {{"QT_SCALE_FACTOR", GetParam()}}; }
    std::string name(const std::string& what) const {
        return "highlight-" + what + '-' + GetParam();
    }
};

TEST_P(ScaledHighlightTest, isDrawnOverALightWindow) {
    Scene scene(MonitorLayout::landscape(), light, environment());
    scene.expect({641, 101, 640, 450}, {80, 90}, scale());
    scene.keep({641, 101, 640, 450}, name("light"));
}

TEST_P(ScaledHighlightTest, isDrawnOverADarkWindow) {
    Scene scene(MonitorLayout::landscape(), dark, environment());
    scene.expect({640, 540, 800, 270}, {80, 90}, scale());
    scene.keep({640, 540, 800, 270}, name("dark"));
    // Elsewhere and smaller, while it is shown.
    scene.expect({79, 33, 331, 211}, {80, 90}, scale());
}

TEST_P(ScaledHighlightTest, onAPortraitMonitorHasThatMonitorsCells) {
    Scene scene(MonitorLayout::landscapeAndPortrait(), light, environment());
    scene.expect({1920 + 270, 960, 540, 480}, {90, 80}, scale());
    scene.keep({1920 + 270, 960, 540, 480}, name("portrait"));
}

TEST_P(ScaledHighlightTest, liesRightWhereThePrimaryIsNotAtTheRootsOrigin) {
    Scene scene(MonitorLayout::portraitAndPrimaryLandscape(), dark, environment());
    scene.expect({160, 90, 400, 270}, {80, 90}, scale());
    scene.expect({-1000, -100, 360, 320}, {90, 80}, scale());
}

TEST_P(ScaledHighlightTest, withoutACompositorIsSeenAndSeenThrough) {
    Scene scene(MonitorLayout::landscape(), dark, environment(), false);
    const PixelRect frame{240, 180, 640, 450};
    scene.highlight().show(frame);
    ASSERT_TRUE(scene.highlight().waitUntilShown(frame, 4));
    const auto at = [&](double x, double y) {
        const QImage picture = pictureOf(scene.highlight(), frame);
        return picture.pixel(static_cast<int>(x), static_cast<int>(y)) & 0xffffff;
    };
    const double inset = 3 * scale();
    EXPECT_TRUE(XClient::waitUntil([&] { return at(320, inset + 3 * scale()) == 0xff5b1f; }))
        << "the band";
    EXPECT_EQ(at(inset, 225), 0xefebe3U) << "the outline on the left";
    EXPECT_EQ(at(640 - inset - 1, 225), 0xefebe3U) << "and on the right";
    EXPECT_EQ(at(320, 450 - inset - 1), 0xefebe3U) << "and below";
    EXPECT_NE(at(101, 135), dark) << "a mark's border";
    EXPECT_EQ(at(120, 135), dark) << "a mark's middle";
    EXPECT_EQ(at(160, 180), dark) << "the inside";
    EXPECT_EQ(at(0, 0), dark) << "the corner";
    scene.keep(frame, name("solid-dark"));
}

INSTANTIATE_TEST_SUITE_P(Scales, ScaledHighlightTest, testing::Values("1", "1.5", "2"),
                         [](const auto& tested) {
                             return std::to_string(static_cast<int>(std::stod(tested.param) * 10));
                         });

TEST(HighlightPicture, goesFromMonitorToMonitorOfAnotherScale) {
    Scene scene(MonitorLayout::landscapeAndPortrait(), light,
                {{"QT_SCREEN_SCALE_FACTORS", "DUMMY0=1;DUMMY1=2"}});
    scene.expect({320, 180, 480, 270}, {80, 90}, 1);
    scene.expect({1920 + 180, 961, 451, 321}, {90, 80}, 2);
    scene.expect({320, 180, 480, 270}, {80, 90}, 1);
}

TEST(HighlightPicture, withoutACompositorOnALightWindow) {
    Scene scene(MonitorLayout::landscape(), light, {}, false);
    const PixelRect frame{240, 180, 640, 450};
    scene.highlight().show(frame);
    ASSERT_TRUE(scene.highlight().waitUntilShown(frame));
    EXPECT_TRUE(XClient::waitUntil([&] {
        return (pictureOf(scene.highlight(), frame).pixel(320, 6) & 0xffffff) == 0xff5b1f;
    }));
    scene.keep(frame, "highlight-solid-light-1");
}

TEST(HighlightPicture, followsACompositorThatGoes) {
    Scene scene(MonitorLayout::landscape(), dark, {});
    scene.expect({240, 180, 320, 180}, {80, 90}, 1);
    scene.compositor()->stop();
    // The server hears of the end a moment after us.
    ASSERT_TRUE(XClient::waitUntil([&] { return !Compositor::runsOn(scene.highlight()); }));
    const PixelRect frame{241, 180, 320, 180};
    scene.highlight().show(frame);
    ASSERT_TRUE(scene.highlight().waitUntilShown(frame));
    EXPECT_TRUE(XClient::waitUntil([&] {
        const QImage picture = pictureOf(scene.highlight(), frame);
        return (picture.pixel(160, 6) & 0xffffff) == 0xff5b1f &&
               (picture.pixel(80, 90) & 0xffffff) == dark;
    }));
}

}  // namespace
}  // namespace lumatile::desktop
