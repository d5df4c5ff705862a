#pragma once

#include <functional>
#include <utility>

#include "ports/LoginItem.h"
#include "ports/SystemLog.h"

namespace lumatile {

/// Whether the session starts this program at login, as it was last read.
class LaunchAtLogin {
public:
    /// Reads nothing yet. Both outlive it.
    LaunchAtLogin(LoginItem& item, SystemLog& log) : item_(item), log_(log) {}
    LaunchAtLogin(const LaunchAtLogin&) = delete;
    LaunchAtLogin& operator=(const LaunchAtLogin&) = delete;
    ~LaunchAtLogin() = default;

    /// False until the first `refresh`, and for an item that is registered but does not start.
    bool isEnabled() const { return isEnabled_; }

    /// What to call after `isEnabled` has become another; not called when it stays the same.
    void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

    /// Reads the state.
    void refresh();

    /// Registers or unregisters, and reads what became of it. A failure is logged.
    void setEnabled(bool enabled);

private:
    LoginItem& item_;
    SystemLog& log_;
    std::function<void()> changed_;
    bool isEnabled_ = false;
};

}  // namespace lumatile
