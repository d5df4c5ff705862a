#include "platform/freedesktop/tiling/GSettingsTiling.h"

#include <memory>
#include <utility>

#include "onboarding/SystemTiling.h"

namespace lumatile {

namespace {

struct SchemaRelease {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
};
using SchemaHandle = std::unique_ptr<GSettingsSchema, SchemaRelease>;

/// The library ends the program that names a schema or a key which is not installed; so both are
/// looked for first.
bool isBoolean(GSettingsSchema* schema, const std::string& key) {
    if (key.empty() || g_settings_schema_has_key(schema, key.c_str()) == 0) {
        return false;
    }
    GSettingsSchemaKey* found = g_settings_schema_get_key(schema, key.c_str());
    const bool is = g_variant_type_equal(g_settings_schema_key_get_value_type(found),
                                         G_VARIANT_TYPE_BOOLEAN) != 0;
    g_settings_schema_key_unref(found);
    return is;
}

}  // namespace

GSettingsTiling::GSettingsTiling(const std::string& schema, std::string edgeKey, std::string topKey)
    : edgeKey_(std::move(edgeKey)), topKey_(std::move(topKey)) {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    if (source == nullptr) {
        return;  // No schema at all is installed.
    }
    const SchemaHandle found(g_settings_schema_source_lookup(source, schema.c_str(), TRUE));
    // A schema without a fixed path belongs to no one place.
    if (!found || g_settings_schema_get_path(found.get()) == nullptr ||
        !isBoolean(found.get(), edgeKey_)) {
        return;
    }
    if (!isBoolean(found.get(), topKey_)) {
        topKey_.clear();
    }
    settings_.reset(g_settings_new_full(found.get(), nullptr, nullptr));
}

bool GSettingsTiling::value(const std::string& key) const {
    return g_settings_get_boolean(settings_.get(), key.c_str()) != 0;
}

std::optional<bool> GSettingsTiling::lookup(std::string_view key) {
    if (!exists()) {
        return std::nullopt;
    }
    if (key == SystemTiling::edgeDragKey) {
        return value(edgeKey_);
    }
    if (key == SystemTiling::menuBarDragKey) {
        return value(edgeKey_) && (topKey_.empty() || value(topKey_));
    }
    return std::nullopt;
}

bool GSettingsTiling::canSwitchOff() {
    return exists() && g_settings_is_writable(settings_.get(), edgeKey_.c_str()) != 0;
}

bool GSettingsTiling::switchOff() {
    return canSwitchOff() && g_settings_set_boolean(settings_.get(), edgeKey_.c_str(), FALSE) != 0;
}

}  // namespace lumatile
