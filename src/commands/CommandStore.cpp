#include "commands/CommandStore.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "base/AtomicFile.h"
#include "commands/BuiltInCommands.h"
#include "commands/CommandFileError.h"
#include "commands/SnapCommandCodec.h"

namespace lumatile {

namespace {

/// No area that comes with the program is that small, so one that is has been damaged.
bool isSingleCell(const std::vector<Segment>& segments) {
    if (segments.size() != 1) {
        return false;
    }
    const auto cell = cellRect(segments.front());
    return cell && cell->w == 1 && cell->h == 1;
}

/// A stored command in the place of its built-in one.
SnapCommand mended(SnapCommand stored, const SnapCommand& builtIn) {
    if (!stored.group) {
        stored.group = builtIn.group;
    }
    if (isSingleCell(stored.targetSegments) && !isSingleCell(builtIn.targetSegments)) {
        stored.targetSegments = builtIn.targetSegments;
    }
    return stored;
}

template <typename Predicate>
std::vector<SnapCommand> filtered(const std::vector<SnapCommand>& commands, Predicate predicate) {
    std::vector<SnapCommand> result;
    std::copy_if(commands.begin(), commands.end(), std::back_inserter(result), predicate);
    return result;
}

}  // namespace

CommandStore::CommandStore() : commands(BuiltInCommands::defaults()) {}

CommandStore::CommandStore(std::vector<SnapCommand> list) : commands(std::move(list)) {}

CommandStore CommandStore::fromStored(std::optional<std::string_view> bytes) {
    if (bytes) {
        if (auto stored = decode(*bytes)) {
            return CommandStore(merged(*std::move(stored)));
        }
    }
    return {};
}

std::vector<SnapCommand> CommandStore::merged(std::vector<SnapCommand> stored) {
    const std::vector<SnapCommand> builtIns = BuiltInCommands::defaults();
    std::vector<SnapCommand> result;
    result.reserve(builtIns.size() + stored.size());
    std::vector<bool> isTaken(stored.size(), false);
    for (const SnapCommand& builtIn : builtIns) {
        std::size_t place = 0;
        while (place < stored.size() && (isTaken[place] || stored[place].axis != builtIn.axis ||
                                         stored[place].nameKey != builtIn.nameKey)) {
            ++place;
        }
        if (place == stored.size()) {
            result.push_back(builtIn);
        } else {
            isTaken[place] = true;
            result.push_back(mended(std::move(stored[place]), builtIn));
        }
    }
    for (std::size_t place = 0; place < stored.size(); ++place) {
        if (!isTaken[place] && result.size() < SnapCommandCodec::maxCommands) {
            result.push_back(std::move(stored[place]));
        }
    }
    return result;
}

std::string CommandStore::encode() const {
    return SnapCommandCodec::encodeList(commands, KeyOrder::sorted);
}

std::optional<std::vector<SnapCommand>> CommandStore::decode(std::string_view bytes) {
    return SnapCommandCodec::decodeList(bytes);
}

CommandStore CommandStore::fromFile(const std::filesystem::path& path) {
    std::string bytes;
    if (const auto error = AtomicFile::read(path, SnapCommandCodec::maxBytes, bytes)) {
        throw CommandFileError(path, error.message());
    }
    auto list = decode(bytes);
    if (!list) {
        throw CommandFileError(path, "Not a list of commands");
    }
    return CommandStore(*std::move(list));
}

void CommandStore::saveToFile(const std::filesystem::path& path) const {
    const std::string text =
        SnapCommandCodec::encodeList(commands, KeyOrder::sorted, JSONLayout::pretty);
    // A file that could not be read again must not take the place of one that can.
    if (commands.size() > SnapCommandCodec::maxCommands ||
        text.size() > SnapCommandCodec::maxBytes) {
        throw CommandFileError(path, std::make_error_code(std::errc::file_too_large).message());
    }
    if (const auto error = AtomicFile::replace(path, text)) {
        throw CommandFileError(path, error.message());
    }
}

void CommandStore::removeById(const UUID& id) {
    std::erase_if(commands, [&id](const SnapCommand& command) { return command.id == id; });
}

std::vector<SnapCommand> CommandStore::menuBarCommands() const {
    return filtered(commands, [](const SnapCommand& command) { return command.visibleInMenuBar; });
}

std::vector<SnapCommand> CommandStore::greenButtonCommands() const {
    return filtered(commands,
                    [](const SnapCommand& command) { return command.visibleInGreenButtonMenu; });
}

std::vector<SnapCommand> CommandStore::hotkeyBindings() const {
    std::vector<SnapCommand> bindings;
    std::set<std::pair<std::uint32_t, std::uint32_t>> taken;
    for (const Axis axis : {Axis::horizontal, Axis::vertical}) {
        for (const SnapCommand& command : commands) {
            if (command.axis == axis && command.shortcut && command.shortcut->enabled &&
                taken.emplace(command.shortcut->carbonKeyCode, command.shortcut->carbonModifiers)
                    .second) {
                bindings.push_back(command);
            }
        }
    }
    return bindings;
}

SnapCommand CommandStore::counterpart(const SnapCommand& command, Axis axis) const {
    return command.counterpart(commands, axis);
}

std::string CommandStore::nextCustomAreaName() const {
    const std::string base = "Custom Area";
    std::unordered_set<std::string> taken;
    for (const SnapCommand& command : commands) {
        if (command.isCustom()) {
            taken.insert(command.displayName());
        }
    }
    std::string name = base;
    for (std::size_t number = 2; taken.contains(name); ++number) {
        name = base + " " + std::to_string(number);
    }
    return name;
}

std::optional<UUID> CommandStore::addCustomArea(std::int64_t ox, std::int64_t oy, std::int64_t w,
                                                std::int64_t h) {
    if (commands.size() >= SnapCommandCodec::maxCommands) {
        return std::nullopt;
    }
    commands.push_back(SnapCommand::custom(nextCustomAreaName(), ox, oy, w, h));
    return commands.back().id;
}

bool CommandStore::rename(const UUID& id, std::string_view name) {
    const auto command =
        std::find_if(commands.begin(), commands.end(),
                     [&id](const SnapCommand& candidate) { return candidate.id == id; });
    return command != commands.end() && command->rename(name);
}

}  // namespace lumatile
