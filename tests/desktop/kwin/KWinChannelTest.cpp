// The way to the script in KWin, with a peer of the tests' own in the place of KWin: one that does
// what KWin does, and one that does what it should not.

#include "platform/kwin/KWinChannel.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "base/Lifeline.h"
#include "platform/kwin/KWinAccessibilityPlatform.h"
#include "platform/kwin/KWinEdgeTiling.h"
#include "platform/kwin/KWinMouseEventSource.h"
#include "platform/kwin/KWinScreenList.h"
#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/MockService.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/VainWaits.h"
#include "windows/AttributeName.h"

namespace lumatile::desktop {
namespace {

constexpr const char* scripting = R"(<node><interface name="org.kde.kwin.Scripting">
  <method name="loadScript"><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="i" direction="out"/></method>
  <method name="unloadScript"><arg type="s" direction="in"/><arg type="b" direction="out"/></method>
  <method name="start"/>
</interface></node>)";

constexpr const char* everything =
    R"([{"event":"all","active":"a","screens":[{"frame":{"x":0,"y":0,"width":1920,"height":1080},)"
    R"("area":{"x":0,"y":0,"width":1920,"height":1040}}],"borders":{"tiling":true,"maximize":true},)"
    R"("windows":[{"id":"a","pid":77,"application":"editor","class":"","kind":"normal",)"
    R"("frame":{"x":10,"y":20,"width":300,"height":200},"isMinimized":false,"isFullScreen":false,)"
    R"("isMaximized":false,"isTiled":false,"isShaded":false,"isElsewhere":false,)"
    R"("isMovable":true,"isResizable":true}]}])";

/// Somebody on the bus who calls the program's object.
class Caller {
public:
    explicit Caller(GDBusConnection* connection) : connection_(connection) {}

    /// What the script file says of the program's object.
    void read(const std::string& script) {
        const auto value = [&](const std::string& key) {
            const auto place = script.find(key + ": \"") + key.size() + 3;
            return script.substr(place, script.find('"', place) - place);
        };
        service = value("service");
        path = value("path");
        interface = value("name");
    }

    void call(const std::string& method, GVariant* arguments) {
        ++unanswered;
        g_dbus_connection_call(
            connection_, service.c_str(), path.c_str(), interface.c_str(), method.c_str(),
            arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
            [](GObject* source, GAsyncResult* result, gpointer data) {
                const std::unique_ptr<Pending> pending(static_cast<Pending*>(data));
                GError* failure = nullptr;
                const GVariantHandle reply(
                    g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &failure));
                const GErrorHandle error(failure);
                if (!pending->life.isAlive()) {
                    return;
                }
                Caller& self = *pending->caller;
                --self.unanswered;
                if (reply && g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(s)")) != 0) {
                    const char* text = nullptr;
                    g_variant_get(reply.get(), "(&s)", &text);
                    self.orders.emplace_back(text);
                }
            },
            new Pending{this, lifeline_.watch()});
    }

    void say(const std::string& method, const std::string& text) {
        call(method, g_variant_new("(s)", text.c_str()));
    }

    std::string service;
    std::string path;
    std::string interface;
    std::vector<std::string> orders;  // The answers to questions.
    int unanswered = 0;

private:
    /// A call may be answered after its caller is gone.
    struct Pending {
        Caller* caller = nullptr;
        Lifeline::Watch life;
    };

    GDBusConnection* connection_;
    Lifeline lifeline_;
};

/// Counts what happens between two things that the program has put off.
class CountingRunLoop final : public RunLoop {
public:
    double now() override { return loop_.now(); }
    std::unique_ptr<RunLoopTimer> repeat(double seconds, std::function<void()> tick) override {
        return loop_.repeat(seconds, std::move(tick));
    }
    void post(std::function<void()> work) override {
        loop_.post([this, work = std::move(work)] {
            counts_.push_back(0);
            work();
        });
    }

    void advance(double seconds) { loop_.advance(seconds); }
    void settle() { loop_.settle(); }
    void count() { ++counts_.back(); }
    std::size_t most() const { return *std::max_element(counts_.begin(), counts_.end()); }

private:
    SimulatedClock clock_;
    SimulatedRunLoop loop_{clock_};
    std::vector<std::size_t> counts_{0};
};

class KWinChannelTest : public testing::Test {
protected:
    KWinChannelTest() {
        setenv("XDG_RUNTIME_DIR", session.folder().c_str(), 1);
        startKWin();
    }

    void TearDown() override { unsetenv("XDG_RUNTIME_DIR"); }

    const std::string& address() { return session.environment().at("DBUS_SESSION_BUS_ADDRESS"); }

    void startKWin() {
        kwin = std::make_unique<MockService>(
            address(), "org.kde.KWin", [this](const MockService::Call& call) { answer(call); });
        kwin->offer("/Scripting", scripting);
        script.emplace(kwin->connection());
    }

    void answer(const MockService::Call& call) {
        calls.push_back(call.method);
        if (call.method == "loadScript") {
            const char* file = nullptr;
            g_variant_get(call.arguments, "(&s&s)", &file, nullptr);
            scriptFile = file;
            script->read(readFile(file));
            call.answer(g_variant_new("(i)", takesScripts ? 0 : -1));
        } else if (call.method == "unloadScript") {
            call.answer(g_variant_new("(b)", FALSE));
        } else {
            call.answer(nullptr);
        }
    }

    bool serve(const std::function<bool()>& holds) {
        return runUntil([&] {
            runLoop.settle();
            return holds();
        });
    }

    void load() {
        channel = std::make_unique<KWinChannel>(address(), runLoop);
        ASSERT_TRUE(serve([&] { return !calls.empty() && calls.back() == "start"; }));
    }

    void loadAndGreet() {
        load();
        script->say("Next", everything);
        ASSERT_TRUE(serve([&] { return channel->isAnswering(); }));
    }

    PrivateSession session{""};
    CountingRunLoop runLoop;
    std::unique_ptr<MockService> kwin;
    std::optional<Caller> script;
    std::vector<std::string> calls;
    std::filesystem::path scriptFile;
    bool takesScripts = true;
    std::unique_ptr<KWinChannel> channel;
};

TEST_F(KWinChannelTest, loadsTheScriptAfterTakingAnOldOneOut) {
    load();
    EXPECT_EQ(calls, (std::vector<std::string>{"unloadScript", "loadScript", "start"}));
    EXPECT_EQ(channel->state(), KWinChannel::State::starting);
    EXPECT_EQ(std::filesystem::status(scriptFile).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    script->say("Next", everything);
    ASSERT_TRUE(serve([&] { return channel->isAnswering(); }));
    EXPECT_EQ(channel->mirror().windows().size(), 1U);
    EXPECT_FALSE(std::filesystem::exists(scriptFile)) << "KWin has read it";
}

TEST_F(KWinChannelTest, twoRunsHaveObjectsOfDifferentNames) {
    load();
    const std::string first = script->path;
    channel.reset();
    calls.clear();
    load();
    EXPECT_NE(script->path, first);
}

TEST_F(KWinChannelTest, ordersGoOutWithTheAnswerToTheQuestion) {
    loadAndGreet();
    const std::uint64_t number = channel->give(KWinPlaceOrder{"a", 1, 2, 3, 4});
    EXPECT_NE(number, 0U);
    ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
    EXPECT_NE(script->orders[0].find(R"("do":"place")"), std::string::npos) << script->orders[0];
    EXPECT_FALSE(channel->resultOf(number).has_value());
    script->say("Next", R"([{"event":"done","order":)" + std::to_string(number) +
                            R"(,"result":"placed"}])");
    ASSERT_TRUE(serve([&] { return channel->resultOf(number).has_value(); }));
    EXPECT_EQ(channel->resultOf(number), KWinDone::Result::placed);
}

TEST_F(KWinChannelTest, manyOrdersGoOutAFewAtATime) {
    // KWin carries out in one go what it is given at once, and draws nothing meanwhile.
    loadAndGreet();
    for (int order = 0; order < 40; ++order) {
        channel->give(KWinPlaceOrder{"a", 1.0 * order, 2, {}, {}});
    }
    std::vector<std::size_t> sizes;
    std::size_t next = 0;
    while (next < 40) {
        ASSERT_TRUE(serve([&] { return script->orders.size() > sizes.size(); }));
        const auto orders = nlohmann::json::parse(script->orders.back());
        sizes.push_back(orders.size());
        for (const auto& order : orders) {
            EXPECT_EQ(order.at("x"), next++);
        }
        script->say("Next", "[]");
    }
    EXPECT_EQ(sizes, (std::vector<std::size_t>{1, 16, 16, 7})) << "the first waits for none";
}

TEST_F(KWinChannelTest, aQuestionIsAnsweredBeforeItGrowsOld) {
    loadAndGreet();
    runLoop.advance(13);
    runReady();
    EXPECT_TRUE(script->orders.empty());
    runLoop.advance(1);
    ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
    EXPECT_EQ(script->orders[0], "[]");
}

TEST_F(KWinChannelTest, aScriptThatAsksNoMoreIsLoadedAgain) {
    loadAndGreet();
    channel->give(KWinPlaceOrder{"a", 1, 2, 3, 4});
    ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
    calls.clear();
    EXPECT_EQ(vainSecondsFor([this] { runLoop.advance(3.5); }), 0)
        << "what is silent is not waited for";
    EXPECT_FALSE(channel->isAnswering());
    EXPECT_TRUE(channel->mirror().windows().empty());
    runReady();
    EXPECT_TRUE(calls.empty()) << "nor asked for anything";
    runLoop.advance(2);
    ASSERT_TRUE(serve([&] { return !calls.empty() && calls.back() == "start"; }));
    EXPECT_EQ(calls, (std::vector<std::string>{"unloadScript", "loadScript", "start"}));
    script->say("Next", everything);
    EXPECT_TRUE(serve([&] { return channel->isAnswering(); }));
}

TEST_F(KWinChannelTest, aKWinThatTakesNoScriptsIsSaidToRefuse) {
    takesScripts = false;
    channel = std::make_unique<KWinChannel>(address(), runLoop);
    EXPECT_TRUE(serve([&] { return channel->state() == KWinChannel::State::refused; }));
    KWinScreenList screens(*channel, [] { return std::nullopt; });
    KWinEdgeTiling edges(*channel, session.folder() / "edges");
    KWinMouseEventSource mouse(*channel, screens, edges, runLoop);
    KWinAccessibilityPlatform platform(*channel, screens, mouse);
    EXPECT_FALSE(platform.isTrusted(false));
    EXPECT_EQ(platform.trustObstacle(), TrustObstacle::windowManagerRefuses);
    calls.clear();
    runLoop.advance(1.5);
    ASSERT_TRUE(serve([&] { return !calls.empty(); })) << "it is asked again";
    EXPECT_EQ(platform.trustObstacle(), TrustObstacle::windowManagerRefuses)
        << "what is in the way does not change while it is";
}

TEST_F(KWinChannelTest, aScriptThatSaysNothingIsSaidToBeRefused) {
    load();
    runLoop.advance(5.5);
    EXPECT_EQ(channel->state(), KWinChannel::State::refused);
}

TEST_F(KWinChannelTest, whereThereIsNoKWinNothingIsSaidAboutIt) {
    script.reset();
    kwin.reset();
    testing::internal::CaptureStderr();
    channel = std::make_unique<KWinChannel>(address(), runLoop);
    EXPECT_EQ(channel->state(), KWinChannel::State::absent);
    channel.reset();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(KWinChannelTest, aKWinThatGoesIsNoticedAndFoundAgain) {
    loadAndGreet();
    script.reset();
    kwin.reset();
    ASSERT_TRUE(serve([&] { return channel->state() == KWinChannel::State::absent; }));
    EXPECT_TRUE(channel->mirror().windows().empty());
    EXPECT_EQ(channel->give(KWinPlaceOrder{"a", 1, 2, 3, 4}), 0U);
    calls.clear();
    startKWin();
    runLoop.advance(5);
    ASSERT_TRUE(serve([&] { return !calls.empty() && calls.back() == "start"; }));
    script->say("Next", everything);
    EXPECT_TRUE(serve([&] { return channel->isAnswering(); }));
}

TEST_F(KWinChannelTest, nobodyButKWinIsHeard) {
    loadAndGreet();
    const MockService other(address(), "org.example.Other", [](const MockService::Call&) {});
    Caller stranger(other.connection());
    stranger.service = script->service;
    stranger.path = script->path;
    stranger.interface = script->interface;
    stranger.say("Report", R"([{"event":"gone","id":"a"}])");
    stranger.say("Next", "[]");
    // What KWin says afterwards comes behind it.
    script->say("Report", R"([{"event":"active","id":null}])");
    ASSERT_TRUE(serve([&] { return channel->mirror().active() == nullptr; }));
    EXPECT_EQ(channel->mirror().windows().size(), 1U);
    EXPECT_EQ(stranger.unanswered, 2);
    // The library tells the caller that nobody answers when the connection goes.
    channel.reset();
    EXPECT_TRUE(serve([&] { return stranger.unanswered == 0; }));
}

TEST_F(KWinChannelTest, wrongTypesAndLongTextsComeToNothing) {
    loadAndGreet();
    script->call("Report", g_variant_new("(i)", 7));
    script->call("Report", g_variant_new("(ss)", "[]", "[]"));
    script->say("Report", "no list");
    script->say("Report", R"([{"event":"gone","id":7},{"event":7},{"event":"window"}])");
    std::string longText = "[\"";
    longText.append(10'000'000, 'x');
    script->say("Report", longText + "\"]");
    script->say("Report", R"([{"event":"active","id":null}])");
    ASSERT_TRUE(serve([&] { return channel->mirror().active() == nullptr; }));
    EXPECT_EQ(channel->mirror().windows().size(), 1U);
    EXPECT_TRUE(channel->isAnswering());
}

TEST_F(KWinChannelTest, aFloodIsTakenInBitByBit) {
    loadAndGreet();
    constexpr int reports = 3000;
    for (int i = 0; i < reports; ++i) {
        script->say("Report", everything);
    }
    script->say("Report", R"([{"event":"active","id":null}])");
    const auto counting = channel->observe([this](const KWinEvent&) { runLoop.count(); });
    ASSERT_TRUE(serve([&] { return channel->mirrorSoFar().active() == nullptr; }));
    EXPECT_GT(runLoop.most(), 0U);
    EXPECT_LT(runLoop.most(), static_cast<std::size_t>(reports) / 2)
        << "the program's other work comes in between";
    EXPECT_EQ(channel->mirrorSoFar().windows().size(), 1U);
}

TEST_F(KWinChannelTest, whatWaitsItsTurnComesAfterWhatHasArrivedBefore) {
    loadAndGreet();
    bool isInTurn = false;
    bool wasActive = true;
    channel->connection()->listen(
        {channel->connection()->peer(), "/press", "org.example.Press", "Pressed"}, [&](GVariant*) {
            channel->inTurn([&] {
                isInTurn = true;
                wasActive = channel->mirrorSoFar().active() != nullptr;
            });
        });
    constexpr int reports = 3000;
    for (int i = 0; i < reports; ++i) {
        script->say("Report", everything);
    }
    script->say("Report", R"([{"event":"active","id":null}])");
    kwin->emit("/press", "org.example.Press", "Pressed", nullptr);
    ASSERT_TRUE(serve([&] { return isInTurn; }));
    EXPECT_FALSE(wasActive) << "the press is of the time after the last report";
}

TEST_F(KWinChannelTest, anAnswerBehindMuchElseIsSeenByWhoeverWaitsForIt) {
    loadAndGreet();
    // Far more than is taken in within one turn of the program.
    constexpr int reports = 300;
    for (int i = 0; i < reports; ++i) {
        script->say("Report", everything);
    }
    const std::uint64_t next = channel->give(KWinPlaceOrder{"a", 1, 2, 3, 4}) + 1;
    script->say("Report",
                R"([{"event":"done","order":)" + std::to_string(next) + R"(,"result":"placed"}])");
    const std::uint64_t order = channel->give(KWinPlaceOrder{"a", 5, 6, 7, 8});
    ASSERT_EQ(order, next);
    constexpr double patience = 10;  // Seconds; nothing else of the program runs meanwhile.
    EXPECT_TRUE(channel->waitUntil([&] { return channel->resultOf(order).has_value(); }, patience));
}

TEST_F(KWinChannelTest, aWriteThatIsNotAnsweredEndsWithItsTimeOut) {
    loadAndGreet();
    KWinScreenList screens(*channel, [] { return std::nullopt; });
    KWinEdgeTiling edges(*channel, session.folder() / "edges");
    KWinMouseEventSource mouse(*channel, screens, edges, runLoop);
    KWinAccessibilityPlatform platform(*channel, screens, mouse);
    const auto windows = platform.read(platform.applicationElement(77), AttributeName::windows);
    ASSERT_TRUE(windows.has_value());
    const Element window = std::get<std::vector<Element>>(*windows).at(0);
    int others = 0;
    const auto busy = g_idle_add(
        [](gpointer data) -> gboolean {
            ++*static_cast<int*>(data);
            return G_SOURCE_CONTINUE;
        },
        &others);
    EXPECT_FALSE(platform.write(window, AttributeName::position, AttributeValue(Point{5, 6})));
    EXPECT_EQ(others, 0) << "nothing else of the program runs meanwhile";
    g_source_remove(busy);
    EXPECT_EQ(platform.read(window, AttributeName::position), AttributeValue(Point{10, 20}));
}

TEST_F(KWinChannelTest, whatIsHeldBackIsNotedBeforeAndGivenBackByALaterRun) {
    const std::filesystem::path note = session.folder() / "edges";
    loadAndGreet();
    {
        KWinEdgeTiling edges(*channel, note);
        // It has missed the beginning; KWin tells again when it reads its settings.
        script->say("Report",
                    R"([{"event":"borders","borders":{"tiling":true,"maximize":false}}])");
        edges.hold(true);
        ASSERT_TRUE(serve([&] { return std::filesystem::exists(note); }));
        EXPECT_EQ(readFile(note), R"({"maximize":false,"tiling":true})");
        ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
        EXPECT_NE(script->orders[0].find(R"("isTaken":true)"), std::string::npos);
        // The run ends without a word.
        script.reset();
        kwin.reset();
        ASSERT_TRUE(serve([&] { return !channel->isAnswering(); }));
    }
    ASSERT_TRUE(std::filesystem::exists(note));
    calls.clear();
    channel.reset();
    startKWin();
    load();
    KWinEdgeTiling edges(*channel, note);
    script->say("Next", everything);  // Held back still: both are off as far as KWin knows.
    ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
    EXPECT_NE(script->orders[0].find(R"("isTaken":false)"), std::string::npos);
    EXPECT_NE(script->orders[0].find(R"("maximize":false)"), std::string::npos);
    EXPECT_NE(script->orders[0].find(R"("tiling":true)"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(note)) << "KWin may never get to it";
    script->say("Next", R"([{"event":"done","order":1,"result":"done"}])");
    EXPECT_TRUE(serve([&] { return !std::filesystem::exists(note); }));
}

TEST_F(KWinChannelTest, whatIsHeldBeforeKWinSpeaksOrIsSetAnewLaterIsHeldBackToo) {
    const std::filesystem::path note = session.folder() / "edges";
    load();
    KWinEdgeTiling edges(*channel, note);
    edges.hold(true);
    EXPECT_FALSE(std::filesystem::exists(note)) << "nobody knows yet what the user has set";
    script->say("Next", everything);
    ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
    EXPECT_NE(script->orders[0].find(R"("isTaken":true)"), std::string::npos);
    EXPECT_EQ(readFile(note), R"({"maximize":true,"tiling":true})");

    script->say("Next", R"([{"event":"borders","borders":{"tiling":false,"maximize":true}}])");
    ASSERT_TRUE(serve([&] { return script->orders.size() == 2; }));
    EXPECT_NE(script->orders[1].find(R"("isTaken":true)"), std::string::npos);
    EXPECT_NE(script->orders[1].find(R"("tiling":false)"), std::string::npos);
    EXPECT_EQ(readFile(note), R"({"maximize":true,"tiling":false})");
}

TEST_F(KWinChannelTest, whoeverGoesWithoutLettingGoGivesItBack) {
    const std::filesystem::path note = session.folder() / "edges";
    load();
    {
        KWinEdgeTiling edges(*channel, note);
        edges.hold(true);
        script->say("Next", everything);
        ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
        script->say("Next", R"([{"event":"done","order":1,"result":"done"}])");
        ASSERT_TRUE(serve([&] { return channel->resultOf(1).has_value(); }));
    }
    ASSERT_TRUE(serve([&] { return script->orders.size() == 2; }));
    EXPECT_NE(script->orders[1].find(R"("isTaken":false)"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(note)) << "nobody has said that it was done";
}

TEST_F(KWinChannelTest, whatIsTakenAgainBeforeItWasGivenBackStaysNoted) {
    const std::filesystem::path note = session.folder() / "edges";
    load();
    KWinEdgeTiling edges(*channel, note);
    script->say("Next", everything);
    ASSERT_TRUE(serve([&] { return channel->isAnswering(); }));
    edges.hold(true);
    edges.hold(false);
    edges.hold(true);
    script->say("Report", R"([{"event":"done","order":1,"result":"done"},)"
                          R"({"event":"done","order":2,"result":"done"}])");
    ASSERT_TRUE(serve([&] { return channel->resultOf(2).has_value(); }));
    EXPECT_TRUE(std::filesystem::exists(note));
}

TEST_F(KWinChannelTest, aScriptThatDoesNotComeToItsEndIsLeftToGiveEverythingBack) {
    loadAndGreet();
    calls.clear();
    channel.reset();
    ASSERT_TRUE(serve([&] { return script->orders.size() == 1; }));
    EXPECT_NE(script->orders[0].find(R"("do":"end")"), std::string::npos) << script->orders[0];
    runReady();
    EXPECT_TRUE(calls.empty());
}

TEST_F(KWinChannelTest, aScriptThatHasNotSaidAnythingIsTakenOut) {
    load();
    calls.clear();
    channel.reset();
    EXPECT_TRUE(serve([&] { return calls == std::vector<std::string>{"unloadScript"}; }));
}

}  // namespace
}  // namespace lumatile::desktop
