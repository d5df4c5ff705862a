#include "Lumatile/ApplicationConductor.h"

#include "Lumatile/Preferences.h"
#include "displays/NSScreenProvider.h"
#include "displays/ScreenLookup.h"
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
      snapExecution_({platform, store_, blacklist_, jitter_, orbit_,
                      [this]() -> const DisplayService& { return displays(); }}),
      hotkeys_(platform.hotKeys) {
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
}

void ApplicationConductor::stopFeatures() {
    featuresRunning_ = false;
    hotkeys_.unregisterAll();
    orbit_.stop();
}

void ApplicationConductor::shutdown() { stopFeatures(); }

void ApplicationConductor::performCommand(const SnapCommand& command) {
    snapExecution_.performCommand(command);
}

void ApplicationConductor::applyOLEDSettings() {
    const JitterPolicy policy = oledSettings_.jitterPolicy(exaggerated_);
    orbit_.setConfig(oledSettings_.orbitConfig(exaggerated_));
    jitter_ = policy;
    orbit_.setJitter(oledSettings_.jitterEnabled ? std::optional(policy) : std::nullopt);
    orbit_.setBounds([&screenList = platform_.screenList](const Rect& frame) {
        return visibleFrameOfScreenContaining(screenList, frame.center());
    });
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
    exaggerated_ = exaggerated;
    applyOLEDSettings();
}

const DisplayService& ApplicationConductor::displays() {
    if (!displays_) {
        displays_ = DisplayService{std::make_shared<NSScreenProvider>(platform_.screenList)};
    }
    return *displays_;
}

}  // namespace lumatile
