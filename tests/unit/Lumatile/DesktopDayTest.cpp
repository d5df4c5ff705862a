#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

/// What ought to be known of a window.
struct Believed {
    Rect frame;                      ///< Where it ought to be.
    std::optional<Rect> remembered;  ///< What restore ought to bring.
    std::optional<Rect> home;        ///< Where the orbit ought to bring it; absent: not tracked.
    Rect lastApplied;                ///< With `home`: where it was last put.
};

/// A user at work for a day: every action is done on the desktop and foretold by a model that knows
/// the rules but none of the code, and every window has to be where it was foretold.
class Day {
public:
    explicit Day(std::uint32_t seed) : random_(seed), desk_("{}") {
        // Under a held button the orbit waits, all day: what moves is moved by snapping alone.
        desk_.input.pressButton();
        applications_ = {desk_.editor, desk_.launch({.pid = 101, .applicationId = "browser"}),
                         desk_.launch({.pid = 102}), desk_.launch({.applicationId = "stranger"}),
                         desk_.launch({.pid = 103, .applicationId = "com.apple.loginwindow"})};
    }

    void run(double seconds) {
        const double end = desk_.runLoop.now() + seconds;
        while (desk_.runLoop.now() < end && !testing::Test::HasFailure()) {
            act();
            compare();
        }
    }

    int commands() const { return commands_; }
    int moves() const { return moves_; }
    std::string story() const { return story_.str(); }

private:
    int roll(int sides) { return std::uniform_int_distribution<int>(0, sides - 1)(random_); }

    template <typename Container>
    auto& pick(Container& container) {
        return *std::next(container.begin(), roll(static_cast<int>(container.size())));
    }

    Rect anyRect() {
        return {static_cast<double>(roll(3600) - 400), static_cast<double>(roll(1800) - 300),
                static_cast<double>(100 + roll(1200)), static_cast<double>(100 + roll(900))};
    }

    void act() {
        const int action = roll(100);
        if (action < 45) {
            perform();
        } else if (action < 57) {
            open();
        } else if (windows_.empty()) {
            desk_.advance(roll(60));
        } else if (action < 63) {
            const WindowID id = pick(windows_).first;
            tell("close", id);
            desk_.programs.close(id);
            windows_.erase(id);
        } else if (action < 73) {
            const WindowID id = pick(windows_).first;
            tell("focus", id);
            desk_.programs.focus(id);
        } else if (action < 75) {
            tell("focus nothing");
            desk_.programs.focusNothing();
        } else if (action < 77) {
            const WindowID id = pick(windows_).first;
            tell("minimize", id);
            desk_.programs.minimize(id);
        } else if (action < 84) {
            auto& [id, believed] = pick(windows_);
            believed.frame = anyRect();
            tell("drag", id);
            desk_.dragTo(id, believed.frame);
        } else if (action < 88) {
            changeScreens();
        } else if (action < 91) {
            tell("exaggerate");
            desk_.conductor->setExaggerated(!desk_.conductor->isExaggerated());
        } else if (action < 94) {
            const WindowID id = pick(windows_).first;
            auto& unreadable = desk_.model(id).faults.unreadable;
            tell("toggle readable", id);
            if (unreadable.erase(std::string(AttributeName::size)) == 0) {
                unreadable.emplace(AttributeName::size);
            }
        } else if (action < 99) {
            stopOrStart();
        } else {
            tell("wait");
            desk_.advance(roll(7200));
        }
        desk_.advance(roll(20));
    }

    void open() {
        const ApplicationID application = pick(applications_);
        const Rect frame = anyRect();
        const WindowID id = desk_.open(application, frame);
        windows_[id] = {frame, std::nullopt, std::nullopt, {}};
        tell("open", id);
    }

    void changeScreens() {
        tell("screens");
        const std::string name = roll(2) == 0 ? "tall" : "above";
        if (std::erase(plugged_, name) > 0) {
            desk_.unplug(name);
        } else {
            plugged_.push_back(name);
            if (name == "tall") {
                desk_.plugPortrait();
            } else {
                desk_.plug(name, {200, -1000, 1280, 1000});
            }
        }
        // What lay on the screen is the window manager's business; the model takes note.
        for (auto& [id, believed] : windows_) {
            believed.frame = *desk_.frame(id);
        }
    }

    void stopOrStart() {
        tell("stop or start");
        if (!desk_.conductor->featuresRunning()) {
            desk_.conductor->startFeatures();
            return;
        }
        desk_.conductor->stopFeatures();
        for (auto& [id, believed] : windows_) {
            if (believed.home && isReadable(id) &&
                believed.frame.isWithin(1.5, believed.lastApplied) &&
                !believed.frame.isWithin(0.5, *believed.home)) {
                believed.frame = *believed.home;
            }
            believed.home.reset();
        }
    }

    void perform() {
        const SnapCommand command = pick(desk_.conductor->store().commands);
        std::optional<WindowID> front = desk_.programs.focusedWindow();
        const SimulatedWindow* window = front ? desk_.programs.find(*front) : nullptr;
        const bool isBlacklisted = window && window->application == applications_.back();
        tell("perform " + command.nameKey, front.value_or(WindowID{}));
        if (window && !isBlacklisted) {
            foretell(command, *front);
        }
        ++commands_;
        const bool byKey = command.axis == Axis::horizontal && desk_.conductor->featuresRunning();
        if (byKey) {
            desk_.press({command.shortcut->carbonKeyCode, command.shortcut->carbonModifiers});
        } else {
            desk_.conductor->performCommand(command);
        }
    }

    /// The screens' frames and visible frames, in the order of the list.
    std::vector<std::pair<Rect, Rect>> screens() const {
        std::vector<std::pair<Rect, Rect>> result;
        for (const std::string& name : plugged_) {
            result.emplace_back(*desk_.screens.frame(name), *desk_.screens.visibleFrame(name));
        }
        return result;
    }

    void foretell(const SnapCommand& given, WindowID id) {
        Believed& believed = windows_.at(id);
        const bool readable = isReadable(id);
        const Rect present = readable ? believed.frame : Rect{};
        std::optional<Rect> area;
        for (const auto& [frame, visible] : screens()) {
            if (!area && frame.contains(present.center())) {
                area = visible;
            }
        }
        if (!area) {
            return;
        }
        Rect target;
        std::optional<Rect> home;
        switch (given.kind) {
            case Kind::area:
                home = areaTarget(given.nameKey, *area);
                target = jittered(*home, *area);
                break;
            case Kind::center:
                if (!readable) {
                    return;
                }
                target = {area->x + area->width / 2 - present.width / 2,
                          area->y + area->height / 2 - present.height / 2, present.width,
                          present.height};
                break;
            case Kind::restore:
                target = believed.remembered.value_or(readable ? present : *area);
                break;
            case Kind::nextDisplay:
            case Kind::previousDisplay:
                if (!readable) {
                    return;
                }
                target = onNeighbour(present, given.kind == Kind::nextDisplay ? 1 : -1);
                break;
        }
        if (readable) {
            believed.remembered = present;
        }
        if (!believed.frame.isWithin(0, target)) {
            ++moves_;
        }
        believed.frame = target;
        if (readable) {
            believed.home = home.value_or(target);
            believed.lastApplied = target;
        }
    }

    Rect areaTarget(const std::string& nameKey, const Rect& area) const {
        const bool isPortrait = area.width < area.height;
        const SnapCommand command =
            desk_.command(nameKey, isPortrait ? Axis::vertical : Axis::horizontal);
        const auto& cells = command.targetSegments.at(0);
        const double width = area.width / (isPortrait ? 12 : 24);
        const double height = area.height / (isPortrait ? 24 : 12);
        return {area.x + width * static_cast<double>(cells[0]),
                area.y + height * static_cast<double>(cells[1]),
                width * static_cast<double>(cells[2]), height * static_cast<double>(cells[3])};
    }

    /// Each inner edge moved by the offset of the present time slot.
    Rect jittered(const Rect& target, const Rect& area) const {
        const bool exaggerated = desk_.conductor->isExaggerated();
        const double tolerance = exaggerated ? 20 : 3;
        const auto slot = static_cast<std::uint64_t>(now() / (exaggerated ? 10 : 3600));
        const auto share = [&](std::uint64_t factor) {
            const auto low = static_cast<double>((slot * factor) % 65536);
            return std::round(tolerance * (2 * low / 65535 - 1));
        };
        const double dx = share(31153);
        const double dy = share(40503);
        const auto inner = [](double edge, double border) { return std::abs(edge - border) > 0.5; };
        const double left = target.minX() + (inner(target.minX(), area.minX()) ? dx : 0);
        const double right = target.maxX() + (inner(target.maxX(), area.maxX()) ? dx : 0);
        const double top = target.minY() + (inner(target.minY(), area.minY()) ? dy : 0);
        const double bottom = target.maxY() + (inner(target.maxY(), area.maxY()) ? dy : 0);
        return {left, top, right - left, bottom - top};
    }

    Rect onNeighbour(const Rect& frame, int step) const {
        const auto all = screens();
        if (all.size() < 2) {
            return frame;
        }
        std::size_t from = 0;
        for (std::size_t i = all.size(); i > 0; --i) {
            if (all[i - 1].second.contains(frame.center())) {
                from = i - 1;
            }
        }
        const Rect& source = all[from].second;
        const Rect& target =
            all[(from + all.size() + static_cast<std::size_t>(step)) % all.size()].second;
        return {target.x + (frame.x - source.x) / source.width * target.width,
                target.y + (frame.y - source.y) / source.height * target.height,
                frame.width / source.width * target.width,
                frame.height / source.height * target.height};
    }

    void compare() {
        for (const auto& [id, believed] : windows_) {
            const std::optional<Rect> frame = desk_.frame(id);
            ASSERT_TRUE(frame);
            // The model adds and multiplies in an order of its own.
            EXPECT_TRUE(frame->isWithin(1e-6, believed.frame))
                << static_cast<std::uint64_t>(id) << " is at " << frame->x << " " << frame->y << " "
                << frame->width << " " << frame->height << " instead of " << believed.frame.x << " "
                << believed.frame.y << " " << believed.frame.width << " " << believed.frame.height;
            const auto remembered = desk_.remembered(id);
            EXPECT_EQ(remembered.has_value(), believed.remembered.has_value());
            if (remembered && believed.remembered) {
                EXPECT_TRUE(remembered->isWithin(1e-6, *believed.remembered));
            }
            const auto home = desk_.home(id);
            EXPECT_EQ(home.has_value(), believed.home.has_value());
            if (home && believed.home) {
                EXPECT_TRUE(home->isWithin(1e-6, *believed.home));
            }
        }
        EXPECT_EQ(desk_.hotKeys.registered().size(), desk_.conductor->featuresRunning() ? 19U : 0U);
        EXPECT_TRUE(desk_.log.lines().empty());
        EXPECT_EQ(desk_.preferences.changes(), 0U);
    }

    bool isReadable(WindowID id) { return desk_.model(id).faults.unreadable.empty(); }

    double now() const { return desk_.clock.wallSeconds(); }

    void tell(const std::string& what, WindowID id = {}) {
        story_ << desk_.runLoop.now() - SimulatedClock::startOfTime << " s: " << what << " "
               << static_cast<std::uint64_t>(id) << "\n";
    }

    std::mt19937 random_;
    DesktopWithConductor desk_;
    std::vector<ApplicationID> applications_;
    std::map<WindowID, Believed> windows_;
    std::vector<std::string> plugged_{"main"};  // The primary one first, the others as plugged in.
    std::ostringstream story_;
    int commands_ = 0;
    int moves_ = 0;
};

class DesktopDay : public testing::TestWithParam<std::uint32_t> {};

TEST_P(DesktopDay, everyWindowIsWhereItWasPut) {
    Day day(GetParam());
    day.run(86400);
    EXPECT_FALSE(HasFailure()) << day.story();
    // A day in which nothing was done would show nothing.
    EXPECT_GT(day.commands(), 400);
    EXPECT_GT(day.moves(), 200);
}

INSTANTIATE_TEST_SUITE_P(Seeds, DesktopDay, testing::Range(1U, 13U));

}  // namespace
}  // namespace lumatile
