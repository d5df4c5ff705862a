#include "oled_protection/OLEDSettingsCodec.h"

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <variant>

#include "base/BoundedJSON.h"

namespace lumatile::OLEDSettingsCodec {

namespace {

/// Room for the keys that a later version may add; more than that is no settings object.
constexpr JSONLimits limits{.bytes = 65'536, .depth = 16, .stringBytes = 4'096, .values = 4'096};

/// The largest distance that is accepted, pixels, either sign.
constexpr double largestDistance = 10'000;

/// Values below are those that convert to a signed 64-bit integer after rounding.
constexpr double integerBound = 0x1p63;

bool isDistance(double value) { return std::abs(value) <= largestDistance; }
bool isSeconds(double value) { return std::abs(value) < integerBound; }
bool isFraction(double value) { return std::abs(value * 100) < integerBound; }

using Switch = bool OLEDSettings::*;

struct Quantity {
    double OLEDSettings::*field;
    bool (*isUsable)(double);
};

struct Field {
    const char* key;
    std::variant<Switch, Quantity> value;
};

/// The one table that reading and writing share, in field order.
constexpr std::array<Field, 9> fields{{
    {"orbitEnabled", &OLEDSettings::orbitEnabled},
    {"orbitAmplitude", Quantity{&OLEDSettings::orbitAmplitude, isDistance}},
    {"orbitStepInterval", Quantity{&OLEDSettings::orbitStepInterval, isSeconds}},
    {"orbitWaitForPause", &OLEDSettings::orbitWaitForPause},
    {"jitterEnabled", &OLEDSettings::jitterEnabled},
    {"jitterTolerance", Quantity{&OLEDSettings::jitterTolerance, isDistance}},
    {"idleDimEnabled", &OLEDSettings::idleDimEnabled},
    {"idleThreshold", Quantity{&OLEDSettings::idleThreshold, isSeconds}},
    {"idleDimStrength", Quantity{&OLEDSettings::idleDimStrength, isFraction}},
}};

bool read(const nlohmann::json& value, Switch field, OLEDSettings& settings) {
    const std::optional<bool> flag = BoundedJSON::boolean(value);
    if (flag) {
        settings.*field = *flag;
    }
    return flag.has_value();
}

bool read(const nlohmann::json& value, const Quantity& quantity, OLEDSettings& settings) {
    const std::optional<double> number = BoundedJSON::number(value);
    // The comparisons are false for a value that is not finite.
    if (!number || !quantity.isUsable(*number)) {
        return false;
    }
    settings.*quantity.field = *number;
    return true;
}

nlohmann::ordered_json written(const OLEDSettings& settings, Switch field) {
    return settings.*field;
}

nlohmann::ordered_json written(const OLEDSettings& settings, const Quantity& quantity) {
    return settings.*quantity.field;
}

}  // namespace

std::optional<OLEDSettings> decode(std::string_view text) {
    const std::optional<nlohmann::json> root = BoundedJSON::parse(text, limits);
    if (!root || !root->is_object()) {
        return std::nullopt;
    }
    OLEDSettings settings = OLEDSettings::recommended;
    for (const Field& field : fields) {
        const nlohmann::json* value = BoundedJSON::member(*root, field.key);
        if (!value || value->is_null()) {
            continue;
        }
        const bool isRead = std::visit(
            [&](const auto& member) { return read(*value, member, settings); }, field.value);
        if (!isRead) {
            return std::nullopt;
        }
    }
    return settings;
}

std::string encode(const OLEDSettings& settings) {
    nlohmann::ordered_json root = nlohmann::ordered_json::object();
    for (const Field& field : fields) {
        root[field.key] =
            std::visit([&](const auto& member) { return written(settings, member); }, field.value);
    }
    return root.dump();
}

}  // namespace lumatile::OLEDSettingsCodec
