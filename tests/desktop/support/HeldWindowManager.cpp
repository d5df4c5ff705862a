#include "tests/desktop/support/HeldWindowManager.h"

#include <signal.h>
#include <xcb/xcbext.h>

#include <chrono>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

namespace {

// Far longer than a server needs that nobody holds.
constexpr std::chrono::milliseconds answerTime{500};

constexpr int enoughAnswers = 20;

bool answersSoon(XClient& client) {
    const xcb_get_input_focus_cookie_t question = xcb_get_input_focus(client.connection());
    xcb_flush(client.connection());
    void* reply = nullptr;
    const bool answered = XClient::waitUntil(
        [&] {
            return xcb_poll_for_reply(client.connection(), question.sequence, &reply, nullptr) != 0;
        },
        Deadline::in(answerTime));
    const XReply<void> owned(reply);
    if (!answered) {
        xcb_discard_reply(client.connection(), question.sequence);
    }
    return answered;
}

}  // namespace

HeldWindowManager::HeldWindowManager(const WindowManager& manager, XClient& client)
    : pid_(manager.pid()) {
    const Deadline deadline = Deadline::usual();
    client.roundTrip();
    while (!deadline.isOver()) {
        kill(pid_, SIGSTOP);
        // A request to hold the server that was on its way is carried out within a few rounds.
        int answers = 0;
        while (answers < enoughAnswers && answersSoon(client)) {
            ++answers;
        }
        if (answers == enoughAnswers) {
            return;
        }
        kill(pid_, SIGCONT);
        client.roundTrip();
    }
    throw DesktopError("the window manager holds the server whenever it is looked at");
}

void HeldWindowManager::letGo() {
    if (pid_ != 0) {
        kill(pid_, SIGCONT);
        pid_ = 0;
    }
}

}  // namespace lumatile::desktop
