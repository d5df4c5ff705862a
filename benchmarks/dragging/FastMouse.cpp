#include "benchmarks/dragging/FastMouse.h"

#include <time.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstdint>

namespace lumatile::benchmark {

namespace {

double microseconds(FastMouse::Clock::duration time) {
    return std::chrono::duration<double, std::micro>(time).count();
}

}  // namespace

FastMouse::Pace FastMouse::follow(const Path& path, std::size_t reports, const Sent& sent) {
    Pace pace;
    const Clock::time_point begin = Clock::now();
    for (std::size_t report = 0; report < reports; ++report) {
        const Clock::time_point due = begin + report * reportTime;
        serveUntil(due);
        const Point point = path(report);
        const Clock::time_point now = Clock::now();
        pace.latestReport = std::max(pace.latestReport, microseconds(now - due));
        sent(point, now);
        xcb_test_fake_input(connection(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root(),
                            static_cast<std::int16_t>(point.x), static_cast<std::int16_t>(point.y),
                            0);
        xcb_flush(connection());
    }
    const Clock::time_point end = Clock::now();
    roundTrip();
    pace.seconds = std::chrono::duration<double>(end - begin).count();
    pace.serverBehind = microseconds(Clock::now() - end);
    return pace;
}

void FastMouse::serveUntil(Clock::time_point time) {
    // Waits of whole milliseconds would be too coarse.
    constexpr std::chrono::microseconds glance{200};
    do {
        waitUntil([] { return true; });
        const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(
            std::min<Clock::duration>(time - Clock::now(), glance));
        if (left.count() > 0) {
            const timespec pause{0, left.count()};
            nanosleep(&pause, nullptr);
        }
    } while (Clock::now() < time);
}

}  // namespace lumatile::benchmark
