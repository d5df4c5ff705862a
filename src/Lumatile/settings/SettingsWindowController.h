#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

#include "Lumatile/SettingsViewModel.h"
#include "Lumatile/settings/SettingsServices.h"
#include "ports/SettingsPresenting.h"

namespace lumatile {

/// The settings window. Closing it hides it; it is made once and kept.
class SettingsWindowController final : public SettingsPresenting {
public:
    SettingsWindowController(std::shared_ptr<SettingsViewModel> model, SettingsServices services);
    SettingsWindowController(const SettingsWindowController&) = delete;
    SettingsWindowController& operator=(const SettingsWindowController&) = delete;
    ~SettingsWindowController() override;

    void show() override;

    const std::shared_ptr<SettingsViewModel>& viewModel() const { return viewModel_; }
    QWidget& window() { return *window_; }

private:
    std::shared_ptr<SettingsViewModel> viewModel_;
    std::unique_ptr<QWidget> window_;
};

/// Makes the one settings window when it is first asked for.
class SettingsWindowMaker final : public SettingsPresenter {
public:
    /// @param services asked for when the window is made
    explicit SettingsWindowMaker(std::function<SettingsServices()> services)
        : services_(std::move(services)) {}

    std::unique_ptr<SettingsPresenting> make(std::shared_ptr<SettingsViewModel> model) override {
        auto made = std::make_unique<SettingsWindowController>(std::move(model), services_());
        window_ = &made->window();
        return made;
    }

    /// Null while there is none.
    QWidget* window() const { return window_; }

private:
    std::function<SettingsServices()> services_;
    QPointer<QWidget> window_;
};

}  // namespace lumatile
