#pragma once

#include <optional>
#include <set>
#include <string>

namespace lumatile {

/// Names the applications whose windows are never touched, by exact, case-sensitive identifier.
class Blacklist {
public:
    /// The identifiers fixed in the program: applications that own full-screen or special windows.
    static const std::set<std::string>& factory();

    /// False for an application without an identifier.
    bool contains(const std::optional<std::string>& bundleID) const;

    /// Adds to the user's own set, which lasts as long as the process.
    void addToUserList(const std::string& bundleID);

    /// Takes out of the user's own set; the factory set cannot be changed.
    void removeFromUserList(const std::string& bundleID);

private:
    std::set<std::string> user_;
};

}  // namespace lumatile
