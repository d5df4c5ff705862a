#include "platform/x11/X11WindowWriter.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>

#include "platform/x11/X11RootMessage.h"

namespace lumatile {

namespace {

using Clock = X11Connection::Clock;
using TimePoint = Clock::time_point;
using std::chrono::milliseconds;

// An answer of a window manager often comes in several steps, with the drawing of its frame between
// them. When the window is not where it should be so long after the last of them, the window
// manager is asked whether it has its own idea.
constexpr milliseconds settlingTime{40};

// For the last question when it has its own idea: far more than a living one takes.
constexpr milliseconds probeTime{60};

// A program that draws its own decoration learns that it is no longer maximized, and then redraws
// itself with a shadow, which takes a frame or two, and longer on a busy machine.
constexpr milliseconds redrawTime{200};

// A decoration may change when a state is left, and then once more when the program redraws.
constexpr int mostRepeats = 3;

// The first item of the placing message: north-west gravity stated, so that the corner of the
// decoration counts for every program; which items follow; and that a pager asks.
constexpr std::uint32_t northWest = 1;
constexpr std::uint32_t onlyPosition = 3U << 8U;
constexpr std::uint32_t positionAndSize = 15U << 8U;
constexpr std::uint32_t fromPager = 2U << 12U;

constexpr std::uint32_t stateRemove = 0;
constexpr std::uint32_t pagerSource = 2;

std::uint32_t item(int value) { return std::bit_cast<std::uint32_t>(std::int32_t{value}); }

bool isReachable(const X11PixelRect& rect) {
    const auto inside = [](int edge) {
        return std::abs(static_cast<double>(edge)) <= X11PixelRect::coordinateLimit;
    };
    return inside(rect.x) && inside(rect.y) && inside(rect.x + rect.width) &&
           inside(rect.y + rect.height);
}

X11PixelRect moved(const X11PixelRect& rect, const Point& by) {
    return {rect.x + static_cast<int>(by.x), rect.y + static_cast<int>(by.y), rect.width,
            rect.height};
}

Clock::duration durationOf(double seconds) {
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

/// What `time` becomes where writings wait for `longest` seconds.
Clock::duration scaled(Clock::duration time, double longest) {
    return durationOf(std::chrono::duration<double>(time).count() * longest /
                      X11WindowWriter::longestTimeout);
}

bool hasSideWithoutShadow(const X11Extents& shadow) {
    return shadow.left == 0 || shadow.right == 0 || shadow.top == 0 || shadow.bottom == 0;
}

}  // namespace

/// What is to become of a window.
struct X11WindowWriter::Order {
    xcb_window_t id = XCB_WINDOW_NONE;
    std::uint64_t serial = 0;
    Rect frame;           ///< Unrounded, accessibility space.
    Point origin;         ///< Of that space, on the root.
    X11PixelRect target;  ///< The outer rectangle.
    bool withSize = false;
    bool leavesState = false;  ///< Out of maximized or shaded first.
};

/// How far the waiting for an answer has come.
struct X11WindowWriter::Wait {
    TimePoint start;
    TimePoint deadline;
    std::uint64_t answersBefore = 0;
    std::uint64_t tellingsBefore = 0;
    X11PixelRect outerBefore;
    X11Extents shadowBefore;
    TimePoint now{};
    TimePoint until{};  ///< When to look again without an event.
    X11PixelRect sent{};
    int repeats = 0;
    std::optional<TimePoint> probedAt{};  ///< Since the last message.
};

X11WindowWriter::X11WindowWriter(X11Connection& connection, X11Monitors& monitors,
                                 X11WindowMirror& mirror, double longest)
    : connection_(connection),
      monitors_(monitors),
      mirror_(mirror),
      longest_(longest),
      settlingTime_(scaled(settlingTime, longest)),
      probeTime_(scaled(probeTime, longest)),
      probe_(connection, mirror),
      tile_(connection, mirror),
      moveResize_(connection.atoms()["_NET_MOVERESIZE_WINDOW"]),
      state_(connection.atoms()["_NET_WM_STATE"]),
      maximizedHorizontally_(connection.atoms()["_NET_WM_STATE_MAXIMIZED_HORZ"]),
      maximizedVertically_(connection.atoms()["_NET_WM_STATE_MAXIMIZED_VERT"]),
      shaded_(connection.atoms()["_NET_WM_STATE_SHADED"]) {}

Rect X11WindowWriter::frame(const X11Window& window) {
    const X11PixelRect outer = tile_.outerAtRelease(window).value_or(window.frame().outer());
    if (window.written && window.written->became == outer &&
        window.written->origin == rootOrigin()) {
        return window.written->frame;
    }
    return monitors_.fromRoot(outer.toRect());
}

bool X11WindowWriter::writePosition(xcb_window_t id, std::uint64_t serial, const Point& position,
                                    double timeout) {
    const bool isDrop = tile_.takeDrop();
    // What a window manager that does not answer will make of the release is not known: it may
    // tile.
    const bool isTiled = isDrop && !awaitWindowManager(timeout);
    X11Window* window = writable(id, serial);
    const auto left = X11PixelRect::roundedEdge(position.x);
    const auto top = X11PixelRect::roundedEdge(position.y);
    if (window == nullptr || !left || !top) {
        return false;
    }
    const X11PixelRect outer = window->frame().outer();
    const bool isUnderWay = window->written && window->written->givenUpAt == outer;
    // A size that is still under way will be there when the position is.
    const Size current = (isUnderWay ? window->written->frame : frame(*window)).size();
    const X11PixelRect& sized = isUnderWay ? window->written->became : outer;
    const Order order{.id = id,
                      .serial = serial,
                      .frame = {position.x, position.y, current.width, current.height},
                      .origin = rootOrigin(),
                      .target = moved({*left, *top, sized.width, sized.height}, rootOrigin()),
                      .withSize = false,
                      .leavesState = window->facts.isMaximized()};
    if (isDrop && isReachable(order.target)) {
        return carryOutDrop(order, isTiled, timeout);
    }
    if (outer == order.target && !isUnderWay) {
        settle(order, *window);
        return true;
    }
    return isReachable(order.target) && carryOut(order, timeout);
}

bool X11WindowWriter::writeSize(xcb_window_t id, std::uint64_t serial, const Size& size,
                                double timeout) {
    X11Window* window = writable(id, serial);
    if (window == nullptr) {
        return false;
    }
    const X11PixelRect outer = window->frame().outer();
    const bool isUnderWay = window->written && window->written->givenUpAt == outer;
    const bool isInForce = window->written && window->written->became == outer &&
                           window->written->origin == rootOrigin();
    // metacity keeps windows on the screen, so that a place which suits the size to come may be
    // refused to the size of now: what was asked for counts.
    const Point corner = isUnderWay || isInForce ? window->written->asked : frame(*window).origin();
    const Rect wanted{corner.x, corner.y, size.width, size.height};
    const auto rounded = X11PixelRect::rounding(wanted);
    if (!rounded) {
        return false;
    }
    const Order order{
        .id = id,
        .serial = serial,
        .frame = wanted,
        .origin = rootOrigin(),
        .target = moved(*rounded, rootOrigin()),
        .withSize = true,
        .leavesState = window->facts.isMaximized() || window->facts.isShaded,
    };
    const bool isSo = outer == order.target ||
                      outer == window->frame().constrained(order.target, window->facts.sizeHints);
    if (isSo && !window->facts.isShaded && !isUnderWay) {
        settle(order, *window);
        return true;
    }
    return isReachable(order.target) && carryOut(order, timeout);
}

X11Window* X11WindowWriter::writable(xcb_window_t id, std::uint64_t serial) {
    mirror_.refresh();
    X11Window* window = mirror_.findManaged(id, serial);
    // A full-screen window stays one: three window managers ignore a move, the fourth would leave
    // it full-screen by name only.
    return window != nullptr && mirror_.hasWindowManager() && !window->facts.isFullScreen ? window
                                                                                          : nullptr;
}

Point X11WindowWriter::rootOrigin() { return monitors_.toRoot(Point{}); }

bool X11WindowWriter::carryOut(const Order& order, double timeout) {
    X11Window* window = mirror_.findManaged(order.id, order.serial);
    if (window == nullptr) {
        return false;
    }
    const TimePoint now = Clock::now();
    Wait wait{.start = now,
              .deadline = after(now, timeout),
              .answersBefore = window->answers,
              .tellingsBefore = window->tellings,
              .outerBefore = window->frame().outer(),
              .shadowBefore = window->facts.shadow,
              .now = now};
    if (order.leavesState) {
        sendStateRemovals(*window, order.withSize && window->facts.isShaded);
    }
    send(order, *window, wait);
    window->written = {order.frame, order.origin, order.frame.origin(), order.target,
                       window->frame().outer()};
    if (probe_.isSilent()) {
        xcb_flush(connection_.get());
        return false;
    }
    if (window->refusedAt == window->answers) {
        // It takes messages but had its own idea the last time; so whether it has again is known
        // as soon as it has dealt with this one.
        probe(wait);
    }
    return awaitAnswer(order, wait);
}

bool X11WindowWriter::carryOutDrop(const Order& order, bool isTiled, double timeout) {
    // A window that was just dragged does not lie at the target. One that does is in a tile by now,
    // and so is one that does not go there.
    X11Window* window = mirror_.findManaged(order.id, order.serial);
    if (window != nullptr && !isTiled && !window->frame().outer().hasOriginOf(order.target)) {
        window->refusedAt = window->answers;  // Whether it does is to be known at once.
        if (carryOut(order, timeout)) {
            return true;
        }
    }
    tile_.undo(order.id);
    // A window manager that is too slow to answer gets it all the same: it takes one after another.
    awaitWindowManager(timeout);
    return carryOut(order, timeout);
}

bool X11WindowWriter::awaitWindowManager(double timeout) {
    if (probe_.isSilent()) {
        return false;
    }
    const TimePoint deadline = after(Clock::now(), timeout);
    probe_.ask();
    while (!probe_.isAnswered()) {
        if (Clock::now() >= deadline || connection_.isLost()) {
            probe_.noteSilence();
            return false;
        }
        connection_.waitForEvents(deadline);
    }
    return true;
}

bool X11WindowWriter::awaitAnswer(const Order& order, Wait& wait) {
    while (true) {
        mirror_.refresh();
        X11Window* window = mirror_.findManaged(order.id, order.serial);
        if (window == nullptr || connection_.isLost()) {
            return false;
        }
        if (!mirror_.hasWindowManager()) {
            window->written.reset();  // Nobody is left who could still carry it out.
            return false;
        }
        wait.now = Clock::now();
        wait.until = wait.deadline;
        if (order.leavesState) {
            repeatWhereNeeded(order, *window, wait);
        }
        if (hasArrived(order, *window)) {
            if (!order.leavesState || isConfirmed(*window, wait)) {
                settle(order, *window);
                return true;
            }
        } else if (isGivenUp(order, *window, wait)) {
            return false;
        }
        connection_.waitForEvents(wait.until);
    }
}

bool X11WindowWriter::hasArrived(const Order& order, const X11Window& window) {
    const X11PixelRect outer = window.frame().outer();
    if (!outer.hasOriginOf(order.target) || (order.leavesState && window.facts.isMaximized())) {
        return false;
    }
    return !order.withSize ||
           (!window.facts.isShaded &&
            (outer.hasSizeOf(order.target) ||
             outer.hasSizeOf(window.frame().constrained(order.target, window.facts.sizeHints))));
}

bool X11WindowWriter::isConfirmed(const X11Window& window, Wait& wait) {
    if (wait.now >= wait.deadline) {
        return true;
    }
    const TimePoint redrawn = wait.start + redrawTime;
    if (window.facts.statesShadow && window.facts.shadow == wait.shadowBefore &&
        hasSideWithoutShadow(wait.shadowBefore) && wait.now < redrawn) {
        wait.until = std::min(wait.until, redrawn);
        return false;
    }
    // The decoration of a window that leaves a state changes beside its geometry; what has been
    // read of the two belongs together once the window manager is through with it all.
    if (!wait.probedAt) {
        probe(wait);
    }
    const TimePoint ignored = *wait.probedAt + probeTime_;
    wait.until = std::min(wait.until, ignored);
    return probe_.isAnswered() || wait.now >= ignored;
}

bool X11WindowWriter::isGivenUp(const Order& order, X11Window& window, Wait& wait) {
    const bool answered = window.answers != wait.answersBefore;
    const bool dealtWith = wait.probedAt && probe_.isAnswered();
    const bool isOver = wait.now >= wait.deadline ||
                        (answered && wait.probedAt && wait.now >= *wait.probedAt + probeTime_);
    if (dealtWith || isOver) {
        if (answered || dealtWith) {
            settle(order, window);
        } else {
            probe_.noteSilence();
        }
        window.refusedAt = window.answers;
        return true;
    }
    if (!wait.probedAt) {
        const bool movedElsewhere = !order.withSize && window.tellings != wait.tellingsBefore &&
                                    window.frame().outer() != wait.outerBefore;
        const TimePoint probeAt = movedElsewhere ? wait.now
                                  : answered     ? window.answeredAt + settlingTime_
                                                 : wait.start + (wait.deadline - wait.start) / 2;
        if (wait.now >= probeAt) {
            probe(wait);
        } else {
            wait.until = std::min(wait.until, probeAt);
        }
    }
    if (wait.probedAt && answered) {
        wait.until = std::min(wait.until, *wait.probedAt + probeTime_);
    }
    return false;
}

void X11WindowWriter::repeatWhereNeeded(const Order& order, const X11Window& window, Wait& wait) {
    if (wait.repeats < mostRepeats && placing(order, window) != wait.sent) {
        ++wait.repeats;
        send(order, window, wait);
    }
}

void X11WindowWriter::probe(Wait& wait) {
    probe_.ask();
    wait.probedAt = wait.now;
}

void X11WindowWriter::sendStateRemovals(const X11Window& window, bool shaded) {
    if (window.facts.isMaximized()) {
        sendRootMessage(
            connection_, window.id, state_,
            {stateRemove, maximizedVertically_, maximizedHorizontally_, pagerSource, 0});
    }
    if (shaded) {
        sendRootMessage(connection_, window.id, state_,
                        {stateRemove, shaded_, XCB_ATOM_NONE, pagerSource, 0});
    }
}

TimePoint X11WindowWriter::after(TimePoint from, double seconds) const {
    return from + durationOf(std::clamp(seconds, 0.0, longest_));
}

X11PixelRect X11WindowWriter::placing(const Order& order, const X11Window& window) {
    const X11WindowFrame frame = window.frame();
    X11PixelRect result = frame.placing(frame.clientFor(order.target));
    if (!order.withSize) {
        result.width = 0;
        result.height = 0;
    }
    return result;
}

void X11WindowWriter::send(const Order& order, const X11Window& window, Wait& wait) {
    wait.sent = placing(order, window);
    wait.probedAt.reset();
    const std::uint32_t items = order.withSize ? positionAndSize : onlyPosition;
    sendRootMessage(connection_, window.id, moveResize_,
                    {northWest | items | fromPager, item(wait.sent.x), item(wait.sent.y),
                     item(wait.sent.width), item(wait.sent.height)});
}

void X11WindowWriter::settle(const Order& order, X11Window& window) {
    const X11PixelRect outer = window.frame().outer();
    // Where the window took something else than was asked, that counts, unrounded as it is.
    Rect kept = outer.toRect().offsetBy(-order.origin.x, -order.origin.y);
    if (outer.x == order.target.x) {
        kept.x = order.frame.x;
    }
    if (outer.y == order.target.y) {
        kept.y = order.frame.y;
    }
    if (outer.width == order.target.width) {
        kept.width = order.frame.width;
    }
    if (outer.height == order.target.height) {
        kept.height = order.frame.height;
    }
    window.written = {kept, order.origin, order.frame.origin(), outer, std::nullopt};
}

}  // namespace lumatile
