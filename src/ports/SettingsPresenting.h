#pragma once

#include <memory>

namespace lumatile {

class SettingsViewModel;

/// The settings window, seen from the code that opens it. It shows what its model says.
class SettingsPresenting {
public:
    virtual ~SettingsPresenting() = default;

    /// Shows it, brings it to the front and makes it the active window.
    virtual void show() = 0;
};

/// Port: makes the settings window, which costs more memory than all the rest, when it is first
/// asked for.
class SettingsPresenter {
public:
    virtual ~SettingsPresenter() = default;

    virtual std::unique_ptr<SettingsPresenting> make(std::shared_ptr<SettingsViewModel> model) = 0;
};

}  // namespace lumatile
