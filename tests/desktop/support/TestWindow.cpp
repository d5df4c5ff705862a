#include "tests/desktop/support/TestWindow.h"

#include <unistd.h>

#include <algorithm>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/WindowActivation.h"
#include "tests/desktop/support/WindowManagerAnswer.h"
#include "tests/desktop/support/WindowPlacing.h"

namespace lumatile::desktop {
namespace {

// Flags of WM_NORMAL_HINTS.
constexpr std::uint32_t userPosition = 1;
constexpr std::uint32_t userSize = 2;
constexpr std::uint32_t minimumSize = 16;
constexpr std::uint32_t resizeIncrements = 64;
constexpr std::uint32_t baseSize = 256;

// The source indications of messages to the window manager. A pager's wish is never taken for an
// attempt to steal the focus.
constexpr std::uint32_t fromPager = 2;

}  // namespace

TestWindow::TestWindow(const std::string& display, const Options& options)
    : XClient(display), window_(newWindowId()), kind_(options.kind) {
    const std::array<std::uint32_t, 2> values{
        options.color, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(
        connection(), XCB_COPY_FROM_PARENT, window_, root(),
        static_cast<std::int16_t>(options.area.x), static_cast<std::int16_t>(options.area.y),
        static_cast<std::uint16_t>(options.area.width),
        static_cast<std::uint16_t>(options.area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
    const std::uint32_t rootMask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &rootMask);
    describe(options);
    roundTrip();
}

TestWindow::~TestWindow() {
    if (!isLost()) {
        xcb_destroy_window(connection(), window_);
        roundTrip();
        // A window that is still listed would be the next test's frontmost one.
        waitUntil([this] { return isLost() || !isManaged(); },
                  Deadline::in(std::chrono::seconds(5)));
    }
}

void TestWindow::describe(const Options& options) {
    setText(window_, "WM_NAME", XCB_ATOM_STRING, options.title);
    setText(window_, "_NET_WM_NAME", atom("UTF8_STRING"), options.title);
    const std::string lowered = "testwindow";
    setText(window_, "WM_CLASS", XCB_ATOM_STRING,
            lowered + std::string(1, '\0') + options.windowClass + std::string(1, '\0'));
    if (options.statesPid) {
        setCardinals(window_, "_NET_WM_PID", XCB_ATOM_CARDINAL,
                     {static_cast<std::uint32_t>(getpid())});
        std::array<char, 256> host{};
        gethostname(host.data(), host.size() - 1);
        setText(window_, "WM_CLIENT_MACHINE", XCB_ATOM_STRING, host.data());
    }
    // Takes the focus, starts in the normal state.
    setCardinals(window_, "WM_HINTS", XCB_ATOM_WM_HINTS, {3, 1, 1, 0, 0, 0, 0, 0, 0});

    std::vector<std::uint32_t> hints(18);
    hints[0] = userPosition | userSize;
    hints[1] = static_cast<std::uint32_t>(options.area.x);
    hints[2] = static_cast<std::uint32_t>(options.area.y);
    hints[3] = static_cast<std::uint32_t>(options.area.width);
    hints[4] = static_cast<std::uint32_t>(options.area.height);
    if (kind_ == Kind::sizeIncrement) {
        hints[0] |= minimumSize | resizeIncrements | baseSize;
        hints[5] = baseWidth + 10 * stepWidth;
        hints[6] = baseHeight + 4 * stepHeight;
        hints[9] = stepWidth;
        hints[10] = stepHeight;
        hints[15] = baseWidth;
        hints[16] = baseHeight;
    }
    setCardinals(window_, "WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS, hints);

    const auto type = [this](const char* name) {
        setCardinals(window_, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {atom(name)});
    };
    switch (kind_) {
        case Kind::decorated:
        case Kind::sizeIncrement:
            break;  // Like many old programs it states no type.
        case Kind::clientSide:
            castShadow();
            [[fallthrough]];
        case Kind::undecorated:
            type("_NET_WM_WINDOW_TYPE_NORMAL");
            // Only the decorations are stated, and there are none.
            setCardinals(window_, "_MOTIF_WM_HINTS", atom("_MOTIF_WM_HINTS"), {2, 0, 0, 0, 0});
            break;
        case Kind::dialog:
            type("_NET_WM_WINDOW_TYPE_DIALOG");
            break;
        case Kind::desktop:
            type("_NET_WM_WINDOW_TYPE_DESKTOP");
            break;
        case Kind::dock:
            type("_NET_WM_WINDOW_TYPE_DOCK");
            setStrut(options.strut);
            // All desktops.
            setCardinals(window_, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {0xffffffff});
            break;
    }
    if (!options.type.empty()) {
        type(("_NET_WM_WINDOW_TYPE_" + options.type).c_str());
    }
}

void TestWindow::setStrut(const std::array<std::uint32_t, 12>& strut) {
    setCardinals(window_, "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, {strut.begin(), strut.end()});
    setCardinals(window_, "_NET_WM_STRUT", XCB_ATOM_CARDINAL, {strut.begin(), strut.begin() + 4});
}

void TestWindow::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
        case XCB_CONFIGURE_NOTIFY: {
            const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            if (configure.window == window_) {
                configurations_.push_back(
                    {configure.x, configure.y, configure.width, configure.height});
            }
            break;
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (property.window == window_ && property.atom == atom("_NET_WM_STATE")) {
                castShadow();
            }
            break;
        }
        default:
            break;
    }
}

std::vector<std::uint32_t> TestWindow::shadowNow() {
    // A window manager that does not know the hint would take the shadow for a part of the window,
    // so toolkits draw none there.
    const std::vector<std::uint32_t> hints = cardinals(root(), "_NET_SUPPORTED");
    const bool isKnown =
        std::find(hints.begin(), hints.end(), atom("_GTK_FRAME_EXTENTS")) != hints.end();
    if (kind_ != Kind::clientSide || !isKnown) {
        return {};
    }
    // A window that fills the screen casts none either.
    const bool isWhole =
        hasState("_NET_WM_STATE_FULLSCREEN") ||
        (hasState("_NET_WM_STATE_MAXIMIZED_VERT") && hasState("_NET_WM_STATE_MAXIMIZED_HORZ"));
    return isWhole ? std::vector<std::uint32_t>(4)
                   : std::vector<std::uint32_t>(shadow.begin(), shadow.end());
}

void TestWindow::forgetConfigurations() {
    roundTrip();
    configurations_.clear();
}

void TestWindow::castShadow() {
    const std::vector<std::uint32_t> wanted = shadowNow();
    if (cardinals(window_, "_GTK_FRAME_EXTENTS") != wanted) {
        setCardinals(window_, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, wanted);
    }
}

bool TestWindow::tryMap(Deadline deadline) {
    xcb_map_window(connection(), window_);
    return waitUntil(
        [this] {
            const XReply<xcb_get_window_attributes_reply_t> attributes(
                xcb_get_window_attributes_reply(
                    connection(), xcb_get_window_attributes(connection(), window_), nullptr));
            return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && isManaged();
        },
        deadline);
}

void TestWindow::map() {
    if (!tryMap(Deadline::usual())) {
        throw DesktopError("the window manager does not take the window over");
    }
    waitForWindowManager(*this);
}

void TestWindow::activate() { activateWindow(*this, window_); }

void TestWindow::mapActive() {
    map();
    activate();
}

void TestWindow::close() {
    xcb_destroy_window(connection(), window_);
    if (!waitUntil([this] { return !isManaged(); })) {
        throw DesktopError("the window manager does not forget the window");
    }
}

bool TestWindow::isManaged() {
    const std::vector<std::uint32_t> managed = cardinals(root(), "_NET_CLIENT_LIST");
    return std::find(managed.begin(), managed.end(), window_) != managed.end();
}

bool TestWindow::isActive() { return cardinal(root(), "_NET_ACTIVE_WINDOW") == window_; }

PixelRect TestWindow::frame() {
    const std::optional<PixelRect> frame = outerFrame(*this, window_);
    if (!frame) {
        throw DesktopError("the window is gone");
    }
    return *frame;
}

PixelRect TestWindow::client() {
    const std::optional<PixelRect> area = clientArea(*this, window_);
    if (!area) {
        throw DesktopError("the window is gone");
    }
    return *area;
}

void TestWindow::place(const PixelRect& wanted) {
    placeWindow(*this, window_, wanted, [&](const PixelRect& frame) {
        return kind_ == Kind::sizeIncrement ? isStepped(frame, wanted) : frame == wanted;
    });
}

bool TestWindow::isStepped(const PixelRect& frame, const PixelRect& wanted) {
    return frame.x == wanted.x && frame.y == wanted.y && frame.width <= wanted.width &&
           frame.width > wanted.width - stepWidth && frame.height <= wanted.height &&
           frame.height > wanted.height - stepHeight;
}

void TestWindow::setState(const std::vector<std::string>& states, bool on) {
    const std::uint32_t action = on ? 1 : 0;
    ask(window_, "_NET_WM_STATE",
        {action, atom(states.at(0)), states.size() > 1 ? atom(states[1]) : xcb_atom_t{0},
         fromPager});
    if (!waitUntil([&] {
            return std::all_of(states.begin(), states.end(),
                               [&](const std::string& state) { return hasState(state) == on; }) &&
                   cardinals(window_, "_GTK_FRAME_EXTENTS") == shadowNow();
        })) {
        throw DesktopError("the window's state stays without " + states.front());
    }
    waitForWindowManager(*this);
}

bool TestWindow::hasState(const std::string& state) {
    const std::vector<std::uint32_t> states = cardinals(window_, "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), atom(state)) != states.end();
}

}  // namespace lumatile::desktop
