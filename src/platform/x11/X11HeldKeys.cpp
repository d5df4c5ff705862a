#include "platform/x11/X11HeldKeys.h"

namespace lumatile {

bool X11HeldKeys::press(KeyCode key, Milliseconds time) {
    // Unsigned differences are right across the wrap of the server's clock.
    std::erase_if(held_, [&](const auto& entry) {
        return time - entry.second.lastPress > repeat_.longestGap;
    });
    const auto found = held_.find(key);
    const bool isRepeat =
        found != held_.end() && (!found->second.released || found->second.releaseTime == time);
    if (!held_.contains(holder_)) {
        holder_ = key;
    }
    held_[key] = Held{time, false, 0};
    return !isRepeat;
}

void X11HeldKeys::release(KeyCode key, Milliseconds time) {
    const auto found = held_.find(key);
    if (found == held_.end()) {
        return;
    }
    if (!repeat_.withoutReleases) {
        found->second.released = true;
        found->second.releaseTime = time;
        return;
    }
    if (key == holder_) {
        held_.clear();
    } else {
        held_.erase(found);
    }
}

}  // namespace lumatile
