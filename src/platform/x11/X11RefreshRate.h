#pragma once

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11RandR.h"

namespace lumatile {

/// How often the monitors show a new picture. Read when it is asked for, and again after every
/// change of the server's monitors.
class X11RefreshRate {
public:
    /// Both outlive this.
    X11RefreshRate(X11Connection& connection, const X11RandR& randr);
    X11RefreshRate(const X11RefreshRate&) = delete;
    X11RefreshRate& operator=(const X11RefreshRate&) = delete;
    ~X11RefreshRate() = default;

    /// Seconds, where the server knows no rate: the picture of a screen of 60 Hz.
    static constexpr double usualFrame = 1.0 / 60;

    /// Seconds: what is taken for the time of a picture at least.
    static constexpr double shortestFrame = 1.0 / 240;

    /// Seconds between two pictures of the fastest monitor.
    double frame();

private:
    double read();

    X11Connection& connection_;
    const X11RandR& randr_;
    bool isStale_ = true;
    double frame_ = usualFrame;
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
