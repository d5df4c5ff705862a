#pragma once

#include <functional>
#include <memory>

namespace lumatile {

class OnboardingModel;

/// The onboarding window, as whoever opens it sees it. It shows what its model says, and is gone
/// with this object.
class OnboardingPresenting {
public:
    virtual ~OnboardingPresenting() = default;

    /// Shows it in front of the other windows. The first time it may keep back for a few seconds,
    /// in case the permission is only a moment away; when that comes first, it is done unseen.
    virtual void show() = 0;
};

/// Port: makes the onboarding window.
class OnboardingPresenter {
public:
    virtual ~OnboardingPresenter() = default;

    /// @param closed runs when the user closes the window other than by "Done"; the window may be
    ///   destroyed in it
    virtual std::unique_ptr<OnboardingPresenting> make(std::shared_ptr<OnboardingModel> model,
                                                       std::function<void()> closed) = 0;
};

}  // namespace lumatile
