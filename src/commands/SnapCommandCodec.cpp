#include "commands/SnapCommandCodec.h"

#include <utility>

#include <nlohmann/json.hpp>

#include "base/BoundedJSON.h"

namespace lumatile {

namespace {

using nlohmann::json;

constexpr JSONLimits limits{
    .bytes = SnapCommandCodec::maxBytes,
    // A list nests four deep; the rest is room for keys that later versions may add.
    .depth = 32,
    .stringBytes = SnapCommandCodec::maxStringBytes,
    // A hundred per command of the longest list, three times what one with a block per area holds.
    .values = 200'000,
};

/// The reader of one value, applied to a member: false when it is missing or not of that type.
template <typename Value, typename Reader>
bool readRequired(const json& object, std::string_view key, Value& value, Reader reader) {
    const json* const member = BoundedJSON::member(object, key);
    if (member == nullptr) {
        return false;
    }
    auto read = reader(*member);
    if (!read) {
        return false;
    }
    value = *std::move(read);
    return true;
}

/// As `readRequired`, but a member that is missing or null leaves `value` absent.
template <typename Value, typename Reader>
bool readOptional(const json& object, std::string_view key, std::optional<Value>& value,
                  Reader reader) {
    const json* const member = BoundedJSON::member(object, key);
    if (member == nullptr || member->is_null()) {
        return true;
    }
    value = reader(*member);
    return value.has_value();
}

template <typename Element, typename Reader>
std::optional<std::vector<Element>> readArray(const json& value, Reader reader) {
    if (!value.is_array()) {
        return std::nullopt;
    }
    std::vector<Element> elements;
    elements.reserve(value.size());
    for (const json& element : value) {
        auto read = reader(element);
        if (!read) {
            return std::nullopt;
        }
        elements.push_back(*std::move(read));
    }
    return elements;
}

std::optional<UUID> readUUID(const json& value) {
    const auto text = BoundedJSON::string(value);
    return text ? UUID::parse(*text) : std::nullopt;
}

std::optional<Axis> readAxis(const json& value) {
    const auto text = BoundedJSON::string(value);
    return text ? axisFromRawValue(*text) : std::nullopt;
}

std::optional<Kind> readKind(const json& value) {
    const auto text = BoundedJSON::string(value);
    return text ? kindFromRawValue(*text) : std::nullopt;
}

std::optional<std::vector<Segment>> readSegments(const json& value) {
    return readArray<Segment>(value, [](const json& segment) {
        return readArray<std::int64_t>(segment, BoundedJSON::integer<std::int64_t>);
    });
}

std::optional<Shortcut> readShortcut(const json& value) {
    Shortcut shortcut;
    const bool whole = readRequired(value, "carbonKeyCode", shortcut.carbonKeyCode,
                                    BoundedJSON::integer<std::uint32_t>) &&
                       readRequired(value, "carbonModifiers", shortcut.carbonModifiers,
                                    BoundedJSON::integer<std::uint32_t>) &&
                       readRequired(value, "enabled", shortcut.enabled, BoundedJSON::boolean);
    return whole ? std::optional(shortcut) : std::nullopt;
}

std::optional<SnapCommand> readCommand(const json& value) {
    SnapCommand command;
    const bool whole =
        readRequired(value, "id", command.id, readUUID) &&
        readRequired(value, "nameKey", command.nameKey, BoundedJSON::string) &&
        readRequired(value, "axis", command.axis, readAxis) &&
        readRequired(value, "kind", command.kind, readKind) &&
        readRequired(value, "targetSegments", command.targetSegments, readSegments) &&
        readRequired(value, "activationSegments", command.activationSegments, readSegments) &&
        readOptional(value, "shortcut", command.shortcut, readShortcut) &&
        readRequired(value, "visibleInMenuBar", command.visibleInMenuBar, BoundedJSON::boolean) &&
        readRequired(value, "visibleInGreenButtonMenu", command.visibleInGreenButtonMenu,
                     BoundedJSON::boolean) &&
        readOptional(value, "group", command.group, BoundedJSON::string) &&
        readOptional(value, "customName", command.customName, BoundedJSON::string);
    return whole ? std::optional(std::move(command)) : std::nullopt;
}

/// `Json` decides on the order of the keys: as they are set here, or sorted.
template <typename Json>
Json written(const Shortcut& shortcut) {
    Json object = Json::object();
    object["carbonKeyCode"] = shortcut.carbonKeyCode;
    object["carbonModifiers"] = shortcut.carbonModifiers;
    object["enabled"] = shortcut.enabled;
    return object;
}

template <typename Json>
Json written(const SnapCommand& command) {
    Json object = Json::object();
    object["id"] = command.id.text();
    object["nameKey"] = command.nameKey;
    object["axis"] = rawValue(command.axis);
    object["kind"] = rawValue(command.kind);
    object["targetSegments"] = command.targetSegments;
    object["activationSegments"] = command.activationSegments;
    if (command.shortcut) {
        object["shortcut"] = written<Json>(*command.shortcut);
    }
    object["visibleInMenuBar"] = command.visibleInMenuBar;
    object["visibleInGreenButtonMenu"] = command.visibleInGreenButtonMenu;
    if (command.group) {
        object["group"] = *command.group;
    }
    if (command.customName) {
        object["customName"] = *command.customName;
    }
    return object;
}

template <typename Json>
std::string written(const std::vector<SnapCommand>& commands, JSONLayout layout) {
    Json list = Json::array();
    for (const SnapCommand& command : commands) {
        list.push_back(written<Json>(command));
    }
    constexpr int compact = -1;
    constexpr int spacesPerLevel = 2;
    return list.dump(layout == JSONLayout::pretty ? spacesPerLevel : compact, ' ', false,
                     Json::error_handler_t::replace);
}

}  // namespace

std::optional<std::vector<SnapCommand>> SnapCommandCodec::decodeList(std::string_view json) {
    const auto document = BoundedJSON::parse(json, limits);
    if (!document || document->size() > maxCommands) {
        return std::nullopt;
    }
    return readArray<SnapCommand>(*document, readCommand);
}

std::string SnapCommandCodec::encodeList(const std::vector<SnapCommand>& commands, KeyOrder order,
                                         JSONLayout layout) {
    return order == KeyOrder::sorted ? written<nlohmann::json>(commands, layout)
                                     : written<nlohmann::ordered_json>(commands, layout);
}

}  // namespace lumatile
