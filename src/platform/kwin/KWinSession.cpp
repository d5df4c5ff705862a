#include "platform/kwin/KWinSession.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/LoneBusConnection.h"
#include "platform/kwin/KWinAccessibilityPlatform.h"
#include "platform/kwin/KWinChannel.h"
#include "platform/kwin/KWinEdgeTiling.h"
#include "platform/kwin/KWinHotKeyPlatform.h"
#include "platform/kwin/KWinKeyboardLayout.h"
#include "platform/kwin/KWinMouseEventSource.h"
#include "platform/kwin/KWinOutputOrder.h"
#include "platform/kwin/KWinScreenList.h"
#include "platform/kwin/KWinWorkspace.h"
#include "platform/wayland/WaylandDimOverlays.h"
#include "platform/wayland/WaylandHighlight.h"
#include "platform/wayland/WaylandInputState.h"
#include "platform/wayland/WaylandKeyboard.h"
#include "platform/wayland/WaylandLayers.h"
#include "platform/wayland/WaylandOutputs.h"
#include "ports/Translucency.h"

namespace lumatile {

namespace {

// Seconds. The script is there within a hundredth of one unless KWin is starting itself.
constexpr double firstAnswer = 2;

std::string_view variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

std::filesystem::path bordersNote() {
    const std::string_view folder = variable("XDG_RUNTIME_DIR");
    return (folder.empty() ? std::filesystem::temp_directory_path()
                           : std::filesystem::path(folder)) /
           "lumatile-kwin-edges.json";
}

/// KWin always composites under Wayland.
class AlwaysTranslucent final : public Translucency {
public:
    bool isAvailable() override { return true; }
};

/// Until outputs and keyboard have said what they are, which they do one round trip after another.
/// A compositor that is busy, as at login, gets some time.
void awaitDescriptions(WaylandConnection& connection) {
    constexpr int neededTrips = 3;  // What there is; what it has; what that is like.
    constexpr int mostAttempts = 8;
    int trips = 0;
    for (int attempt = 0; attempt < mostAttempts && trips < neededTrips; ++attempt) {
        trips += connection.synchronize() ? 1 : 0;
    }
}

}  // namespace

/// Everything that speaks to KWin, each after what it stands on.
struct KWinSession::Adapters {
    Adapters(WaylandConnection& with, RunLoop& runLoop)
        : connection(with),
          channel(BusConnection::sessionAddress(), runLoop),
          mouseTaps(channel, screenList, edgeTiling, runLoop),
          keyboard(with),
          hotKeys(channel, runLoop,
                  [this](std::uint32_t keyCode) {
                      return keyboard.isKnown() ? std::optional(keyboard.keysymAt(keyCode))
                                                : std::nullopt;
                  }),
          keymapWatch(keyboard.observe([this] { hotKeys.followKeyboard(); })),
          layout(channel, runLoop, [this](std::uint32_t group) { keyboard.setGroup(group); }),
          inputState(with, [this] { return mouseTaps.isHeld(); }) {}

    WaylandConnection& connection;
    WaylandOutputs outputs{connection};
    KWinOutputOrder outputOrder{connection, outputs};
    KWinChannel channel;
    KWinScreenList screenList{channel, [this] { return outputOrder.primary(); }};
    KWinEdgeTiling edgeTiling{channel, bordersNote()};
    KWinMouseEventSource mouseTaps;
    KWinAccessibilityPlatform accessibility{channel, screenList, mouseTaps};
    KWinWorkspace workspace{channel};
    WaylandKeyboard keyboard;
    KWinHotKeyPlatform hotKeys;
    WaylandKeyboard::Observers::Subscription keymapWatch;
    KWinKeyboardLayout layout;
    WaylandInputState inputState;
    WaylandLayers layers{connection};
    WaylandDimOverlays dimOverlays{connection, layers, outputs};
    WaylandHighlight highlight{connection, layers, outputs, [this] { return screenList.origin(); }};
    AlwaysTranslucent translucency;
};

std::unique_ptr<PresentSession> KWinSession::find() {
    if (variable("WAYLAND_DISPLAY").empty() && variable("XDG_SESSION_TYPE") != "wayland") {
        return nullptr;
    }
    if (!LoneBusConnection::open(BusConnection::sessionAddress(), "org.kde.KWin")) {
        return nullptr;
    }
    std::unique_ptr<WaylandConnection> connection = WaylandConnection::open();
    return connection ? std::unique_ptr<PresentSession>(new KWinSession(std::move(connection)))
                      : nullptr;
}

KWinSession::KWinSession(std::unique_ptr<WaylandConnection> connection)
    : connection_(std::move(connection)) {
    const std::string_view display = variable("WAYLAND_DISPLAY");
    facts_.desktop = display.empty() ? "wayland-0" : display;
    facts_.toolkitEnvironment = {{"QT_QPA_PLATFORM", "wayland"}};
    facts_.toolkitFarewell = KWinTexts::toolkitFarewell;
    facts_.lost = KWinTexts::lost;
    facts_.comesBack = true;
    facts_.shortcomings.emplace_back(KWinTexts::buttonsUnknown);
}

DesktopSession KWinSession::enter(RunLoop& runLoop, SystemLog& /*log*/) {
    const auto adapters = std::make_shared<Adapters>(*connection_, runLoop);
    Adapters& own = *adapters;
    awaitDescriptions(*connection_);
    own.channel.awaitAnswer(firstAnswer);
    WaylandConnection& connection = *connection_;
    return {own.accessibility,
            own.screenList,
            own.hotKeys,
            own.workspace,
            own.inputState,
            own.mouseTaps,
            own.dimOverlays,
            own.translucency,
            own.keyboard,
            {connection.fileDescriptor(), [&connection] { connection.dispatch(); },
             [&connection] { return connection.isLost(); }},
            [] { return std::string(KWinTexts::windowManager); },
            {},
            adapters,
            &own.highlight,
            true,
            [&own](std::string_view title) {
                own.channel.give(KWinFrontOrder{getpid(), std::string(title)});
            }};
}

}  // namespace lumatile
