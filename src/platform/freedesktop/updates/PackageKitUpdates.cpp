#include "platform/freedesktop/updates/PackageKitUpdates.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/freedesktop/files/InstalledPrograms.h"

namespace lumatile {

namespace {

// Sets of one flag each, as the service numbers them.
constexpr std::uint64_t noFilter = 1U << 1U;
constexpr std::uint64_t installedOnly = 1U << 2U;
constexpr std::uint64_t trustedOnly = 1U << 1U;

constexpr int installSeconds = 60 * 60;  // Downloads take their time, and people are asked.
constexpr std::size_t longestVersion = 128;

using InstallDone = std::function<void(const std::optional<std::string>&)>;

const InstalledPrograms::Names& softwareCentres() {
    static const InstalledPrograms::Names names{
        "org.gnome.Software.desktop",      "org.kde.discover.desktop",
        "io.elementary.appcenter.desktop", "mintupdate.desktop",
        "pamac-updater.desktop",           "gpk-update-viewer.desktop",
        "org.mageia.dnfdragora.desktop",   "dnfdragora.desktop",
        "update-manager.desktop"};
    return names;
}

/// Letters that versions consist of, wherever packages come from: what a user may be shown.
bool isVersion(std::string_view text) {
    return !text.empty() && text.size() <= longestVersion &&
           std::all_of(text.begin(), text.end(), [](char byte) {
               return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                      (byte >= '0' && byte <= '9') ||
                      std::string_view(".+~:_^-").find(byte) != std::string_view::npos;
           });
}

}  // namespace

std::optional<PackageKitUpdates::PackageId> PackageKitUpdates::PackageId::parse(
    const std::string& text) {
    std::array<std::string, 4> parts;
    std::size_t part = 0;
    for (const char byte : text) {
        if (byte != ';') {
            parts.at(part) += byte;
        } else if (++part == parts.size()) {
            return std::nullopt;
        }
    }
    if (part + 1 != parts.size() || parts[0].empty() || !isVersion(parts[1])) {
        return std::nullopt;
    }
    return PackageId{parts[0], parts[1], parts[2]};
}

PackageKitUpdates::PackageKitUpdates(BusConnection& system, std::filesystem::path binary,
                                     int answerSeconds)
    : system_(system), binary_(std::move(binary)), answerSeconds_(answerSeconds) {}

void PackageKitUpdates::ask(std::function<void(const PackageAnswer&)> done) {
    done_ = std::move(done);
    own_.reset();
    update_.clear();
    updateVersion_.clear();
    const std::string path = binary_.string();
    const std::array<const char*, 2> files{path.c_str(), nullptr};
    asking_ = std::make_unique<PackageKitTransaction>(
        system_,
        PackageKitTransaction::Question{
            "SearchFiles",
            g_variant_new("(t^as)", static_cast<guint64>(installedOnly), files.data()),
            {"background=true", "interactive=false"},
            answerSeconds_},
        PackageKitTransaction::Answers{
            [this](const std::string& id) {
                if (!own_) {
                    own_ = PackageId::parse(id);
                }
            },
            [this](const std::optional<PackageKitTransaction::Failure>& failure) {
                if (failure) {
                    answer(failed(*failure));
                } else if (!own_) {
                    answer({PackageAnswer::State::noPackage, "", ""});
                } else {
                    askForUpdates();
                }
            }});
}

void PackageKitUpdates::askForUpdates() {
    asking_ = std::make_unique<PackageKitTransaction>(
        system_,
        PackageKitTransaction::Question{"GetUpdates",
                                        g_variant_new("(t)", static_cast<guint64>(noFilter)),
                                        {"background=true", "interactive=false"},
                                        answerSeconds_},
        PackageKitTransaction::Answers{
            [this](const std::string& id) {
                const auto package = PackageId::parse(id);
                if (package && package->name == own_->name &&
                    package->architecture == own_->architecture &&
                    package->version != own_->version) {
                    update_ = id;
                    updateVersion_ = package->version;
                }
            },
            [this](const std::optional<PackageKitTransaction::Failure>& failure) {
                if (failure) {
                    answer(failed(*failure));
                } else if (update_.empty()) {
                    answer({PackageAnswer::State::upToDate, "", ""});
                } else {
                    answer({PackageAnswer::State::updateAvailable, updateVersion_, ""});
                }
            }});
}

PackageAnswer PackageKitUpdates::failed(const PackageKitTransaction::Failure& failure) const {
    return {
        failure.isServiceMissing ? PackageAnswer::State::noService : PackageAnswer::State::failed,
        "", failure.reason};
}

void PackageKitUpdates::answer(const PackageAnswer& given) {
    if (const auto done = std::exchange(done_, nullptr)) {
        done(given);
    }
}

bool PackageKitUpdates::canOpenSoftwareCentre() {
    return InstalledPrograms::hasAny(softwareCentres());
}

bool PackageKitUpdates::openSoftwareCentre() { return InstalledPrograms::start(softwareCentres()); }

void PackageKitUpdates::install(std::function<void(const std::optional<std::string>&)> done) {
    if (update_.empty()) {
        // Told from the run loop, as everything else is.
        g_idle_add_full(
            G_PRIORITY_DEFAULT,
            [](gpointer data) -> gboolean {
                (*static_cast<InstallDone*>(data))("no update is known");
                return G_SOURCE_REMOVE;
            },
            new InstallDone(std::move(done)),
            [](gpointer data) { delete static_cast<InstallDone*>(data); });
        return;
    }
    const std::array<const char*, 2> packages{update_.c_str(), nullptr};
    installing_ = std::make_unique<PackageKitTransaction>(
        system_,
        PackageKitTransaction::Question{
            "UpdatePackages",
            g_variant_new("(t^as)", static_cast<guint64>(trustedOnly), packages.data()),
            {"interactive=true"},
            installSeconds},
        PackageKitTransaction::Answers{
            [](const std::string&) {},
            [done = std::move(done)](const std::optional<PackageKitTransaction::Failure>& failure) {
                done(failure ? std::optional(failure->reason) : std::nullopt);
            }});
}

}  // namespace lumatile
