#include "demonstration/DemonstrationDesktop.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <iostream>
#include <utility>

#include "demonstration/Screenshot.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/WindowActivation.h"
#include "tests/desktop/support/WindowPlacing.h"

namespace lumatile::demonstration {
namespace {

using desktop::DesktopError;
using desktop::MonitorLayout;
using desktop::PixelRect;
using desktop::XClient;

constexpr int captionHeight = 44;

// What the terminal shows: the shortcuts, in the manner of a help page.
const char* const terminalScript =
    "printf '\\033[1;36m  Lumatile\\033[0m\\n\\n"
    "  Ctrl+Alt+\\033[1mLeft Right Up Down\\033[0m   halves\\n"
    "  Ctrl+Alt+\\033[1mU I J K\\033[0m              quarters\\n"
    "  Ctrl+Alt+\\033[1mD F G\\033[0m                thirds\\n"
    "  Ctrl+Alt+\\033[1mE R T\\033[0m                two thirds\\n"
    "  Ctrl+Alt+\\033[1mReturn\\033[0m               the whole screen\\n"
    "  Ctrl+Alt+\\033[1mC\\033[0m                    center\\n"
    "  Ctrl+Alt+\\033[1mBackspace\\033[0m            back where it was\\n"
    "  Ctrl+Alt+Super+\\033[1mLeft Right\\033[0m     the other screen\\n\\n"
    "\\033[32m$\\033[0m '; exec sleep 100000";

// Two monitors as they stand on a desk, their middles level. The primary one does not begin at the
// root's origin, which is no special case.
MonitorLayout deskLayout() { return {"desk", {{0, 420, 1920, 1080}, {1920, 0, 1080, 1920}}, 0}; }

desktop::TestDesktop makeDesktop() {
    const Step step("Starting an X server with two monitors, and openbox");
    return {deskLayout(), desktop::WindowManager::Kind::openbox};
}

}  // namespace

Step::Step(const std::string& what) : exceptions_(std::uncaught_exceptions()) {
    std::cout << what << " … " << std::flush;
}

Step::~Step() {
    std::cout << (std::uncaught_exceptions() == exceptions_ ? "done" : "failed") << std::endl;
}

const std::vector<DemonstrationDesktop::Screen>& DemonstrationDesktop::screens() {
    static const std::vector<Screen> all{{"landscape", 0}, {"portrait", 1}};
    return all;
}

DemonstrationDesktop::DemonstrationDesktop(const std::filesystem::path& program)
    : desktop_(makeDesktop()), expected_(deskLayout()) {
    expected_.reserve(0, captionHeight);
    paintBackground();
    {
        const Step step("Starting a few programs");
        openCaption();
        for (const char* const kind : {"picture", "notes", "calendar", "waves"}) {
            windows_.push_back(open({LUMATILE_SCENE_WINDOW, kind}, std::string("Scene-") + kind));
        }
        logo_ = open({"xlogo", "-bg", "#f4f1ea", "-fg", "#c2553b"}, "XLogo");
        windows_.push_back(logo_);
        terminal_ = open({"xterm", "-T", "Terminal", "-fa", "DejaVu Sans Mono", "-fs", "13", "-bg",
                          "#1b1f2a", "-fg", "#d8dee9", "-b", "14", "+sb", "-e", terminalScript},
                         "XTerm");
    }
    const Step step("Starting " + program.string());
    lumatile_ = std::make_unique<desktop::LumatileProcess>(desktop_.session(), program);
}

void DemonstrationDesktop::paintBackground() {
    XClient& client = desktop_.observer();
    xcb_connection_t* connection = client.connection();
    const PixelRect root = deskLayout().root();
    const xcb_pixmap_t picture = xcb_generate_id(connection);
    xcb_create_pixmap(connection, client.screen().root_depth, picture, client.root(),
                      static_cast<std::uint16_t>(root.width),
                      static_cast<std::uint16_t>(root.height));
    const xcb_gcontext_t pen = xcb_generate_id(connection);
    xcb_create_gc(connection, pen, picture, 0, nullptr);
    // From deep blue at the top to a paler one.
    for (int y = 0; y < root.height; ++y) {
        const double part = static_cast<double>(y) / root.height;
        const auto mixed = [&](double from, double to) {
            return static_cast<std::uint32_t>(from + (to - from) * part);
        };
        const std::uint32_t color =
            mixed(0x1e, 0x5b) << 16U | mixed(0x2b, 0x7f) << 8U | mixed(0x4a, 0x95);
        xcb_change_gc(connection, pen, XCB_GC_FOREGROUND, &color);
        const xcb_rectangle_t line{0, static_cast<std::int16_t>(y),
                                   static_cast<std::uint16_t>(root.width), 1};
        xcb_poly_fill_rectangle(connection, picture, pen, 1, &line);
    }
    xcb_change_window_attributes(connection, client.root(), XCB_CW_BACK_PIXMAP, &picture);
    xcb_clear_area(connection, 0, client.root(), 0, 0, 0, 0);
    xcb_free_gc(connection, pen);
    xcb_free_pixmap(connection, picture);
    client.roundTrip();
}

xcb_window_t DemonstrationDesktop::open(const std::vector<std::string>& command,
                                        const std::string& windowClass) {
    desktop::TestDesktop::Program program = desktop_.openProgram(command, windowClass);
    programs_.push_back(std::move(program.process));
    return program.window;
}

void DemonstrationDesktop::openCaption() {
    const MonitorLayout layout = deskLayout();
    programs_.push_back(desktop_.session().start(
        {LUMATILE_SCENE_WINDOW, "caption", std::to_string(layout.monitors[0].width),
         std::to_string(layout.monitors[0].bottom()), std::to_string(layout.root().height)},
        "caption"));
    desktop::DesktopObserver& observer = desktop_.observer();
    if (!XClient::waitUntil([&] {
            caption_ = observer.windowOfClass("Scene-caption");
            return caption_ != XCB_WINDOW_NONE;
        })) {
        throw DesktopError("the panel does not show:\n" + desktop_.session().output("caption"));
    }
}

void DemonstrationDesktop::activate(xcb_window_t window) {
    desktop::activateWindow(desktop_.observer(), window);
}

void DemonstrationDesktop::place(xcb_window_t window, const PixelRect& frame) {
    desktop::placeWindow(desktop_.observer(), window, frame, [&](const PixelRect& now) {
        // A terminal keeps whole lines.
        return window == terminal_ ? now.x == frame.x && now.y == frame.y : now == frame;
    });
}

void DemonstrationDesktop::press(const desktop::DefaultShortcut& shortcut) {
    desktop_.input().press(shortcut.modifiers(), shortcut.key);
}

PixelRect DemonstrationDesktop::frame(xcb_window_t window) {
    return desktop::outerFrame(desktop_.observer(), window).value_or(PixelRect{});
}

void DemonstrationDesktop::caption(const std::string& markup) {
    XClient& client = desktop_.observer();
    client.setText(caption_, "_LUMATILE_CAPTION", client.atom("UTF8_STRING"), markup);
    client.roundTrip();
}

void DemonstrationDesktop::save(const std::filesystem::path& file) {
    Screenshot shown = Screenshot::take(desktop_.observer());
    const desktop::Deadline deadline = desktop::Deadline::in(std::chrono::seconds(5));
    // That a program has painted shows in no event: the picture stands when it has not changed for
    // a while.
    for (bool changes = true; changes && !deadline.isOver();) {
        XClient::waitUntil([] { return false; },
                           desktop::Deadline::in(std::chrono::milliseconds(250)));
        Screenshot later = Screenshot::take(desktop_.observer());
        changes = later != shown;
        shown = std::move(later);
    }
    shown.save(file, deskLayout().monitors);
}

}  // namespace lumatile::demonstration
