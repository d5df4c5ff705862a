#include "platform/qt/QtRunLoop.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <array>
#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumatile {
namespace {

using testing::ElementsAre;

// Qt has two event loops, of its own and on top of GLib's; which one runs is the machine's choice.
enum class Kind { own, glib };

class QtRunLoopTest : public testing::TestWithParam<Kind> {
protected:
    QtRunLoopTest() {
        if (GetParam() == Kind::own) {
            qputenv("QT_NO_GLIB", "1");
        } else {
            qunsetenv("QT_NO_GLIB");
        }
        application_.emplace(argumentCount_, arguments_.data());
        runLoop_.emplace();
    }

    /// Runs the loop until `condition` holds when it would go to sleep.
    /// @return false when it does not for a long time
    bool runUntil(const std::function<bool()>& condition) {
        constexpr std::chrono::seconds patience(20);
        QEventLoop events;
        QTimer::singleShot(patience, &events, &QEventLoop::quit);
        QObject::connect(QAbstractEventDispatcher::instance(),
                         &QAbstractEventDispatcher::aboutToBlock, &events, [&] {
                             if (condition()) {
                                 events.quit();
                             }
                         });
        events.exec();
        return condition();
    }

    QtRunLoop& loop() { return *runLoop_; }
    void endLoop() { runLoop_.reset(); }

private:
    int argumentCount_ = 1;
    std::string name_ = "test";
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    std::optional<QCoreApplication> application_;
    std::optional<QtRunLoop> runLoop_;
};

class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe2(ends_.data(), O_CLOEXEC | O_NONBLOCK), 0); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close(ends_[0]);
        close(ends_[1]);
    }

    int readEnd() const { return ends_[0]; }
    void write() const { EXPECT_EQ(::write(ends_[1], "x", 1), 1); }
    void take() const {
        char byte = 0;
        EXPECT_EQ(read(ends_[0], &byte, 1), 1);
    }

private:
    std::array<int, 2> ends_{};
};

TEST_P(QtRunLoopTest, nowIsTheSystemsClockInSeconds) {
    const auto seconds = [] {
        return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
            .count();
    };
    const double before = seconds();
    const double now = loop().now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, seconds());
    EXPECT_GT(now, 1.6e9);
}

TEST_P(QtRunLoopTest, aTimerTicksUntilItsHandleIsGone) {
    int ticks = 0;
    int others = 0;
    auto timer = loop().repeat(0.001, [&] { ++ticks; });
    const auto other = loop().repeat(0.001, [&] { ++others; });
    ASSERT_TRUE(runUntil([&] { return ticks >= 3; }));
    timer.reset();
    const int before = ticks;
    others = 0;
    ASSERT_TRUE(runUntil([&] { return others >= 5; }));
    EXPECT_EQ(ticks, before);
}

TEST_P(QtRunLoopTest, aTimerKeepsItsInterval) {
    using Clock = std::chrono::steady_clock;
    constexpr double interval = 0.05;
    std::vector<Clock::time_point> ticks;
    const auto start = Clock::now();
    const auto timer = loop().repeat(interval, [&] { ticks.push_back(Clock::now()); });
    ASSERT_TRUE(runUntil([&] { return ticks.size() == 4; }));
    // A coarse timer may be a twentieth early or late at each tick; a machine may be slow.
    EXPECT_GE(std::chrono::duration<double>(ticks.back() - start).count(), 4 * interval * 0.9);
}

TEST_P(QtRunLoopTest, aTimerMayEndItselfAndOthers) {
    std::unique_ptr<RunLoopTimer> first;
    std::unique_ptr<RunLoopTimer> second;
    int firstTicks = 0;
    int secondTicks = 0;
    const std::string text(100, 'x');  // Seen to be alive until the tick is over.
    std::string seen;
    first = loop().repeat(0.001, [&, text] {
        ++firstTicks;
        second.reset();
        first.reset();
        seen = text;
    });
    second = loop().repeat(0.001, [&] {
        ++secondTicks;
        first.reset();
        second.reset();
    });
    int others = 0;
    const auto other = loop().repeat(0.001, [&] { ++others; });
    ASSERT_TRUE(runUntil([&] { return others >= 5; }));
    EXPECT_EQ(firstTicks + secondTicks, 1);
    EXPECT_EQ(seen, firstTicks == 1 ? text : "");
}

TEST_P(QtRunLoopTest, absurdIntervalsAreHarmless) {
    int shortOnes = 0;
    int longOnes = 0;
    std::vector<std::unique_ptr<RunLoopTimer>> timers;
    for (const double seconds : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(),
                                 -std::numeric_limits<double>::infinity()}) {
        timers.push_back(loop().repeat(seconds, [&] { ++shortOnes; }));
    }
    for (const double seconds : {1e300, std::numeric_limits<double>::infinity()}) {
        timers.push_back(loop().repeat(seconds, [&] { ++longOnes; }));
    }
    ASSERT_TRUE(runUntil([&] { return shortOnes >= 20; }));
    EXPECT_EQ(longOnes, 0);
}

TEST_P(QtRunLoopTest, postedWorkRunsInOrderAfterThePresentCall) {
    std::vector<int> order;
    loop().post([&] {
        order.push_back(1);
        loop().post([&] { order.push_back(4); });
        order.push_back(2);
    });
    loop().post([&] { order.push_back(3); });
    EXPECT_TRUE(order.empty());
    ASSERT_TRUE(runUntil([&] { return order.size() == 4; }));
    EXPECT_THAT(order, ElementsAre(1, 2, 3, 4));
}

TEST_P(QtRunLoopTest, postedWorkRunsOnce) {
    int runs = 0;
    loop().post([&] { ++runs; });
    int others = 0;
    const auto other = loop().repeat(0.001, [&] { ++others; });
    ASSERT_TRUE(runUntil([&] { return others >= 3; }));
    EXPECT_EQ(runs, 1);
}

TEST_P(QtRunLoopTest, workThatWaitsAtTheEndIsDropped) {
    bool ran = false;
    const auto alive = std::make_shared<int>(0);
    loop().post([&ran, alive] { ran = true; });
    EXPECT_EQ(alive.use_count(), 2);
    endLoop();
    EXPECT_EQ(alive.use_count(), 1);
    QCoreApplication::processEvents();
    EXPECT_FALSE(ran);
}

TEST_P(QtRunLoopTest, aDescriptorIsWatchedUntilItsHandleIsGone) {
    const Pipe pipe;
    int calls = 0;
    auto watch = loop().watchDescriptor(pipe.readEnd(), [&] {
        ++calls;
        pipe.take();
    });
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 0);
    for (int i = 1; i <= 3; ++i) {
        pipe.write();
        ASSERT_TRUE(runUntil([&] { return calls == i; }));
    }
    pipe.write();
    watch.reset();
    int others = 0;
    const auto other = loop().repeat(0.001, [&] { ++others; });
    ASSERT_TRUE(runUntil([&] { return others >= 3; }));
    EXPECT_EQ(calls, 3);
}

TEST_P(QtRunLoopTest, aWatchMayEndItself) {
    const Pipe pipe;
    int calls = 0;
    const std::string text(100, 'x');
    std::string seen;
    QtRunLoop::Watch watch;
    watch = loop().watchDescriptor(pipe.readEnd(), [&, text] {
        ++calls;
        watch.reset();  // And the pipe stays readable.
        seen = text;
    });
    pipe.write();
    int others = 0;
    const auto other = loop().repeat(0.001, [&] { ++others; });
    ASSERT_TRUE(runUntil([&] { return calls == 1 && others >= 3; }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(seen, text);
}

TEST_P(QtRunLoopTest, aNegativeDescriptorIsNeverReadable) {
    int calls = 0;
    const auto watch = loop().watchDescriptor(-1, [&] { ++calls; });
    int others = 0;
    const auto other = loop().repeat(0.001, [&] { ++others; });
    ASSERT_TRUE(runUntil([&] { return others >= 3; }));
    EXPECT_EQ(calls, 0);
}

TEST_P(QtRunLoopTest, theHookRunsAfterEveryEventAndBeforeTheLoopSleeps) {
    const Pipe pipe;
    std::vector<std::string> story;
    auto hook = loop().beforeBlocking([&] {
        if (story.empty() || story.back() != "hook") {
            story.emplace_back("hook");
        }
    });
    const auto watch = loop().watchDescriptor(pipe.readEnd(), [&] {
        pipe.take();
        story.emplace_back("event");
        if (story.size() < 6) {
            pipe.write();
        }
    });
    pipe.write();
    ASSERT_TRUE(runUntil([&] { return story.size() >= 7; }));
    EXPECT_THAT(story, ElementsAre("hook", "event", "hook", "event", "hook", "event", "hook"));
    hook.reset();
    const std::size_t before = story.size();
    int others = 0;
    const auto other = loop().repeat(0.001, [&] { ++others; });
    ASSERT_TRUE(runUntil([&] { return others >= 3; }));
    EXPECT_EQ(story.size(), before);
}

TEST_P(QtRunLoopTest, workPostedByTheHookRunsWithoutAnythingElseHappening) {
    bool posted = false;
    bool ran = false;
    const auto hook = loop().beforeBlocking([&] {
        if (!posted) {
            posted = true;
            loop().post([&] { ran = true; });
        }
    });
    EXPECT_TRUE(runUntil([&] { return ran; }));
}

INSTANTIATE_TEST_SUITE_P(Kinds, QtRunLoopTest, testing::Values(Kind::own, Kind::glib),
                         [](const auto& tested) {
                             return tested.param == Kind::own ? "own" : "glib";
                         });

}  // namespace
}  // namespace lumatile
