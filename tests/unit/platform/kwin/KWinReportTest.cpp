#include <gtest/gtest.h>

#include <string>

#include "platform/kwin/KWinReport.h"

namespace lumatile {
namespace {

std::string windowText(const std::string& member = "", const std::string& value = "") {
    std::string text =
        R"({"event":"window","window":{"id":"a1","pid":12,"application":"","class":"XTerm",)"
        R"("kind":"normal","frame":{"x":1.5,"y":-2,"width":30,"height":40},"isMinimized":false,)"
        R"("isFullScreen":false,"isMaximized":false,"isTiled":false,"isShaded":false,)"
        R"("isElsewhere":false,"isMovable":true,"isResizable":true}})";
    if (!member.empty()) {
        const auto key = text.find("\"" + member + "\":");
        const auto begin = key + member.size() + 3;
        auto end = text.find_first_of(",}", begin);
        if (text[begin] == '{') {
            end = text.find('}', begin) + 1;
        }
        text.replace(begin, end - begin, value);
    }
    return text;
}

std::size_t count(const std::string& events) {
    const auto parsed = KWinReport::parse("[" + events + "]");
    return parsed ? parsed->size() : 99;
}

TEST(KWinReport, readsAWindow) {
    const auto events = KWinReport::parse("[" + windowText() + "]");
    ASSERT_TRUE(events && events->size() == 1);
    const KWinWindowRecord& window = std::get<KWinWindowChanged>(events->front()).window;
    EXPECT_EQ(window.id, "a1");
    EXPECT_EQ(window.pid, 12);
    EXPECT_EQ(window.application, "xterm")
        << "the class where there is no desktop file, in small letters";
    EXPECT_EQ(window.frame, (Rect{1.5, -2, 30, 40}));
    EXPECT_TRUE(window.isMovable);
    EXPECT_FALSE(window.isMinimized);
}

TEST(KWinReport, leavesOutAWindowWithAnythingOfTheWrongType) {
    EXPECT_EQ(count(windowText()), 1U);
    for (const auto& [member, value] :
         {std::pair("id", "12"), std::pair("id", "\"\""), std::pair("pid", "\"12\""),
          std::pair("pid", "1.5"), std::pair("kind", "\"unheard of\""), std::pair("kind", "null"),
          std::pair("frame", "null"), std::pair("frame", "[1,2,3,4]"),
          std::pair("frame", R"({"x":1,"y":2,"width":-3,"height":4})"),
          std::pair("frame", R"({"x":1e9,"y":2,"width":3,"height":4})"),
          std::pair("frame", R"({"x":"1","y":2,"width":3,"height":4})"),
          std::pair("frame", R"({"y":2,"width":3,"height":4})"), std::pair("isMinimized", "0"),
          std::pair("isShaded", "1"), std::pair("isMovable", "\"true\"")}) {
        EXPECT_EQ(count(windowText(member, value)), 0U) << member << " " << value;
    }
}

TEST(KWinReport, aNameThatIsTooLongIsNone) {
    const auto events =
        KWinReport::parse("[" + windowText("class", "\"" + std::string(2000, 'x') + "\"") + "]");
    ASSERT_TRUE(events && events->size() == 1);
    EXPECT_EQ(std::get<KWinWindowChanged>(events->front()).window.application, std::nullopt);
}

TEST(KWinReport, oneThatIsWrongKeepsTheOthersFromNothing) {
    EXPECT_EQ(count(R"({"event":"gone","id":"{a}"},{"event":"gone"},17,null,)"
                    R"({"event":"unheard of"},{"event":"active","id":null})"),
              2U);
}

TEST(KWinReport, refusesWhatIsNoList) {
    for (const std::string& text : {std::string("{}"), std::string(""), std::string("[1,"),
                                    std::string("\"[]\""), std::string("[\"\xff\"]")}) {
        EXPECT_FALSE(KWinReport::parse(text).has_value()) << text;
    }
}

TEST(KWinReport, refusesATextThatIsTooLong) {
    EXPECT_FALSE(KWinReport::parse("[\"" + std::string(KWinReport::longestText, 'x') + "\"]"));
    EXPECT_FALSE(KWinReport::parse("[\"" + std::string(5000, 'x') + "\"]"));
}

TEST(KWinReport, takesNoMoreWindowsThanThereCanBe) {
    const std::string event = windowText();
    const auto begin = event.find("\"window\":") + 9;
    const std::string record = event.substr(begin, event.size() - begin - 1);
    std::string text = R"([{"event":"all","screens":[],"active":null,"windows":[)" + record;
    for (std::size_t i = 0; i < KWinReport::mostWindows; ++i) {
        text += "," + record;
    }
    const auto events = KWinReport::parse(text + "]}]");
    ASSERT_TRUE(events && events->size() == 1);
    EXPECT_EQ(std::get<KWinEverything>(events->front()).windows.size(), KWinReport::mostWindows);
}

TEST(KWinReport, aScreenWithoutAnAreaIsNone) {
    const auto events = KWinReport::parse(
        R"([{"event":"screens","screens":[{"frame":{"x":0,"y":0,"width":10,"height":10}},)"
        R"({"frame":{"x":0,"y":0,"width":0,"height":10},)"
        R"("area":{"x":0,"y":0,"width":0,"height":10}},)"
        R"({"frame":{"x":0,"y":0,"width":10,"height":10},)"
        R"("area":{"x":0,"y":0,"width":10,"height":9}}]}])");
    ASSERT_TRUE(events && events->size() == 1);
    const auto& screens = std::get<KWinScreensChanged>(events->front()).screens;
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].area, (Rect{0, 0, 10, 9}));
}

TEST(KWinReport, readsDragsAndResults) {
    const auto events = KWinReport::parse(
        R"([{"event":"moveBegan","id":"{a}","isResize":false,"place":{"x":1,"y":2}},)"
        R"({"event":"moved","place":{"x":3,"y":4}},)"
        R"({"event":"moveEnded","isResize":false,"isTakenBack":true,"place":{"x":5,"y":6}},)"
        R"({"event":"done","order":18446744073709551615,"result":"asked"}])");
    ASSERT_TRUE(events && events->size() == 4);
    EXPECT_EQ(std::get<KWinMoveBegan>((*events)[0]).place, (Point{1, 2}));
    EXPECT_EQ(std::get<KWinMoved>((*events)[1]).place, (Point{3, 4}));
    EXPECT_TRUE(std::get<KWinMoveEnded>((*events)[2]).isTakenBack);
    EXPECT_EQ(std::get<KWinDone>((*events)[3]).order, 18446744073709551615U);
    EXPECT_EQ(std::get<KWinDone>((*events)[3]).result, KWinDone::Result::asked);
}

}  // namespace
}  // namespace lumatile
