// The script that KWin runs, against a stand-in for what it finds there, in the spelling of KWin
// 5.27 and of KWin 6. What it says is read as the program reads it.

#include <gtest/gtest.h>

#include <QFile>
#include <QJSEngine>

#include <string>
#include <vector>

#include "platform/kwin/KWinAgentScript.h"
#include "platform/kwin/KWinOrder.h"
#include "platform/kwin/KWinReport.h"

namespace lumatile {
namespace {

class AgentScript : public testing::TestWithParam<int> {
protected:
    void SetUp() override {
        run("var generation = " + std::to_string(GetParam()) + ";");
        QFile standIn(QStringLiteral(LUMATILE_KWIN_STAND_IN));
        ASSERT_TRUE(standIn.open(QIODevice::ReadOnly));
        run(standIn.readAll().toStdString());
    }

    // As KWin does once everything is set up.
    void load() { run(std::string(KWinAgentScript::text)); }

    std::string run(const std::string& script) {
        const QJSValue value = engine_.evaluate(QString::fromStdString(script));
        EXPECT_FALSE(value.isError()) << value.toString().toStdString() << " in line "
                                      << value.property(QStringLiteral("lineNumber")).toInt();
        return value.toString().toStdString();
    }

    std::vector<KWinEvent> heard() {
        const auto events = KWinReport::parse(run("JSON.stringify(heard())"));
        EXPECT_TRUE(events.has_value());
        return events.value_or(std::vector<KWinEvent>());
    }

    template <class Event>
    std::vector<Event> heardOf() {
        std::vector<Event> found;
        for (const KWinEvent& event : heard()) {
            if (const auto* one = std::get_if<Event>(&event)) {
                found.push_back(*one);
            }
        }
        return found;
    }

    void give(const std::vector<KWinNumberedOrder>& orders) {
        run("answer(" + kwinOrdersText(orders) + ")");
    }

    std::string frameOf(const std::string& window) {
        return run("JSON.stringify(" + window + ".frameGeometry)");
    }

private:
    QJSEngine engine_;
};

constexpr const char* first = "{window-1}";

TEST_P(AgentScript, beginsWithEverythingThereIs) {
    run("var w = user.opens({desktopFileName: 'org.example.Editor'}); user.focuses(w);"
        "user.opens({dock: true, normalWindow: false});");
    load();
    const std::vector<KWinEverything> all = heardOf<KWinEverything>();
    ASSERT_EQ(all.size(), 1U);
    ASSERT_EQ(all[0].windows.size(), 2U);
    EXPECT_EQ(all[0].windows[0].kind, WindowKind::dock) << "the topmost first";
    const KWinWindowRecord& window = all[0].windows[1];
    EXPECT_EQ(window.id, first);
    EXPECT_EQ(window.pid, 4001);
    EXPECT_EQ(window.application, "org.example.Editor");
    EXPECT_EQ(window.kind, WindowKind::normal);
    EXPECT_EQ(window.frame, (Rect{100, 100, 400, 300}));
    EXPECT_FALSE(window.isMinimized || window.isFullScreen || window.isMaximized ||
                 window.isTiled || window.isElsewhere);
    EXPECT_TRUE(window.isMovable && window.isResizable);
    EXPECT_EQ(all[0].active, first);
    ASSERT_EQ(all[0].screens.size(), 2U);
    // KWin 6 tells the user's order, which is the other way round here.
    const std::size_t landscape = GetParam() == 6 ? 1 : 0;
    EXPECT_EQ(all[0].screens[landscape].frame, (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(all[0].screens[landscape].area, (Rect{0, 0, 1920, 1040}));
    EXPECT_EQ(all[0].screens[1 - landscape].frame, (Rect{1920, 0, 1080, 1920}));
}

TEST_P(AgentScript, saysEverythingToTheProgramsObject) {
    load();
    EXPECT_EQ(run("said[0].to"), ":1.7 /object interface");
    EXPECT_EQ(run("said[0].method"), "Next");
    EXPECT_EQ(run("String(question !== null)"), "true");
}

TEST_P(AgentScript, tellsOfWindowsThatComeChangeAndGo) {
    load();
    heard();
    run("var w = user.opens();");
    std::vector<KWinWindowChanged> changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed[0].window.id, first);

    run("w.frameGeometry = {x: 5, y: 6, width: 700, height: 500};");
    changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed[0].window.frame, (Rect{5, 6, 700, 500}));

    run("w.minimized = true; w.minimizedChanged.emit();");
    changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_TRUE(changed[0].window.isMinimized);

    run("w.fullScreen = true; w.fullScreenChanged.emit();");
    changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_TRUE(changed[0].window.isFullScreen);

    run("w.setMaximize(true, true);");
    changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_TRUE(changed[0].window.isMaximized);

    run("w.tile = {};");
    changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_TRUE(changed[0].window.isTiled);

    run("user.closes(w);");
    const std::vector<KWinWindowGone> gone = heardOf<KWinWindowGone>();
    ASSERT_EQ(gone.size(), 1U);
    EXPECT_EQ(gone[0].id, first);
}

TEST_P(AgentScript, saysNothingWhereNothingHasChanged) {
    run("var w = user.opens();");
    load();
    heard();
    run("w.frameGeometryChanged.emit(); w.minimizedChanged.emit(); w.tileChanged.emit();");
    EXPECT_TRUE(heard().empty());
}

TEST_P(AgentScript, tellsOfTheFocus) {
    run("var w = user.opens();");
    load();
    heard();
    run("user.focuses(w);");
    std::vector<KWinActivated> focus = heardOf<KWinActivated>();
    ASSERT_EQ(focus.size(), 1U);
    EXPECT_EQ(focus[0].id, first);
    run("user.focuses(null);");
    focus = heardOf<KWinActivated>();
    ASSERT_EQ(focus.size(), 1U);
    EXPECT_EQ(focus[0].id, std::nullopt);
}

TEST_P(AgentScript, tellsOfAnotherVirtualDesktop) {
    run("user.opens();");
    load();
    heard();
    run("user.changesDesktop();");
    const std::vector<KWinWindowChanged> changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_TRUE(changed[0].window.isElsewhere);
}

TEST_P(AgentScript, tellsOfTheRoomThatAPanelTakesOnceKWinHasWorkedItOut) {
    load();
    heard();
    run("user.opens({dock: true, normalWindow: false});");
    EXPECT_TRUE(heardOf<KWinScreensChanged>().empty());
    run("areas[0].area = {x: 0, y: 0, width: 1920, height: 1000}; clock.pass(200);");
    const std::vector<KWinScreensChanged> screens = heardOf<KWinScreensChanged>();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].screens[GetParam() == 6 ? 1 : 0].area, (Rect{0, 0, 1920, 1000}));
}

TEST_P(AgentScript, takesNoLayerSurfaceForAWindowThatAUserMoves) {
    load();
    heard();
    run("user.opens({moveable: false});");
    const std::vector<KWinWindowChanged> changed = heardOf<KWinWindowChanged>();
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed[0].window.kind, WindowKind::other);
}

TEST_P(AgentScript, placesAWindow) {
    run("var w = user.opens();");
    load();
    heard();
    give({{7, KWinPlaceOrder{first, 10, 20, 800, 600}}});
    EXPECT_EQ(frameOf("w"), R"({"x":10,"y":20,"width":800,"height":600})");
    const std::vector<KWinEvent> events = heard();
    ASSERT_EQ(events.size(), 2U) << "the frame, then the result, as one message";
    EXPECT_EQ(std::get<KWinWindowChanged>(events[0]).window.frame, (Rect{10, 20, 800, 600}));
    EXPECT_EQ(std::get<KWinDone>(events[1]).order, 7U);
    EXPECT_EQ(std::get<KWinDone>(events[1]).result, KWinDone::Result::placed);
    EXPECT_EQ(run("String(question !== null)"), "true") << "it asks for more";
}

TEST_P(AgentScript, movesWithoutTouchingTheSize) {
    run("var w = user.opens();");
    load();
    give({{1, KWinPlaceOrder{first, 10, 20, std::nullopt, std::nullopt}}});
    EXPECT_EQ(frameOf("w"), R"({"x":10,"y":20,"width":400,"height":300})");
}

TEST_P(AgentScript, givesAWindowThatGrowsInStepsWholeOnes) {
    run("var w = user.opens({basicUnit: {width: 9, height: 17}});");
    load();
    heard();
    give({{1, KWinPlaceOrder{first, 10, 20, 800, 200}}});
    EXPECT_EQ(frameOf("w"), R"({"x":10,"y":20,"width":796,"height":198})")
        << "as many as fit, counted from the size that it has";
    EXPECT_EQ(heardOf<KWinDone>().at(0).result, KWinDone::Result::placed);
    give({{2, KWinPlaceOrder{first, 30, 40, std::nullopt, std::nullopt}}});
    EXPECT_EQ(frameOf("w"), R"({"x":30,"y":40,"width":796,"height":198})");
}

TEST_P(AgentScript, movesNoWindowThatIsRolledUpToItsTitleBarAndRollsItDownForASize) {
    run("var w = user.opens({shade: true});");
    load();
    EXPECT_TRUE(heardOf<KWinEverything>().at(0).windows.at(0).isShaded);
    give({{1, KWinPlaceOrder{first, 10, 20, std::nullopt, std::nullopt}}});
    EXPECT_EQ(heardOf<KWinDone>().at(0).result, KWinDone::Result::refused);
    EXPECT_EQ(frameOf("w"), R"({"x":100,"y":100,"width":400,"height":300})");
    give({{2, KWinPlaceOrder{first, 10, 20, 800, 600}}});
    EXPECT_EQ(heardOf<KWinDone>().at(0).result, KWinDone::Result::placed);
    EXPECT_EQ(frameOf("w"), R"({"x":10,"y":20,"width":800,"height":600})");
    EXPECT_EQ(run("String(w.shade)"), "false");
}

TEST_P(AgentScript, takesAWindowThatBelongsToAnotherForADialogUnlessXSaysWhatItIs) {
    run("user.opens({transient: true}); user.opens({transient: true, windowId: 7});");
    load();
    const KWinEverything all = heardOf<KWinEverything>().at(0);
    EXPECT_EQ(all.windows.at(1).kind, WindowKind::dialog);
    EXPECT_EQ(all.windows.at(0).kind, WindowKind::normal);
}

TEST_P(AgentScript, saysWhenAProgramHasBeenAskedForASize) {
    run("var w = user.opens({isSlow: true});");
    load();
    heard();
    give({{1, KWinPlaceOrder{first, 10, 20, 800, 600}}});
    const std::vector<KWinDone> done = heardOf<KWinDone>();
    ASSERT_EQ(done.size(), 1U);
    EXPECT_EQ(done[0].result, KWinDone::Result::asked);
}

TEST_P(AgentScript, takesAWindowOutOfMaximizedAndOfATileFirst) {
    run("var w = user.opens(); w.setMaximize(true, true); w.tile = {};");
    load();
    const auto all = heardOf<KWinEverything>();
    give({{1, KWinPlaceOrder{first, 10, 20, 800, 600}}});
    const std::vector<KWinWindowChanged> changed = heardOf<KWinWindowChanged>();
    ASSERT_FALSE(changed.empty());
    EXPECT_FALSE(changed.back().window.isMaximized);
    EXPECT_FALSE(changed.back().window.isTiled);
    EXPECT_EQ(changed.back().window.frame, (Rect{10, 20, 800, 600}));
}

TEST_P(AgentScript, knowsAWindowThatWasMaximizedBeforeItCame) {
    run("var w = user.opens(); w.own.isMaximized = true;"
        "w.own.frame = areas[0].area;");
    load();
    const auto all = heardOf<KWinEverything>();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_TRUE(all[0].windows[0].isMaximized);
}

TEST_P(AgentScript, leavesAFullScreenWindow) {
    run("var w = user.opens({fullScreen: true});");
    load();
    heard();
    give({{1, KWinPlaceOrder{first, 10, 20, 800, 600}}});
    const std::vector<KWinDone> done = heardOf<KWinDone>();
    ASSERT_EQ(done.size(), 1U);
    EXPECT_EQ(done[0].result, KWinDone::Result::refused);
    EXPECT_EQ(frameOf("w"), R"({"x":100,"y":100,"width":400,"height":300})");
}

TEST_P(AgentScript, saysThatAWindowIsGone) {
    load();
    heard();
    give({{1, KWinPlaceOrder{"{window-99}", 10, 20, 800, 600}},
          {2, KWinPlaceOrder{"{window-98}", 10, 20, 800, 600}}});
    const std::vector<KWinDone> done = heardOf<KWinDone>();
    ASSERT_EQ(done.size(), 2U) << "one that fails keeps the others from nothing";
    EXPECT_EQ(done[0].result, KWinDone::Result::failed);
    EXPECT_EQ(done[1].order, 2U);
}

TEST_P(AgentScript, tellsOfAMoveWithThePointer) {
    run("var w = user.opens();");
    load();
    heard();
    run("workspace.cursorPos = {x: 110, y: 105}; user.grabs(w, false);");
    const std::vector<KWinMoveBegan> began = heardOf<KWinMoveBegan>();
    ASSERT_EQ(began.size(), 1U);
    EXPECT_EQ(began[0].id, first);
    EXPECT_FALSE(began[0].isResize);
    EXPECT_EQ(began[0].place, (Point{110, 105}));

    run("user.drags(w, 300, 200);");
    std::vector<KWinEvent> events = heard();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(std::get<KWinWindowChanged>(events[0]).window.frame, (Rect{290, 190, 400, 300}));
    EXPECT_EQ(std::get<KWinMoved>(events[1]).place, (Point{300, 200}));

    // Movements that come faster than a screen shows them are told as one.
    run("user.drags(w, 301, 200); user.drags(w, 302, 200); user.drags(w, 303, 200);");
    EXPECT_TRUE(heard().empty());
    run("clock.pass(10);");
    const std::vector<KWinMoved> moved = heardOf<KWinMoved>();
    ASSERT_EQ(moved.size(), 1U);
    EXPECT_EQ(moved[0].place, (Point{303, 200}));

    run("user.lets(w); clock.pass(0);");
    const std::vector<KWinMoveEnded> ended = heardOf<KWinMoveEnded>();
    ASSERT_EQ(ended.size(), 1U);
    EXPECT_FALSE(ended[0].isTakenBack);
    EXPECT_EQ(ended[0].place, (Point{303, 200}));
    run("clock.pass(100);");
    EXPECT_TRUE(heardOf<KWinMoved>().empty()) << "nothing comes after the end";
}

TEST_P(AgentScript, tellsOfThePointerAlsoWhereKWinHoldsTheWindowBack) {
    run("var w = user.opens();");
    load();
    run("user.grabs(w, false); user.drags(w, 300, 200); clock.pass(10);");
    heard();
    run("user.pulls(300, 1077); clock.pass(10);");
    const std::vector<KWinMoved> moved = heardOf<KWinMoved>();
    ASSERT_FALSE(moved.empty());
    EXPECT_EQ(moved.back().place, (Point{300, 1077}));
    run("user.lets(w); clock.pass(10);");
    heard();
    run("user.pulls(400, 500); clock.pass(10);");
    EXPECT_TRUE(heard().empty()) << "it is nobody's business outside of a move";
}

TEST_P(AgentScript, saysThatAMoveWasTakenBack) {
    run("var w = user.opens();");
    load();
    // The end is told before the window is put back.
    run("user.grabs(w, false); user.drags(w, 300, 200); user.lets(w);"
        "w.frameGeometry = {x: 100, y: 100, width: 400, height: 300}; clock.pass(0);");
    const std::vector<KWinMoveEnded> ended = heardOf<KWinMoveEnded>();
    ASSERT_EQ(ended.size(), 1U);
    EXPECT_TRUE(ended[0].isTakenBack);
}

TEST_P(AgentScript, endsTheMoveOfAWindowThatCloses) {
    run("var w = user.opens();");
    load();
    run("user.grabs(w, false); user.closes(w);");
    const std::vector<KWinMoveEnded> ended = heardOf<KWinMoveEnded>();
    ASSERT_EQ(ended.size(), 1U);
    EXPECT_TRUE(ended[0].isTakenBack);
}

TEST_P(AgentScript, tellsAResizeWithoutMovements) {
    run("var w = user.opens();");
    load();
    heard();
    run("user.grabs(w, true);");
    const std::vector<KWinMoveBegan> began = heardOf<KWinMoveBegan>();
    ASSERT_EQ(began.size(), 1U);
    EXPECT_TRUE(began[0].isResize);
    run("user.drags(w, 300, 200);");
    EXPECT_TRUE(heardOf<KWinMoved>().empty());
}

TEST_P(AgentScript, holdsKWinsOwnSnappingBackAndGivesItBack) {
    run("options.values = {tiling: true, maximize: false};");
    load();
    const auto all = heardOf<KWinEverything>();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].borders, (KWinBorders{true, false})) << "so that it can be noted before";
    give({{1, KWinBordersOrder{true, {true, false}}}});
    EXPECT_EQ(run("JSON.stringify(options.values)"), R"({"tiling":false,"maximize":false})");
    give({{2, KWinBordersOrder{false, {true, false}}}});
    EXPECT_EQ(run("JSON.stringify(options.values)"), R"({"tiling":true,"maximize":false})");
}

TEST_P(AgentScript, givesBackWhatWasThereBeforeTheRunThatDied) {
    run("options.values = {tiling: false, maximize: false};");
    load();
    give({{1, KWinBordersOrder{false, {true, true}}}});
    EXPECT_EQ(run("JSON.stringify(options.values)"), R"({"tiling":true,"maximize":true})");
}

TEST_P(AgentScript, holdsItBackAgainWhenKWinHasReadItsSettingsAnew) {
    load();
    give({{1, KWinBordersOrder{true, {true, true}}}});
    heard();
    run("user.changesSettings({tiling: true, maximize: false});");
    EXPECT_EQ(run("JSON.stringify(options.values)"), R"({"tiling":false,"maximize":false})");
    const std::vector<KWinBorders> borders = heardOf<KWinBorders>();
    ASSERT_EQ(borders.size(), 1U);
    EXPECT_EQ(borders[0], (KWinBorders{true, false})) << "the user's new choice";
    give({{2, KWinEndOrder{}}});
    EXPECT_EQ(run("JSON.stringify(options.values)"), R"({"tiling":true,"maximize":false})");
}

TEST_P(AgentScript, givesTheSnappingBackWhenTheProgramIsSilent) {
    load();
    give({{1, KWinBordersOrder{true, {true, true}}}});
    run("clock.pass(25000);");
    EXPECT_EQ(run("JSON.stringify(options.values)"), R"({"tiling":true,"maximize":true})");
    heard();
    run("user.opens();");
    EXPECT_TRUE(heard().empty()) << "and says nothing to nobody";
}

TEST_P(AgentScript, givesEverythingBackAtTheEnd) {
    load();
    give({{1, KWinBordersOrder{true, {true, true}}}});
    give({{2, KWinEndOrder{}}});
    EXPECT_EQ(run("JSON.stringify(options.values)"), R"({"tiling":true,"maximize":true})");
    EXPECT_EQ(heardOf<KWinDone>().size(), 2U);
    run("user.opens();");
    EXPECT_TRUE(heardOf<KWinWindowChanged>().empty());
}

TEST_P(AgentScript, bringsAWindowToTheFront) {
    const auto isInFront = [this](const std::string& window) {
        return run("String((workspace.activeWindow || workspace.activeClient) === " + window + ")");
    };
    run("var w = user.opens({caption: 'Settings <2>', pid: 7});"
        "var namesake = user.opens({caption: 'Settings', pid: 8}); user.focuses(namesake);");
    load();
    heard();
    give({{1, KWinFrontOrder{7, "Settings"}}});
    EXPECT_EQ(isInFront("w"), "true");
    ASSERT_EQ(heardOf<KWinDone>().at(0).result, KWinDone::Result::done);

    // One that is still to come.
    give({{2, KWinFrontOrder{7, "About"}}});
    ASSERT_EQ(heardOf<KWinDone>().at(0).result, KWinDone::Result::asked);
    run("user.opens({caption: 'About', pid: 8}); user.opens({caption: 'Other', pid: 7});");
    EXPECT_EQ(isInFront("w"), "true");
    run("var about = user.opens({caption: 'About', pid: 7});");
    EXPECT_EQ(isInFront("about"), "true");
    run("user.focuses(w); user.opens({caption: 'About', pid: 7});");
    EXPECT_EQ(isInFront("w"), "true") << "once";

    give({{3, KWinFrontOrder{7, "Late"}}});
    run("clock.pass(3001); user.opens({caption: 'Late', pid: 7});");
    EXPECT_EQ(isInFront("w"), "true") << "the user does something else by now";
}

INSTANTIATE_TEST_SUITE_P(KWin, AgentScript, testing::Values(5, 6), [](const auto& generation) {
    return generation.param == 6 ? std::string("six") : std::string("five");
});

}  // namespace
}  // namespace lumatile
