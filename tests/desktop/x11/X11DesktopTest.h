#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/x11/X11AccessibilityPlatform.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11WindowManagerProbe.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11Workspace.h"
#include "tests/desktop/support/TestDesktop.h"
#include "tests/desktop/support/VainWaits.h"
#include "windows/AXBridge.h"
#include "windows/AttributeName.h"
#include "windows/AttributeReader.h"

namespace lumatile::desktop {

/// Seconds: what a write may wait for where a test asks what becomes of it and not how long it
/// takes. A window manager that shares a busy machine with other tests may overrun what a user is
/// made to wait.
constexpr double patient = 4;

/// The adapter under test, on a connection of its own.
struct X11Adapter {
    /// @param longestTimeout that of users where it is `X11WindowWriter::longestTimeout`
    explicit X11Adapter(const std::string& display, double longestTimeout = patient)
        : connection(X11Connection::open(display)),
          monitors(*connection),
          mirror(*connection),
          platform(*connection, monitors, mirror, longestTimeout),
          workspace(mirror),
          bridge(platform) {}

    std::unique_ptr<X11Connection> connection;
    X11Monitors monitors;
    X11WindowMirror mirror;
    X11AccessibilityPlatform platform;
    X11Workspace workspace;
    AXBridge bridge;

    /// The element of the managed window with this id; empty when there is none.
    Element element(xcb_window_t id) {
        mirror.refresh();
        const X11Window* window = mirror.find(id);
        return window != nullptr && window->isManaged
                   ? std::make_shared<X11Element>(X11Element::Kind::window, id, window->serial)
                   : nullptr;
    }

    AXWindow window(xcb_window_t id) { return {platform, element(id)}; }

    std::optional<std::string> text(const Element& of, std::string_view attribute) {
        return AttributeReader::value<std::string>(platform, of, attribute);
    }
};

/// A desktop under one of the window managers and the adapter on it.
class X11DesktopTest : public testing::TestWithParam<WindowManager::Kind> {
protected:
    using Kind = TestWindow::Kind;

    void start(const MonitorLayout& layout = MonitorLayout::landscape(),
               WindowManager::Options options = {}, double longestTimeout = patient) {
        desktop_ = std::make_unique<TestDesktop>(layout, GetParam(), options);
        adapter_ = std::make_unique<X11Adapter>(desktop_->display(), longestTimeout);
    }

    /// For tests of how long a write takes.
    void startWithTheUsersTimeout() {
        start(MonitorLayout::landscape(), {}, X11WindowWriter::longestTimeout);
    }

    TestDesktop& desktop() { return *desktop_; }
    X11Adapter& adapter() { return *adapter_; }

    std::unique_ptr<TestWindow> open(Kind kind, const PixelRect& area = {200, 150, 640, 400}) {
        TestWindow::Options options;
        options.kind = kind;
        options.area = area;
        return desktop_->openWindow(options);
    }

    /// Waits until the window manager has dealt with everything so far, also with what it puts off
    /// until it is idle, so that nothing of it falls into a measurement.
    void settle() {
        X11WindowManagerProbe probe(*adapter_->connection, adapter_->mirror);
        constexpr std::uint64_t questions = 5;
        std::uint64_t signs = 0;
        do {
            const std::uint64_t before = adapter_->mirror.windowManagerActivity();
            for (std::uint64_t question = 0; question < questions; ++question) {
                probe.ask();
                ASSERT_TRUE(XClient::waitUntil([&] {
                    adapter_->connection->synchronize();
                    return probe.isAnswered();
                }));
            }
            signs = adapter_->mirror.windowManagerActivity() - before;
        } while (signs > questions);
    }

private:
    std::unique_ptr<TestDesktop> desktop_;
    std::unique_ptr<X11Adapter> adapter_;
};

inline std::string nameOf(const testing::TestParamInfo<WindowManager::Kind>& parameter) {
    return toString(parameter.param);
}

inline Rect rectOf(const PixelRect& rect) {
    return {static_cast<double>(rect.x), static_cast<double>(rect.y),
            static_cast<double>(rect.width), static_cast<double>(rect.height)};
}

inline std::string toString(TestWindow::Kind kind) {
    switch (kind) {
        case TestWindow::Kind::decorated:
            return "decorated";
        case TestWindow::Kind::undecorated:
            return "undecorated";
        case TestWindow::Kind::clientSide:
            return "client-side";
        case TestWindow::Kind::sizeIncrement:
            return "size-increment";
        case TestWindow::Kind::dialog:
            return "dialog";
        case TestWindow::Kind::dock:
            return "dock";
        case TestWindow::Kind::desktop:
            return "desktop";
    }
    return "?";
}

/// Wall-clock seconds that `action` takes.
template <typename Action>
double secondsFor(Action action) {
    const auto before = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
}

/// The least that a few runs wait in vain, each after another preparation: a window manager that is
/// slow for once only ever adds to it.
template <typename Preparation, typename Action>
double vainSecondsAtBest(Preparation prepare, Action action) {
    double seconds = std::numeric_limits<double>::infinity();
    for (int run = 0; run < 3; ++run) {
        prepare();
        seconds = std::min(seconds, vainSecondsFor(action));
    }
    return seconds;
}

}  // namespace lumatile::desktop
