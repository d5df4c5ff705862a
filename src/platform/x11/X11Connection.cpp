#include "platform/x11/X11Connection.h"

#include <poll.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

// For a server that answers nobody: a program that is asked to end should end.
constexpr std::chrono::seconds longestFarewell{1};

}  // namespace

std::unique_ptr<X11Connection> X11Connection::open(const std::string& displayName) {
    int screenNumber = 0;
    xcb_connection_t* connection =
        xcb_connect(displayName.empty() ? nullptr : displayName.c_str(), &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) {
        xcb_screen_next(&screens);
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screens.data));
}

X11Connection::X11Connection(xcb_connection_t* connection, xcb_screen_t* screen)
    : connection_(connection), screen_(screen), atoms_(connection) {}

X11Connection::~X11Connection() {
    awaitServer();
    xcb_disconnect(connection_);
}

void X11Connection::selectRootEvents(std::uint32_t mask) {
    rootEventMask_ |= mask;
    xcb_change_window_attributes(connection_, root(), XCB_CW_EVENT_MASK, &rootEventMask_);
}

X11Connection::Subscription X11Connection::observe(Observer observer) {
    return observers_.add(std::move(observer));
}

void X11Connection::defer(std::function<void()> action) { deferred_.push_back(std::move(action)); }

void X11Connection::deferToEnd(std::function<void()> action) {
    deferredToEnd_.push_back(std::move(action));
}

int X11Connection::fileDescriptor() const { return xcb_get_file_descriptor(connection_); }

void X11Connection::dispatch() {
    if (dispatching_) {
        return;
    }
    dispatching_ = true;
    readEvents();
    while (!deferred_.empty() || !deferredToEnd_.empty()) {
        runFirst(deferred_.empty() ? deferredToEnd_ : deferred_);
        readEvents();
    }
    xcb_flush(connection_);
    dispatching_ = false;
}

void X11Connection::runFirst(std::deque<std::function<void()>>& actions) {
    const std::function<void()> action = std::move(actions.front());
    actions.pop_front();
    action();
}

void X11Connection::readEvents() {
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        observers_.notify(*event);
    }
}

bool X11Connection::waitForEvents(Clock::time_point deadline) {
    xcb_flush(connection_);
    while (!isLost()) {
        bool any = false;
        while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
            observers_.notify(*event);
            any = true;
        }
        if (any) {
            return true;
        }
        const auto left = deadline - Clock::now();
        if (left <= Clock::duration::zero()) {
            return false;
        }
        const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        pollfd descriptor{fileDescriptor(), POLLIN, 0};
        if (poll(&descriptor, 1, static_cast<int>(std::min<long long>(milliseconds, 1000))) < 0 &&
            errno != EINTR) {
            return false;
        }
    }
    return false;
}

/// Waits until the server has carried out everything. It forgets the requests of a client that is
/// gone, when it has something to tell that client before it comes to them; what puts the user's
/// desktop back in order at the end must not be among those.
void X11Connection::awaitServer() {
    const Clock::time_point deadline = Clock::now() + longestFarewell;
    const xcb_get_input_focus_cookie_t question = xcb_get_input_focus(connection_);
    xcb_flush(connection_);
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (!isLost() && Clock::now() < deadline &&
           xcb_poll_for_reply(connection_, question.sequence, &reply, &error) == 0) {
        pollfd descriptor{fileDescriptor(), POLLIN, 0};
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        poll(&descriptor, 1, static_cast<int>(std::max<long long>(left, 0)));
    }
    const X11Reply<void> ownedReply(reply);
    const X11Reply<xcb_generic_error_t> ownedError(error);
}

void X11Connection::synchronize() {
    const X11Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    readEvents();
}

bool X11Connection::isLost() const { return xcb_connection_has_error(connection_) != 0; }

}  // namespace lumatile
