#include "tests/desktop/support/session/SessionKinds.h"

#include <ostream>

#include "tests/desktop/support/session/KWinSessionDesk.h"
#include "tests/desktop/support/session/X11SessionDesk.h"

namespace lumatile::desktop {
namespace {

constexpr const char* wayland = "wayland";

// Of the terminal's own font, pixels.
constexpr int terminalColumn = 6;
constexpr int terminalRow = 13;

/// Programs of the X server.
std::vector<SessionProgram> programsOnX() {
    return {
        // States no window type.
        {"terminal", {"xterm", "-e", "exec sleep 1000"}, "XTerm", {}, terminalColumn, terminalRow},
        // States no process.
        {"oldToolkit", {"xlogo"}, "XLogo"},
    };
}

/// A program of a toolkit that draws its own frame, and one of a toolkit that leaves it.
/// @param platforms the names that the toolkits have for the protocol
std::vector<SessionProgram> programsOfToolkits(const Environment& platforms, bool drawsItsSize) {
    std::vector<SessionProgram> programs{
        {"drawsItsOwnFrame", {LUMATILE_CLIENT_SIDE_WINDOW}, "ClientSideWindow", platforms},
        {"framed", {LUMATILE_QT_WINDOW}, "qt_window", platforms},
    };
    for (SessionProgram& program : programs) {
        program.drawsItsSize = drawsItsSize;
    }
    return programs;
}

std::vector<SessionProgram> operator+(std::vector<SessionProgram> some,
                                      const std::vector<SessionProgram>& more) {
    some.insert(some.end(), more.begin(), more.end());
    return some;
}

SessionKind kindOn(WindowManager::Kind windowManager) {
    SessionKind kind;
    kind.name = toString(windowManager);
    kind.windowKinds = X11SessionDesk::windowKinds();
    kind.titledKinds = X11SessionDesk::titledKinds();
    kind.framesOutOfATile = windowManager == WindowManager::Kind::kwin ? 2 : 0;
    kind.leftStates = {SpecialState::maximized, SpecialState::maximizedVertically,
                       SpecialState::maximizedHorizontally};
    kind.placedTypes = {"DIALOG", "UTILITY", "SPLASH", "TOOLBAR", "NOTIFICATION"};
    kind.leftTypes = {"DESKTOP"};
    kind.rolledUpKinds = {kind.windowKinds.front()};
    kind.programs = programsOnX() +
                    programsOfToolkits({{"GDK_BACKEND", "x11"}, {"QT_QPA_PLATFORM", "xcb"}}, false);
    kind.start = [windowManager](const SessionDesk::Setup& setup) {
        return std::make_unique<X11SessionDesk>(windowManager, setup);
    };
    return kind;
}

SessionKind plasma() {
    SessionKind kind;
    kind.name = "plasma";
    kind.windowKinds = KWinSessionDesk::windowKinds();
    kind.titledKinds = kind.windowKinds;
    kind.hasScales = true;
    kind.leftStates = {SpecialState::maximized, SpecialState::maximizedVertically,
                       SpecialState::maximizedHorizontally, SpecialState::tiled};
    kind.placedTypes = {"nativeDialog", "DIALOG", "UTILITY", "TOOLBAR"};
    // KWin gives a splash screen no focus, and lets nobody move a notification.
    kind.leftTypes = {"DESKTOP", "SPLASH", "NOTIFICATION"};
    // Programs of Wayland cannot be rolled up.
    kind.rolledUpKinds = {kind.windowKinds.back()};
    kind.compositings = {true};
    kind.programs =
        programsOnX() +
        programsOfToolkits({{"GDK_BACKEND", wayland}, {"QT_QPA_PLATFORM", wayland}}, true);
    kind.start = [](const SessionDesk::Setup& setup) {
        return std::make_unique<KWinSessionDesk>(setup);
    };
    return kind;
}

}  // namespace

const std::vector<SessionKind>& sessionKinds() {
    static const std::vector<SessionKind> all = [] {
        std::vector<SessionKind> result;
        for (const WindowManager::Kind kind : WindowManager::kinds) {
            result.push_back(kindOn(kind));
        }
        result.push_back(plasma());
        return result;
    }();
    return all;
}

std::ostream& operator<<(std::ostream& stream, const SessionKind& kind) {
    return stream << kind.name;
}

std::string nameOfSession(const testing::TestParamInfo<SessionKind>& kind) {
    return kind.param.name;
}

}  // namespace lumatile::desktop
