#include "platform/freedesktop/updates/PackageKitTransaction.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace lumatile {

namespace {

constexpr const char* service = "org.freedesktop.PackageKit";
constexpr const char* transactionInterface = "org.freedesktop.PackageKit.Transaction";

// Each call is answered at once, the work is reported by signals. The first may start the service.
constexpr int patience = 30000;

constexpr std::size_t longestId = 1024;
constexpr std::size_t longestError = 512;
constexpr guint exitSuccess = 1;

bool meansMissing(std::string_view error) {
    constexpr std::array<std::string_view, 5> names{
        "org.freedesktop.DBus.Error.ServiceUnknown",
        "org.freedesktop.DBus.Error.NameHasNoOwner",
        "org.freedesktop.DBus.Error.Spawn.ServiceNotFound",
        "org.freedesktop.systemd1.NoSuchUnit",
        "org.freedesktop.systemd1.UnitMasked",
    };
    return std::find(names.begin(), names.end(), error) != names.end();
}

}  // namespace

PackageKitTransaction::PackageKitTransaction(BusConnection& system, const Question& question,
                                             Answers answers)
    : system_(system),
      method_(question.method),
      arguments_(g_variant_ref_sink(question.arguments)),
      hints_(g_variant_ref_sink(g_variant_new(
          "(@as)",
          g_variant_new_strv(question.hints.data(), static_cast<gssize>(question.hints.size()))))),
      answers_(std::move(answers)) {
    timer_ = g_timeout_add_seconds(
        static_cast<guint>(question.seconds),
        [](gpointer data) -> gboolean {
            auto* transaction = static_cast<PackageKitTransaction*>(data);
            transaction->timer_ = 0;
            transaction->end(Failure{false, "the package service gave no answer in time"});
            return G_SOURCE_REMOVE;
        },
        this);
    constexpr BusConnection::Method create{service, "/org/freedesktop/PackageKit", service,
                                           "CreateTransaction"};
    system_.call(create, nullptr, patience, true,
                 lifeline_.guard([this](const BusConnection::Reply& reply) {
                     if (reply.value == nullptr) {
                         end(Failure{!reply.hasBus || meansMissing(reply.errorName), reply.error});
                     } else if (g_variant_is_of_type(reply.value, G_VARIANT_TYPE("(o)")) == 0) {
                         end(Failure{false, "the package service answers otherwise"});
                     } else {
                         const char* path = nullptr;
                         g_variant_get(reply.value, "(&o)", &path);
                         begin(path);
                     }
                 }));
}

PackageKitTransaction::~PackageKitTransaction() {
    if (timer_ != 0) {
        g_source_remove(timer_);
    }
}

void PackageKitTransaction::begin(const std::string& path) {
    path_ = path;
    const auto listen = [&](const char* name, const char* type,
                            std::function<void(GVariant*)> told) {
        signals_.push_back(
            system_.subscribe({service, path_.c_str(), transactionInterface, name},
                              [type, told = std::move(told)](GVariant* arguments) {
                                  if (g_variant_is_of_type(arguments, G_VARIANT_TYPE(type)) != 0) {
                                      told(arguments);
                                  }
                              }));
    };
    listen("Package", "(uss)", [this](GVariant* package) { note(package); });
    listen("ErrorCode", "(us)", [this](GVariant* arguments) {
        const char* details = nullptr;
        g_variant_get(arguments, "(u&s)", nullptr, &details);
        error_ = std::string(details).substr(0, longestError);
    });
    listen("Finished", "(uu)", [this](GVariant* arguments) {
        guint exit = 0;
        g_variant_get(arguments, "(uu)", &exit, nullptr);
        if (exit == exitSuccess) {
            end(std::nullopt);
        } else {
            end(Failure{false, error_.empty() ? "the package service gave up" : error_});
        }
    });
    // Without the hints it works as well.
    system_.call({service, path_.c_str(), transactionInterface, "SetHints"},
                 g_variant_ref(hints_.get()), patience, false, [](const BusConnection::Reply&) {});
    system_.call({service, path_.c_str(), transactionInterface, method_.c_str()},
                 g_variant_ref(arguments_.get()), patience, false,
                 lifeline_.guard([this](const BusConnection::Reply& reply) {
                     if (reply.value == nullptr) {
                         end(Failure{false, reply.error});
                     }
                 }));
}

void PackageKitTransaction::note(GVariant* package) {
    const char* id = nullptr;
    g_variant_get(package, "(u&ss)", nullptr, &id, nullptr);
    const std::string text = id;
    if (text.size() <= longestId) {
        answers_.package(text);
    }
}

void PackageKitTransaction::end(const std::optional<Failure>& failure) {
    signals_.clear();
    // Whoever is told may destroy this.
    if (const auto done = std::exchange(answers_.done, nullptr)) {
        done(failure);
    }
}

}  // namespace lumatile
