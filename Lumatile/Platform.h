#pragma once

#include <memory>

namespace lumatile {

class AccessibilityPlatform;
class DimOverlays;
class DragSnapHighlighting;
class HotKeyPlatform;
class InputState;
class MouseTapPlatform;
class Preferences;
class RunLoop;
class ScreenList;
class SettingsPresenter;
class StatusItem;
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
    SystemLog& log;
    InputState& inputState;
    DimOverlays& dimOverlays;
    MouseTapPlatform& mouseTaps;
    StatusItem& statusItem;
    SettingsPresenter& settings;
    std::weak_ptr<DragSnapHighlighting> highlight;
};

}  // namespace lumatile
