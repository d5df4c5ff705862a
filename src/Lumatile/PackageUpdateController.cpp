#include "Lumatile/PackageUpdateController.h"

#include <charconv>
#include <cstdint>
#include <system_error>
#include <utility>

#include "Lumatile/UpdateTexts.h"

namespace lumatile {

namespace {

/// Whole seconds as stored; absent for anything else.
std::optional<double> storedTime(const std::optional<Bytes>& stored) {
    if (!stored) {
        return std::nullopt;
    }
    std::int64_t seconds = 0;
    const char* end = stored->data() + stored->size();
    const auto [rest, error] = std::from_chars(stored->data(), end, seconds);
    if (error != std::errc() || rest != end) {
        return std::nullopt;
    }
    return static_cast<double>(seconds);
}

}  // namespace

void PackageUpdateController::start() {
    isStarted_ = true;
    runTimer();
}

void PackageUpdateController::runTimer() {
    timer_.reset();
    if (isStarted_ && automaticallyChecksForUpdates()) {
        timer_ = parts_.runLoop.repeat(interval, [this] { tick(); });
    }
}

bool PackageUpdateController::automaticallyChecksForUpdates() {
    return parts_.preferences.boolean(automaticKey).value_or(true);
}

void PackageUpdateController::setAutomaticallyChecksForUpdates(bool checks) {
    if (checks == automaticallyChecksForUpdates()) {
        return;
    }
    parts_.preferences.setBoolean(automaticKey, checks);
    unannounced_.reset();
    runTimer();
}

void PackageUpdateController::tick() {
    // Another process may have switched it off.
    if (!automaticallyChecksForUpdates() || isAsking_) {
        return;
    }
    if (!unannounced_ && !isDue()) {
        return;
    }
    if (parts_.isAnyWindowFullScreen()) {
        return;
    }
    announce();
    if (isDue()) {
        ask();
    }
}

bool PackageUpdateController::isDue() {
    const auto last = storedTime(parts_.preferences.bytes(lastCheckKey));
    const double now = parts_.runLoop.now();
    // A time to come is that of a clock which was wrong then.
    return !last || *last > now || now - *last >= day;
}

void PackageUpdateController::noteCheck() {
    parts_.preferences.setBytes(lastCheckKey,
                                std::to_string(static_cast<std::int64_t>(parts_.runLoop.now())));
}

void PackageUpdateController::checkForUpdates() {
    userWaits_ = true;
    if (!isAsking_) {
        ask();
    }
}

void PackageUpdateController::ask() {
    isAsking_ = true;
    // Noted before the answer, so that a service which never gives one is not asked more often.
    noteCheck();
    parts_.source.ask(lifeline_.guard([this](const PackageAnswer& given) { answer(given); }));
}

void PackageUpdateController::answer(const PackageAnswer& answer) {
    isAsking_ = false;
    if (answer.state == PackageAnswer::State::failed) {
        parts_.log.write("Updater", "failed to look for updates: " + answer.reason);
    }
    if (std::exchange(userWaits_, false)) {
        unannounced_.reset();
        show(answer);
        return;
    }
    if (answer.state == PackageAnswer::State::updateAvailable && answer.newVersion != announced_) {
        unannounced_ = answer.newVersion;
        // A window may have become full screen while the service was thinking.
        if (!parts_.isAnyWindowFullScreen()) {
            announce();
        }
    }
}

void PackageUpdateController::show(const PackageAnswer& answer) {
    const std::string newVersion = answer.newVersion;
    const auto noAction = [] {};
    switch (answer.state) {
        case PackageAnswer::State::updateAvailable:
            parts_.panel.show(availableNotice(newVersion),
                              lifeline_.guard([this, newVersion] { act(newVersion); }));
            return;
        case PackageAnswer::State::upToDate:
            parts_.panel.show(UpdateTexts::upToDate(parts_.version), noAction);
            return;
        case PackageAnswer::State::noPackage:
            parts_.panel.show(UpdateTexts::noPackage(parts_.version), noAction);
            return;
        case PackageAnswer::State::noService:
            parts_.panel.show(UpdateTexts::noService(parts_.version), noAction);
            return;
        case PackageAnswer::State::failed:
            parts_.panel.show(UpdateTexts::failed(parts_.version), noAction);
            return;
    }
}

void PackageUpdateController::announce() {
    if (!unannounced_) {
        return;
    }
    announced_ = *std::exchange(unannounced_, std::nullopt);
    parts_.notifications.show(
        availableNotice(announced_),
        lifeline_.guard([this, newVersion = announced_] { act(newVersion); }));
}

Notice PackageUpdateController::availableNotice(const std::string& newVersion) {
    return UpdateTexts::available(parts_.version, newVersion,
                                  parts_.source.canOpenSoftwareCentre()
                                      ? UpdateTexts::openSoftwareCentre
                                      : UpdateTexts::install);
}

void PackageUpdateController::act(const std::string& newVersion) {
    if (parts_.source.canOpenSoftwareCentre()) {
        if (!parts_.source.openSoftwareCentre()) {
            parts_.panel.show(UpdateTexts::notOpened(), [] {});
        }
        return;
    }
    parts_.source.install(
        lifeline_.guard([this, newVersion](const std::optional<std::string>& error) {
            if (error) {
                parts_.log.write("Updater", "failed to install: " + *error);
            }
            parts_.panel.show(
                error ? UpdateTexts::notInstalled() : UpdateTexts::installed(newVersion), [] {});
        }));
}

}  // namespace lumatile
