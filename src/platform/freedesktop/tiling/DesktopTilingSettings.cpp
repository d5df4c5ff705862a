#include "platform/freedesktop/tiling/DesktopTilingSettings.h"

#include <utility>

#include "onboarding/SystemTiling.h"
#include "platform/freedesktop/files/InstalledPrograms.h"
#include "platform/freedesktop/tiling/GSettingsTiling.h"
#include "platform/freedesktop/tiling/KWinTiling.h"
#include "platform/freedesktop/tiling/XfconfTiling.h"

namespace lumatile {

namespace {

/// The page of these switches first, then the settings program that it is part of.
InstalledPrograms::Names settingsPrograms(DesktopKind kind) {
    switch (kind) {
        case DesktopKind::plasma:
            return {"kcm_kwinscreenedges.desktop", "systemsettings.desktop",
                    "kdesystemsettings.desktop"};
        case DesktopKind::gnome:
            return {"gnome-multitasking-panel.desktop", "org.gnome.Settings.desktop",
                    "gnome-control-center.desktop"};
        case DesktopKind::metacity:
            return {"ca.desrt.dconf-editor.desktop"};
        case DesktopKind::cinnamon:
            return {"cinnamon-settings-tiling.desktop", "cinnamon-settings-windows.desktop",
                    "cinnamon-settings.desktop"};
        case DesktopKind::mate:
            return {"mate-window-properties.desktop", "matecc.desktop"};
        case DesktopKind::xfce:
            return {"xfce-wmtweaks-settings.desktop", "xfce-settings-manager.desktop"};
        case DesktopKind::other:
            return {};
    }
    return {};
}

}  // namespace

DesktopTilingSettings::DesktopTilingSettings(std::function<HostDesktop()> host, XdgFolders folders,
                                             BusConnection& session, bool isHeldBack)
    : host_(std::move(host)),
      folders_(std::move(folders)),
      session_(session),
      isHeldBack_(isHeldBack) {}

std::unique_ptr<TilingSetting> DesktopTilingSettings::makeSetting(DesktopKind kind) const {
    switch (kind) {
        case DesktopKind::plasma:
            return std::make_unique<KWinTiling>(folders_, session_);
        case DesktopKind::gnome:
            return std::make_unique<GSettingsTiling>("org.gnome.mutter", "edge-tiling", "");
        case DesktopKind::metacity:
            return std::make_unique<GSettingsTiling>("org.gnome.metacity", "edge-tiling", "");
        case DesktopKind::cinnamon:
            return std::make_unique<GSettingsTiling>("org.cinnamon.muffin", "edge-tiling", "");
        case DesktopKind::mate:
            return std::make_unique<GSettingsTiling>("org.mate.Marco.general", "allow-tiling",
                                                     "allow-top-tiling");
        case DesktopKind::xfce:
            return std::make_unique<XfconfTiling>(session_);
        case DesktopKind::other:
            return nullptr;
    }
    return nullptr;
}

TilingSetting* DesktopTilingSettings::setting() {
    const DesktopKind kind = isHeldBack_ ? DesktopKind::other : host_().kind;
    if (kind_ != kind) {
        kind_ = kind;
        setting_ = makeSetting(kind);
        if (setting_ && !setting_->exists()) {
            setting_.reset();
        }
    }
    return setting_.get();
}

int DesktopTilingSettings::majorVersion() {
    return setting() == nullptr ? SystemTiling::firstMajorVersion - 1
                                : SystemTiling::firstMajorVersion;
}

std::optional<bool> DesktopTilingSettings::lookup(std::string_view key) {
    TilingSetting* present = setting();
    return present == nullptr ? std::nullopt : present->lookup(key);
}

bool DesktopTilingSettings::canOpenSettings() {
    return InstalledPrograms::hasAny(settingsPrograms(host_().kind));
}

bool DesktopTilingSettings::openSettings() {
    return InstalledPrograms::start(settingsPrograms(host_().kind));
}

bool DesktopTilingSettings::canSwitchOff() {
    TilingSetting* present = setting();
    return present != nullptr && present->canSwitchOff();
}

bool DesktopTilingSettings::switchOff() {
    TilingSetting* present = setting();
    return present != nullptr && present->switchOff();
}

}  // namespace lumatile
