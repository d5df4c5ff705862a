#include "lumatilectl/Request.h"

#include <array>

namespace lumatile {

namespace {

using Verb = Request::Verb;

std::optional<bool> parseSwitch(std::string_view word) {
    if (word == "on") {
        return true;
    }
    if (word == "off") {
        return false;
    }
    return std::nullopt;
}

/// A verb that stands alone.
struct Word {
    std::string_view word;
    Verb verb;
};
constexpr std::array<Word, 10> loneWords{{{"--help", Verb::help},
                                          {"-h", Verb::help},
                                          {"help", Verb::help},
                                          {"--version", Verb::version},
                                          {"commands", Verb::listCommands},
                                          {"settings", Verb::settings},
                                          {"status", Verb::status},
                                          {"protection", Verb::listProtections},
                                          {"exaggerated", Verb::isExaggerated},
                                          {"quit", Verb::quit}}};

std::optional<Request> parseOne(std::string_view word) {
    for (const auto& [name, verb] : loneWords) {
        if (name == word) {
            return Request{verb, {}, false};
        }
    }
    return std::nullopt;
}

std::optional<Request> parseTwo(std::string_view verb, std::string_view argument) {
    if (argument.empty()) {
        return std::nullopt;
    }
    if (verb == "run") {
        return Request{Verb::run, std::string(argument), false};
    }
    if (verb == "settings") {
        return Request{Verb::settings, std::string(argument), false};
    }
    if (const auto isOn = parseSwitch(argument); verb == "exaggerated" && isOn) {
        return Request{Verb::setExaggerated, {}, *isOn};
    }
    return std::nullopt;
}

}  // namespace

std::optional<Request> Request::parse(std::span<const std::string_view> words) {
    constexpr std::size_t most = 3;
    switch (words.size()) {
        case 1:
            return parseOne(words[0]);
        case 2:
            return parseTwo(words[0], words[1]);
        case most: {
            const auto isOn = parseSwitch(words[2]);
            if (words[0] == "protection" && !words[1].empty() && isOn) {
                return Request{Verb::setProtection, std::string(words[1]), *isOn};
            }
            return std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

const std::string_view Request::usage =
    R"(usage: lumatilectl REQUEST
  commands                      list every command: id, key and name, a line each
  run COMMAND                   run a command, by its id or key, on the front window
  settings [SECTION]            open the settings, at general, commands, oled or about
  status                        print the status lines of the protection
  protection                    print which protections are on
  protection NAME on|off        switch pixelShift, edgeJitter or idleDimming
  exaggerated                   print whether the demonstration mode is on
  exaggerated on|off            switch it
  quit                          end Lumatile
  --help, --version
)";

}  // namespace lumatile
