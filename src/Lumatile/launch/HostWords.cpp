#include "Lumatile/launch/HostWords.h"

namespace lumatile {

HostDesktop HostWords::host() { return known().host; }

std::string HostWords::apply(std::string_view text) { return known().vocabulary.apply(text); }

const HostWords::Known& HostWords::known() {
    if (!known_) {
        const HostDesktop host = HostDesktop::find(sessionNames_, windowManagerName_());
        known_ = Known{host, Vocabulary::of(host)};
    }
    return *known_;
}

}  // namespace lumatile
