#include "demonstration/ShortcutRound.h"

#include <string_view>

#include "tests/desktop/support/AskedFrame.h"

namespace lumatile::demonstration {
namespace {

using desktop::DefaultShortcut;
using desktop::PixelRect;
using desktop::XClient;

// Long for a key press, short for a reader who waits for a row that is going to be wrong.
constexpr std::chrono::seconds patience{3};

// A size and a place that no shortcut gives.
PixelRect freePlace(const PixelRect& screen) { return {screen.x + 83, screen.y + 127, 720, 520}; }

PixelRect wantedFrame(const DemonstrationDesktop& desktop, const DefaultShortcut& shortcut,
                      std::size_t monitor, const PixelRect& before) {
    switch (shortcut.kind) {
        case DefaultShortcut::Kind::area:
            return desktop.expected().area(shortcut, monitor);
        case DefaultShortcut::Kind::center:
            return desktop.expected().centered(before, monitor);
        case DefaultShortcut::Kind::restore:
            return before;
        case DefaultShortcut::Kind::nextDisplay:
        case DefaultShortcut::Kind::previousDisplay:
            break;
    }
    // There are two, so the next one is the previous one too.
    return desktop.expected().moved(before, monitor, 1 - monitor);
}

void pressAndWait(DemonstrationDesktop& desktop, const DefaultShortcut& shortcut,
                  xcb_window_t window, const PixelRect& wanted) {
    desktop.caption("Press  <b>" + std::string(shortcut.keys) + "</b>");
    desktop.press(shortcut);
    XClient::waitUntil([&] { return desktop.frame(window) == wanted; },
                       desktop::Deadline::in(patience));
}

Result pressOne(DemonstrationDesktop& desktop, const DefaultShortcut& shortcut,
                const DemonstrationDesktop::Screen& screen, xcb_window_t window) {
    const PixelRect visible = desktop.expected().visible(screen.monitor);
    desktop.activate(window);
    desktop.place(window, freePlace(visible));
    const PixelRect before = desktop.frame(window);
    if (shortcut.kind == DefaultShortcut::Kind::restore) {
        const DefaultShortcut& away = desktop::defaultShortcut("maximize");
        pressAndWait(desktop, away, window, desktop.expected().area(away, screen.monitor));
    }
    const PixelRect wanted = wantedFrame(desktop, shortcut, screen.monitor, before);
    const PixelRect now = desktop.frame(window);
    desktop.desktop().observer().forget();
    pressAndWait(desktop, shortcut, window, wanted);
    Result result;
    result.keys = shortcut.keys;
    result.command = shortcut.command;
    result.screen = screen.name;
    result.asked = desktop::askedFrame(desktop.desktop().observer(), window, now);
    result.became = desktop.frame(window);
    result.wanted = wanted;
    return result;
}

// A window that is brought to a place by a shortcut.
struct Move {
    xcb_window_t window;
    std::size_t monitor;
    std::string_view command;
};

struct Picture {
    std::string name;
    std::string caption;
    std::vector<Move> moves;
};

void carryOut(DemonstrationDesktop& desktop, const Move& move) {
    const DefaultShortcut& shortcut = desktop::defaultShortcut(move.command);
    const PixelRect visible = desktop.expected().visible(move.monitor);
    desktop.activate(move.window);
    desktop.place(move.window, freePlace(visible));
    const PixelRect wanted = wantedFrame(desktop, shortcut, move.monitor, freePlace(visible));
    desktop.press(shortcut);
    XClient::waitUntil(
        [&] {
            const PixelRect frame = desktop.frame(move.window);
            return frame.x == wanted.x && frame.y == wanted.y && frame != freePlace(visible);
        },
        desktop::Deadline::in(patience));
}

}  // namespace

void pressEveryShortcut(DemonstrationDesktop& desktop, ResultTable& table) {
    std::size_t turn = 0;
    for (const DemonstrationDesktop::Screen& screen : DemonstrationDesktop::screens()) {
        for (const DefaultShortcut& shortcut : desktop::defaultShortcuts()) {
            const auto& windows = desktop.windows();
            table.add(pressOne(desktop, shortcut, screen, windows[turn++ % windows.size()]));
        }
    }
}

std::vector<std::filesystem::path> savePictures(DemonstrationDesktop& desktop,
                                                const std::filesystem::path& folder) {
    const xcb_window_t picture = desktop.windows().at(0);
    const xcb_window_t notes = desktop.windows().at(1);
    const xcb_window_t calendar = desktop.windows().at(2);
    const xcb_window_t second = desktop.windows().at(3);
    const xcb_window_t logo = desktop.logo();
    const xcb_window_t terminal = desktop.terminal();
    const std::vector<Picture> pictures{
        {"halves.png",
         "Halves:  <b>Ctrl+Alt+Left</b>  <b>Right</b>   and on the upright screen  "
         "<b>Up</b>  <b>Down</b>",
         {{logo, 0, "right"},
          {terminal, 0, "left"},
          {picture, 0, "right"},
          {calendar, 1, "bottom"},
          {notes, 1, "top"}}},
        {"quarters-and-thirds.png",
         "Quarters and thirds:  <b>Ctrl+Alt+U I J K</b>   and   <b>D F G</b>",
         {{notes, 0, "topLeft"},
          {logo, 0, "bottomLeft"},
          {picture, 0, "right"},
          {terminal, 1, "leftThird"},
          {calendar, 1, "centerThird"},
          {second, 1, "rightThird"}}},
        {"two-thirds.png",
         "Thirds and two thirds:  <b>Ctrl+Alt+D F G</b>   and   <b>E R T</b>",
         {{logo, 1, "bottomLeft"},
          {terminal, 0, "leftTwoThirds"},
          {notes, 0, "rightThird"},
          {picture, 1, "leftTwoThirds"},
          {second, 1, "rightThird"}}},
    };
    std::vector<std::filesystem::path> files;
    for (const Picture& each : pictures) {
        for (const Move& move : each.moves) {
            carryOut(desktop, move);
        }
        desktop.caption(each.caption);
        files.push_back(folder / each.name);
        desktop.save(files.back());
    }
    return files;
}

}  // namespace lumatile::demonstration
