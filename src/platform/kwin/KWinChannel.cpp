#include "platform/kwin/KWinChannel.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/UUID.h"
#include "platform/kwin/KWinAgentScript.h"

namespace lumatile {

namespace {

constexpr const char* service = "org.kde.KWin";
constexpr const char* plugin = "lumatile";
constexpr const char* interfaceName = "org.lumatile.KWinScript";
constexpr const char* description = R"(<node><interface name="org.lumatile.KWinScript">
  <method name="Report"><arg type="s" direction="in"/></method>
  <method name="Next"><arg type="s" direction="in"/><arg type="s" direction="out"/></method>
</interface></node>)";

// Milliseconds in which KWin answers about scripts. It reads the file before.
constexpr int loadPatience = 5000;

// Seconds. The script takes the program for dead after 20 s; each question wakes both up.
constexpr double questionGrowsOld = 14;
// The script asks again as soon as it has been answered; KWin may be busy for a moment.
constexpr double questionIsOverdue = 3;
constexpr double helloIsOverdue = 5;
// At the end of the program, together no longer than a write: for the script's last answer, and
// (milliseconds) for KWin's, which unloads it without being waited for as well.
constexpr double goodbye = 0.2;
constexpr int unloadPatience = 50;
constexpr double firstRetry = 1;
constexpr double longestRetry = 30;

// Of texts that have arrived.
constexpr auto longestTurn = std::chrono::milliseconds(10);

// More results than anybody waits for at once: one for each window.
constexpr std::size_t mostResults = KWinReport::mostWindows;

// Orders that KWin carries out in one go. It draws and hears nothing meanwhile.
constexpr std::ptrdiff_t mostTogether = 16;

LoneBusConnection::Method scripting(const char* name) {
    return {service, "/Scripting", "org.kde.kwin.Scripting", name};
}

std::filesystem::path runtimeFolder() {
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    return folder != nullptr && *folder != '\0' ? std::filesystem::path(folder)
                                                : std::filesystem::temp_directory_path();
}

}  // namespace

KWinChannel::KWinChannel(std::string address, RunLoop& runLoop)
    : address_(std::move(address)), runLoop_(runLoop), retryAfter_(firstRetry) {
    start();
}

KWinChannel::~KWinChannel() { unload(); }

KWinMirror& KWinChannel::mirror() {
    if (connection_) {
        connection_->dispatch();
    }
    return mirror_;
}

void KWinChannel::awaitAnswer(double seconds) {
    waitUntil([this] { return state_ != State::starting; }, seconds);
}

void KWinChannel::start() {
    retry_.reset();
    connection_ = LoneBusConnection::open(address_, service);
    if (!connection_) {
        setState(State::absent);
        retryLater();
        return;
    }
    connection_->whenLost([this] {
        // The connection is in the middle of telling this.
        runLoop_.post(lifeline_.guard([this] { lose(State::absent); }));
        setState(State::absent);
    });
    // One that has refused goes on doing so until it answers: the user reads why meanwhile.
    if (state_ != State::refused) {
        setState(State::starting);
    }
    load();
}

void KWinChannel::load() {
    const std::string token = UUID::random().text();
    const std::string path = "/org/lumatile/KWin/" + [&token] {
        std::string name = token;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    }();
    scriptFile_ = runtimeFolder() / ("lumatile-kwin-" + token + ".js");
    const std::string head = "const PEER = {service: \"" + connection_->uniqueName() +
                             "\", path: \"" + path + "\", name: \"" + interfaceName + "\"};\n";
    if (AtomicFile::replace(scriptFile_, head + std::string(KWinAgentScript::text))) {
        lose(State::refused);
        return;
    }
    connection_->serve(path, description,
                       [this](const LoneBusConnection::Call& call) { called(call); });
    // The last run may have died and left its script.
    connection_->call(scripting("unloadScript"), g_variant_new("(s)", plugin), loadPatience,
                      [](GVariant*) {});
    connection_->call(
        scripting("loadScript"), g_variant_new("(ss)", scriptFile_.c_str(), plugin), loadPatience,
        lifeline_.guard([this](GVariant* reply) {
            gint32 number = -1;
            if (reply != nullptr && g_variant_is_of_type(reply, G_VARIANT_TYPE("(i)")) != 0) {
                g_variant_get(reply, "(i)", &number);
            }
            begin(number >= 0);
        }));
}

void KWinChannel::begin(bool isLoaded) {
    if (!isLoaded || !connection_) {
        // The connection is in the middle of telling this, and somebody may be waiting for it.
        runLoop_.post(lifeline_.guard([this] { lose(State::refused); }));
        setState(State::refused);
        return;
    }
    connection_->call(scripting("start"), nullptr, loadPatience, [](GVariant*) {});
    patience_ = runLoop_.repeat(helloIsOverdue, [this] { lose(State::refused); });
}

/// A script that is still loaded is silent and not worth waiting for: the next start takes it out.
void KWinChannel::lose(State next) {
    patience_.reset();
    question_ = nullptr;
    untaken_.clear();
    orders_.clear();
    results_.clear();
    connection_.reset();
    removeScript();
    mirror_.clear();
    setState(next);
    retryLater();
}

void KWinChannel::setState(State state) {
    if (std::exchange(state_, state) != state) {
        states_.notify();
    }
}

void KWinChannel::retryLater() {
    retry_ = runLoop_.repeat(retryAfter_, [this] { start(); });
    retryAfter_ = std::min(retryAfter_ * 2, longestRetry);
}

void KWinChannel::called(const LoneBusConnection::Call& call) {
    const char* text = nullptr;
    g_variant_get(call.arguments, "(&s)", &text);
    ++heard_;
    isSilent_ = false;
    untaken_.emplace_back(std::string(text));
    if (call.method != "Next") {
        g_dbus_method_invocation_return_value(call.invocation, nullptr);
    } else {
        if (question_ != nullptr) {
            answerNow();  // A script that was taken for dead. It has what there is.
        }
        question_ = call.invocation;
        patience_ = runLoop_.repeat(questionGrowsOld, [this] { answerNow(); });
    }
    takeIn();
    if (!orders_.empty()) {
        answerNow();
    }
}

/// The bus library hands everything over at once that has arrived, call by call. However much that
/// is, the rest of the program has its turns.
void KWinChannel::takeIn() {
    if (isTaking_ || isTakingLater_) {
        return;
    }
    const Clock::time_point now = Clock::now();
    if (now - turn_ > 2 * longestTurn) {
        turn_ = now;
    }
    takeWhile([this] { return Clock::now() - turn_ < longestTurn; });
    if (Clock::now() - turn_ >= longestTurn) {
        isTakingLater_ = true;
        runLoop_.post(lifeline_.guard([this] { takeInAnew(); }));
    }
}

void KWinChannel::takeWhile(const std::function<bool()>& mayGoOn) {
    if (isTaking_) {
        return;
    }
    isTaking_ = true;
    while (!untaken_.empty() && mayGoOn()) {
        const auto next = std::move(untaken_.front());
        untaken_.pop_front();
        if (const auto* text = std::get_if<std::string>(&next)) {
            take(*text);
        } else {
            std::get<std::function<void()>>(next)();
        }
    }
    isTaking_ = false;
}

void KWinChannel::inTurn(std::function<void()> work) {
    untaken_.emplace_back(std::move(work));
    takeIn();
}

void KWinChannel::takeInAnew() {
    isTakingLater_ = false;
    turn_ = Clock::now();
    takeIn();
}

void KWinChannel::take(const std::string& text) {
    const auto events = KWinReport::parse(text);
    if (!events) {
        return;
    }
    for (const KWinEvent& event : *events) {
        if (state_ != State::answering) {
            if (!std::holds_alternative<KWinEverything>(event)) {
                continue;
            }
            retryAfter_ = firstRetry;
            removeScript();  // KWin has read it.
            mirror_.apply(event);
            setState(State::answering);
        } else {
            mirror_.apply(event);
        }
        if (const auto* done = std::get_if<KWinDone>(&event)) {
            if (results_.size() == mostResults) {
                results_.erase(results_.begin());
            }
            results_[done->order] = done->result;
        }
        events_.notify(event);
    }
}

void KWinChannel::answerNow() {
    if (question_ == nullptr) {
        return;
    }
    const auto end =
        orders_.begin() + std::min(mostTogether, static_cast<std::ptrdiff_t>(orders_.size()));
    const std::string text = kwinOrdersText({orders_.begin(), end});
    orders_.erase(orders_.begin(), end);
    g_dbus_method_invocation_return_value(std::exchange(question_, nullptr),
                                          g_variant_new("(s)", text.c_str()));
    expectQuestion();
}

void KWinChannel::expectQuestion() {
    patience_ = runLoop_.repeat(questionIsOverdue, [this] { lose(State::absent); });
}

std::uint64_t KWinChannel::give(KWinOrder order) {
    if (state_ != State::answering) {
        return 0;
    }
    orders_.push_back({++lastOrder_, std::move(order)});
    answerNow();
    return lastOrder_;
}

std::optional<KWinDone::Result> KWinChannel::resultOf(std::uint64_t number) const {
    const auto found = results_.find(number);
    return found != results_.end() ? std::optional(found->second) : std::nullopt;
}

bool KWinChannel::waitUntil(const std::function<bool()>& isDone, double seconds) {
    if (!connection_) {
        return isDone();
    }
    // A KWin that hangs holds the program up once, and not for every window.
    const Clock::time_point deadline =
        Clock::now() +
        (isSilent_
             ? Clock::duration::zero()
             : std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds)));
    const std::uint64_t heardBefore = heard_;
    // What is waited for may be behind much else, and no later turn comes meanwhile.
    const bool done = connection_->waitUntil(
        [&] {
            takeWhile([&] { return !isDone() && Clock::now() < deadline; });
            return isDone();
        },
        deadline);
    takeIn();
    isSilent_ = !done && heard_ == heardBefore;
    return done;
}

void KWinChannel::unload() {
    if (connection_ && !connection_->isLost()) {
        const std::uint64_t last = give(KWinEndOrder{});
        // One that has not come to it by then gives everything back when nobody answers it any
        // more, which it could not if it were taken out.
        if (last == 0 || waitUntil([this, last] { return resultOf(last).has_value(); }, goodbye)) {
            connection_->callNow(scripting("unloadScript"), g_variant_new("(s)", plugin),
                                 unloadPatience);
        }
    }
    removeScript();
}

void KWinChannel::removeScript() {
    if (!scriptFile_.empty()) {
        std::error_code ignored;
        std::filesystem::remove(std::exchange(scriptFile_, {}), ignored);
    }
}

}  // namespace lumatile
