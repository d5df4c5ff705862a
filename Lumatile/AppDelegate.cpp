#include "Lumatile/AppDelegate.h"

namespace lumatile {

AppDelegate::AppDelegate(const Platform& platform)
    : app_(std::make_shared<ApplicationConductor>(platform)) {}

void AppDelegate::applicationDidFinishLaunching() {
    app_->createStatusMenu();
    app_->setAccessibilityGranted();
    app_->startFeatures();
}

void AppDelegate::applicationWillTerminate() { app_->shutdown(); }

}  // namespace lumatile
