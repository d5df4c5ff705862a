#include "tests/desktop/support/kwin/SessionWait.h"

#include <glib.h>

#include <array>
#include <vector>

#include "tests/desktop/support/MainLoop.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

/// What the main loop of GLib waits for, the descriptor by which its threads wake it among them.
std::vector<int> watchedByMainLoop() {
    std::vector<int> descriptors;
    GMainContext* context = g_main_context_default();
    if (g_main_context_acquire(context) == FALSE) {
        return descriptors;
    }
    int priority = 0;
    g_main_context_prepare(context, &priority);
    std::array<GPollFD, 16> watched{};
    int timeout = 0;
    const int count = g_main_context_query(context, priority, &timeout, watched.data(),
                                           static_cast<int>(watched.size()));
    for (int index = 0; index < count && index < static_cast<int>(watched.size()); ++index) {
        descriptors.push_back(watched[static_cast<std::size_t>(index)].fd);
    }
    g_main_context_release(context);
    return descriptors;
}

/// Has the main loop of GLib belong to this thread: only then do the library's threads wake it when
/// something has arrived.
class OwnMainLoop {
public:
    OwnMainLoop() : isOwn_(g_main_context_acquire(nullptr) != FALSE) {}
    OwnMainLoop(const OwnMainLoop&) = delete;
    OwnMainLoop& operator=(const OwnMainLoop&) = delete;
    ~OwnMainLoop() {
        if (isOwn_) {
            g_main_context_release(nullptr);
        }
    }

private:
    bool isOwn_;
};

}  // namespace

bool waitInSession(const std::function<bool()>& condition, Deadline deadline) {
    const OwnMainLoop own;
    return XClient::waitUntil(
        [&] {
            runReady();
            return condition();
        },
        deadline, watchedByMainLoop());
}

}  // namespace lumatile::desktop
