#include "platform/windows/WindowKind.h"

#include "windows/AttributeName.h"

namespace lumatile {

std::string_view subroleOf(WindowKind kind) {
    switch (kind) {
        case WindowKind::normal:
            return AttributeName::standardWindowSubrole;
        case WindowKind::dialog:
            return AttributeName::dialogSubrole;
        case WindowKind::utility:
            return AttributeName::floatingWindowSubrole;
        case WindowKind::toolbar:
            return "AXToolbar";
        case WindowKind::menu:
            return "AXMenu";
        case WindowKind::splash:
            return "AXSplash";
        case WindowKind::dock:
            return "AXDock";
        case WindowKind::desktop:
            return "AXDesktop";
        case WindowKind::notification:
            return "AXNotification";
        case WindowKind::popup:
            return "AXPopup";
        case WindowKind::other:
            break;
    }
    return "AXUnknown";
}

bool isFurniture(WindowKind kind) {
    return kind == WindowKind::dock || kind == WindowKind::desktop || kind == WindowKind::other;
}

}  // namespace lumatile
