#pragma once

#include <memory>

namespace lumatile {

class AccessibilityPlatform;
class SharedStore;
class DesktopTiling;
class DimOverlays;
class DragSnapHighlighting;
class HotKeyPlatform;
class InputState;
class KeyCodes;
class MouseEventSource;
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
    KeyCodes& keyCodes;
    Workspace& workspace;
    RunLoop& runLoop;
    Preferences& preferences;
    SharedStore& sharedStore;
    SystemLog& log;
    InputState& inputState;
    DimOverlays& dimOverlays;
    MouseEventSource& mouseTaps;
    StatusItem& statusItem;
    SettingsPresenter& settings;
    OnboardingPresenter& onboarding;
    SyncConflictPresenter& syncConflict;
    DesktopTiling& tiling;
    std::weak_ptr<DragSnapHighlighting> highlight;
};

}  // namespace lumatile
