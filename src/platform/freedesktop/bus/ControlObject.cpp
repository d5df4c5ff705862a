#include "platform/freedesktop/bus/ControlObject.h"

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "platform/freedesktop/bus/ControlInterface.h"
#include "platform/freedesktop/bus/ControlTexts.h"
#include "platform/freedesktop/bus/DisplayToken.h"
#include "platform/freedesktop/glib/GLibHandles.h"
#include "ports/Controlled.h"
#include "ports/SystemLog.h"

namespace lumatile {

namespace {

// A session that starts its bus anew does so soon; until then this is all that a lost bus costs.
constexpr int retryMilliseconds = 5000;

// Requests of a program that sends thousands at once are carried out for so long before the loop
// gets round to others again.
constexpr gint64 turnMicroseconds = 10'000;

/// A request that has arrived; its arguments are of the types that the description says. Answered
/// once.
struct Request {
    Controlled& controlled;
    GVariant* arguments;
    GDBusMethodInvocation* invocation;
    GCancellable* cancellable;  ///< Cancelled when nobody is to be answered any more.

    std::string text() const {
        const char* value = nullptr;
        g_variant_get_child(arguments, 0, "&s", &value);
        return value;
    }
    bool boolean(gsize index) const {
        gboolean value = FALSE;
        g_variant_get_child(arguments, index, "b", &value);
        return value != FALSE;
    }

    void answer(GVariant* value = nullptr) const {
        g_dbus_method_invocation_return_value(invocation, value);
    }
    void answerIf(bool found, const char* errorName, const char* error) const {
        if (found) {
            answer();
        } else {
            g_dbus_method_invocation_return_dbus_error(invocation, errorName, error);
        }
    }
};

void listCommands(const Request& request) {
    GVariantBuilder rows;
    g_variant_builder_init(&rows, G_VARIANT_TYPE("a(sss)"));
    for (const Controlled::Command& command : request.controlled.commands()) {
        g_variant_builder_add(&rows, "(sss)", command.id.c_str(), command.key.c_str(),
                              command.name.c_str());
    }
    request.answer(g_variant_new("(a(sss))", &rows));
}

void runCommand(const Request& request) {
    const std::string missing = request.controlled.missing();
    if (!missing.empty()) {
        request.answerIf(false, ControlInterface::notReady, missing.c_str());
        return;
    }
    request.answerIf(request.controlled.run(request.text()), ControlInterface::unknownCommand,
                     "there is no such command");
}

void openSettings(const Request& request) {
    request.answerIf(request.controlled.openSettings(request.text()),
                     ControlInterface::unknownSection, "there is no such section");
}

void statusLines(const Request& request) {
    GVariantBuilder lines;
    g_variant_builder_init(&lines, G_VARIANT_TYPE_STRING_ARRAY);
    for (const std::string& line : request.controlled.statusLines()) {
        g_variant_builder_add(&lines, "s", line.c_str());
    }
    request.answer(g_variant_new("(as)", &lines));
}

void listProtections(const Request& request) {
    GVariantBuilder rows;
    g_variant_builder_init(&rows, G_VARIANT_TYPE("a(sb)"));
    for (const auto& [name, protection] : ControlInterface::protections) {
        g_variant_builder_add(&rows, "(sb)", std::string(name).c_str(),
                              request.controlled.isOn(protection) ? TRUE : FALSE);
    }
    request.answer(g_variant_new("(a(sb))", &rows));
}

void setProtection(const Request& request) {
    const std::string name = request.text();
    const auto* const found =
        std::find_if(ControlInterface::protections.begin(), ControlInterface::protections.end(),
                     [&](const auto& each) { return each.name == name; });
    const bool isKnown = found != ControlInterface::protections.end();
    if (isKnown) {
        request.controlled.setOn(found->protection, request.boolean(1));
    }
    request.answerIf(isKnown, ControlInterface::unknownProtection, "there is no such protection");
}

void isExaggerated(const Request& request) {
    request.answer(g_variant_new("(b)", request.controlled.isExaggerated() ? TRUE : FALSE));
}

void setExaggerated(const Request& request) {
    request.controlled.setExaggerated(request.boolean(0));
    request.answer();
}

void quit(const Request& request) {
    request.answer();
    // Once the program has begun to end, an answer that has not been written yet is lost.
    g_dbus_connection_flush(
        g_dbus_method_invocation_get_connection(request.invocation), request.cancellable,
        [](GObject* connection, GAsyncResult* result, gpointer controlled) {
            GError* error = nullptr;
            g_dbus_connection_flush_finish(G_DBUS_CONNECTION(connection), result, &error);
            const GErrorHandle failure(error);
            if (!failure || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) == FALSE) {
                static_cast<Controlled*>(controlled)->quit();
            }
        },
        &request.controlled);
}

struct Verb {
    std::string_view name;
    void (*carryOut)(const Request&);
};

constexpr std::array<Verb, 9> verbs{{{"ListCommands", listCommands},
                                     {"RunCommand", runCommand},
                                     {"OpenSettings", openSettings},
                                     {"StatusLines", statusLines},
                                     {"ListProtections", listProtections},
                                     {"SetProtection", setProtection},
                                     {"IsExaggerated", isExaggerated},
                                     {"SetExaggerated", setExaggerated},
                                     {"Quit", quit}}};

}  // namespace

ControlObject::ControlObject(BusConnection& session, std::string_view display,
                             Controlled& controlled, SystemLog& log)
    : session_(session),
      name_(std::string(ControlInterface::busNamePrefix) + displayToken(display)),
      controlled_(controlled),
      log_(log),
      cancellable_(g_cancellable_new()) {
    connect();
}

ControlObject::~ControlObject() {
    g_cancellable_cancel(cancellable_.get());
    if (connection_) {
        g_signal_handler_disconnect(connection_.get(), lossHandler_);
    }
}

void ControlObject::connect() {
    session_.whenConnected(lifeline_.guard([this](GDBusConnection* connection) {
        if (connection != nullptr) {
            serve(connection);
        }
    }));
}

void ControlObject::noteLost() {
    log_.write(ControlTexts::logType, ControlTexts::busLost);
    retry_ = MainLoopSource::every(retryMilliseconds, [this] { connect(); });
}

void ControlObject::serve(GDBusConnection* connection) {
    retry_.stop();
    if (connection_) {
        g_signal_handler_disconnect(connection_.get(), lossHandler_);
    }
    g_object_ref(connection);
    connection_.reset(connection);
    lossHandler_ = g_signal_connect(
        connection, "closed", G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer self) {
            static_cast<ControlObject*>(self)->noteLost();
        }),
        this);
    // Before the name, so that nobody finds the one without the other.
    object_ = std::make_unique<BusObject>(connection, ControlInterface::path,
                                          ControlInterface::description,
                                          [this](const BusObject::Call& call) { take(call); });
    BusObject::requestName(connection, name_, lifeline_.guard([this] {
        log_.write(ControlTexts::logType, ControlTexts::nameTaken);
    }));
}

void ControlObject::take(const BusObject::Call& call) {
    // The library hands all that have arrived over in one turn.
    waiting_.emplace_back(call.invocation);
    if (!turn_.isRunning()) {
        turn_ = MainLoopSource::every(0, [this] { carryOutSome(); });
    }
}

void ControlObject::carryOutSome() {
    const gint64 begin = g_get_monotonic_time();
    do {
        const GObjectHandle<GDBusMethodInvocation> invocation = std::move(waiting_.front());
        waiting_.pop_front();
        // The answer takes a reference over, and what is carried out may go on after it.
        g_object_ref(invocation.get());
        carryOut(invocation.get());
    } while (!waiting_.empty() && g_get_monotonic_time() - begin < turnMicroseconds);
    if (waiting_.empty()) {
        turn_.stop();
    }
}

// The bus has checked name, interface and types against the description already.
void ControlObject::carryOut(GDBusMethodInvocation* invocation) const {
    const char* method = g_dbus_method_invocation_get_method_name(invocation);
    const auto* const verb = std::find_if(verbs.begin(), verbs.end(),
                                          [&](const Verb& each) { return each.name == method; });
    if (verb == verbs.end()) {
        g_dbus_method_invocation_return_dbus_error(
            invocation, "org.freedesktop.DBus.Error.UnknownMethod", method);
        return;
    }
    verb->carryOut({controlled_, g_dbus_method_invocation_get_parameters(invocation), invocation,
                    cancellable_.get()});
}

}  // namespace lumatile
