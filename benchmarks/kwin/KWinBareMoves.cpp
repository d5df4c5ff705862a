#include "benchmarks/kwin/KWinBareMoves.h"

#include <chrono>
#include <memory>

#include <nlohmann/json.hpp>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::benchmark {

using desktop::DesktopError;
using desktop::MockService;

namespace {

constexpr const char* serviceName = "org.lumatile.test.Bare";
constexpr const char* pluginName = "lumatile-bare-moves";
constexpr const char* description = R"(<node><interface name="org.lumatile.test.Bare">
<method name="Next"><arg type="s" direction="in"/><arg type="s" direction="out"/></method>
</interface></node>)";

/// @throws DesktopError for an error, or no answer
int call(GDBusConnection* bus, const std::string& path, const char* interface, const char* method,
         GVariant* arguments) {
    GError* error = nullptr;
    constexpr int patience = 20000;
    GVariant* const reply =
        g_dbus_connection_call_sync(bus, "org.kde.KWin", path.c_str(), interface, method, arguments,
                                    nullptr, G_DBUS_CALL_FLAGS_NONE, patience, nullptr, &error);
    if (reply == nullptr) {
        const std::string text = error->message;
        g_error_free(error);
        throw DesktopError(std::string(method) + ": " + text);
    }
    gint32 number = 0;
    if (g_variant_is_of_type(reply, G_VARIANT_TYPE("(i)")) != 0) {
        g_variant_get(reply, "(i)", &number);
    }
    g_variant_unref(reply);
    return number;
}

}  // namespace

KWinBareMoves::KWinBareMoves(const desktop::PrivateSession& session)
    : service_(session.environment().at("DBUS_SESSION_BUS_ADDRESS"), serviceName,
               [this](const MockService::Call& arrived) { handle(arrived); }) {
    service_.offer("/bare", description);
    const int number = call(service_.connection(), "/Scripting", "org.kde.kwin.Scripting",
                            "loadScript", g_variant_new("(ss)", LUMATILE_BARE_MOVES, pluginName));
    call(service_.connection(), "/" + std::to_string(number), "org.kde.kwin.Script", "run",
         nullptr);
    if (number < 0 || !desktop::waitInSession([this] { return question_.has_value(); })) {
        throw DesktopError("the bare script does not run in KWin");
    }
}

double KWinBareMoves::move(const std::vector<std::pair<std::string, Point>>& windows) {
    const auto begin = std::chrono::steady_clock::now();
    for (const auto& [id, corner] : windows) {
        const nlohmann::json order = {{"id", id}, {"x", corner.x}, {"y", corner.y}};
        told_.reset();
        std::exchange(question_, std::nullopt)->answer(g_variant_new("(s)", order.dump().c_str()));
        if (!desktop::waitInSession([this] { return told_.has_value(); }) ||
            nlohmann::json::parse(*told_) != nlohmann::json({corner.x, corner.y})) {
            throw DesktopError("a window does not move");
        }
    }
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin)
        .count();
}

void KWinBareMoves::handle(const MockService::Call& call) {
    const char* text = nullptr;
    g_variant_get(call.arguments, "(&s)", &text);
    told_ = text;
    question_ = call;
}

}  // namespace lumatile::benchmark
