#include "platform/freedesktop/bus/ControlObject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/freedesktop/bus/ControlInterface.h"
#include "platform/freedesktop/bus/DisplayToken.h"
#include "ports/Controlled.h"
#include "ports/SystemLog.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {
namespace {

struct NoLog final : SystemLog {
    void write(std::string_view /*type*/, std::string_view /*message*/) override {}
};

/// A program that takes its time for every switch, in which its run loop stands still.
struct SlowProgram final : Controlled {
    static constexpr std::chrono::milliseconds time{4};

    std::vector<bool> switched;

    void setOn(Protection /*protection*/, bool isOn) override {
        switched.push_back(isOn);
        const auto end = std::chrono::steady_clock::now() + time;
        while (std::chrono::steady_clock::now() < end) {
        }
    }

    std::string missing() override { return {}; }
    std::vector<Command> commands() override { return {}; }
    bool run(std::string_view /*idOrKey*/) override { return false; }
    bool openSettings(std::string_view /*section*/) override { return false; }
    std::vector<std::string> statusLines() override { return {}; }
    bool isOn(Protection /*protection*/) override { return false; }
    bool isExaggerated() override { return false; }
    void setExaggerated(bool /*isExaggerated*/) override {}
    void quit() override {}
};

class ControlObjectTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(runUntil([this] {
            call("IsExaggerated", nullptr, [this](const BusConnection::Reply& reply) {
                isHeard = isHeard || reply.value != nullptr;
            });
            runReady();
            return isHeard;
        }));
    }

    void call(const char* method, GVariant* arguments,
              std::function<void(const BusConnection::Reply&)> done) {
        const std::string name = std::string(ControlInterface::busNamePrefix) + displayToken(":7");
        client.call({name.c_str(), ControlInterface::path, ControlInterface::name, method},
                    arguments, 60'000, false, std::move(done));
    }

    bool isHeard = false;
    PrivateSession session{":none"};
    std::string address = session.environment().at("DBUS_SESSION_BUS_ADDRESS");
    BusConnection own{address};
    BusConnection client{address};
    NoLog log;
    SlowProgram program;
    ControlObject object{own, ":7", program, log};
};

TEST_F(ControlObjectTest, manyRequestsAreCarriedOutInOrderAndAFewInATurn) {
    constexpr std::size_t times = 200;
    std::size_t answered = 0;
    std::vector<bool> wanted;
    for (std::size_t time = 0; time < times; ++time) {
        wanted.push_back(time % 3 == 0);
        call("SetProtection", g_variant_new("(sb)", "edgeJitter", gboolean{wanted.back()}),
             [&](const BusConnection::Reply& reply) {
                 if (reply.error.empty()) {
                     ++answered;
                 }
             });
    }
    std::size_t mostInATurn = 0;
    std::size_t before = 0;
    EXPECT_TRUE(runUntil([&] {
        mostInATurn = std::max(mostInATurn, program.switched.size() - before);
        before = program.switched.size();
        return answered == times;
    }));
    EXPECT_EQ(program.switched, wanted);
    // Ten milliseconds, and what was begun in them.
    EXPECT_LE(mostInATurn, 3U);
    EXPECT_GE(mostInATurn, 1U);
}

}  // namespace
}  // namespace lumatile::desktop
