#include "onboarding/HostDesktop.h"

#include <algorithm>
#include <array>
#include <optional>

namespace lumatile {

namespace {

struct Name {
    std::string_view name;
    DesktopKind kind;
};

// Those that name GNOME after themselves although their window managers have settings of their own
// come out as not known, so that the window manager decides.
constexpr std::array sessions{
    Name{"KDE", DesktopKind::plasma},          Name{"GNOME", DesktopKind::gnome},
    Name{"GNOME-Classic", DesktopKind::gnome}, Name{"GNOME-Flashback", DesktopKind::metacity},
    Name{"X-Cinnamon", DesktopKind::cinnamon}, Name{"Cinnamon", DesktopKind::cinnamon},
    Name{"MATE", DesktopKind::mate},           Name{"XFCE", DesktopKind::xfce},
    Name{"Budgie", DesktopKind::other},        Name{"Pantheon", DesktopKind::other},
    Name{"Unity", DesktopKind::other},
};

// Muffin and Marco say whose descendants they are, in some versions.
constexpr std::array windowManagers{
    Name{"KWin", DesktopKind::plasma},
    Name{"GNOME Shell", DesktopKind::gnome},
    Name{"Mutter", DesktopKind::gnome},
    Name{"Muffin", DesktopKind::cinnamon},
    Name{"Mutter (Muffin)", DesktopKind::cinnamon},
    Name{"Marco", DesktopKind::mate},
    Name{"Metacity (Marco)", DesktopKind::mate},
    Name{"Xfwm4", DesktopKind::xfce},
    Name{"Metacity", DesktopKind::metacity},
};

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool sameLetters(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char left, char right) { return lower(left) == lower(right); });
}

template <typename Names>
std::optional<DesktopKind> kindOf(const Names& names, std::string_view name) {
    for (const Name& known : names) {
        if (sameLetters(known.name, name)) {
            return known.kind;
        }
    }
    return std::nullopt;
}

}  // namespace

HostDesktop HostDesktop::find(std::string_view sessionNames, std::string_view windowManager) {
    while (!sessionNames.empty()) {
        const std::size_t colon = std::min(sessionNames.find(':'), sessionNames.size());
        if (const auto kind = kindOf(sessions, sessionNames.substr(0, colon))) {
            if (*kind != DesktopKind::other) {
                return {*kind, true};
            }
            break;
        }
        sessionNames.remove_prefix(std::min(colon + 1, sessionNames.size()));
    }
    return {kindOf(windowManagers, windowManager).value_or(DesktopKind::other), false};
}

}  // namespace lumatile
