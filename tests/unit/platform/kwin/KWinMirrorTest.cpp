#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "platform/kwin/KWinMirror.h"

namespace lumatile {
namespace {

KWinWindowRecord record(const std::string& id, const Rect& frame = {0, 0, 10, 10}) {
    KWinWindowRecord made;
    made.id = id;
    made.pid = 7;
    made.frame = frame;
    return made;
}

std::string order(KWinMirror& mirror) {
    std::string ids;
    for (const KWinWindow* window : mirror.windows()) {
        ids += window->record.id;
    }
    return ids;
}

TEST(KWinMirror, holdsWhatTheScriptBeginsWithAndNothingElse) {
    KWinMirror mirror;
    mirror.apply(KWinWindowChanged{record("old")});
    mirror.apply(
        KWinEverything{{record("a"), record("b")}, {{{0, 0, 5, 5}, {0, 0, 5, 4}}}, "b", {}});
    EXPECT_EQ(order(mirror), "ab");
    EXPECT_EQ(mirror.find("old"), nullptr);
    ASSERT_NE(mirror.active(), nullptr);
    EXPECT_EQ(mirror.active()->record.id, "b");
    EXPECT_EQ(mirror.screens().size(), 1U);
}

TEST(KWinMirror, windowsOfOneClassWhoseProcessIsNotKnownAreOneApplication) {
    KWinMirror mirror;
    const auto stranger = [](const std::string& id, std::optional<std::string> application) {
        KWinWindowRecord made = record(id);
        made.pid = 0;
        made.application = std::move(application);
        return made;
    };
    mirror.apply(KWinEverything{{stranger("a", "logo"), stranger("b", "clock"), record("c"),
                                 stranger("d", std::nullopt), stranger("e", std::nullopt)},
                                {},
                                "a",
                                {}});
    mirror.apply(KWinWindowChanged{stranger("f", "logo")});
    const auto owner = [&](const char* id) { return mirror.find(id)->record.pid; };
    EXPECT_EQ(owner("a"), owner("f"));
    EXPECT_NE(owner("a"), owner("b"));
    EXPECT_NE(owner("d"), owner("e")) << "nothing says that they belong together";
    EXPECT_EQ(owner("c"), 7);
    for (const char* id : {"a", "b", "d", "e", "f"}) {
        EXPECT_LT(owner(id), 0) << "no process has this number";
    }
}

TEST(KWinMirror, theWindowThatHadTheFocusLastComesFirst) {
    KWinMirror mirror;
    mirror.apply(KWinEverything{{record("a"), record("b"), record("c")}, {}, "a", {}});
    mirror.apply(KWinActivated{"c"});
    EXPECT_EQ(order(mirror), "cab");
    mirror.apply(KWinActivated{"b"});
    EXPECT_EQ(order(mirror), "bca");
    mirror.apply(KWinActivated{std::nullopt});
    EXPECT_EQ(order(mirror), "bca");
    EXPECT_EQ(mirror.active(), nullptr);
}

TEST(KWinMirror, keepsWhatWasWrittenToAWindowThatChanges) {
    KWinMirror mirror;
    mirror.apply(KWinWindowChanged{record("a")});
    mirror.find("a")->written = KWinWrittenFrame{{1, 2, 3, 4}, {1, 2, 3, 4}};
    const auto frames = mirror.find("a")->frames;
    mirror.apply(KWinWindowChanged{record("a", {5, 5, 10, 10})});
    EXPECT_EQ(mirror.find("a")->frames, frames + 1);
    EXPECT_TRUE(mirror.find("a")->written.has_value());
    mirror.apply(KWinWindowChanged{record("a", {5, 5, 10, 10})});
    EXPECT_EQ(mirror.find("a")->frames, frames + 1) << "the same frame once more";
}

TEST(KWinMirror, forgetsAWindowThatIsGone) {
    KWinMirror mirror;
    mirror.apply(KWinEverything{{record("a"), record("b")}, {}, "a", {}});
    mirror.apply(KWinWindowGone{"a"});
    EXPECT_EQ(order(mirror), "b");
    EXPECT_EQ(mirror.active(), nullptr);
}

TEST(KWinMirror, doesNotGrowBeyondTheWindowsThatThereCanBe) {
    KWinMirror mirror;
    for (std::size_t i = 0; i <= KWinReport::mostWindows; ++i) {
        mirror.apply(KWinWindowChanged{record(std::to_string(i))});
    }
    EXPECT_EQ(mirror.windows().size(), KWinReport::mostWindows);
}

}  // namespace
}  // namespace lumatile
