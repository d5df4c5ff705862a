#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/desktop/support/MockService.h"

namespace lumatile::desktop {

/// Stands in for KWin on a private bus: it takes the program's script and gives out global
/// shortcuts. It lives in a thread of its own, since the program waits for its answers.
class FakeShortcutService {
public:
    /// Returns when it is on the bus.
    /// @param takesScripts false: it refuses every script, as where KWin is locked
    explicit FakeShortcutService(const std::string& address, bool takesScripts = true);
    FakeShortcutService(const FakeShortcutService&) = delete;
    FakeShortcutService& operator=(const FakeShortcutService&) = delete;
    ~FakeShortcutService();

    /// An action that has a combination.
    struct Action {
        std::string title;
        std::string programName;
        std::int32_t key = 0;
    };
    /// By "program/action".
    using Actions = std::map<std::string, Action>;

    /// Whether questions about shortcuts stay unanswered. Those that wait are answered, in their
    /// order, when it is over.
    void setSilent(bool isSilent);

    /// Whether every question about shortcuts fails at once, as where the service is not there.
    void setFailing(bool isFailing);

    /// Gives an action to a program without a word to anybody.
    void give(const std::string& program, const std::string& name, const Action& action);

    /// Takes it away again, without a word too.
    void takeAway(const std::string& program, const std::string& name);

    /// Gives an action another combination as Plasma's page does: everybody is told.
    void change(const std::string& program, const std::string& name, std::int32_t key);

    /// Tells the program that its action's combination was pressed.
    void press(const std::string& name);

    Actions actions();

    /// The combination of an action of the program; 0 for none.
    std::int32_t keyOf(const std::string& name);

    /// What has been asked since the last `forget`, shortcuts alone.
    std::vector<std::string> asked();
    void forget();

    /// Waits until so much has been asked.
    bool waitUntilAsked(std::size_t count);

private:
    void handle(const MockService::Call& call);
    void handleScript(const MockService::Call& call);
    void answer(const MockService::Call& call);
    void askProgram(const char* text);
    void runInside(std::function<void()> work);

    struct ContextRelease {
        void operator()(GMainContext* context) const { g_main_context_unref(context); }
    };

    std::unique_ptr<GMainContext, ContextRelease> context_{g_main_context_new()};
    MockService* service_ = nullptr;  // In the thread alone, as all down to the lock.
    bool takesScripts_;
    bool isOver_ = false;
    bool isSilent_ = false;
    bool isFailing_ = false;
    std::vector<MockService::Call> waiting_;
    std::string program_;  // Its name on the bus, and its object.
    std::string object_;
    std::mutex lock_;
    std::condition_variable wasAsked_;
    Actions actions_;
    std::vector<std::string> asked_;
    std::thread thread_;
};

}  // namespace lumatile::desktop
