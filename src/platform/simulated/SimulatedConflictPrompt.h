#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "ports/SyncConflictPresenting.h"

namespace lumatile {

/// The conflict window of the model desktop, and what the user can do with it.
class SimulatedConflictPrompt final : public SyncConflictPresenter {
public:
    std::unique_ptr<SyncConflictPresenting> make(std::function<void(bool)> choose,
                                                 std::function<void()> closed) override {
        choose_ = std::move(choose);
        closed_ = std::move(closed);
        ++windows;
        return std::make_unique<Window>(*this);
    }

    /// Presses one of the two buttons; nothing where there is no window.
    void choose(bool preferLocal) const {
        // A copy: the window goes meanwhile.
        if (const auto chosen = choose_; chosen && shown) {
            chosen(preferLocal);
        }
    }

    /// Closes the window without a choice.
    void close() const {
        if (const auto closed = closed_; closed && shown) {
            closed();
        }
    }

    std::optional<ConflictSummary> shown;  ///< What the window shows; absent without one.
    ConflictDifferences differences;       ///< What it showed last beside that.
    int windows = 0;                       ///< How many were made.

private:
    class Window final : public SyncConflictPresenting {
    public:
        explicit Window(SimulatedConflictPrompt& prompt) : prompt_(prompt) {}
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;
        ~Window() override { prompt_.shown.reset(); }

        void show(const ConflictSummary& summary, const ConflictDifferences& what) override {
            prompt_.shown = summary;
            prompt_.differences = what;
        }

    private:
        SimulatedConflictPrompt& prompt_;
    };

    std::function<void(bool)> choose_;
    std::function<void()> closed_;
};

}  // namespace lumatile
