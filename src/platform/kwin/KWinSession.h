#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/kwin/KWinTexts.h"
#include "platform/wayland/WaylandConnection.h"
#include "ports/PresentSession.h"

namespace lumatile {

/// A Plasma desktop under Wayland. Its windows are known through a script inside KWin, overlays and
/// idle time over a Wayland connection of the program's own.
class KWinSession final : public PresentSession {
public:
    /// The sentence for the log where there is none.
    static constexpr std::string_view absence = KWinTexts::noSession;

    /// @return null where there is no Wayland compositor, or no KWin on the session's bus
    static std::unique_ptr<PresentSession> find();

    const SessionFacts& facts() const override { return facts_; }
    DesktopSession enter(RunLoop& runLoop, SystemLog& log) override;

private:
    struct Adapters;

    explicit KWinSession(std::unique_ptr<WaylandConnection> connection);

    std::unique_ptr<WaylandConnection> connection_;
    SessionFacts facts_;
};

}  // namespace lumatile
