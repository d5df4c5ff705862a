#include "onboarding/Vocabulary.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumatile {
namespace {

// Every text of the interface that names the system, the computer, the shared place or a settings
// page, as it stands in the reference.
const std::string tilingGroup = "macOS Window Tiling";
const std::string orbitText =
    "At each interval, every window steps 1 px around a small square, never straying more than the "
    "distance above from where it was placed. With the pause option on, the step waits until "
    "you've stopped typing or moving the mouse for a moment. Move or resize a window, by hand or "
    "with macOS's tiling, and it drifts around its new spot.";
const std::string tilingOnTitle = "macOS's own window tiling is on";
const std::string tilingOnText =
    "It also snaps windows you drag to the edge of the screen, so it and Lumatile will fight over "
    "them. In System Settings ▸ Desktop & Dock ▸ Windows, turn off the two “Drag windows to…” "
    "options.";
const std::string tilingOnButton = "Open Desktop & Dock Settings…";
const std::string tilingOff =
    "macOS's own edge tiling is off, so it won't compete with drag-to-snap.";
const std::string openingFailed = "System Settings could not be opened.";
const std::string switchOffFailed =
    "Lumatile could not change that setting. Turn it off in System Settings ▸ Desktop & Dock ▸ "
    "Windows.";
const std::string protectionText =
    "OLED protection covers every window, however you placed it: with Lumatile, by hand, or with "
    "macOS's own green-button menu.";
const std::string openSettings = "Open System Settings…";
const std::string openSettingsAgain = "Open System Settings again";
const std::string syncTitle = "iCloud Sync";
const std::string conflictText =
    "Your Lumatile settings changed on this Mac and in iCloud since they last synced. Choose which "
    "copy to keep.";
const std::string keepThis = "Keep This Mac";
const std::string useCloud = "Use iCloud";

const std::vector<std::string>& namingTexts() {
    static const std::vector<std::string> texts{
        tilingGroup,  orbitText,      tilingOnTitle, tilingOnText,      tilingOnButton,
        tilingOff,    protectionText, openSettings,  openSettingsAgain, syncTitle,
        conflictText, keepThis,       useCloud,      openingFailed,     switchOffFailed};
    return texts;
}

// Texts that name none of these.
const std::vector<std::string>& otherTexts() {
    static const std::vector<std::string> texts{
        "",
        "Launch at login",
        "Snap by dragging windows to screen edges",
        "Check for updates automatically",
        "Drag across the grid to draw this area. Keyboard and menu only.",
        std::string("Applies to every window. Edges along the screen border stay put; only inner "
                    "edges shift. "
                    "Changes once an hour, at the next window step."),
        std::string(
            "The top of the menu-bar menu shows each effect working: when windows last moved, this "
            "hour's edge shift, and the dimming setting."),
        std::string(
            "Lumatile arranges your windows and gently shifts them to protect OLED displays from "
            "burn-in. It needs Accessibility access to move other apps' windows."),
        "Waiting for permission…",
        "arrow.triangle.2.circlepath.icloud",
        "Settings Conflict",
        "Edited ",
        "Newer",
    };
    return texts;
}

/// What a host makes of the texts that differ from one host to the next.
struct HostTexts {
    HostDesktop host;
    std::string tilingGroup;
    std::string orbitEnd;  ///< "by hand or with " and what follows, to the end of the sentence.
    std::string tilingOnTitle;
    std::string tilingOnAdvice;  ///< The second sentence.
    std::string tilingOnButton;
    std::string tilingOff;
    std::string protectionEnd;  ///< After "with Lumatile, by hand, or with ".
    std::string openSettings;
    std::string openSettingsAgain;
};

const std::vector<HostTexts>& hostTexts() {
    static const std::vector<HostTexts> texts{
        {{DesktopKind::plasma, true},
         "KDE Plasma Window Tiling",
         "KDE Plasma's tiling, and it drifts around its new spot.",
         "KDE Plasma's own window tiling is on",
         "In System Settings ▸ Screen Edges, turn off “Maximize: Windows dragged to top edge” and "
         "“Tile: Windows dragged to left or right edge”.",
         "Open Screen Edges Settings…",
         "KDE Plasma's own edge tiling is off, so it won't compete with drag-to-snap.",
         "KDE Plasma's own window menu.",
         "Open System Settings…",
         "Open System Settings again"},
        {{DesktopKind::gnome, true},
         "GNOME Window Tiling",
         "GNOME's tiling, and it drifts around its new spot.",
         "GNOME's own window tiling is on",
         "In Settings ▸ Multitasking, turn off “Active Screen Edges”.",
         "Open Multitasking Settings…",
         "GNOME's own edge tiling is off, so it won't compete with drag-to-snap.",
         "GNOME's own window menu.",
         "Open Settings…",
         "Open Settings again"},
        {{DesktopKind::metacity, true},
         "GNOME Flashback Window Tiling",
         "GNOME Flashback's tiling, and it drifts around its new spot.",
         "GNOME Flashback's own window tiling is on",
         "In dconf Editor ▸ org ▸ gnome ▸ metacity, turn off “edge-tiling”.",
         "Open dconf Editor…",
         "GNOME Flashback's own edge tiling is off, so it won't compete with drag-to-snap.",
         "GNOME Flashback's own window menu.",
         "Open Settings…",
         "Open Settings again"},
        {{DesktopKind::cinnamon, true},
         "Cinnamon Window Tiling",
         "Cinnamon's tiling, and it drifts around its new spot.",
         "Cinnamon's own window tiling is on",
         "In System Settings ▸ Window Tiling, turn off “Enable Window Tiling and Snapping”.",
         "Open Window Tiling Settings…",
         "Cinnamon's own edge tiling is off, so it won't compete with drag-to-snap.",
         "Cinnamon's own window menu.",
         "Open System Settings…",
         "Open System Settings again"},
        {{DesktopKind::mate, true},
         "MATE Window Tiling",
         "MATE's tiling, and it drifts around its new spot.",
         "MATE's own window tiling is on",
         "In Control Center ▸ Windows, turn off “Enable window tiling”.",
         "Open Window Preferences…",
         "MATE's own edge tiling is off, so it won't compete with drag-to-snap.",
         "MATE's own window menu.",
         "Open Control Center…",
         "Open Control Center again"},
        {{DesktopKind::xfce, true},
         "Xfce Window Tiling",
         "Xfce's tiling, and it drifts around its new spot.",
         "Xfce's own window tiling is on",
         "In Settings Manager ▸ Window Manager Tweaks ▸ Accessibility, turn off “Automatically "
         "tile windows when moving toward the screen edge”.",
         "Open Window Manager Tweaks…",
         "Xfce's own edge tiling is off, so it won't compete with drag-to-snap.",
         "Xfce's own window menu.",
         "Open Settings Manager…",
         "Open Settings Manager again"},
        {{DesktopKind::other, false},
         "Desktop Window Tiling",
         "the desktop's tiling, and it drifts around its new spot.",
         "The desktop's own window tiling is on",
         "In the desktop's settings, turn off edge tiling.",
         "Open Desktop Settings…",
         "The desktop's own edge tiling is off, so it won't compete with drag-to-snap.",
         "the desktop's own window menu.",
         "Open Desktop Settings…",
         "Open Desktop Settings again"},
    };
    return texts;
}

/// The part of `text` before `end`, which it must hold.
std::string before(const std::string& text, const std::string& end) {
    const auto position = text.find(end);
    EXPECT_NE(position, std::string::npos) << end;
    return text.substr(0, position);
}

TEST(Vocabulary, theReferenceChangesNothing) {
    const Vocabulary reference = Vocabulary::reference();
    for (const auto& text : namingTexts()) {
        EXPECT_EQ(reference.apply(text), text);
    }
    for (const auto& text : otherTexts()) {
        EXPECT_EQ(reference.apply(text), text);
    }
}

TEST(Vocabulary, everyHostNamesItself) {
    for (const HostTexts& expected : hostTexts()) {
        const Vocabulary words = Vocabulary::of(expected.host);
        SCOPED_TRACE(expected.tilingGroup);
        EXPECT_EQ(words.apply(tilingGroup), expected.tilingGroup);
        EXPECT_EQ(words.apply(orbitText), before(orbitText, "macOS's") + expected.orbitEnd);
        EXPECT_EQ(words.apply(tilingOnTitle), expected.tilingOnTitle);
        EXPECT_EQ(words.apply(tilingOnText),
                  before(tilingOnText, "In System") + expected.tilingOnAdvice);
        EXPECT_EQ(words.apply(tilingOnButton), expected.tilingOnButton);
        EXPECT_EQ(words.apply(tilingOff), expected.tilingOff);
        EXPECT_EQ(words.apply(protectionText),
                  before(protectionText, "macOS's") + expected.protectionEnd);
        EXPECT_EQ(words.apply(openSettings), expected.openSettings);
        EXPECT_EQ(words.apply(openSettingsAgain), expected.openSettingsAgain);
    }
}

TEST(Vocabulary, everyHostSharesSettingsThroughAFolderOfTheComputer) {
    for (const HostTexts& of : hostTexts()) {
        const Vocabulary words = Vocabulary::of(of.host);
        SCOPED_TRACE(of.tilingGroup);
        EXPECT_EQ(words.apply(syncTitle), "Shared Folder Sync");
        EXPECT_EQ(words.apply(conflictText),
                  "Your Lumatile settings changed on this computer and in the shared folder since "
                  "they last synced. Choose which copy to keep.");
        EXPECT_EQ(words.apply(keepThis), "Keep This Computer");
        EXPECT_EQ(words.apply(useCloud), "Use Shared Folder");
    }
}

TEST(Vocabulary, noHostChangesATextThatNamesNothing) {
    for (const HostTexts& of : hostTexts()) {
        const Vocabulary words = Vocabulary::of(of.host);
        for (const auto& text : otherTexts()) {
            EXPECT_EQ(words.apply(text), text);
        }
    }
}

TEST(Vocabulary, noNounOfTheReferenceIsLeftOnAHost) {
    for (const HostTexts& of : hostTexts()) {
        const Vocabulary words = Vocabulary::of(of.host);
        for (const auto& text : namingTexts()) {
            for (const char* noun : {"macOS", "Mac", "iCloud", "Dock", "green-button"}) {
                EXPECT_EQ(words.apply(text).find(noun), std::string::npos) << words.apply(text);
            }
        }
    }
}

TEST(Vocabulary, aWindowManagerInAnotherSessionIsNamedByItself) {
    const std::vector<std::pair<DesktopKind, std::string>> names{
        {DesktopKind::plasma, "KWin"},       {DesktopKind::gnome, "Mutter"},
        {DesktopKind::metacity, "Metacity"}, {DesktopKind::cinnamon, "Muffin"},
        {DesktopKind::mate, "Marco"},        {DesktopKind::xfce, "Xfwm4"}};
    for (const auto& [kind, name] : names) {
        const Vocabulary words = Vocabulary::of({kind, false});
        EXPECT_EQ(words.apply(tilingOnTitle), name + "'s own window tiling is on");
        EXPECT_EQ(words.apply(tilingGroup), name + " Window Tiling");
    }
}

TEST(Vocabulary, hostsWriteKeysByName) {
    const std::string_view text = "Press **⌃⌥ ← →**, or ⌘Z.";
    Vocabulary host = Vocabulary::of({DesktopKind::xfce, true});
    EXPECT_EQ(host.apply(text), "Press **Ctrl+Alt+Left or Right**, or Super+Z.");
    host.legends = {{"Z", "Y"}};
    EXPECT_EQ(host.apply(text), "Press **Ctrl+Alt+Left or Right**, or Super+Y.");
    EXPECT_EQ(Vocabulary::reference().apply(text), text);
}

TEST(Vocabulary, aNounIsAWordOfItsOwn) {
    const Vocabulary words = Vocabulary::of({DesktopKind::gnome, true});
    EXPECT_EQ(words.apply("Machine, EMac, macOSx, iClouds"), "Machine, EMac, macOSx, iClouds");
    EXPECT_EQ(words.apply("(Mac)"), "(computer)");
    EXPECT_EQ(words.apply("a Mac"), "a computer");
}

TEST(Vocabulary, aSentenceBeginsWithACapital) {
    const Vocabulary words = Vocabulary::of({DesktopKind::other, false});
    EXPECT_EQ(words.apply("macOS's tiling. macOS's tiling, macOS's tiling"),
              "The desktop's tiling. The desktop's tiling, the desktop's tiling");
}

TEST(Vocabulary, bothApostrophesArePossessives) {
    const Vocabulary words = Vocabulary::of({DesktopKind::other, false});
    EXPECT_EQ(words.apply("by macOS’s tiling"), "by the desktop’s tiling");
}

TEST(Vocabulary, whatWasPutInIsNotLookedAtAgain) {
    Vocabulary words = Vocabulary::reference();
    words.computer = {"System Settings", "Mac"};
    words.settingsProgram = "a Mac";
    EXPECT_EQ(words.apply("this Mac, System Settings"), "this System Settings, a Mac");
}

}  // namespace
}  // namespace lumatile
