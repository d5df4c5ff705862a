#include "tests/desktop/support/kwin/KWinProbe.h"

#include <algorithm>
#include <utility>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {
namespace {

using Json = nlohmann::json;

constexpr const char* serviceName = "org.lumatile.test.Probe";
constexpr const char* pluginName = "lumatile-test-probe";
constexpr const char* shortcutName = "Lumatile Test Probe";

constexpr const char* description = R"(<node><interface name="org.lumatile.test.Probe">
<method name="Loaded"><arg type="s" direction="in"/></method>
<method name="Window"><arg type="s" direction="in"/></method>
<method name="Gone"><arg type="s" direction="in"/></method>
<method name="Done"><arg type="s" direction="in"/></method>
<method name="Next"><arg type="s" direction="out"/></method>
</interface></node>)";

Rect rectOf(const Json& numbers) {
    return {numbers.at(0).get<double>(), numbers.at(1).get<double>(), numbers.at(2).get<double>(),
            numbers.at(3).get<double>()};
}

Json numbersOf(const Rect& rect) { return {rect.x, rect.y, rect.width, rect.height}; }

std::string busOf(const PrivateSession& session) {
    return session.environment().at("DBUS_SESSION_BUS_ADDRESS");
}

/// @throws DesktopError for an error, or no answer
GVariantHandle call(GDBusConnection* bus, const char* service, const char* path,
                    const char* interface, const char* method, GVariant* arguments) {
    GError* error = nullptr;
    constexpr int patience = 20000;
    GVariantHandle reply(g_dbus_connection_call_sync(bus, service, path, interface, method,
                                                     arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
                                                     patience, nullptr, &error));
    const GErrorHandle owned(error);
    if (!reply) {
        throw DesktopError(std::string(method) + ": " + error->message);
    }
    return reply;
}

}  // namespace

KWinProbe::KWinProbe(const PrivateSession& session)
    : service_(busOf(session), serviceName, [this](const auto& arrived) { handle(arrived); }) {
    service_.offer("/probe", description);
    load();
}

void KWinProbe::load() {
    isLoaded_ = false;
    windows_.clear();
    frames_.clear();
    GDBusConnection* bus = service_.connection();
    constexpr const char* kwin = "org.kde.KWin";
    constexpr const char* scripting = "org.kde.kwin.Scripting";
    call(bus, kwin, "/Scripting", scripting, "unloadScript", g_variant_new("(s)", pluginName));
    const GVariantHandle loaded = call(bus, kwin, "/Scripting", scripting, "loadScript",
                                       g_variant_new("(ss)", LUMATILE_KWIN_PROBE, pluginName));
    int number = -1;
    g_variant_get(loaded.get(), "(i)", &number);
    if (number < 0) {
        throw DesktopError("KWin does not take the test's script");
    }
    const std::string path = "/" + std::to_string(number);
    call(bus, kwin, path.c_str(), "org.kde.kwin.Script", "run", nullptr);
    if (!waitInSession([this] { return isLoaded_; })) {
        throw DesktopError("the test's script does not run in KWin");
    }
}

void KWinProbe::handle(const MockService::Call& call) {
    if (call.method == "Next") {
        call.answer(g_variant_new("(s)", next_.c_str()));
        return;
    }
    const char* text = nullptr;
    g_variant_get(call.arguments, "(&s)", &text);
    if (call.method == "Window") {
        note(Json::parse(text));
    } else if (call.method == "Gone") {
        windows_.erase(text);
    } else if (call.method == "Done") {
        Json answer = Json::parse(text);
        if (answer.at("serial") == serial_) {
            answer_ = std::move(answer);
        }
    } else {
        isLoaded_ = true;
    }
    call.answer(nullptr);
}

void KWinProbe::note(const Json& window) {
    WindowState state;
    window.at("id").get_to(state.id);
    window.at("pid").get_to(state.pid);
    window.at("xid").get_to(state.xid);
    window.at("caption").get_to(state.caption);
    window.at("resourceClass").get_to(state.windowClass);
    window.at("desktopFile").get_to(state.desktopFile);
    state.frame = rectOf(window.at("frame"));
    window.at("minimized").get_to(state.minimized);
    window.at("maximizedHorizontally").get_to(state.maximizedHorizontally);
    window.at("maximizedVertically").get_to(state.maximizedVertically);
    window.at("fullScreen").get_to(state.fullScreen);
    window.at("tiled").get_to(state.tiled);
    window.at("active").get_to(state.active);
    window.at("moving").get_to(state.moving);
    window.at("resizing").get_to(state.resizing);
    window.at("managed").get_to(state.managed);
    window.at("shaded").get_to(state.shaded);
    window.at("screen").get_to(state.screen);
    window.at("desktop").get_to(state.desktop);
    std::vector<Rect>& frames = frames_[state.id];
    if (frames.empty() || frames.back() != state.frame) {
        frames.push_back(state.frame);
    }
    everSeen_[state.id] = state.pid;
    windows_[state.id] = std::move(state);
}

std::size_t KWinProbe::appearancesOf(pid_t pid) const {
    return static_cast<std::size_t>(
        std::count_if(everSeen_.begin(), everSeen_.end(),
                      [pid](const auto& each) { return each.second == pid; }));
}

std::optional<WindowState> KWinProbe::window(const std::string& id) const {
    const auto found = windows_.find(id);
    return found == windows_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<WindowState> KWinProbe::find(
    const std::function<bool(const WindowState&)>& isIt) const {
    for (const auto& [id, state] : windows_) {
        if (isIt(state)) {
            return state;
        }
    }
    return std::nullopt;
}

std::optional<WindowState> KWinProbe::active() const {
    return find([](const WindowState& state) { return state.active; });
}

const std::vector<Rect>& KWinProbe::framesOf(const std::string& id) { return frames_[id]; }

void KWinProbe::forgetFrames() {
    sync();
    frames_.clear();
    for (const auto& [id, state] : windows_) {
        frames_[id] = {state.frame};
    }
}

Json KWinProbe::order(const std::string& action, Json arguments) {
    arguments["action"] = action;
    arguments["serial"] = ++serial_;
    next_ = arguments.dump();
    answer_.reset();
    call(service_.connection(), "org.kde.kglobalaccel", "/component/kwin",
         "org.kde.kglobalaccel.Component", "invokeShortcut", g_variant_new("(s)", shortcutName));
    if (!waitInSession([this] { return answer_.has_value(); })) {
        throw DesktopError("the test's script in KWin does not answer to " + next_);
    }
    if (answer_->contains("error")) {
        throw DesktopError(answer_->at("error").get<std::string>() + " in " + next_);
    }
    return answer_->at("result");
}

std::vector<KWinProbe::Screen> KWinProbe::screens() {
    std::vector<Screen> result;
    for (const Json& screen : order("screens", Json::object())) {
        result.push_back({rectOf(screen.at("whole")), rectOf(screen.at("usable"))});
    }
    return result;
}

void KWinProbe::activate(const std::string& id) { order("activate", {{"id", id}}); }

void KWinProbe::place(const std::string& id, const Rect& frame) {
    order("place", {{"id", id}, {"frame", numbersOf(frame)}});
}

void KWinProbe::maximize(const std::string& id, bool horizontally, bool vertically) {
    order("maximize", {{"id", id}, {"horizontally", horizontally}, {"vertically", vertically}});
}

void KWinProbe::minimize(const std::string& id, bool on) {
    order("minimize", {{"id", id}, {"on", on}});
}

void KWinProbe::fullScreen(const std::string& id, bool on) {
    order("fullScreen", {{"id", id}, {"on", on}});
}

void KWinProbe::keepAbove(const std::string& id, bool on) {
    order("keepAbove", {{"id", id}, {"on", on}});
}

void KWinProbe::shade(const std::string& id, bool on) { order("shade", {{"id", id}, {"on", on}}); }

void KWinProbe::sendToDesktop(const std::string& id, int desktop) {
    order("desktop", {{"id", id}, {"number", desktop}});
}

void KWinProbe::addDesktop() { order("addDesktop", Json::object()); }

std::string KWinProbe::desk() { return order("desk", Json::object()).dump(); }

void KWinProbe::close(const std::string& id) { order("close", {{"id", id}}); }

void KWinProbe::shortcut(const std::string& slot) { order("shortcut", {{"slot", slot}}); }

}  // namespace lumatile::desktop
