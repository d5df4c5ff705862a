#include "lumatilectl/Request.h"

#include <gtest/gtest.h>

#include <vector>

namespace lumatile {
namespace {

using Verb = Request::Verb;

std::optional<Request> parse(const std::vector<std::string_view>& words) {
    return Request::parse(words);
}

TEST(ControlRequest, oneWord) {
    EXPECT_EQ(parse({"commands"}), (Request{Verb::listCommands, "", false}));
    EXPECT_EQ(parse({"settings"}), (Request{Verb::settings, "", false}));
    EXPECT_EQ(parse({"status"}), (Request{Verb::status, "", false}));
    EXPECT_EQ(parse({"protection"}), (Request{Verb::listProtections, "", false}));
    EXPECT_EQ(parse({"exaggerated"}), (Request{Verb::isExaggerated, "", false}));
    EXPECT_EQ(parse({"quit"}), (Request{Verb::quit, "", false}));
    EXPECT_EQ(parse({"--help"}), (Request{Verb::help, "", false}));
    EXPECT_EQ(parse({"--version"}), (Request{Verb::version, "", false}));
}

TEST(ControlRequest, wordsWithArguments) {
    EXPECT_EQ(parse({"run", "command.left"}), (Request{Verb::run, "command.left", false}));
    EXPECT_EQ(parse({"settings", "oled"}), (Request{Verb::settings, "oled", false}));
    EXPECT_EQ(parse({"exaggerated", "on"}), (Request{Verb::setExaggerated, "", true}));
    EXPECT_EQ(parse({"exaggerated", "off"}), (Request{Verb::setExaggerated, "", false}));
    EXPECT_EQ(parse({"protection", "pixelShift", "on"}),
              (Request{Verb::setProtection, "pixelShift", true}));
    EXPECT_EQ(parse({"protection", "idleDimming", "off"}),
              (Request{Verb::setProtection, "idleDimming", false}));
}

TEST(ControlRequest, anythingElseIsNone) {
    const std::vector<std::vector<std::string_view>> wrong{
        {},
        {""},
        {"run"},
        {"run", ""},
        {"run", "command.left", "command.right"},
        {"settings", ""},
        {"exaggerated", "yes"},
        {"protection", "pixelShift"},
        {"protection", "pixelShift", "toggle"},
        {"protection", "", "on"},
        {"quit", "now"},
        {"Quit"},
        {"on"},
        {"a", "b", "c", "d"},
    };
    for (const auto& words : wrong) {
        EXPECT_FALSE(parse(words)) << (words.empty() ? "nothing" : words.front());
    }
}

TEST(ControlRequest, theUsageNamesEveryWord) {
    for (const char* const word : {"commands", "run ", "settings", "status", "protection ",
                                   "exaggerated on|off", "quit", "--help", "--version"}) {
        EXPECT_NE(Request::usage.find(word), std::string_view::npos) << word;
    }
}

}  // namespace
}  // namespace lumatile
