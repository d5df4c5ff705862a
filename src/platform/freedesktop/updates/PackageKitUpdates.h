#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/updates/PackageKitTransaction.h"
#include "ports/PackageSource.h"

namespace lumatile {

/// The system's package source as PackageKit knows it: which package holds the running program, and
/// whether a newer version of that is known.
class PackageKitUpdates final : public PackageSource {
public:
    /// @param system the system's bus; outlives this
    /// @param binary the running program, an absolute path
    /// @param answerSeconds after which a question without an answer has failed
    PackageKitUpdates(BusConnection& system, std::filesystem::path binary,
                      int answerSeconds = usualAnswerSeconds);

    /// A service that reads its lists from a slow disk needs some; one that hangs is no use.
    static constexpr int usualAnswerSeconds = 120;

    void ask(std::function<void(const PackageAnswer&)> done) override;
    bool canOpenSoftwareCentre() override;
    bool openSoftwareCentre() override;
    void install(std::function<void(const std::optional<std::string>&)> done) override;

private:
    /// What PackageKit calls "name;version;architecture;source".
    struct PackageId {
        std::string name;
        std::string version;
        std::string architecture;

        static std::optional<PackageId> parse(const std::string& text);
    };

    void askForUpdates();
    void answer(const PackageAnswer& given);
    PackageAnswer failed(const PackageKitTransaction::Failure& failure) const;

    BusConnection& system_;
    std::filesystem::path binary_;
    int answerSeconds_;
    std::function<void(const PackageAnswer&)> done_;
    std::optional<PackageId> own_;
    std::string update_;         ///< The id of the newer version, for the service.
    std::string updateVersion_;  ///< Its version.
    std::unique_ptr<PackageKitTransaction> asking_;
    std::unique_ptr<PackageKitTransaction> installing_;
};

}  // namespace lumatile
