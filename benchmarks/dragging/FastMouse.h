#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

#include "geometry/Point.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::benchmark {

/// A mouse that tells of its movements a thousand times a second, as the fastest ones do.
class FastMouse : public desktop::XClient {
public:
    using Clock = std::chrono::steady_clock;

    /// Where the mouse is at a report; whole pixels, root coordinates.
    using Path = std::function<Point(std::size_t report)>;
    using Sent = std::function<void(const Point& point, Clock::time_point at)>;

    static constexpr std::chrono::milliseconds reportTime{1};

    explicit FastMouse(const std::string& display) : XClient(display) {}

    /// How well it kept its own time.
    struct Pace {
        double seconds = 0;       ///< Of the whole way.
        double latestReport = 0;  ///< Microseconds that a report was sent behind its time, at most.
        /// Microseconds that the server needed after the last report to have carried all of them
        /// out: what it was behind with.
        double serverBehind = 0;
    };

    /// Sends one report after the other without ever waiting for the server, and serves the other
    /// clients of this process in between.
    /// @param sent called just before each report
    Pace follow(const Path& path, std::size_t reports, const Sent& sent);

private:
    void serveUntil(Clock::time_point time);
};

}  // namespace lumatile::benchmark
