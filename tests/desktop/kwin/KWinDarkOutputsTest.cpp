// Outputs that come and go while the program keeps the screens dark.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "tests/desktop/kwin/PlasmaDesk.h"
#include "tests/desktop/support/kwin/ScreenPicture.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint32_t light = 0xe0c080;

KWinDesktop::Options oneOfTwoOutputs() {
    KWinDesktop::Options options;
    options.outputs = {{0, 0}, {960, 0, 1.5, false, false}};
    options.width = 960;
    options.height = 600;
    options.pictures = true;
    return options;
}

LumatileProcess::Settings darkSoon() {
    LumatileProcess::Settings settings;
    settings.oledSettings =
        R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":3,"idleDimStrength":0.5})";
    return settings;
}

class KWinDarkOutputs : public testing::Test {
protected:
    /// Switches the second output.
    void plug(bool isIn) {
        std::vector<ArrangedOutput> outputs = oneOfTwoOutputs().outputs;
        outputs[1].enabled = isIn;
        desk_.desktop().arrange(outputs);
    }

    /// Whether the light windows there come to show behind so much black.
    testing::AssertionResult comesToShow(double opacity, const std::vector<Point>& places) {
        const ScreenColor wanted = ScreenColor::of(light).behindBlack(opacity);
        ScreenColor seen;
        const bool isShown = waitInSession([&] {
            return std::all_of(places.begin(), places.end(), [&](const Point& place) {
                seen = ScreenPicture::colorAt(desk_.desktop().session(), static_cast<int>(place.x),
                                              static_cast<int>(place.y));
                return seen.isNear(wanted, 3);
            });
        });
        return (isShown ? testing::AssertionSuccess() : testing::AssertionFailure()) << seen;
    }

    std::unique_ptr<NativeWindow> openLight(const Rect& frame) {
        NativeWindow::Options options;
        options.color = light;
        auto window = desk_.desktop().openWindow(options);
        window->place(frame);
        return window;
    }

    static constexpr Point onFirst{200, 300};
    static constexpr Point onSecond{1200, 200};

    PlasmaDesk desk_{oneOfTwoOutputs(), darkSoon()};
};

TEST_F(KWinDarkOutputs, areDarkWhenTheyComeAndLeaveNothingBehind) {
    const auto first = openLight({50, 50, 500, 500});
    ASSERT_TRUE(comesToShow(0.5, {onFirst}));
    plug(true);
    const auto second = openLight({1000, 50, 400, 300});
    EXPECT_TRUE(comesToShow(0.5, {onFirst, onSecond})) << "the new one is dark, too";
    plug(false);
    EXPECT_TRUE(comesToShow(0.5, {onFirst}));
    plug(true);
    second->place({1000, 50, 400, 300});
    EXPECT_TRUE(comesToShow(0.5, {onFirst, onSecond}));

    // The mouse keeps moving: after a single touch they would be dark again before long.
    int touches = 0;
    const auto touched = [&] { desk_.input().movePointer(100 + ++touches % 50, 580); };
    const ScreenColor bright = ScreenColor::of(light);
    const auto isBright = [&](const Point& place) {
        return ScreenPicture::colorAt(desk_.desktop().session(), static_cast<int>(place.x),
                                      static_cast<int>(place.y))
            .isNear(bright, 3);
    };
    EXPECT_TRUE(waitInSession([&] {
        touched();
        return isBright(onFirst) && isBright(onSecond);
    }));
    plug(false);
    touched();
    EXPECT_TRUE(isBright(onFirst)) << "and nothing is left over";
    plug(true);
    second->place({1000, 50, 400, 300});
    touched();
    EXPECT_TRUE(waitInSession([&] {
        touched();
        return isBright(onFirst) && isBright(onSecond);
    }));
    EXPECT_EQ(desk_.endProgram(), "");
}

}  // namespace
}  // namespace lumatile::desktop
