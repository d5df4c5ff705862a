// lumatilectl: asks the Lumatile of this desktop for something. See lumatilectl.1.

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lumatilectl/ControlClient.h"
#include "lumatilectl/PrintedText.h"
#include "lumatilectl/Request.h"
#include "platform/freedesktop/bus/BusConnection.h"

namespace {

using lumatile::ControlClient;
using lumatile::printedText;
using lumatile::Request;

// As the manual says.
constexpr int exitRefused = 1;
constexpr int exitUsage = 2;
constexpr int exitNotRunning = 3;

GVariant* text(const std::string& value) { return g_variant_new("(s)", value.c_str()); }

ControlClient::Answer ask(const ControlClient& client, const Request& request) {
    switch (request.verb) {
        case Request::Verb::help:
        case Request::Verb::version:
            break;
        case Request::Verb::listCommands:
            return client.ask("ListCommands");
        case Request::Verb::run:
            return client.ask("RunCommand", text(request.name));
        case Request::Verb::settings:
            return client.ask("OpenSettings", text(request.name));
        case Request::Verb::status:
            return client.ask("StatusLines");
        case Request::Verb::listProtections:
            return client.ask("ListProtections");
        case Request::Verb::setProtection:
            return client.ask("SetProtection", g_variant_new("(sb)", request.name.c_str(),
                                                             request.isOn ? TRUE : FALSE));
        case Request::Verb::isExaggerated:
            return client.ask("IsExaggerated");
        case Request::Verb::setExaggerated:
            return client.ask("SetExaggerated", g_variant_new("(b)", request.isOn ? TRUE : FALSE));
        case Request::Verb::quit:
            return client.ask("Quit");
    }
    return {};
}

const char* switchText(bool isOn) { return isOn ? "on" : "off"; }

/// One line for each row, its fields between tabs.
void print(GVariant* answer) {
    const lumatile::GVariantHandle value(
        g_variant_n_children(answer) == 0 ? nullptr : g_variant_get_child_value(answer, 0));
    if (!value) {
        return;
    }
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) != FALSE) {
        std::puts(switchText(g_variant_get_boolean(value.get()) != FALSE));
        return;
    }
    GVariantIter rows;
    g_variant_iter_init(&rows, value.get());
    const char* first = nullptr;
    const char* second = nullptr;
    const char* third = nullptr;
    gboolean isOn = FALSE;
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE("a(sss)")) != FALSE) {
        while (g_variant_iter_next(&rows, "(&s&s&s)", &first, &second, &third) != FALSE) {
            std::printf("%s\t%s\t%s\n", printedText(first).c_str(), printedText(second).c_str(),
                        printedText(third).c_str());
        }
    } else if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE("a(sb)")) != FALSE) {
        while (g_variant_iter_next(&rows, "(&sb)", &first, &isOn) != FALSE) {
            std::printf("%s\t%s\n", printedText(first).c_str(), switchText(isOn != FALSE));
        }
    } else {
        while (g_variant_iter_next(&rows, "&s", &first) != FALSE) {
            std::puts(printedText(first).c_str());
        }
    }
}

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// What the program may know this desktop by. A Wayland session has an X server beside it as a
/// rule, on which the program runs where it cannot work on the session itself.
std::vector<std::string> desktops() {
    std::vector<std::string> names;
    const std::string wayland = variable("WAYLAND_DISPLAY");
    if (!wayland.empty()) {
        names.push_back(wayland);
    } else if (variable("XDG_SESSION_TYPE") == "wayland") {
        names.emplace_back("wayland-0");
    }
    names.push_back(variable("DISPLAY"));
    return names;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    const std::optional<Request> request = Request::parse(words);
    if (!request) {
        std::fputs(Request::usage.data(), stderr);
        return exitUsage;
    }
    if (request->verb == Request::Verb::help) {
        std::fputs(Request::usage.data(), stdout);
        return EXIT_SUCCESS;
    }
    if (request->verb == Request::Verb::version) {
        std::puts("lumatilectl " LUMATILE_VERSION);
        return EXIT_SUCCESS;
    }
    ControlClient::Answer answer;
    for (const std::string& desktop : desktops()) {
        const ControlClient client(lumatile::BusConnection::sessionAddress(), desktop);
        answer = ask(client, *request);
        if (answer.isRunning) {
            break;
        }
    }
    if (!answer.isRunning) {
        std::fputs("lumatilectl: Lumatile is not running on this desktop\n", stderr);
        return exitNotRunning;
    }
    if (!answer.value) {
        std::fprintf(stderr, "lumatilectl: %s\n", printedText(answer.refusal).c_str());
        return exitRefused;
    }
    print(answer.value.get());
    return EXIT_SUCCESS;
}
