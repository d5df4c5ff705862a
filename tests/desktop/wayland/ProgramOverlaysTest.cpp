// What the program itself shows above all windows of a Plasma session.

#include <gtest/gtest.h>

#include <memory>

#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/kwin/KWinDesktop.h"
#include "tests/desktop/support/kwin/ScreenPicture.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {
namespace {

constexpr std::uint32_t light = 0xe0e0e0;
constexpr ScreenColor band{255, 91, 31};

KWinDesktop::Options withPictures() {
    KWinDesktop::Options options;
    options.outputs = {{0, 0}, {1200, 0, 1.5}};
    options.width = 1200;
    options.height = 900;
    options.pictures = true;
    return options;
}

class ProgramOverlays : public testing::Test {
protected:
    void start(const char* oledSettings) {
        LumatileProcess::Settings settings;
        settings.oledSettings = oledSettings;
        program = std::make_unique<LumatileProcess>(desktop.session(), LUMATILE_PROGRAM, settings);
    }

    std::unique_ptr<NativeWindow> openLight(bool isFullScreen) {
        NativeWindow::Options options;
        options.color = light;
        options.fullScreen = isFullScreen;
        return desktop.openWindow(options);
    }

    bool shows(int x, int y, const ScreenColor& color) {
        seen = ScreenPicture::colorAt(desktop.session(), x, y);
        return seen.isNear(color, 3);
    }

    KWinDesktop desktop{withPictures()};
    std::unique_ptr<LumatileProcess> program;
    ScreenColor seen;
};

TEST_F(ProgramOverlays, theHighlightIsAboveTheDraggedWindowOnEitherScreen) {
    start(R"({"orbitEnabled":false,"jitterEnabled":false,"idleDimEnabled":false})");
    const auto window = openLight(false);
    const Rect usual{300, 200, 500, 350};
    window->place(usual);
    desktop.input().movePointer(550, 210);
    desktop.input().buttonDown();
    desktop.input().movePointer(600, 300);
    ASSERT_TRUE(waitInSession([&] { return window->state().moving; }));
    desktop.input().movePointer(200, 400);
    desktop.input().movePointer(1, 400);
    // 3 pixels inside of the half, and 6 pixels wide.
    EXPECT_TRUE(waitInSession([&] { return shows(300, 5, band); })) << seen;
    EXPECT_TRUE(window->state().active);
    // The screen of scale 1.5 is 800 units wide.
    desktop.input().movePointer(1600, 300);
    desktop.input().movePointer(1998, 300);
    EXPECT_TRUE(waitInSession([&] { return shows(1800, 6, band); })) << seen;
    EXPECT_TRUE(waitInSession([&] { return !shows(300, 5, band); }));
    desktop.input().buttonUp();
    const Rect rightHalf{1600, 0, 400, 600};
    EXPECT_TRUE(waitInSession([&] { return window->frame() == rightHalf; })) << window->state();
    EXPECT_TRUE(waitInSession([&] { return !shows(1800, 6, band); })) << seen;
}

TEST_F(ProgramOverlays, darkenAFullScreenWindowAndClearOnInput) {
    const ScreenColor bright = ScreenColor::of(light);
    const auto window = openLight(true);
    ASSERT_TRUE(waitInSession([&] { return shows(600, 450, bright); })) << seen;
    start(
        R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":3,"idleDimStrength":0.5})");
    EXPECT_TRUE(waitInSession([&] { return shows(600, 450, bright.behindBlack(0.5)); })) << seen;
    EXPECT_TRUE(window->state().active);
    desktop.input().movePointer(300, 300);
    EXPECT_TRUE(waitInSession([&] { return shows(600, 450, bright); })) << seen;
}

}  // namespace
}  // namespace lumatile::desktop
