#include "platform/kwin/KWinMirror.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

namespace lumatile {

namespace {

/// KWin does not know the process of every X11 program. The windows of one class are one
/// application then, under a number that no process has, so that they are shifted or left alone as
/// others are.
Pid strangersOwner(const KWinWindowRecord& window) {
    constexpr std::size_t numbers = std::size_t{1} << 30U;
    const std::size_t hash = std::hash<std::string>{}(window.application.value_or(window.id));
    return -1 - static_cast<Pid>(hash % numbers);
}

}  // namespace

void KWinMirror::apply(const KWinEvent& event) {
    if (const auto* everything = std::get_if<KWinEverything>(&event)) {
        clear();
        for (const KWinWindowRecord& window : everything->windows) {
            take(window);
        }
        screens_ = everything->screens;
        active_ = everything->active;
    } else if (const auto* changed = std::get_if<KWinWindowChanged>(&event)) {
        take(changed->window);
    } else if (const auto* gone = std::get_if<KWinWindowGone>(&event)) {
        windows_.erase(gone->id);
        std::erase(order_, gone->id);
    } else if (const auto* activated = std::get_if<KWinActivated>(&event)) {
        active_ = activated->id;
        if (active_) {
            toFront(*active_);
        }
    } else if (const auto* screens = std::get_if<KWinScreensChanged>(&event)) {
        screens_ = screens->screens;
    }
}

void KWinMirror::clear() { *this = {}; }

KWinWindow* KWinMirror::find(std::string_view id) {
    const auto found = windows_.find(std::string(id));
    return found != windows_.end() ? &found->second : nullptr;
}

std::vector<KWinWindow*> KWinMirror::windows() {
    std::vector<KWinWindow*> result;
    result.reserve(order_.size());
    for (const std::string& id : order_) {
        result.push_back(find(id));
    }
    return result;
}

KWinWindow* KWinMirror::active() { return active_ ? find(*active_) : nullptr; }

void KWinMirror::take(KWinWindowRecord record) {
    if (record.pid <= 0) {
        record.pid = strangersOwner(record);
    }
    const auto found = windows_.find(record.id);
    if (found == windows_.end()) {
        // The script's own bound, once more: memory goes by the windows that there can be.
        if (windows_.size() < KWinReport::mostWindows) {
            order_.push_back(record.id);
            std::string id = record.id;
            windows_.emplace(std::move(id), KWinWindow{std::move(record), {}, {}, 1, {}});
        }
        return;
    }
    KWinWindow& window = found->second;
    if (window.record.frame != record.frame) {
        ++window.frames;
    }
    window.record = std::move(record);
}

void KWinMirror::toFront(const std::string& id) {
    const auto place = std::find(order_.begin(), order_.end(), id);
    if (place != order_.end()) {
        std::rotate(order_.begin(), place, place + 1);
    }
}

}  // namespace lumatile
