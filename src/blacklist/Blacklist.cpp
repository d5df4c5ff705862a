#include "blacklist/Blacklist.h"

namespace lumatile {

const std::set<std::string>& Blacklist::factory() {
    static const std::set<std::string> identifiers = {
        "com.apple.loginwindow",
        "com.apple.systempreferences",
        "com.apple.ScreenSaver.Engine",
    };
    return identifiers;
}

bool Blacklist::contains(const std::optional<std::string>& bundleID) const {
    return bundleID && (factory().contains(*bundleID) || user_.contains(*bundleID));
}

void Blacklist::addToUserList(const std::string& bundleID) { user_.insert(bundleID); }

void Blacklist::removeFromUserList(const std::string& bundleID) { user_.erase(bundleID); }

}  // namespace lumatile
