#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>

#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

/// A week at a desktop with the recommended protection: somebody types, pauses, drags, snaps, opens
/// and closes windows, goes home and comes back, second by second.
class Week {
public:
    explicit Week(std::uint32_t seed) : random_(seed), desk_("{}") {
        desk_.plugPortrait();
        applications_ = {desk_.editor, desk_.launch({.pid = 101}), desk_.launch({.pid = 102})};
        for (int i = 0; i < 6; ++i) {
            open();
        }
    }

    void run(int seconds) {
        for (int second = 0; second < seconds && !testing::Test::HasFailure(); ++second) {
            act();
            desk_.traffic.clear();
            desk_.advance(1);
            look();
        }
    }

    int steps() const { return steps_; }
    int moves() const { return moves_; }
    int stops() const { return stops_; }
    int adoptions() const { return adoptions_; }

private:
    enum class Doing { typing, reading, dragging, away };

    /// A window as it was after the last step that it took part in.
    struct Stepped {
        Rect frame;
        std::int64_t hour = 0;
    };

    int roll(int sides) { return std::uniform_int_distribution<int>(0, sides - 1)(random_); }

    WindowID anyWindow() {
        return std::next(stepped_.begin(), roll(static_cast<int>(stepped_.size())))->first;
    }

    Rect anyRect() {
        return {static_cast<double>(roll(2400)), static_cast<double>(24 + roll(900)),
                static_cast<double>(200 + roll(1000)), static_cast<double>(150 + roll(800))};
    }

    void touch() {
        desk_.input.touch();
        lastInput_ = desk_.runLoop.now();
    }

    void act() {
        if (left_-- <= 0) {
            change();
        }
        switch (doing_) {
            case Doing::typing:
                if (roll(3) > 0) {
                    touch();
                }
                if (roll(120) == 0) {
                    work();
                }
                break;
            case Doing::reading:
                if (roll(8) == 0) {
                    touch();
                }
                break;
            case Doing::dragging:
                // Held still for longer than a pause, too: then only the button speaks against a
                // step.
                if (!desk_.input.isDragButtonDown()) {
                    desk_.input.pressButton();
                    lastInput_ = desk_.runLoop.now();
                }
                if (roll(12) == 0) {
                    move(anyWindow());
                }
                break;
            case Doing::away:
                break;
        }
    }

    void change() {
        if (doing_ == Doing::dragging) {
            desk_.input.releaseButton();
            lastInput_ = desk_.runLoop.now();
        }
        const int what = roll(10);
        doing_ = what < 4   ? Doing::typing
                 : what < 7 ? Doing::reading
                 : what < 8 ? Doing::dragging
                            : Doing::away;
        left_ = doing_ == Doing::dragging ? 1 + roll(400)
                : doing_ == Doing::away   ? 60 + roll(20'000)
                                          : 10 + roll(1'200);
    }

    void work() {
        const int what = roll(20);
        if (what < 8) {
            const WindowID id = anyWindow();
            desk_.programs.focus(id);
            const auto& commands = desk_.conductor->store().commands;
            desk_.conductor->performCommand(
                commands.at(static_cast<std::size_t>(roll(static_cast<int>(commands.size())))));
            forget(id);
        } else if (what < 12) {
            move(anyWindow());
        } else if (what < 14) {
            open();
        } else if (what < 16 && stepped_.size() > 2) {
            const WindowID id = anyWindow();
            desk_.programs.close(id);
            stepped_.erase(id);
        } else if (what < 17) {
            desk_.programs.minimize(anyWindow());
        } else if (what < 18) {
            stopAndStart();
        } else {
            desk_.programs.focus(anyWindow());
        }
        touch();
    }

    void open() {
        stepped_[desk_.open(applications_.at(static_cast<std::size_t>(roll(3))), anyRect())] =
            std::nullopt;
    }

    void move(WindowID id) {
        if (!desk_.programs.canBeSeen(desk_.model(id))) {
            return;
        }
        desk_.dragTo(id, anyRect());
        lastInput_ = desk_.runLoop.now();
        forget(id);
    }

    /// What happens to the window next is no ordinary step.
    void forget(WindowID id) { stepped_[id].reset(); }

    void stopAndStart() {
        std::map<WindowID, Rect> homes;
        for (const auto& [id, last] : stepped_) {
            const auto tracked = desk_.conductor->orbit().tracked(DesktopWithConductor::key(id));
            if (tracked && desk_.frame(id)->isWithin(1.5, tracked->lastApplied)) {
                homes[id] = tracked->home;
            }
        }
        desk_.conductor->stopFeatures();
        for (const auto& [id, home] : homes) {
            EXPECT_TRUE(desk_.frame(id)->isWithin(0.5, home)) << number(id);
        }
        ++stops_;
        desk_.conductor->startFeatures();
        for (auto& [id, last] : stepped_) {
            last.reset();
        }
    }

    void look() {
        bool stepped = false;
        for (const AttributeAccess& access : desk_.traffic.record()) {
            if (access.kind == AccessKind::write) {
                stepped = true;
                EXPECT_FALSE(desk_.input.isDragButtonDown());
                EXPECT_GE(access.at - lastInput_, 3);
            }
        }
        steps_ += stepped ? 1 : 0;
        const double radius = 2;
        const double tolerance = 3;
        const auto hour = static_cast<std::int64_t>(desk_.runLoop.now() / 3600);
        for (auto& [id, last] : stepped_) {
            const Rect frame = *desk_.frame(id);
            const auto tracked = desk_.conductor->orbit().tracked(DesktopWithConductor::key(id));
            if (!tracked || !frame.isWithin(1e-6, tracked->lastApplied)) {
                last.reset();
                continue;
            }
            EXPECT_LE(std::abs(frame.minX() - tracked->home.minX()), radius + tolerance)
                << number(id);
            EXPECT_LE(std::abs(frame.maxX() - tracked->home.maxX()), radius + tolerance)
                << number(id);
            EXPECT_LE(std::abs(frame.minY() - tracked->home.minY()), radius + tolerance)
                << number(id);
            EXPECT_LE(std::abs(frame.maxY() - tracked->home.maxY()), radius + tolerance)
                << number(id);
            if (!stepped) {
                continue;
            }
            if (tracked->home == frame) {
                ++adoptions_;  // Met, or found where the user put it.
                last.reset();
                continue;
            }
            if (last && last->hour == hour) {
                ++moves_;
                EXPECT_NEAR(std::abs(frame.x - last->frame.x) + std::abs(frame.y - last->frame.y),
                            1, 1e-6)
                    << number(id);
                EXPECT_EQ(frame.size(), last->frame.size()) << number(id);
            }
            last = Stepped{frame, hour};
        }
    }

    static std::uint64_t number(WindowID id) { return static_cast<std::uint64_t>(id); }

    std::mt19937 random_;
    DesktopWithConductor desk_;
    std::vector<ApplicationID> applications_;
    std::map<WindowID, std::optional<Stepped>> stepped_;
    Doing doing_ = Doing::typing;
    int left_ = 600;
    double lastInput_ = SimulatedClock::startOfTime;
    int steps_ = 0;
    int moves_ = 0;
    int stops_ = 0;
    int adoptions_ = 0;
};

class ProtectedWeek : public testing::TestWithParam<std::uint32_t> {};

TEST_P(ProtectedWeek, windowsStayNearTheirHomesAndNobodyIsDisturbed) {
    Week week(GetParam());
    week.run(7 * 86'400);
    // The week was one in which something happened.
    EXPECT_GT(week.steps(), 500);
    EXPECT_GT(week.moves(), 2000);
    EXPECT_GT(week.stops(), 5);
    EXPECT_GT(week.adoptions(), 20);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ProtectedWeek, testing::Range(1U, 3U));

}  // namespace
}  // namespace lumatile
