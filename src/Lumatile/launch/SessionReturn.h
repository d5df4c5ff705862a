#pragma once

#include <memory>
#include <span>
#include <string>

#include "Lumatile/launch/SessionChoice.h"
#include "platform/freedesktop/process/TerminationSignals.h"

namespace lumatile {

/// A window system that the desktop starts anew after a crash. The toolkit does not live on without
/// it, so the program begins again, as the same process, and waits for it.
struct SessionReturn {
    SessionReturn() = delete;

    /// The session to work on: the first of `kinds` that is present, or, where the program has
    /// begun again, the one that was lost, as soon as it is back.
    /// @param termination whose signals end the waiting
    /// @return null when none is present, or the lost one did not come back
    static std::unique_ptr<PresentSession> await(std::span<const SessionKind> kinds,
                                                 const TerminationSignals& termination,
                                                 SystemLog& log);

    /// Begins the program again. Returns only where that cannot be done.
    /// @param desktop of the lost session, as in `SessionFacts`
    static void beginAgain(const std::string& desktop);
};

}  // namespace lumatile
