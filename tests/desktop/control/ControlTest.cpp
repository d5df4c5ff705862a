// The running program asked for things by lumatilectl, as a user's script would.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/bus/BusObject.h"
#include "tests/desktop/control/ControlledProgram.h"
#include "tests/desktop/support/AskedFrame.h"
#include "tests/desktop/support/DefaultShortcuts.h"
#include "tests/desktop/support/ExpectedFrame.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> all;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        all.push_back(line);
    }
    return all;
}

TEST(Control, withoutTheProgramItSaysSoAndStartsNothing) {
    ControlledProgram controlled;
    const Outcome missing{3, "lumatilectl: Lumatile is not running on this desktop\n"};
    EXPECT_EQ(controlled.ask({"status"}), missing);
    EXPECT_EQ(controlled.ask({"run", "command.left"}), missing);
    EXPECT_EQ(controlled.run({"env", "-u", "XDG_RUNTIME_DIR",
                              "DBUS_SESSION_BUS_ADDRESS=", LUMATILECTL_PROGRAM, "quit"}),
              missing);
    EXPECT_EQ(controlled.ask({}).status, 2);
    EXPECT_THAT(controlled.ask({"--help"}).text, StartsWith("usage: lumatilectl"));
    EXPECT_EQ(controlled.ask({"--version"}).status, 0);
}

TEST(Control, listsAndRunsCommands) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    const Outcome listed = controlled.ask({"commands"});
    ASSERT_EQ(listed.status, 0);
    const std::vector<std::string> commands = lines(listed.text);
    ASSERT_GT(commands.size(), 30U);
    EXPECT_THAT(commands.front(), EndsWith("\tcommand.left\tLeft Half"));

    TestDesktop& desktop = controlled.desktop();
    const auto window = desktop.openWindow({});
    const ExpectedFrame expected(MonitorLayout::landscape());
    const PixelRect left = expected.area(defaultShortcut("left"), 0);
    const PixelRect right = expected.area(defaultShortcut("right"), 0);
    // Asked for by the program and not only by chance there.
    EXPECT_TRUE(desktop.observer().messages(window->id(), "_NET_MOVERESIZE_WINDOW").empty());
    // Whoever has the answer can rely on the command having been run; what the window manager makes
    // of it may take longer than the program waits.
    const auto expectAt = [&](const PixelRect& place) {
        EXPECT_EQ(askedFrame(desktop.observer(), window->id(), window->frame()), place);
        EXPECT_TRUE(XClient::waitUntil([&] { return window->frame() == place; })) << place;
    };
    EXPECT_EQ(controlled.ask({"run", "command.left"}), (Outcome{0, ""}));
    expectAt(left);
    const std::string id = commands.at(1).substr(0, commands.at(1).find('\t'));
    EXPECT_THAT(commands.at(1), HasSubstr("\tcommand.right\t"));
    EXPECT_EQ(controlled.ask({"run", id}), (Outcome{0, ""}));
    expectAt(right);

    const Outcome unknown{1, "lumatilectl: there is no such command\n"};
    EXPECT_EQ(controlled.ask({"run", "command.nowhere"}), unknown);
    EXPECT_EQ(controlled.ask({"run", std::string(100000, 'x')}), unknown);
    EXPECT_EQ(window->frame(), right);
}

TEST(Control, saysWhatIsMissingWhileWindowsCannotBeMoved) {
    ControlledProgram controlled(nullptr);
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    const std::string missing =
        "No window manager is running in this session. As soon as one is, Lumatile continues by "
        "itself.\n";
    EXPECT_EQ(controlled.ask({"run", "command.left"}), (Outcome{1, "lumatilectl: " + missing}));
    const Outcome status = controlled.ask({"status"});
    EXPECT_EQ(status.status, 0);
    EXPECT_THAT(status.text, StartsWith(missing));
    EXPECT_EQ(lines(status.text).size(), 4U);
}

TEST(Control, whatWasEditedLastIsStoredWhenTheServerGoesAway) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    // The first edit is written at once, and what follows is collected.
    for (const char* protection : {"edgeJitter", "pixelShift", "idleDimming"}) {
        ASSERT_EQ(controlled.ask({"protection", protection, "on"}), (Outcome{0, ""}));
    }
    controlled.desktop().server().stop();
    EXPECT_EQ(controlled.program().wait(), (ChildProcess::Exit{1, 0}));
    for (const char* stored :
         {R"(\"jitterEnabled\":true)", R"(\"orbitEnabled\":true)", R"(\"idleDimEnabled\":true)"}) {
        EXPECT_THAT(controlled.stored(), HasSubstr(stored));
    }
}

TEST(Control, isHeardAgainAfterTheBusWasStartedAnew) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    controlled.desktop().session().endBus();
    EXPECT_EQ(controlled.ask({"exaggerated"}).status, 3);
    controlled.desktop().session().startBus();
    EXPECT_TRUE(controlled.isHeard());
    EXPECT_EQ(controlled.ask({"exaggerated"}), (Outcome{0, "off\n"}));
    EXPECT_EQ(
        controlled.program().output(),
        "Control: the session bus has gone away, so requests wait until there is one again\n");
    controlled.program().stop();
}

TEST(Control, waitsForANameThatAnotherProgramHas) {
    ControlledProgram controlled;
    {
        BusConnection other(
            controlled.desktop().session().environment().at("DBUS_SESSION_BUS_ADDRESS"));
        ASSERT_EQ(BusObject::requestNameNow(other.connectNow().get(), controlled.name(), 5000),
                  true);
        controlled.startUnheard();
        EXPECT_TRUE(XClient::waitUntil([&] { return !controlled.program().output().empty(); }));
        EXPECT_NE(controlled.ask({"exaggerated"}).status, 0);
    }
    EXPECT_TRUE(XClient::waitUntil([&] {
        return controlled.ask({"exaggerated"}) == Outcome{0, "off\n"};
    }));
    EXPECT_EQ(controlled.program().output(),
              "Control: another program has the name on the session bus, so requests wait until it "
              "is free\n");
    controlled.program().stop();
}

TEST(Control, switchesTheProtectionsAndTheDemonstration) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    EXPECT_EQ(controlled.ask({"protection"}),
              (Outcome{0, "pixelShift\toff\nedgeJitter\toff\nidleDimming\toff\n"}));
    const auto off = lines(controlled.ask({"status"}).text);
    EXPECT_EQ(controlled.ask({"protection", "edgeJitter", "on"}), (Outcome{0, ""}));
    EXPECT_EQ(controlled.ask({"protection"}),
              (Outcome{0, "pixelShift\toff\nedgeJitter\ton\nidleDimming\toff\n"}));
    EXPECT_TRUE(XClient::waitUntil([&] {
        return controlled.stored().find(R"(\"jitterEnabled\":true)") != std::string::npos;
    }));
    const auto on = lines(controlled.ask({"status"}).text);
    ASSERT_EQ(off.size(), 3U);
    ASSERT_EQ(on.size(), 3U);
    EXPECT_NE(on, off);

    EXPECT_EQ(controlled.ask({"exaggerated"}), (Outcome{0, "off\n"}));
    EXPECT_EQ(controlled.ask({"exaggerated", "on"}), (Outcome{0, ""}));
    EXPECT_EQ(controlled.ask({"exaggerated"}), (Outcome{0, "on\n"}));

    EXPECT_EQ(controlled.ask({"protection", "everything", "off"}),
              (Outcome{1, "lumatilectl: there is no such protection\n"}));
}

TEST(Control, opensTheSettingsAndEndsTheProgram) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    EXPECT_EQ(controlled.ask({"settings", "everything"}),
              (Outcome{1, "lumatilectl: there is no such section\n"}));
    DesktopObserver& observer = controlled.desktop().observer();
    EXPECT_EQ(observer.windowOfClass("lumatile"), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_EQ(controlled.ask({"settings", "about"}), (Outcome{0, ""}));
    EXPECT_TRUE(XClient::waitUntil([&] {
        const xcb_window_t window = observer.windowOfClass("lumatile");
        return window != XCB_WINDOW_NONE && observer.activeWindow() == window;
    }));
    EXPECT_EQ(controlled.ask({"quit"}), (Outcome{0, ""}));
    EXPECT_TRUE(LumatileProcess::isClean(controlled.program().wait()))
        << controlled.program().output();
}

TEST(Control, isDescribedOnTheBusAndChecksWhatItIsGiven) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    const std::string name = "org.lumatile.Control." + displayToken(controlled.desktop().display());
    const Outcome described = controlled.run({"gdbus", "introspect", "--session", "--dest", name,
                                              "--object-path", "/org/lumatile/Control"});
    for (const char* const method :
         {"ListCommands(out a(sss) commands)", "RunCommand(in  s idOrKey)",
          "OpenSettings(in  s section)", "StatusLines(out as lines)",
          "ListProtections(out a(sb) protections)", "SetProtection(in  s protection,",
          "IsExaggerated(out b exaggerated)", "SetExaggerated(in  b exaggerated)", "Quit()"}) {
        EXPECT_THAT(described.text, HasSubstr(method));
    }
    const auto call = [&](const std::string& method, const std::vector<std::string>& arguments) {
        std::vector<std::string> command{"gdbus",
                                         "call",
                                         "--session",
                                         "--dest",
                                         name,
                                         "--object-path",
                                         "/org/lumatile/Control",
                                         "--method",
                                         "org.lumatile.Control1." + method};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return controlled.run(command).text;
    };
    EXPECT_THAT(call("RunCommand", {"command.nowhere"}),
                HasSubstr("org.lumatile.Control1.Error.UnknownCommand"));
    EXPECT_THAT(call("OpenSettings", {"x"}),
                HasSubstr("org.lumatile.Control1.Error.UnknownSection"));
    EXPECT_THAT(call("SetProtection", {"x", "true"}),
                HasSubstr("org.lumatile.Control1.Error.UnknownProtection"));
    EXPECT_THAT(call("Quit", {"1"}), HasSubstr("org.freedesktop.DBus.Error.InvalidArgs"));
    EXPECT_THAT(call("Execute", {"/bin/true"}),
                HasSubstr("org.freedesktop.DBus.Error.UnknownMethod"));
    EXPECT_TRUE(controlled.program().isRunning());
}

TEST(Control, theShellCompletesCommandsOfTheRunningProgram) {
    ControlledProgram controlled;
    ASSERT_NO_FATAL_FAILURE(controlled.start());
    const std::string script =
        ". " LUMATILECTL_COMPLETION "; lumatilectl() { " LUMATILECTL_PROGRAM
        " \"$@\"; }; complete_words() { COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _lumatilectl; "
        "echo \"${COMPREPLY[*]}\"; };"
        "complete_words lumatilectl st; complete_words lumatilectl run command.bottomL;"
        "complete_words lumatilectl protection edgeJitter o";
    EXPECT_THAT(lines(controlled.run({"bash", "-c", script}).text),
                ElementsAre("status", "command.bottomLeft", "off on"));
}

TEST(Control, theShellTakesNamesOfCommandsForWordsWhateverTheyHold) {
    ControlledProgram controlled;
    const TemporaryFolder folder;
    const std::filesystem::path touched = folder / "touched";
    const std::string script =
        ". " LUMATILECTL_COMPLETION "; lumatilectl() { printf '%s\\n' $'1\\t$(touch " +
        touched.string() + R"()\tOne' $'2\ta b;c\tTwo' $'3\tplain\tThree'; };)" +
        "COMP_WORDS=(lumatilectl run ''); COMP_CWORD=2; _lumatilectl;"
        "printf '%s\\n' \"${COMPREPLY[@]}\"";
    EXPECT_THAT(lines(controlled.run({"bash", "-c", script}).text),
                ElementsAre("\\$\\(touch\\ " + touched.string() + "\\)", "a\\ b\\;c", "plain"));
    EXPECT_FALSE(std::filesystem::exists(touched));
}

}  // namespace
}  // namespace lumatile::desktop
