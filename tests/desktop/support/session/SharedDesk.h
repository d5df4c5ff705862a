#pragma once

#include <memory>
#include <string>

#include "tests/desktop/support/session/SessionKinds.h"

namespace lumatile::desktop {

/// A desktop that serves one case of a suite after the other: to start one takes longer than most
/// cases.
class SharedDesk {
public:
    SharedDesk() = default;
    SharedDesk(const SharedDesk&) = delete;
    SharedDesk& operator=(const SharedDesk&) = delete;
    ~SharedDesk() = default;

    /// The one of this session, started where there is none, or one of another session or setup.
    /// @param setupName what tells the setup from the suite's others
    SessionDesk& of(const SessionKind& session, const std::string& setupName,
                    const SessionDesk::Setup& setup);

    /// Ends the program and the desktop, and expects the program to end without complaint. After a
    /// case that has failed, so that the next one does not suffer from it, and after the last.
    void drop();

private:
    std::unique_ptr<SessionDesk> desk_;
    std::string servedSession_;
    std::string servedSetup_;
};

/// Cases that share a desktop of a session.
class OnSharedSession : public OnEverySession {
protected:
    static void TearDownTestSuite() { shared.drop(); }
    void SetUp() override { desk_ = &shared.of(GetParam(), {}, setup()); }
    void TearDown() override {
        if (HasFailure()) {
            shared.drop();
        }
    }

    /// The same for all cases of a suite.
    virtual SessionDesk::Setup setup() const { return {}; }

    SessionDesk& desk() { return *desk_; }

private:
    static inline SharedDesk shared;

    SessionDesk* desk_ = nullptr;
};

}  // namespace lumatile::desktop
