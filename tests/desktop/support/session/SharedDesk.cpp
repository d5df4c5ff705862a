#include "tests/desktop/support/session/SharedDesk.h"

namespace lumatile::desktop {

SessionDesk& SharedDesk::of(const SessionKind& session, const std::string& setupName,
                            const SessionDesk::Setup& setup) {
    if (!desk_ || servedSession_ != session.name || servedSetup_ != setupName) {
        drop();
        desk_ = session.start(setup);
        servedSession_ = session.name;
        servedSetup_ = setupName;
    }
    return *desk_;
}

void SharedDesk::drop() {
    if (desk_) {
        EXPECT_EQ(desk_->endProgram(), "");
        desk_.reset();
    }
}

}  // namespace lumatile::desktop
