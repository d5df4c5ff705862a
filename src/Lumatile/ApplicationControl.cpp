#include "Lumatile/ApplicationControl.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "Lumatile/ApplicationConductor.h"
#include "oled_protection/OLEDSettings.h"
#include "onboarding/AccessibilityGrantFlow.h"
#include "onboarding/OnboardingTexts.h"
#include "ports/RunLoop.h"
#include "settings_core/SettingsSection.h"

namespace lumatile {

namespace {

bool OLEDSettings::*switchOf(Controlled::Protection protection) {
    switch (protection) {
        case Controlled::Protection::pixelShift:
            return &OLEDSettings::orbitEnabled;
        case Controlled::Protection::edgeJitter:
            return &OLEDSettings::jitterEnabled;
        case Controlled::Protection::idleDimming:
            break;
    }
    return &OLEDSettings::idleDimEnabled;
}

}  // namespace

ApplicationControl::ApplicationControl(std::weak_ptr<ApplicationConductor> conductor,
                                       AccessibilityPlatform& accessibility, RunLoop& runLoop,
                                       std::vector<std::string> shortcomings)
    : conductor_(std::move(conductor)),
      accessibility_(accessibility),
      runLoop_(runLoop),
      shortcomings_(std::move(shortcomings)) {}

std::string ApplicationControl::missing() {
    const AccessibilityGrantFlow flow(accessibility_);
    return flow.isTrusted(false) ? "" : std::string(OnboardingTexts::missing(flow.obstacle()));
}

std::vector<Controlled::Command> ApplicationControl::commands() {
    std::vector<Command> listed;
    if (const auto conductor = conductor_.lock()) {
        for (const SnapCommand& command : conductor->store().commands) {
            listed.push_back({command.id.text(), command.nameKey, command.displayName()});
        }
    }
    return listed;
}

bool ApplicationControl::run(std::string_view idOrKey) {
    const auto conductor = conductor_.lock();
    if (!conductor) {
        return false;
    }
    const std::vector<SnapCommand>& commands = conductor->store().commands;
    const std::optional<UUID> id = UUID::parse(idOrKey);
    const auto found = std::find_if(commands.begin(), commands.end(), [&](const auto& each) {
        return each.nameKey == idOrKey || each.id == id;
    });
    if (found == commands.end()) {
        return false;
    }
    // A copy: the command may change the list, by way of what it brings to the front.
    conductor->performCommand(SnapCommand(*found));
    return true;
}

bool ApplicationControl::openSettings(std::string_view section) {
    const std::optional<SettingsSection> wanted = settingsSectionFromRawValue(section);
    const auto conductor = conductor_.lock();
    if (!conductor || (!wanted && !section.empty())) {
        return false;
    }
    conductor->openSettings(wanted);
    return true;
}

std::vector<std::string> ApplicationControl::statusLines() {
    const auto conductor = conductor_.lock();
    if (!conductor) {
        return {};
    }
    std::vector<std::string> all;
    if (std::string missing = this->missing(); !missing.empty()) {
        all.push_back(std::move(missing));
    }
    for (const std::string& line : conductor->oledStatusLines()) {
        all.push_back(line);
    }
    all.insert(all.end(), shortcomings_.begin(), shortcomings_.end());
    return all;
}

bool ApplicationControl::isOn(Protection protection) {
    const auto conductor = conductor_.lock();
    return conductor && conductor->oledSettings().*switchOf(protection);
}

void ApplicationControl::setOn(Protection protection, bool isOn) {
    if (const auto conductor = conductor_.lock()) {
        OLEDSettings settings = conductor->oledSettings();
        settings.*switchOf(protection) = isOn;
        conductor->changeOLEDSettings(settings);
    }
}

bool ApplicationControl::isExaggerated() {
    const auto conductor = conductor_.lock();
    return conductor && conductor->isExaggerated();
}

void ApplicationControl::setExaggerated(bool isExaggerated) {
    if (const auto conductor = conductor_.lock()) {
        conductor->setExaggerated(isExaggerated);
    }
}

void ApplicationControl::quit() {
    // Whoever asks is answered first.
    runLoop_.post([conductor = conductor_] {
        const auto alive = conductor.lock();
        if (const auto terminate = alive ? alive->menuTargets.terminate : nullptr) {
            terminate();
        }
    });
}

}  // namespace lumatile
