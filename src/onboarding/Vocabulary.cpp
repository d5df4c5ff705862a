#include "onboarding/Vocabulary.h"

#include <algorithm>
#include <array>
#include <utility>

#include "onboarding/KeyWords.h"

namespace lumatile {

namespace {

struct HostNouns {
    DesktopKind kind;
    std::string_view desktop;
    std::string_view desktopTitle;
    std::string_view windowManager;
    std::string_view settingsProgram;
    std::string_view tilingSettings;
    std::string_view tilingPane;
    std::string_view tilingOptions;
};

// The names as the desktops' own English interfaces write them.
constexpr std::array hosts{
    HostNouns{DesktopKind::plasma, "KDE Plasma", "KDE Plasma", "KWin", "System Settings",
              "System Settings ▸ Screen Edges", "Screen Edges Settings",
              "“Maximize: Windows dragged to top edge” and “Tile: Windows dragged to left or right "
              "edge”"},
    HostNouns{DesktopKind::gnome, "GNOME", "GNOME", "Mutter", "Settings", "Settings ▸ Multitasking",
              "Multitasking Settings", "“Active Screen Edges”"},
    // No settings program shows this one.
    HostNouns{DesktopKind::metacity, "GNOME Flashback", "GNOME Flashback", "Metacity", "Settings",
              "dconf Editor ▸ org ▸ gnome ▸ metacity", "dconf Editor", "“edge-tiling”"},
    HostNouns{DesktopKind::cinnamon, "Cinnamon", "Cinnamon", "Muffin", "System Settings",
              "System Settings ▸ Window Tiling", "Window Tiling Settings",
              "“Enable Window Tiling and Snapping”"},
    HostNouns{DesktopKind::mate, "MATE", "MATE", "Marco", "Control Center",
              "Control Center ▸ Windows", "Window Preferences", "“Enable window tiling”"},
    HostNouns{DesktopKind::xfce, "Xfce", "Xfce", "Xfwm4", "Settings Manager",
              "Settings Manager ▸ Window Manager Tweaks ▸ Accessibility", "Window Manager Tweaks",
              "“Automatically tile windows when moving toward the screen edge”"},
    HostNouns{DesktopKind::other, "the desktop", "Desktop", "the desktop", "Desktop Settings",
              "the desktop's settings", "Desktop Settings", "edge tiling"},
};

bool isWordByte(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9');
}

/// Whether nothing comes before, or the end of a sentence.
bool isAtStart(std::string_view before) { return before.empty() || before.ends_with(". "); }

std::string capitalized(std::string text) {
    if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    }
    return text;
}

}  // namespace

Vocabulary Vocabulary::reference() {
    return {{"macOS", "macOS"},
            {"Mac", "Mac"},
            {"iCloud", "iCloud"},
            "System Settings",
            "System Settings ▸ Desktop & Dock ▸ Windows",
            "Desktop & Dock Settings",
            "the two “Drag windows to…” options",
            "green-button menu",
            false,
            {}};
}

Vocabulary Vocabulary::of(const HostDesktop& host) {
    const auto* found = std::find_if(hosts.begin(), hosts.end() - 1, [&](const HostNouns& nouns) {
        return nouns.kind == host.kind;
    });
    Vocabulary vocabulary;
    if (host.isSession || found->kind == DesktopKind::other) {
        vocabulary.system = {std::string(found->desktop), std::string(found->desktopTitle)};
    } else {
        const std::string name(found->windowManager);
        vocabulary.system = {name, name};
    }
    vocabulary.computer = {"computer", "Computer"};
    // The folder that the user shares between computers, whatever shares it.
    vocabulary.sharedPlace = {"the shared folder", "Shared Folder"};
    vocabulary.settingsProgram = found->settingsProgram;
    vocabulary.tilingSettings = found->tilingSettings;
    vocabulary.tilingPane = found->tilingPane;
    vocabulary.tilingOptions = found->tilingOptions;
    vocabulary.windowMenu = "window menu";
    vocabulary.keysByName = true;
    return vocabulary;
}

std::string Vocabulary::apply(std::string_view text) const {
    const std::string said = withNouns(text);
    return keysByName ? KeyWords::written(said, legends) : said;
}

bool Vocabulary::namesKeys(std::string_view text) { return KeyWords::occurIn(text); }

std::string Vocabulary::withNouns(std::string_view text) const {
    // A phrase stands before those that are part of it. The words beside a noun tell in which of
    // its two places it is.
    const std::array<std::pair<std::string_view, std::string>, 12> phrases{{
        {"System Settings ▸ Desktop & Dock ▸ Windows", tilingSettings},
        {"the two “Drag windows to…” options", tilingOptions},
        {"Desktop & Dock Settings", tilingPane},
        {"System Settings", settingsProgram},
        {"green-button menu", windowMenu},
        {"macOS's", system.inSentence + "'s"},
        {"macOS’s", system.inSentence + "’s"},
        {"macOS", system.inTitle},
        {"This Mac", "This " + computer.inTitle},
        {"Mac", computer.inSentence},
        {"in iCloud", "in " + sharedPlace.inSentence},
        {"iCloud", sharedPlace.inTitle},
    }};
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const bool startsWord = i == 0 || !isWordByte(text[i - 1]);
        const auto* found = std::find_if(phrases.begin(), phrases.end(), [&](const auto& phrase) {
            const std::string_view rest = text.substr(i);
            return startsWord && rest.starts_with(phrase.first) &&
                   (rest.size() == phrase.first.size() || !isWordByte(rest[phrase.first.size()]));
        });
        if (found == phrases.end()) {
            result += text[i++];
            continue;
        }
        // A noun that is a name keeps its letters, whatever the place: only the host's own nouns
        // can be ordinary words.
        const bool capital = isAtStart(text.substr(0, i)) && found->first != found->second;
        result += capital ? capitalized(found->second) : found->second;
        i += found->first.size();
    }
    return result;
}

}  // namespace lumatile
