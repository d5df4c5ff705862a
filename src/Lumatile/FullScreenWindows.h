#pragma once

namespace lumatile {

class AccessibilityPlatform;
class Workspace;

/// Whether some window fills a screen, so that the user is not to be disturbed. A window that is
/// minimized, or belongs to a hidden application, does not.
bool isAnyWindowFullScreen(Workspace& workspace, AccessibilityPlatform& accessibility);

}  // namespace lumatile
