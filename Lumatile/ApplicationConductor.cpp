#include "Lumatile/ApplicationConductor.h"

#include <string>
#include <utility>
#include <vector>

#include "Lumatile/Preferences.h"
#include "displays/NSScreenProvider.h"
#include "oled_protection/OLEDSettingsCodec.h"

namespace lumatile {

namespace {

OLEDSettings storedOLEDSettings(Preferences& preferences) {
    const std::optional<Bytes> stored = preferences.bytes(OLEDSettings::preferenceKey);
    if (!stored) {
        return OLEDSettings::recommended;
    }
    return OLEDSettingsCodec::decode(*stored).value_or(OLEDSettings::recommended);
}

}  // namespace

ApplicationConductor::ApplicationConductor(Platform platform)
    : platform_(platform),
      store_(CommandStore::fromStored(platform.preferences.bytes(CommandStore::preferenceKey))),
      oledSettings_(storedOLEDSettings(platform.preferences)),
      protection_(platform, blacklist_),
      snapExecution_({platform, store_, blacklist_, protection_.jitter(), protection_.orbit(),
                      [this]() -> const DisplayService& { return displays(); }}),
      hotkeys_(platform.hotKeys),
      dragToSnap_({platform, store_, protection_.jitter(), protection_.orbit(),
                   [this]() -> const DisplayService& { return displays(); }}) {
    applyOLEDSettings();
}

ApplicationConductor::~ApplicationConductor() = default;

void ApplicationConductor::createStatusMenu() {
    if (!statusMenu_) {
        statusMenu_ =
            std::make_shared<StatusMenuController>(platform_.statusItem, statusMenuClosures());
        rebuildStatusMenu();
    }
}

void ApplicationConductor::rebuildStatusMenu() {
    if (statusMenu_) {
        statusMenu_->rebuild(store_.commands);
    }
}

void ApplicationConductor::refreshStatusIcon() {
    if (statusMenu_) {
        statusMenu_->setProtected(isProtectionActive());
    }
}

void ApplicationConductor::startFeatures() {
    if (accessibilityGranted_ && !featuresRunning_) {
        featuresRunning_ = true;
        applyOLEDSettings();
        registerHotkeys();
        dragToSnap_.start();
        protection_.start();
    }
    rebuildStatusMenu();
}

void ApplicationConductor::stopFeatures() {
    featuresRunning_ = false;
    hotkeys_.unregisterAll();
    dragToSnap_.stop();
    protection_.stop();
    refreshStatusIcon();
}

void ApplicationConductor::shutdown() { stopFeatures(); }

void ApplicationConductor::performCommand(const SnapCommand& command) {
    snapExecution_.performCommand(command);
}

void ApplicationConductor::applyOLEDSettings() {
    protection_.apply(oledSettings_, exaggerated_);
    refreshStatusIcon();
}

void ApplicationConductor::changeOLEDSettings(const OLEDSettings& settings) {
    if (settings == oledSettings_) {
        return;
    }
    oledSettings_ = settings;
    platform_.preferences.setBytes(OLEDSettings::preferenceKey,
                                   OLEDSettingsCodec::encode(settings));
    applyOLEDSettings();
}

void ApplicationConductor::registerHotkeys() {
    hotkeys_.unregisterAll();
    for (const SnapCommand& command : store_.hotkeyBindings()) {
        hotkeys_.registerHotKey(command.shortcut->carbonKeyCode, command.shortcut->carbonModifiers,
                                [conductor = weak_from_this(), command] {
                                    if (const auto alive = conductor.lock()) {
                                        alive->performCommand(command);
                                    }
                                });
    }
}

void ApplicationConductor::setExaggerated(bool exaggerated) {
    if (exaggerated != exaggerated_) {
        exaggerated_ = exaggerated;
        applyOLEDSettings();
    }
}

StatusMenuController::Closures ApplicationConductor::statusMenuClosures() {
    const auto onTarget = [this](std::function<void()> MenuTargets::*target) {
        return [conductor = weak_from_this(), target] {
            const auto alive = conductor.lock();
            // A copy: what is called may set it anew.
            if (const auto call = alive ? alive->menuTargets.*target : nullptr) {
                call();
            }
        };
    };
    return {
        [conductor = weak_from_this()](const SnapCommand& command) {
            if (const auto alive = conductor.lock()) {
                alive->performCommand(command);
            }
        },
        onTarget(&MenuTargets::openSettings),
        onTarget(&MenuTargets::openAbout),
        onTarget(&MenuTargets::checkForUpdates),
        [conductor = weak_from_this()] {
            const auto alive = conductor.lock();
            if (!alive) {
                return std::vector<std::string>();
            }
            const auto lines = alive->oledStatusLines();
            return std::vector<std::string>(lines.begin(), lines.end());
        },
        [conductor = weak_from_this()] {
            const auto alive = conductor.lock();
            return alive && alive->isExaggerated();
        },
        [conductor = weak_from_this()](bool exaggerated) {
            if (const auto alive = conductor.lock()) {
                alive->setExaggerated(exaggerated);
            }
        },
        onTarget(&MenuTargets::terminate),
    };
}

const DisplayService& ApplicationConductor::displays() {
    if (!displays_) {
        displays_ = DisplayService{std::make_shared<NSScreenProvider>(platform_.screenList)};
    }
    return *displays_;
}

}  // namespace lumatile
