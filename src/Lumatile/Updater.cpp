#include "Lumatile/Updater.h"

namespace lumatile {

UpdateController& Updater::controller() {
    if (!controller_) {
        controller_ = make_();
        controller_->start();
    }
    return *controller_;
}

void Updater::checkForUpdates() {
    activate_();
    controller().checkForUpdates();
}

}  // namespace lumatile
