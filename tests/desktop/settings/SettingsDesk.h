#pragma once

#include <memory>
#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {

/// The settings window in a program of its own on a private desktop, and the user's hands on it.
class SettingsDesk {
public:
    /// @param scale the toolkit's variables: "QT_SCALE_FACTOR" …
    SettingsDesk(WindowManager::Kind kind, WindowManager::Options options,
                 const Environment& scale = {});
    SettingsDesk(const SettingsDesk&) = delete;
    SettingsDesk& operator=(const SettingsDesk&) = delete;
    ~SettingsDesk();

    TestDesktop& desktop() { return desktop_; }

    void tell(const std::string& line);

    /// Waits until the program says so.
    bool hears(const std::string& line);

    /// Clicks on the control of that name.
    /// @return false when there is none
    bool click(const std::string& name);

private:
    std::string said();

    TestDesktop desktop_;
    int input_ = -1;
    ChildProcess process_;
    std::size_t heard_ = 0;  ///< How much of the output has been looked at.
};

}  // namespace lumatile::desktop
