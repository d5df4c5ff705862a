#pragma once

#include <QWidget>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Lumatile/LaunchAtLogin.h"
#include "Lumatile/SettingsViewModel.h"
#include "Lumatile/Updater.h"
#include "Lumatile/settings/SettingsWindowController.h"
#include "Lumatile/widgets/AppFonts.h"
#include "commands/BuiltInCommands.h"
#include "onboarding/Vocabulary.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "ports/DesktopTiling.h"
#include "ports/LoginItem.h"
#include "ports/UpdateController.h"

namespace lumatile {

/// The settings window with everything that it works with in memory.
class SettingsStage {
public:
    /// @param shortcomings of the session
    explicit SettingsStage(std::vector<std::string> shortcomings = {})
        : shortcomings_(std::move(shortcomings)) {
        static const bool fontsAreRegistered = [] {
            AppFonts::registerFonts();
            return true;
        }();
        (void)fontsAreRegistered;
        controller_ = std::make_unique<SettingsWindowController>(model_, services());
    }

    void show() { controller_->show(); }
    QWidget& window() { return controller_->window(); }
    SettingsViewModel& model() { return *model_; }
    SimulatedDesktop& desktop() { return desktop_; }

    struct Tiling final : DesktopTiling {
        int majorVersion() override { return version; }
        std::optional<bool> lookup(std::string_view /*key*/) override { return isOn; }
        bool canOpenSettings() override { return true; }
        bool openSettings() override {
            ++opened;
            return obeys;
        }
        bool canSwitchOff() override { return true; }
        bool switchOff() override {
            isOn = isOn && !obeys;
            return obeys;
        }
        int version = 15;
        bool obeys = true;  ///< Else nothing can be opened or switched.
        bool isOn = true;
        int opened = 0;
    };
    struct Login final : LoginItem {
        Status status() override { return state; }
        std::optional<std::string> registerItem() override {
            if (refuses) {
                return "refused";
            }
            state = Status::enabled;
            return std::nullopt;
        }
        std::optional<std::string> unregisterItem() override {
            state = Status::notRegistered;
            return std::nullopt;
        }
        Status state = Status::notRegistered;
        bool refuses = false;
    };
    struct Updates final : UpdateController {
        void start() override {}
        void checkForUpdates() override { ++checks; }
        bool automaticallyChecksForUpdates() override { return isAutomatic; }
        void setAutomaticallyChecksForUpdates(bool on) override { isAutomatic = on; }
        int checks = 0;
        bool isAutomatic = true;
    };

    Tiling tiling;
    Login login;
    std::shared_ptr<Updates> updates = std::make_shared<Updates>();
    std::vector<SnapCommand> ran;
    int quits = 0;
    Vocabulary vocabulary = Vocabulary::reference();

private:
    SettingsServices services() {
        return {desktop_.keyCodes,
                desktop_.preferences,
                launchAtLogin_,
                updater_,
                tiling,
                desktop_.sharedStore,
                desktop_.runLoop,
                [this](std::string_view text) {
                    return QString::fromStdString(vocabulary.apply(text));
                },
                "1.2.3",
                shortcomings_,
                [this] { return model_->commands(); },
                [this](const SnapCommand& command) { ran.push_back(command); },
                [this] { ++quits; }};
    }

    std::vector<std::string> shortcomings_;
    SimulatedDesktop desktop_;
    LaunchAtLogin launchAtLogin_{login, desktop_.log};
    Updater updater_{[this] { return updates; }, [] {}};
    std::shared_ptr<SettingsViewModel> model_ =
        std::make_shared<SettingsViewModel>(BuiltInCommands::defaults(), OLEDSettings::recommended);
    std::unique_ptr<SettingsWindowController> controller_;
};

}  // namespace lumatile
