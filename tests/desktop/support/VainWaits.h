#pragma once

namespace lumatile::desktop {

/// Adds up while it lives how long this process waits for what does not come: the time-outs of the
/// calls of poll(2) that run into them. Unlike the time that passes it is the same on a busy
/// machine, where everything takes long that nobody waits for.
class VainWaits {
public:
    VainWaits();
    VainWaits(const VainWaits&) = delete;
    VainWaits& operator=(const VainWaits&) = delete;
    ~VainWaits();

    double seconds() const;

    /// Called by the poll that stands in for the library's.
    static void noteTimeout(int milliseconds);

private:
    long milliseconds_ = 0;
};

/// Seconds that `action` waits in vain.
template <typename Action>
double vainSecondsFor(Action action) {
    const VainWaits waits;
    action();
    return waits.seconds();
}

}  // namespace lumatile::desktop
