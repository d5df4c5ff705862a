#pragma once

namespace lumatile {

/// Port: what looks for newer versions of this program.
class UpdateController {
public:
    virtual ~UpdateController() = default;

    /// From now on checks by itself, as far as it is to. Once.
    virtual void start() = 0;

    /// Looks now, because the user asked, and shows the user what came of it either way.
    virtual void checkForUpdates() = 0;

    virtual bool automaticallyChecksForUpdates() = 0;
    virtual void setAutomaticallyChecksForUpdates(bool checks) = 0;
};

}  // namespace lumatile
