#include "platform/x11/X11WindowKind.h"

#include "windows/AttributeName.h"

namespace lumatile {

std::string_view subroleOf(X11WindowKind kind) {
    switch (kind) {
        case X11WindowKind::normal:
            return AttributeName::standardWindowSubrole;
        case X11WindowKind::dialog:
            return AttributeName::dialogSubrole;
        case X11WindowKind::utility:
            return AttributeName::floatingWindowSubrole;
        case X11WindowKind::toolbar:
            return "AXToolbar";
        case X11WindowKind::menu:
            return "AXMenu";
        case X11WindowKind::splash:
            return "AXSplash";
        case X11WindowKind::dock:
            return "AXDock";
        case X11WindowKind::desktop:
            return "AXDesktop";
        case X11WindowKind::notification:
            return "AXNotification";
        case X11WindowKind::popup:
            return "AXPopup";
    }
    return "AXUnknown";
}

bool isFurniture(X11WindowKind kind) {
    return kind == X11WindowKind::dock || kind == X11WindowKind::desktop;
}

}  // namespace lumatile
