#pragma once

#include <QObject>

#include <functional>
#include <memory>

#include "ports/RunLoop.h"

namespace lumatile {

/// The run loop of the toolkit's application object, which must exist before.
class QtRunLoop final : public RunLoop {
public:
    /// Keeps a callback in place until it is destroyed.
    using Watch = std::unique_ptr<QObject>;

    double now() override;
    std::unique_ptr<RunLoopTimer> repeat(double seconds, std::function<void()> tick) override;
    void post(std::function<void()> work) override;

    /// Calls `readable` whenever the descriptor can be read.
    /// @param descriptor a negative one is never readable
    [[nodiscard]] Watch watchDescriptor(int descriptor, std::function<void()> readable);

    /// Calls `work` each time before the loop blocks to wait for something to happen.
    [[nodiscard]] Watch beforeBlocking(std::function<void()> work);

private:
    /// Posted work runs in its context and is dropped with the run loop.
    QObject context_;
};

}  // namespace lumatile
