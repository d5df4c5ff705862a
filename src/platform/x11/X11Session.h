#pragma once

#include <memory>
#include <string_view>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Texts.h"
#include "ports/PresentSession.h"

namespace lumatile {

/// A desktop whose windows an X server shows; also the part of a Wayland desktop that one beside it
/// shows. Everything goes over one connection.
class X11Session final : public PresentSession {
public:
    /// The sentence for the log where there is none.
    static constexpr std::string_view absence = X11Texts::noServer;

    /// @return null when the environment names no X server, or none answers there
    static std::unique_ptr<PresentSession> find();

    const SessionFacts& facts() const override { return facts_; }
    DesktopSession enter(RunLoop& runLoop, SystemLog& log) override;

private:
    struct Adapters;

    explicit X11Session(std::unique_ptr<X11Connection> connection);

    std::unique_ptr<X11Connection> connection_;
    bool isGuest_;  ///< Of a Wayland session.
    SessionFacts facts_;
};

}  // namespace lumatile
