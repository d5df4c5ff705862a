#include "Lumatile/ApplicationConductor.h"

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

void ApplicationConductor::startFeatures() {
    if (!accessibilityGranted_ || featuresRunning_) {
        return;
    }
    featuresRunning_ = true;
    applyOLEDSettings();
    registerHotkeys();
    dragToSnap_.start();
    protection_.start();
}

void ApplicationConductor::stopFeatures() {
    featuresRunning_ = false;
    hotkeys_.unregisterAll();
    dragToSnap_.stop();
    protection_.stop();
}

void ApplicationConductor::shutdown() { stopFeatures(); }

void ApplicationConductor::performCommand(const SnapCommand& command) {
    snapExecution_.performCommand(command);
}

void ApplicationConductor::applyOLEDSettings() { protection_.apply(oledSettings_, exaggerated_); }

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

const DisplayService& ApplicationConductor::displays() {
    if (!displays_) {
        displays_ = DisplayService{std::make_shared<NSScreenProvider>(platform_.screenList)};
    }
    return *displays_;
}

}  // namespace lumatile
