// The program itself darkens the screens without a compositor, on the real clock.

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <memory>
#include <vector>

#include "tests/desktop/protection/GammaClient.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {
namespace {

// Half as bright after three seconds without input: longer than the program takes to look again.
constexpr const char* settingsText =
    R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":3,"idleDimStrength":0.5})";

// The same, but long after the end of the test.
constexpr const char* muchLaterText =
    R"({"orbitEnabled":false,"jitterEnabled":false,"idleThreshold":1800,"idleDimStrength":0.5})";

class ProgramDimming : public testing::Test {
protected:
    ProgramDimming() : desktop_(MonitorLayout::landscape(), WindowManager::Kind::openbox) {}

    std::unique_ptr<LumatileProcess> start(const char* oledSettings = settingsText) {
        LumatileProcess::Settings settings;
        settings.oledSettings = oledSettings;
        return std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, settings);
    }

    /// Something happens, by somebody's hand.
    void touch() {
        desktop_.input().movePointer(100 + touches_ % 100, 100);
        ++touches_;
    }

    /// Whether the screens come to be as they were while somebody goes on touching: after a single
    /// touch they would be dark again before long.
    bool clears(const std::function<bool()>& isClear) {
        return XClient::waitUntil([&] {
            touch();
            return isClear();
        });
    }

    TestDesktop desktop_;
    GammaClient gamma_{desktop_.display()};
    int touches_ = 0;
};

TEST_F(ProgramDimming, darkensByTheRampsClearsOnInputAndRestoresThemAtTheEnd) {
    const std::uint32_t controller = gamma_.controller(0);
    const std::vector<std::uint16_t> original = gamma_.curved(controller);
    gamma_.set(controller, original);
    const auto shows = [&](const std::vector<std::uint16_t>& ramp) {
        return XClient::waitUntil([&] { return gamma_.ramp(controller) == ramp; });
    };
    const auto isDark = [&] {
        return XClient::waitUntil([&] { return gamma_.ramp(controller) != original; });
    };
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(signal);
        touch();
        const auto program = start();
        EXPECT_TRUE(isDark());
        if (signal == SIGTERM) {
            EXPECT_TRUE(shows(GammaClient::dimmed(original, 0.5)));
            EXPECT_TRUE(clears([&] { return gamma_.ramp(controller) == original; }));
            EXPECT_TRUE(isDark());
        }
        kill(program->pid(), signal);
        EXPECT_TRUE(LumatileProcess::isClean(program->wait())) << program->output();
        EXPECT_EQ(gamma_.ramp(controller), original);
        EXPECT_EQ(program->output(), "");
    }
}

TEST_F(ProgramDimming, theNextStartMakesACrashGood) {
    const std::uint32_t controller = gamma_.controller(0);
    const std::vector<std::uint16_t> original = gamma_.curved(controller);
    gamma_.set(controller, original);
    const std::vector<std::uint16_t> dark = GammaClient::dimmed(original, 0.5);
    {
        const auto program = start();
        ASSERT_TRUE(XClient::waitUntil([&] { return gamma_.ramp(controller) == dark; }));
        kill(program->pid(), SIGKILL);
        program->wait();
    }
    EXPECT_EQ(gamma_.ramp(controller), dark);
    touch();
    // However long it takes to get ready, it does not darken them again.
    const auto program = start(muchLaterText);
    EXPECT_EQ(gamma_.ramp(controller), original) << "ready, and restored";
    EXPECT_TRUE(LumatileProcess::isClean(program->stop()));
}

}  // namespace
}  // namespace lumatile::desktop
