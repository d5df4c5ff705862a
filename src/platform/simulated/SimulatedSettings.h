#pragma once

#include <memory>
#include <utility>

#include "ports/SettingsPresenting.h"

namespace lumatile {

/// The settings window of the model desktop: counts how often it is made and shown, and keeps the
/// model, by which a test edits as a user would.
class SimulatedSettings final : public SettingsPresenter {
public:
    std::unique_ptr<SettingsPresenting> make(std::shared_ptr<SettingsViewModel> made) override {
        model = std::move(made);
        ++windows;
        return std::make_unique<Window>(*this);
    }

    std::shared_ptr<SettingsViewModel> model;
    int windows = 0;
    int shown = 0;

private:
    class Window final : public SettingsPresenting {
    public:
        explicit Window(SimulatedSettings& settings) : settings_(settings) {}
        void show() override { ++settings_.shown; }

    private:
        SimulatedSettings& settings_;
    };
};

}  // namespace lumatile
