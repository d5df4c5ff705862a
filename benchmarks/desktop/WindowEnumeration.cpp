#include "benchmarks/desktop/WindowEnumeration.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "platform/x11/X11AccessibilityPlatform.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Monitors.h"
#include "platform/x11/X11WindowMirror.h"
#include "platform/x11/X11Workspace.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/ReplyWaits.h"
#include "tests/desktop/support/TestDesktop.h"
#include "windows/AXBridge.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::MonitorLayout;
using desktop::ReplyWaits;
using desktop::TestDesktop;
using desktop::TestWindow;
using desktop::WindowManager;
using desktop::XClient;
using desktop::XReply;

namespace {

using Clock = std::chrono::steady_clock;

double microsecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
}

// The adapter as the program has it, on a connection of its own.
struct Adapter {
    explicit Adapter(const std::string& display)
        : connection(X11Connection::open(display)),
          monitors(*connection),
          mirror(*connection),
          platform(*connection, monitors, mirror),
          workspace(mirror),
          bridge(platform) {
        // Whole monitors are known to the program long before.
        monitors.rootRects();
    }

    std::unique_ptr<X11Connection> connection;
    X11Monitors monitors;
    X11WindowMirror mirror;
    X11AccessibilityPlatform platform;
    X11Workspace workspace;
    AXBridge bridge;

    /// @return how many windows were found with their frames
    std::size_t enumerate() {
        std::vector<Pid> pids;
        for (const RunningApplication& application : workspace.runningApplications()) {
            pids.push_back(application.pid);
        }
        const auto windows = bridge.windowsOfApplications(pids);
        return static_cast<std::size_t>(
            std::count_if(windows.begin(), windows.end(),
                          [](const auto& window) { return window->frame().has_value(); }));
    }
};

// The same without gathering: each question goes out when the answer to the one before is there.
std::size_t askOneByOne(XClient& client) {
    static constexpr std::array properties{
        "_NET_WM_WINDOW_TYPE", "_NET_WM_STATE",      "WM_STATE",          "_NET_WM_ALLOWED_ACTIONS",
        "_NET_WM_PID",         "_NET_FRAME_EXTENTS", "_GTK_FRAME_EXTENTS"};
    std::size_t found = 0;
    for (const xcb_window_t window : client.cardinals(client.root(), "_NET_CLIENT_LIST_STACKING")) {
        for (const char* property : properties) {
            client.cardinals(window, property);
        }
        const XReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(
            client.connection(), xcb_get_geometry(client.connection(), window), nullptr));
        const XReply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
            client.connection(),
            xcb_translate_coordinates(client.connection(), window, client.root(), 0, 0), nullptr));
        if (size && corner) {
            ++found;
        }
    }
    return found;
}

std::vector<std::unique_ptr<TestWindow>> openWindows(TestDesktop& desktop, std::size_t count) {
    std::vector<std::unique_ptr<TestWindow>> windows;
    for (std::size_t index = 0; index < count; ++index) {
        TestWindow::Options options;
        options.area = {static_cast<int>(100 + 7 * (index % 50)),
                        static_cast<int>(100 + 11 * (index / 50)), 300, 200};
        windows.push_back(std::make_unique<TestWindow>(desktop.display(), options));
        xcb_map_window(windows.back()->connection(), windows.back()->id());
        xcb_flush(windows.back()->connection());
    }
    // Until the window manager has nothing left to do: all are framed, and the last has the focus.
    desktop::DesktopObserver& observer = desktop.observer();
    windows.back()->activate();
    const bool ready = XClient::waitUntil([&] {
        return observer.cardinals(observer.root(), "_NET_CLIENT_LIST_STACKING").size() == count &&
               std::all_of(windows.begin(), windows.end(), [&](const auto& window) {
                   return observer.cardinals(window->id(), "_NET_FRAME_EXTENTS").size() == 4;
               });
    });
    if (!ready) {
        throw DesktopError("the windows do not open");
    }
    return windows;
}

}  // namespace

WindowEnumeration WindowEnumeration::measure(std::size_t windows, int rounds) {
    TestDesktop desktop(MonitorLayout::landscape(), WindowManager::Kind::openbox);
    std::fprintf(stderr, "enumeration: opening %zu windows\n", windows);
    const auto open = openWindows(desktop, windows);
    XClient asking(desktop.display());
    askOneByOne(asking);  // Learns the names of the properties.

    WindowEnumeration result;
    result.windows = windows;
    std::vector<double> together;
    std::vector<double> oneByOne;
    const auto expect = [&](std::size_t found) {
        if (found != windows) {
            throw DesktopError(std::to_string(found) + " windows found instead of " +
                               std::to_string(windows));
        }
    };
    for (int round = 0; round < rounds; ++round) {
        Adapter adapter(desktop.display());
        {
            const ReplyWaits waits(adapter.connection->get());
            const Clock::time_point begin = Clock::now();
            const std::size_t found = adapter.enumerate();
            together.push_back(microsecondsSince(begin));
            expect(found);
            result.roundTrips = std::max(result.roundTrips, waits.roundTrips());
        }
        {
            const ReplyWaits waits(adapter.connection->get());
            expect(adapter.enumerate());
            result.roundTripsNext = std::max(result.roundTripsNext, waits.roundTrips());
        }
        const Clock::time_point begin = Clock::now();
        const std::size_t found = askOneByOne(asking);
        oneByOne.push_back(microsecondsSince(begin));
        expect(found);
    }
    result.together = Statistics::of(together);
    result.oneByOne = Statistics::of(oneByOne);
    return result;
}

}  // namespace lumatile::benchmark
