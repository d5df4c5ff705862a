#pragma once

#include <memory>

namespace lumatile {

class AccessibilityPlatform;
class CloudStore;
class DesktopTiling;
class DimOverlays;
class DragSnapHighlighting;
class HotKeyPlatform;
class InputState;
class MouseTapPlatform;
class OnboardingPresenter;
class Preferences;
class RunLoop;
class ScreenList;
class SettingsPresenter;
class StatusItem;
class SyncConflictPresenter;
class SystemLog;
class Workspace;

/// Every port the application needs. The adapters behind it outlive the application.
struct Platform {
    AccessibilityPlatform& accessibility;
    ScreenList& screenList;
    HotKeyPlatform& hotKeys;
    Workspace& workspace;
    RunLoop& runLoop;
    Preferences& preferences;
    CloudStore& cloud;
    SystemLog& log;
    InputState& inputState;
    DimOverlays& dimOverlays;
    MouseTapPlatform& mouseTaps;
    StatusItem& statusItem;
    SettingsPresenter& settings;
    OnboardingPresenter& onboarding;
    SyncConflictPresenter& syncConflict;
    DesktopTiling& tiling;
    std::weak_ptr<DragSnapHighlighting> highlight;
};

}  // namespace lumatile
