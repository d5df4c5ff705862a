#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "ports/OnboardingPresenting.h"

namespace lumatile {

/// The onboarding window of the model desktop: whether it is there, how often it was made and
/// shown, and its model, by which a test presses its buttons.
class SimulatedOnboarding final : public OnboardingPresenter {
public:
    std::unique_ptr<OnboardingPresenting> make(std::shared_ptr<OnboardingModel> made,
                                               std::function<void()> closed) override {
        model = std::move(made);
        closed_ = std::move(closed);
        ++windows;
        return std::make_unique<Window>(*this);
    }

    /// Closes the window as the user does, other than by its button.
    void close() const {
        // A copy: the window goes meanwhile.
        if (const auto closed = closed_; closed && isOpen) {
            closed();
        }
    }

    std::shared_ptr<OnboardingModel> model;
    int windows = 0;
    int shown = 0;
    bool isOpen = false;  ///< Whether it is on screen.

private:
    class Window final : public OnboardingPresenting {
    public:
        explicit Window(SimulatedOnboarding& onboarding) : onboarding_(onboarding) {}
        Window(const Window&) = delete;
        Window& operator=(const Window&) = delete;
        ~Window() override { onboarding_.isOpen = false; }

        void show() override {
            ++onboarding_.shown;
            onboarding_.isOpen = true;
        }

    private:
        SimulatedOnboarding& onboarding_;
    };

    std::function<void()> closed_;
};

}  // namespace lumatile
