#include "tests/desktop/support/ShiftingDesktop.h"

#include "platform/x11/X11WindowManagerProbe.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/OuterFrame.h"

namespace lumatile::desktop {

namespace {

/// The message's flags for a width and a height.
constexpr std::uint32_t namesSize = 12U << 8U;

}  // namespace

ShiftingDesktop::ShiftingDesktop(WindowManager::Kind windowManager, std::string_view oledSettings,
                                 WindowManager::Options options, double longestTimeout)
    : desktop_(MonitorLayout::landscape(), windowManager, options),
      connection_(X11Connection::open(desktop_.display())),
      monitors_(*connection_),
      screenList_(*connection_, monitors_),
      mirror_(*connection_),
      accessibility_(*connection_, monitors_, mirror_, longestTimeout),
      x11Workspace_(mirror_),
      workspace_(x11Workspace_),
      mouseTaps_(*connection_, monitors_, time_.runLoop),
      application_(std::make_unique<ShiftingApplication>(
          time_, ShiftingApplication::Adapters{accessibility_, screenList_, workspace_, mouseTaps_},
          oledSettings)) {}

std::unique_ptr<TestWindow> ShiftingDesktop::open(const PixelRect& frame, TestWindow::Kind kind) {
    TestWindow::Options options;
    options.kind = kind;
    auto window = desktop_.openWindow(options);
    window->place(frame);
    settle();
    return window;
}

void ShiftingDesktop::settle() {
    X11WindowManagerProbe probe(*connection_, mirror_);
    constexpr std::uint64_t questions = 5;
    std::uint64_t signs = 0;
    do {
        const std::uint64_t before = mirror_.windowManagerActivity();
        for (std::uint64_t question = 0; question < questions; ++question) {
            probe.ask();
            if (!XClient::waitUntil([&] {
                    connection_->synchronize();
                    return probe.isAnswered();
                })) {
                throw DesktopError("the window manager does not come to rest");
            }
        }
        signs = mirror_.windowManagerActivity() - before;
    } while (signs > questions);
}

PixelRect ShiftingDesktop::frame(xcb_window_t window) {
    const std::optional<PixelRect> frame = outerFrame(observer(), window);
    if (!frame) {
        throw DesktopError("the window is gone");
    }
    return *frame;
}

std::vector<RootMessage> ShiftingDesktop::otherThanMoves(xcb_window_t window) {
    std::vector<RootMessage> messages = observer().messages(window);
    std::erase_if(messages, [](const RootMessage& message) {
        // The one question that is put to window managers in a message.
        return message.type == "_NET_REQUEST_FRAME_EXTENTS" ||
               (message.type == "_NET_MOVERESIZE_WINDOW" && (message.data[0] & namesSize) == 0);
    });
    return messages;
}

}  // namespace lumatile::desktop
