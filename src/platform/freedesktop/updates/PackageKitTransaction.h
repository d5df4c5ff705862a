#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Lifeline.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile {

/// One question to PackageKit: an object on the bus that answers by signals and then ends. Given up
/// by destroying it.
class PackageKitTransaction {
public:
    struct Question {
        const char* method;
        GVariant* arguments;  ///< A tuple; taken over.
        std::vector<const char*> hints;
        int seconds;  ///< After which there is no answer.
    };

    /// Why there is no answer.
    struct Failure {
        bool isServiceMissing = false;
        std::string reason;
    };

    struct Answers {
        std::function<void(const std::string& packageId)> package;  ///< For each that it names.
        std::function<void(const std::optional<Failure>&)> done;    ///< Once, at the end.
    };

    /// Begins. `done` may destroy the transaction.
    /// @param system the bus; outlives the transaction
    PackageKitTransaction(BusConnection& system, const Question& question, Answers answers);
    PackageKitTransaction(const PackageKitTransaction&) = delete;
    PackageKitTransaction& operator=(const PackageKitTransaction&) = delete;
    ~PackageKitTransaction();

private:
    void begin(const std::string& path);
    void note(GVariant* package);
    void end(const std::optional<Failure>& failure);

    BusConnection& system_;
    std::string method_;
    GVariantHandle arguments_;
    GVariantHandle hints_;
    Answers answers_;
    std::string path_;
    std::string error_;  ///< The service's last word on what went wrong.
    std::vector<std::unique_ptr<BusConnection::Subscription>> signals_;
    guint timer_ = 0;
    Lifeline lifeline_;  // The bus may answer when this is gone.
};

}  // namespace lumatile
