#pragma once

namespace lumatile {

/// The signals that ask the process to end (TERM, INT and HUP), as something the run loop can watch
/// instead of handlers that interrupt it. There is one in a process.
class TerminationSignals {
public:
    /// Keeps the signals from ending the process at once. To be made before any thread.
    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Gives the signals back their former effect.
    ~TerminationSignals();

    /// Readable when one has arrived; negative where the system gave none.
    int fileDescriptor() const { return descriptor_; }

    /// Takes the signals that have arrived.
    /// @return whether there was any
    bool consume();

private:
    int descriptor_ = -1;
};

}  // namespace lumatile
