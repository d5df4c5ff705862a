#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ports/DesktopSession.h"

namespace lumatile {

class RunLoop;
class SystemLog;

/// What is known of a session before the program works on it.
struct SessionFacts {
    /// Names the desktop among those that share a message bus or a user: as in $DISPLAY.
    std::string desktop;

    /// What the toolkit has to find in the environment when its application object is made, unless
    /// the user has said otherwise: names and values.
    std::vector<std::pair<std::string, std::string>> toolkitEnvironment;

    /// What the toolkit's own word begins with when its connection to the window system breaks;
    /// empty where it has none. It ends the program then.
    std::string toolkitFarewell;

    /// What cannot be done on this desktop, a sentence each, for the log and for the user.
    std::vector<std::string> shortcomings;

    /// The sentence for the log when the window system is gone.
    std::string lost;

    /// Whether the desktop starts it anew then.
    bool comesBack = false;
};

/// A window system that is there. Finding it has changed nothing on the desktop, so that a program
/// which runs there already is left alone.
class PresentSession {
public:
    PresentSession() = default;
    PresentSession(const PresentSession&) = delete;
    PresentSession& operator=(const PresentSession&) = delete;
    virtual ~PresentSession() = default;

    virtual const SessionFacts& facts() const = 0;

    /// Begins to work on it. Once, after the toolkit's application object has been made.
    /// @param runLoop and `log` outlive what is returned
    virtual DesktopSession enter(RunLoop& runLoop, SystemLog& log) = 0;
};

}  // namespace lumatile
