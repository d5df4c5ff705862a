#include "tests/desktop/support/session/KWinSessionDesk.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/PixelSpace.h"
#include "tests/desktop/support/kwin/SessionWait.h"
#include "tests/desktop/support/session/KWinSessionWindow.h"

namespace lumatile::desktop {
namespace {

constexpr const char* nativeDecorated = "nativeDecorated";
constexpr const char* nativeClientSide = "nativeClientSide";
constexpr const char* decoratedOnX = "decoratedOnX";

KWinDesktop::Options optionsOf(const SessionDesk::Setup& setup) {
    const MonitorLayout& layout = setup.layout;
    KWinDesktop::Options options;
    options.outputs.clear();
    options.primary = layout.primary;
    options.pictures = setup.isSeen;
    for (std::size_t index = 0; index < layout.monitors.size(); ++index) {
        const PixelRect& monitor = layout.monitors[index];
        const double scale = layout.scales.empty() ? 1 : layout.scales.at(index);
        const bool upright = monitor.height > monitor.width;
        const auto longer = static_cast<int>(std::max(monitor.width, monitor.height) * scale);
        const auto shorter = static_cast<int>(std::min(monitor.width, monitor.height) * scale);
        if (index > 0 && (longer != options.width || shorter != options.height)) {
            throw DesktopError("outputs of different sizes");
        }
        options.width = longer;
        options.height = shorter;
        options.outputs.push_back({monitor.x, monitor.y, scale, upright, true});
    }
    return options;
}

}  // namespace

KWinSessionDesk::KWinSessionDesk(const Setup& setup)
    : desktop_(optionsOf(setup)),
      outputs_(optionsOf(setup).outputs),
      panelMonitor_(setup.panel),
      orders_(desktop_.session(), desktop_.probe()),
      layout_(setup.layout),
      expected_(setup.layout) {
    if (setup.panel) {
        const PixelRect& monitor = layout_.monitors.at(*setup.panel);
        panel_ = std::make_unique<WaylandPanel>(desktop_.server().socket(),
                                                "Virtual-" + std::to_string(*setup.panel),
                                                monitor.width, panelHeight);
        expected_.reserve(*setup.panel, panelHeight);
    }
    program_ =
        std::make_unique<LumatileProcess>(desktop_.session(), LUMATILE_PROGRAM, setup.settings);
}

std::vector<std::string> KWinSessionDesk::windowKinds() {
    return {nativeDecorated, nativeClientSide, decoratedOnX};
}

std::unique_ptr<KWinSessionWindow> KWinSessionDesk::openOnX(const TestWindow::Options& options) {
    auto onX = std::make_shared<TestWindow>(desktop_.server().display(), options);
    const auto seen = [&] {
        return desktop_.probe().find(
            [&](const WindowState& state) { return state.xid == onX->id(); });
    };
    if (!onX->tryMap(Deadline::usual()) || !waitInSession([&] { return seen().has_value(); })) {
        throw DesktopError("KWin does not take the window over");
    }
    auto window =
        std::make_unique<KWinSessionWindow>(ProbedWindow(desktop_.probe(), seen()->id), orders_);
    window->keep(std::move(onX));
    return window;
}

std::unique_ptr<KWinSessionWindow> KWinSessionDesk::openNative(
    const NativeWindow::Options& options) {
    std::shared_ptr<NativeWindow> native = desktop_.openWindow(options);
    auto window =
        std::make_unique<KWinSessionWindow>(ProbedWindow(desktop_.probe(), native->id()), orders_);
    window->keep(std::move(native));
    return window;
}

std::unique_ptr<SessionWindow> KWinSessionDesk::open(const std::string& kind,
                                                     const PixelRect& area) {
    if (kind == decoratedOnX) {
        TestWindow::Options options;
        options.area = area;
        auto window = openOnX(options);
        window->activate();
        return window;
    }
    NativeWindow::Options options;
    options.toolkit =
        kind == nativeClientSide ? NativeWindow::Toolkit::gtk : NativeWindow::Toolkit::qt;
    options.width = area.width;
    options.height = area.height;
    return openNative(options);
}

std::array<std::unique_ptr<SessionWindow>, 2> KWinSessionDesk::openPair() {
    NativeWindow::Options options;
    options.count = 2;
    const std::shared_ptr<NativeWindow> native = desktop_.openWindow(options);
    const auto other = desktop_.probe().find([&](const WindowState& state) {
        return state.pid == native->state().pid && state.id != native->id();
    });
    std::array<std::unique_ptr<SessionWindow>, 2> pair;
    std::size_t index = 0;
    for (const std::string& id : {other.value().id, native->id()}) {
        auto window =
            std::make_unique<KWinSessionWindow>(ProbedWindow(desktop_.probe(), id), orders_);
        window->keep(native);
        pair.at(index++) = std::move(window);
    }
    return pair;
}

std::unique_ptr<SessionWindow> KWinSessionDesk::openTyped(const std::string& type) {
    if (type == "nativeDialog") {
        NativeWindow::Options options;
        options.dialog = true;
        return openNative(options);
    }
    TestWindow::Options options;
    options.type = type;
    return openOnX(options);
}

SessionWindow& KWinSessionDesk::panel() {
    if (!panelWindow_) {
        const PixelRect screen = layout_.monitors.at(panelMonitor_.value());
        const PixelRect lies{screen.x, screen.bottom() - panelHeight, screen.width, panelHeight};
        const auto seen = [&] {
            return desktop_.probe().find(
                [&](const WindowState& state) { return state.frame == rectOf(lies); });
        };
        if (!waitInSession([&] { return seen().has_value(); })) {
            throw DesktopError("KWin shows no panel");
        }
        panelWindow_ = std::make_unique<KWinSessionWindow>(
            ProbedWindow(desktop_.probe(), seen()->id), orders_);
    }
    return *panelWindow_;
}

void KWinSessionDesk::arrange(const MonitorLayout& layout) {
    std::vector<ArrangedOutput> outputs = optionsOf({layout}).outputs;
    // An output that the layout does not have stays where it was, switched off.
    while (outputs.size() < outputs_.size()) {
        outputs.push_back(outputs_[outputs.size()]);
        outputs.back().enabled = false;
    }
    outputs_ = std::move(outputs);
    desktop_.arrange(outputs_, layout.primary);
    layout_ = layout;
    expected_ = ExpectedFrame(layout);
}

void KWinSessionDesk::unplug(std::size_t monitor) {
    outputs_.at(monitor).enabled = false;
    layout_.monitors.erase(layout_.monitors.begin() + static_cast<std::ptrdiff_t>(monitor));
    layout_.primary = 0;
    std::size_t primary = 0;
    while (!outputs_.at(primary).enabled) {
        ++primary;
    }
    desktop_.arrange(outputs_, primary);
}

RunningProgram KWinSessionDesk::openProgram(const SessionProgram& program) {
    KWinProbe& probe = desktop_.probe();
    ChildProcess process =
        desktop_.session().start(program.command, program.name, program.environment);
    // Old programs do not say which process they are; classes are told in small letters.
    std::string lowered = program.windowClass;
    std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                   [](unsigned char letter) { return std::tolower(letter); });
    const auto shown = [&] {
        return probe.find([&](const WindowState& state) {
            return state.pid == process.pid() || (state.pid <= 0 && state.windowClass == lowered);
        });
    };
    if (!waitInSession([&] { return shown() || !process.isRunning(); }) || !shown()) {
        throw DesktopError(program.name + " shows no window:\n" +
                           desktop_.session().output(program.name));
    }
    auto window = std::make_unique<KWinSessionWindow>(ProbedWindow(probe, shown()->id), orders_);
    window->heedStepsOf(program);
    window->activate();
    return {std::move(process), std::move(window)};
}

std::optional<WindowState> KWinSessionDesk::Highlight::seen() const {
    const pid_t program = desk_.program().pid();
    return desk_.desktop_.probe().find(
        [program](const WindowState& window) { return window.pid == program; });
}

bool KWinSessionDesk::Highlight::isShown() {
    desk_.roundTrip();
    return seen().has_value();
}

bool KWinSessionDesk::Highlight::waitUntilAt(const PixelRect& wanted) {
    return desk_.waitUntil([&] {
        const std::optional<WindowState> window = seen();
        return window &&
               window->frame == Rect{static_cast<double>(wanted.x), static_cast<double>(wanted.y),
                                     static_cast<double>(wanted.width),
                                     static_cast<double>(wanted.height)};
    });
}

bool KWinSessionDesk::Highlight::waitUntilHidden() {
    return desk_.waitUntil([this] { return !seen(); });
}

int KWinSessionDesk::Highlight::timesShown() {
    desk_.roundTrip();
    return static_cast<int>(desk_.desktop_.probe().appearancesOf(desk_.program().pid()) - before_);
}

void KWinSessionDesk::Highlight::forget() {
    desk_.roundTrip();
    before_ = desk_.desktop_.probe().appearancesOf(desk_.program().pid());
}

void KWinSessionDesk::press(const DefaultShortcut& shortcut) {
    desktop_.input().press(shortcut.modifiers(), shortcut.key);
}

bool KWinSessionDesk::setLock(std::uint8_t lockKey, bool on) {
    return desktop_.input().setLock(lockKey, on);
}

bool KWinSessionDesk::waitUntil(const std::function<bool()>& condition, Deadline deadline) {
    return waitInSession(condition, deadline);
}

bool KWinSessionDesk::settle() {
    ExpectedFrame now(layout_);
    if (panelMonitor_) {
        now.reserve(*panelMonitor_, panelHeight);
    }
    const PixelRect whole = now.area(defaultShortcut("maximize"), 0);
    const PixelRect& screen = layout_.monitors.front();
    TestWindow::Options options;
    options.area = {screen.x + 300, screen.y + 200, 400, 300};
    options.kind = TestWindow::Kind::undecorated;
    options.title = "marker";
    const std::unique_ptr<TestWindow> marker = desktop_.openXWindow(options);
    const auto seen = [&] {
        return desktop_.probe().find(
            [&](const WindowState& state) { return state.xid == marker->id(); });
    };
    // The program is to have heard that the marker is in front.
    if (!awaitProgram()) {
        return false;
    }
    // A shortcut that was still on its way may reach the marker, too; this one comes after it.
    press("maximize");
    const bool answered = waitInSession([&] { return seen() && seen()->frame == rectOf(whole); });
    marker->close();
    const bool isForgotten = waitInSession([&] { return !seen(); });
    return answered && isForgotten;
}

}  // namespace lumatile::desktop
