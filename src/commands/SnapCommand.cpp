#include "commands/SnapCommand.h"

#include <algorithm>
#include <utility>

#include "base/NameText.h"
#include "commands/BuiltInCommands.h"
#include "commands/SnapCommandCodec.h"

namespace lumatile {

namespace {

constexpr std::string_view customPrefix = "custom.";

}  // namespace

SnapCommand SnapCommand::custom(std::string name, std::int64_t ox, std::int64_t oy, std::int64_t w,
                                std::int64_t h) {
    SnapCommand command;
    command.id = UUID::random();
    command.nameKey = std::string(customPrefix) + command.id.lowercaseText();
    command.targetSegments = {Segment{ox, oy, w, h}};
    command.visibleInMenuBar = true;
    command.group = "custom";
    command.customName = std::move(name);
    return command;
}

bool SnapCommand::isCustom() const { return nameKey.starts_with(customPrefix); }

bool SnapCommand::rename(std::string_view name) {
    if (!isCustom() || !NameText::isUTF8(name)) {
        return false;
    }
    // The bytes are bounded as well, so that the name can be read back.
    const std::string_view shortened = NameText::prefix(NameText::trimmed(name), maxNameCharacters,
                                                        SnapCommandCodec::maxStringBytes);
    if (shortened.empty()) {
        return false;
    }
    customName = std::string(shortened);
    return true;
}

std::string SnapCommand::displayName() const {
    if (customName) {
        const std::string_view ownName = NameText::trimmed(*customName);
        if (!ownName.empty()) {
            return std::string(ownName);
        }
    }
    if (axis == Axis::vertical) {
        if (const auto name = BuiltInCommands::portraitName(nameKey)) {
            return std::string(*name);
        }
    }
    if (const auto name = BuiltInCommands::name(nameKey)) {
        return std::string(*name);
    }
    return NameText::title(nameKey);
}

const SnapCommand& SnapCommand::counterpart(const std::vector<SnapCommand>& list,
                                            Axis screenAxis) const {
    if (axis == screenAxis) {
        return *this;
    }
    const auto twin = std::find_if(list.begin(), list.end(), [&](const SnapCommand& other) {
        return other.axis == screenAxis && other.nameKey == nameKey;
    });
    return twin == list.end() ? *this : *twin;
}

Area SnapCommand::targetArea() const { return areaOf(targetSegments); }

Area SnapCommand::activationArea() const { return areaOf(activationSegments); }

}  // namespace lumatile
