#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "geometry/Grid.h"
#include "tests/unit/drag_snap/DragDesk.h"

namespace lumatile {
namespace {

using State = DragSnapController::State;

/// The table of states as a user would tell it, beside the controller.
struct Model {
    State state = State::idle;
    Rect start;
    std::optional<Rect> target;

    void press(const DragDesk& desk, bool onWindow) {
        state = onWindow ? State::armed : State::idle;
        start = desk.window->current;
        target.reset();
    }

    void move(const DragDesk& desk, const Point& to) {
        if (state == State::idle || !desk.controller.tilingByEdgeDragEnabled) {
            return;
        }
        const Rect screen = DragDesk::tall.contains(to) ? DragDesk::tall : DragDesk::wide;
        const std::optional<Rect> place = placeAt(desk, to, screen);
        if (!place) {
            target.reset();
            return;
        }
        if (state == State::armed && !isMoved(desk.window->current)) {
            return;
        }
        state = State::dragging;
        target = place;
    }

    bool isMoved(const Rect& now) const {
        return (now.x != start.x || now.y != start.y) && now.width == start.width &&
               now.height == start.height;
    }

    /// What a drop there would select.
    static std::optional<Rect> placeAt(const DragDesk& desk, const Point& to, const Rect& screen) {
        const double x = std::clamp(to.x, screen.minX(), screen.maxX() - 0.5);
        const double y = std::clamp(to.y, screen.minY(), screen.maxY() - 0.5);
        const double distance = std::min(std::min(x - screen.minX(), screen.maxX() - x),
                                         std::min(y - screen.minY(), screen.maxY() - y));
        if (distance > 8) {
            return std::nullopt;
        }
        const Axis axis = orientationOf(screen);
        const SnapCommand* best = nullptr;
        for (const SnapCommand& command : desk.commands) {
            if (command.kind == Kind::area && command.axis == axis &&
                Grid::contains({x, y}, command.activationArea(), screen, axis) &&
                (best == nullptr || area(command) < area(*best))) {
                best = &command;
            }
        }
        return best == nullptr ? std::nullopt
                               : std::optional(Grid::rect(best->targetArea(), screen, axis));
    }

    static double area(const SnapCommand& command) {
        const Segment& cells = command.targetSegments.front();
        return static_cast<double>(cells[2] * cells[3]);
    }
};

// A hand that presses, moves, resizes, lets go, loses the window and the switch, in any order.
RC_GTEST_PROP(DragSnapModel, statesTargetsAndDropsAreThoseOfTheTable, ()) {
    DragDesk desk;
    Model model;
    const Rect opened = desk.window->current;
    for (int action = 0; action < 60; ++action) {
        const Point to{*rc::gen::element(-5.0, 0.0, 4.0, 8.0, 9.0, 150.0, 1000.0, 2391.0, 2396.0,
                                         2399.5, 2404.0, 3000.0, 3595.0, 3700.0),
                       *rc::gen::element(-5.0, 2.0, 26.0, 33.0, 150.0, 700.0, 1100.0, 1217.0,
                                         1223.0, 1300.0, 2399.0)};
        const std::size_t placed = desk.window->placed.size();
        switch (*rc::gen::inRange(0, 10)) {
            case 0: {
                desk.window->current = opened;
                model.press(desk, true);
                desk.press();
                break;
            }
            case 1: {
                model.press(desk, desk.window->current.contains(to));
                desk.hand = to;
                desk.controller.dragBegan(to);
                break;
            }
            case 2: {
                const bool drops = model.state == State::dragging && model.target;
                const std::optional<Rect> target = model.target;
                desk.controller.dragEnded();
                RC_ASSERT(desk.window->placed.size() == placed + (drops ? 1 : 0));
                if (drops) {
                    RC_ASSERT(desk.window->current == *target);
                }
                model = Model{};
                RC_ASSERT(!desk.highlight->visible);
                break;
            }
            case 3:
                desk.controller.tilingByEdgeDragEnabled = *rc::gen::inRange(0, 4) > 0;
                break;
            case 4: {
                desk.window->current.width += 40;
                model.move(desk, to);
                desk.hand = to;
                desk.controller.dragMoved(to);
                break;
            }
            default: {
                const Rect before = desk.window->current;
                desk.window->current = before.offsetBy(to.x - desk.hand.x, to.y - desk.hand.y);
                model.move(desk, to);
                desk.window->current = before;
                desk.drag(to);
                break;
            }
        }
        RC_ASSERT(desk.controller.state() == model.state);
        RC_ASSERT(desk.controller.currentTarget() == model.target);
        if (model.state != State::idle && model.target) {
            RC_ASSERT(desk.highlight->visible == model.target);
        }
    }
}

}  // namespace
}  // namespace lumatile
