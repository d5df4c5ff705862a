// The program itself, on the real clock.

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <memory>
#include <string>

#include "tests/desktop/support/AskedFrame.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

const PixelRect opened{400, 300, 640, 480};

/// A desktop with windows of two programs and the program running, a step a second.
class ProgramRun : public testing::Test {
protected:
    ProgramRun()
        : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox),
          logo_(desktop_.openProgram({"xlogo", "-geometry", "300x250+1200+300"}, "XLogo")),
          logoHome_(frameOfLogo()),
          window_(desktop_.openWindow({})) {
        window_->place(opened);
        LumatileProcess::Settings settings;
        settings.oledSettings =
            R"({"orbitStepInterval":1,"orbitWaitForPause":false,"jitterEnabled":false,)"
            R"("idleDimEnabled":false})";
        program_ =
            std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, settings);
    }

    PixelRect frameOfLogo() {
        return outerFrame(desktop_.observer(), logo_.window).value_or(PixelRect{});
    }

    /// Whether both windows come to be so far from their homes.
    testing::AssertionResult bothReach(int dx, int dy) {
        const auto moved = [&](const PixelRect& home) {
            return PixelRect{home.x + dx, home.y + dy, home.width, home.height};
        };
        if (XClient::waitUntil([&] {
                return window_->frame() == moved(opened) && frameOfLogo() == moved(logoHome_);
            })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << window_->frame() << " and " << frameOfLogo();
    }

    TestDesktop desktop_;
    TestDesktop::Program logo_;
    PixelRect logoHome_;
    std::unique_ptr<TestWindow> window_;
    std::unique_ptr<LumatileProcess> program_;
};

class ProgramRunEndedBy : public ProgramRun, public testing::WithParamInterface<int> {};

TEST_P(ProgramRunEndedBy, walksBothWindowsAndTakesThemHomeWhenItIsAskedToEnd) {
    EXPECT_TRUE(bothReach(-1, -2));
    EXPECT_TRUE(bothReach(0, -2));
    EXPECT_TRUE(bothReach(1, -2));
    kill(program_->pid(), GetParam());
    EXPECT_TRUE(LumatileProcess::isClean(program_->wait())) << program_->output();
    // What the program does last is to take them home; a busy window manager may take longer than
    // the program waits for it.
    EXPECT_EQ(askedFrame(desktop_.observer(), window_->id(), opened), opened);
    EXPECT_EQ(askedFrame(desktop_.observer(), logo_.window, logoHome_), logoHome_);
    EXPECT_TRUE(bothReach(0, 0));
}

INSTANTIATE_TEST_SUITE_P(Shifting, ProgramRunEndedBy, testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& signal) {
                             return std::string(sigabbrev_np(signal.param));
                         });

TEST_F(ProgramRun, waitsWhileTheButtonIsHeld) {
    ASSERT_TRUE(bothReach(-1, -2));
    // On the bare desktop, where nothing comes of it.
    desktop_.input().movePointer(1800, 1000);
    desktop_.input().buttonDown();
    desktop_.input().roundTrip();
    // A step that began before the press may still be under way.
    PixelRect before = window_->frame();
    if (XClient::waitUntil([&] { return window_->frame() != before; },
                           Deadline::in(std::chrono::milliseconds(1200)))) {
        before = window_->frame();
        ASSERT_TRUE(bothReach(before.x - opened.x, before.y - opened.y));
    }
    desktop_.observer().forget();
    // Three steps would be due. No event says that nothing happens.
    EXPECT_FALSE(XClient::waitUntil([&] { return window_->frame() != before; },
                                    Deadline::in(std::chrono::milliseconds(3200))));
    for (const xcb_window_t each : {window_->id(), logo_.window}) {
        EXPECT_TRUE(desktop_.observer().messages(each, "_NET_MOVERESIZE_WINDOW").empty())
            << "nothing is asked for, whatever comes of it";
    }
    desktop_.input().buttonUp();
    EXPECT_TRUE(XClient::waitUntil([&] { return window_->frame() != before; }));
    EXPECT_TRUE(LumatileProcess::isClean(program_->stop())) << program_->output();
    EXPECT_TRUE(bothReach(0, 0));
}

}  // namespace
}  // namespace lumatile::desktop
