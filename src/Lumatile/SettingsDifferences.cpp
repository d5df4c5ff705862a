#include "Lumatile/SettingsDifferences.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lumatile {

namespace {

/// A list in words.
class Words {
public:
    void add(std::string_view words) { text_.append(text_.empty() ? "" : ", ").append(words); }

    /// Nothing for none.
    void addCount(std::size_t count, std::string_view one, std::string_view several) {
        if (count > 0) {
            add(std::to_string(count) + std::string(count == 1 ? one : several));
        }
    }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

std::string number(double value) {
    constexpr std::size_t room = 32;
    std::string text(room, '\0');
    // NOLINTNEXTLINE(*-vararg): the one way to the shortest decimal form that needs no stream.
    const int length = std::snprintf(text.data(), text.size(), "%g", value);
    text.resize(static_cast<std::size_t>(std::clamp(length, 0, static_cast<int>(room) - 1)));
    return text;
}

using CommandsById = std::unordered_map<UUID, const SnapCommand*>;

CommandsById byId(const std::vector<SnapCommand>& commands) {
    CommandsById found;
    for (const SnapCommand& command : commands) {
        found.try_emplace(command.id, &command);
    }
    return found;
}

std::size_t countMissing(const CommandsById& commands, const CommandsById& from) {
    return static_cast<std::size_t>(
        std::count_if(commands.begin(), commands.end(),
                      [&from](const auto& each) { return !from.contains(each.first); }));
}

void addCommands(Words& words, const CommandsById& here, const CommandsById& there) {
    std::size_t shortcuts = 0;
    std::size_t areas = 0;
    std::size_t others = 0;
    for (const auto& [id, command] : here) {
        const auto place = there.find(id);
        if (place == there.end() || *place->second == *command) {
            continue;
        }
        const SnapCommand& other = *place->second;
        const bool hasOtherShortcut = command->shortcut != other.shortcut;
        const bool hasOtherArea = command->targetSegments != other.targetSegments ||
                                  command->activationSegments != other.activationSegments;
        shortcuts += hasOtherShortcut ? 1U : 0U;
        areas += hasOtherArea ? 1U : 0U;
        others += hasOtherShortcut || hasOtherArea ? 0U : 1U;
    }
    words.addCount(shortcuts, " shortcut", " shortcuts");
    words.addCount(areas, " area", " areas");
    words.addCount(others, " name or menu entry", " names or menu entries");
    words.addCount(countMissing(here, there), " area of its own", " areas of its own");
    words.addCount(countMissing(there, here), " area missing", " areas missing");
}

/// Whether an effect is on; where it is on both sides, what it is set to.
void addEffect(Words& words, std::string_view name, bool isOn, bool isOtherOn,
               const std::string& details, const std::string& otherDetails) {
    if (isOn != isOtherOn) {
        words.add(std::string(name) + (isOn ? " on" : " off"));
    } else if (details != otherDetails) {
        words.add(std::string(name) + " " + details);
    }
}

std::string shiftDetails(const OLEDSettings& settings) {
    return number(settings.orbitAmplitude) + " px every " +
           OLEDSettings::orbitStepIntervalLabel(settings.orbitStepInterval) +
           (settings.orbitWaitForPause ? " in pauses" : "");
}

std::string dimDetails(const OLEDSettings& settings) {
    constexpr double percent = 100;
    return number(settings.idleDimStrength * percent) + " % after " +
           OLEDSettings::orbitStepIntervalLabel(settings.idleThreshold);
}

std::string differences(const SharedSettings& here, const SharedSettings& there) {
    Words words;
    addCommands(words, byId(here.commands), byId(there.commands));
    const OLEDSettings& mine = here.oled;
    const OLEDSettings& other = there.oled;
    addEffect(words, "pixel shift", mine.orbitEnabled, other.orbitEnabled, shiftDetails(mine),
              shiftDetails(other));
    addEffect(words, "edge jitter", mine.jitterEnabled, other.jitterEnabled,
              number(mine.jitterTolerance) + " px", number(other.jitterTolerance) + " px");
    addEffect(words, "idle dimming", mine.idleDimEnabled, other.idleDimEnabled, dimDetails(mine),
              dimDetails(other));
    return words.text().empty() ? "no difference" : words.text();
}

}  // namespace

ConflictDifferences settingsDifferences(const SharedSettings& local, const SharedSettings& remote) {
    return {differences(local, remote), differences(remote, local)};
}

}  // namespace lumatile
