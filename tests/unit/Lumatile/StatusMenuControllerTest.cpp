#include "Lumatile/StatusMenuController.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "commands/BuiltInCommands.h"
#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedStatusItem.h"

namespace lumatile {
namespace {

using testing::ElementsAre;

constexpr auto onDesktop = KeyEquivalent::Reach::desktop;
constexpr auto inProgram = KeyEquivalent::Reach::program;

SnapCommand builtIn(const std::string& name) {
    for (const SnapCommand& command : BuiltInCommands::defaults()) {
        if (command.nameKey == "command." + name) {
            return command;
        }
    }
    ADD_FAILURE() << name;
    return {};
}

SnapCommand withKeys(std::uint32_t keyCode, std::uint32_t modifiers, bool enabled) {
    SnapCommand command = builtIn("left");
    command.shortcut = Shortcut{keyCode, modifiers, enabled};
    return command;
}

/// A controller on a status item, with what it asked for in lists.
struct Bar {
    SimulatedClock clock;
    SimulatedRunLoop runLoop{clock};
    SimulatedStatusItem item{runLoop};
    std::vector<SnapCommand> ran;
    std::vector<std::string> opened;
    std::vector<bool> exaggerations;
    std::vector<std::string> statusLines{"first", "second", "third"};
    bool exaggerated = false;
    std::size_t linesAsked = 0;
    std::shared_ptr<StatusMenuController> controller;

    Bar() {
        controller = std::make_shared<StatusMenuController>(
            item,
            StatusMenuController::Closures{
                [this](const SnapCommand& command) { ran.push_back(command); },
                [this] { opened.emplace_back("settings"); },
                [this] { opened.emplace_back("about"); },
                [this] { opened.emplace_back("updates"); },
                [this] {
                    ++linesAsked;
                    return statusLines;
                },
                [this] { return exaggerated; }, [this](bool on) { exaggerations.push_back(on); },
                [this] { opened.emplace_back("terminate"); }});
    }

    KeyEquivalent keysOf(const std::string& title) const {
        const ClosureMenuItem* found = item.find(title);
        EXPECT_NE(found, nullptr) << title;
        return found == nullptr ? KeyEquivalent{} : found->keyEquivalent;
    }
};

TEST(StatusMenuController, cannotBeMadeWithoutItsClosures) {
    static_assert(!std::is_default_constructible_v<StatusMenuController>);
    SUCCEED();
}

TEST(StatusMenuController, theIconStartsAsPaused) {
    const Bar bar;
    EXPECT_EQ(bar.item.image(), (StatusImage{"MenuBarIconPaused", "Lumatile, protection off"}));
    EXPECT_TRUE(bar.item.image()->isTemplate);
    EXPECT_EQ(bar.item.rebuilds(), 0U);
}

TEST(StatusMenuController, theIconFollowsTheProtection) {
    const Bar bar;
    bar.controller->setProtected(true);
    EXPECT_EQ(bar.item.image(), (StatusImage{"MenuBarIcon", "Lumatile", true}));
    bar.controller->setProtected(false);
    EXPECT_EQ(bar.item.image(),
              (StatusImage{"MenuBarIconPaused", "Lumatile, protection off", true}));
}

TEST(StatusMenuController, theMenuHasStatusLinesCommandsAndActionsInThisOrder) {
    const Bar bar;
    SnapCommand mine = SnapCommand::custom("Mine", 0, 0, 2, 2);
    mine.visibleInMenuBar = true;
    bar.controller->rebuild({builtIn("left"), builtIn("maximize"), mine});
    EXPECT_THAT(bar.item.lines(),
                ElementsAre("first", "second", "third", "-", "Left Half", "-", "Maximize", "-",
                            "[Your Areas]", "Mine", "-", "Settings…", "Check for Updates…",
                            "About Lumatile", "-", "Quit Lumatile"));
}

TEST(StatusMenuController, withoutStatusLinesTheMenuBeginsWithASeparator) {
    Bar bar;
    bar.statusLines.clear();
    bar.controller->rebuild({});
    EXPECT_THAT(bar.item.lines(), ElementsAre("-", "Settings…", "Check for Updates…",
                                              "About Lumatile", "-", "Quit Lumatile"));
}

TEST(StatusMenuController, onlyLandscapeCommandsAreListed) {
    const Bar bar;
    SnapCommand tall = builtIn("left");
    tall.axis = Axis::vertical;
    SnapCommand hidden = builtIn("right");
    hidden.visibleInMenuBar = false;
    bar.controller->rebuild({tall, hidden});
    EXPECT_EQ(bar.item.find("Left Half"), nullptr);
    EXPECT_EQ(bar.item.find("Right Half"), nullptr);
}

TEST(StatusMenuController, statusLinesAreSmallGreyAndCannotBeChosen) {
    Bar bar;
    bar.controller->rebuild({});
    const auto* line = std::get_if<StatusLine>(&bar.item.menu().front());
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(*line, (StatusLine{
                         "first",
                         {"first", "IBMPlexMono-Regular", 12, StatusText::Color::secondaryLabel}}));
    EXPECT_FALSE(bar.item.choose("first"));
    EXPECT_TRUE(bar.ran.empty());
    EXPECT_TRUE(bar.opened.empty());
}

TEST(StatusMenuController, openingTheMenuRefreshesTheStatusLinesInPlace) {
    Bar bar;
    bar.controller->rebuild({builtIn("left")});
    bar.statusLines = {"1", "2", "3"};
    EXPECT_EQ(bar.item.lines().front(), "first");
    bar.item.open();
    EXPECT_THAT(bar.item.lines(),
                ElementsAre("1", "2", "3", "-", "Left Half", "-", "Settings…", "Check for Updates…",
                            "About Lumatile", "-", "Quit Lumatile"));
    EXPECT_EQ(std::get<StatusLine>(bar.item.menu().front()).attributedTitle.text, "1");
    EXPECT_EQ(bar.item.rebuilds(), 1U);
}

TEST(StatusMenuController, aListOfLinesThatGrowsShowsAsManyAsThereWereItems) {
    Bar bar;
    bar.statusLines = {"only"};
    bar.controller->rebuild({});
    bar.statusLines = {"one", "two", "three"};
    bar.item.open();
    EXPECT_EQ(bar.item.lines()[0], "one");
    EXPECT_EQ(bar.item.lines()[1], "-");
    bar.controller->rebuild({});
    EXPECT_EQ(bar.item.lines()[2], "three");
}

TEST(StatusMenuController, aListOfLinesThatShrinksLeavesTheOtherItemsAlone) {
    Bar bar;
    bar.controller->rebuild({});
    bar.statusLines = {"new"};
    bar.item.open();
    EXPECT_EQ(bar.item.lines()[0], "new");
    EXPECT_EQ(bar.item.lines()[1], "second");
    EXPECT_EQ(bar.item.lines()[2], "third");
}

TEST(StatusMenuController, aCommandRunsWithTheCommandItWasBuiltFrom) {
    Bar bar;
    const SnapCommand left = builtIn("left");
    bar.controller->rebuild({left, builtIn("right")});
    EXPECT_TRUE(bar.item.choose("Left Half"));
    EXPECT_THAT(bar.ran, ElementsAre(left));
    EXPECT_TRUE(bar.opened.empty());
}

TEST(StatusMenuController, everyActionCallsItsClosure) {
    Bar bar;
    bar.controller->rebuild({});
    for (const char* title :
         {"Settings…", "Check for Updates…", "About Lumatile", "Quit Lumatile"}) {
        EXPECT_TRUE(bar.item.choose(title)) << title;
    }
    EXPECT_THAT(bar.opened, ElementsAre("settings", "updates", "about", "terminate"));
    EXPECT_TRUE(bar.ran.empty());
}

TEST(StatusMenuController, theLeftArrowIsShownWithItsModifiers) {
    const Bar bar;
    bar.controller->rebuild({withKeys(123, 6144, true)});
    EXPECT_EQ(bar.keysOf("Left Half"), (KeyEquivalent{"←", true, true, false, false, onDesktop}));
}

TEST(StatusMenuController, aDisabledShortcutStillShowsItsKeys) {
    const Bar bar;
    bar.controller->rebuild({withKeys(123, 6144, false)});
    EXPECT_EQ(bar.keysOf("Left Half"), (KeyEquivalent{"←", true, true, false, false, onDesktop}));
}

TEST(StatusMenuController, everyModifierBitIsMappedAndOthersAreIgnored) {
    struct Row {
        std::uint32_t modifiers = 0;
        KeyEquivalent keys;
    };
    const Row rows[] = {
        {0, {"a", false, false, false, false, onDesktop}},
        {0x1000, {"a", true, false, false, false, onDesktop}},
        {0x800, {"a", false, true, false, false, onDesktop}},
        {0x200, {"a", false, false, true, false, onDesktop}},
        {0x100, {"a", false, false, false, true, onDesktop}},
        {0xffffffff, {"a", true, true, true, true, onDesktop}},
        {0xffffe4ff, {"a", false, false, false, false, onDesktop}},
    };
    for (const Row& row : rows) {
        const Bar bar;
        bar.controller->rebuild({withKeys(0, row.modifiers, true)});
        EXPECT_EQ(bar.keysOf("Left Half"), row.keys) << row.modifiers;
    }
}

TEST(StatusMenuController, aCommandWithoutAShortcutShowsNoKeys) {
    const Bar bar;
    SnapCommand command = builtIn("left");
    command.shortcut.reset();
    bar.controller->rebuild({command});
    EXPECT_EQ(bar.keysOf("Left Half"), KeyEquivalent{});
}

TEST(StatusMenuController, anUnknownKeyShowsAQuestionMarkUnlessTheLayoutKnowsIt) {
    const Bar bar;
    bar.controller->rebuild({withKeys(10, 0x100, true)});
    EXPECT_EQ(bar.keysOf("Left Half"),
              (KeyEquivalent{"?", false, false, false, true, onDesktop, 10}));
}

TEST(StatusMenuController, settingsAndQuitHaveKeysOfTheirOwn) {
    const Bar bar;
    bar.controller->rebuild({});
    EXPECT_EQ(bar.keysOf("Settings…"), (KeyEquivalent{",", false, false, false, true, inProgram}));
    EXPECT_EQ(bar.keysOf("Quit Lumatile"),
              (KeyEquivalent{"q", false, false, false, true, inProgram}));
    EXPECT_EQ(bar.keysOf("Check for Updates…"), KeyEquivalent{});
    EXPECT_EQ(bar.keysOf("About Lumatile"), KeyEquivalent{});
}

TEST(StatusMenuController, theDisplayNameIsTheUsersOwnWhereThereIsOne) {
    const Bar bar;
    SnapCommand mine = SnapCommand::custom("Corner & co", 0, 0, 2, 2);
    mine.visibleInMenuBar = true;
    bar.controller->rebuild({mine});
    EXPECT_NE(bar.item.find("Corner & co"), nullptr);
}

TEST(StatusMenuController, rebuildingReplacesTheWholeMenu) {
    Bar bar;
    bar.controller->rebuild({builtIn("left")});
    bar.controller->rebuild({builtIn("right")});
    EXPECT_EQ(bar.item.find("Left Half"), nullptr);
    EXPECT_NE(bar.item.find("Right Half"), nullptr);
    EXPECT_EQ(bar.item.rebuilds(), 2U);
}

TEST(StatusMenuController, thereIsNoCheckItemForTheDemonstrationMode) {
    Bar bar;
    bar.exaggerated = true;
    bar.controller->rebuild({builtIn("left")});
    bar.item.open();
    EXPECT_EQ(bar.controller->exaggerateItem, std::nullopt);
    for (const StatusMenuItem& item : bar.item.menu()) {
        const auto* closure = std::get_if<ClosureMenuItem>(&item);
        EXPECT_TRUE(closure == nullptr || !closure->isChecked);
    }
    EXPECT_TRUE(bar.exaggerations.empty());
}

TEST(StatusMenuController, aCheckItemFollowsTheDemonstrationModeWhenTheMenuOpens) {
    Bar bar;
    bar.statusLines.clear();
    bar.controller->rebuild({});
    bar.controller->exaggerateItem = 1;
    bar.exaggerated = true;
    bar.item.open();
    EXPECT_TRUE(std::get<ClosureMenuItem>(bar.item.menu()[1]).isChecked);
    bar.exaggerated = false;
    bar.item.open();
    EXPECT_FALSE(std::get<ClosureMenuItem>(bar.item.menu()[1]).isChecked);
}

TEST(StatusMenuController, aMenuThatOutlivesItStaysAsItIs) {
    Bar bar;
    bar.controller->rebuild({});
    const std::size_t asked = bar.linesAsked;
    bar.statusLines = {"later"};
    bar.controller.reset();
    bar.item.open();
    EXPECT_EQ(bar.linesAsked, asked);
    EXPECT_EQ(bar.item.lines().front(), "first");
}

TEST(StatusMenuController, aCommandMayRebuildTheMenuThatItIsIn) {
    SimulatedClock clock;
    SimulatedRunLoop runLoop(clock);
    SimulatedStatusItem item(runLoop);
    std::shared_ptr<StatusMenuController> controller;
    std::size_t ran = 0;
    StatusMenuController::Closures closures;
    closures.oledStatusLines = [] { return std::vector<std::string>{"line"}; };
    closures.run = [&](const SnapCommand& command) {
        ++ran;
        controller->rebuild({});
        EXPECT_EQ(command, builtIn("left"));
    };
    controller = std::make_shared<StatusMenuController>(item, closures);
    controller->rebuild({builtIn("left")});
    EXPECT_TRUE(item.choose("Left Half"));
    EXPECT_EQ(ran, 1U);
    EXPECT_FALSE(item.choose("Left Half"));
}

}  // namespace
}  // namespace lumatile
