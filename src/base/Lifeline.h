#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

namespace lumatile {

/// Tells callbacks that are still on their way whether their owner is there. It is the owner's last
/// member, so that it goes before anything that a callback could use. For one thread: a callback
/// runs on the thread that also destroys the owner.
class Lifeline {
    struct Life {};

public:
    /// Whether one lifeline is still there, for callbacks of C that carry a value of their own.
    class Watch {
    public:
        /// Watches nothing: not alive.
        Watch() = default;

        bool isAlive() const { return !life_.expired(); }

    private:
        friend class Lifeline;
        explicit Watch(std::weak_ptr<const Life> life) : life_(std::move(life)) {}

        std::weak_ptr<const Life> life_;
    };

    Lifeline() = default;
    Lifeline(const Lifeline&) = delete;
    Lifeline& operator=(const Lifeline&) = delete;
    Lifeline(Lifeline&&) = delete;
    Lifeline& operator=(Lifeline&&) = delete;
    ~Lifeline() = default;

    Watch watch() const { return Watch(life_); }

    /// @return `callable` with its arguments passed on and its result dropped; once this is gone,
    /// it does nothing. What `callable` holds lives for as long as what is returned.
    template <class Callable>
    auto guard(Callable callable) const {
        return [ watch = watch(), callable = std::move(callable) ]<class... Arguments>(
                   Arguments &&
                   ... arguments) -> void requires std::invocable<const Callable&, Arguments...> {
            if (watch.isAlive()) {
                std::invoke(callable, std::forward<Arguments>(arguments)...);
            }
        };
    }

private:
    std::shared_ptr<const Life> life_ = std::make_shared<const Life>();
};

}  // namespace lumatile
