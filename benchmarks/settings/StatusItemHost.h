#pragma once

#include <gio/gio.h>

#include <string>

#include "tests/desktop/support/MockService.h"

namespace lumatile::benchmark {

/// A bar on a session bus that shows status items, as far as a program can tell.
class StatusItemHost {
public:
    /// @param address of the bus
    explicit StatusItemHost(const std::string& address);

    /// Waits until a program has registered an item and handed out its picture, which is when a bar
    /// shows it.
    /// @throws DesktopError when none comes
    void waitForItem();

    /// No item is there.
    void forget() { item_.clear(); }

private:
    void answer(const desktop::MockService::Call& call);

    std::string address_;
    std::string item_;  ///< The bus name of the item; empty for none.
    desktop::MockService watcher_;
};

}  // namespace lumatile::benchmark
