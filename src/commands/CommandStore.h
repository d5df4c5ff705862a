#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands/SnapCommand.h"

namespace lumatile {

/// The one list of commands that the whole program works from. Everybody refers to the same store,
/// hence no copies.
class CommandStore {
public:
    /// Key of the preference that holds the list.
    static constexpr std::string_view preferenceKey = "commands";

    /// In the order of menus, settings, hot keys and drag activation: the built-in commands, then
    /// the custom areas in the order in which they were made.
    std::vector<SnapCommand> commands;

    /// The built-in commands.
    CommandStore();

    /// `list` as it is.
    explicit CommandStore(std::vector<SnapCommand> list);

    CommandStore(const CommandStore&) = delete;
    CommandStore& operator=(const CommandStore&) = delete;
    CommandStore(CommandStore&&) = default;
    CommandStore& operator=(CommandStore&&) = default;
    ~CommandStore() = default;

    /// The store of a stored preference: the merged list, or the built-in commands when nothing is
    /// stored or it cannot be decoded.
    static CommandStore fromStored(std::optional<std::string_view> bytes);

    /// `stored` with the built-in commands that it lacks, all built-in commands first and in their
    /// order, then the rest in stored order. What the user changed is kept, except that a built-in
    /// area that has collapsed to one cell gets its own area back. Nothing past the longest list
    /// that can be read back is kept.
    static std::vector<SnapCommand> merged(std::vector<SnapCommand> stored);

    /// The list as JSON with sorted keys, for the preference and for synchronisation.
    std::string encode() const;

    /// The inverse of `encode`; absent as a whole when any command is malformed.
    static std::optional<std::vector<SnapCommand>> decode(std::string_view bytes);

    /// A store of the list in a JSON file, as it is.
    /// @throws CommandFileError when the file cannot be read or decoded
    static CommandStore fromFile(const std::filesystem::path& path);

    /// Writes the list to a JSON file, pretty-printed with sorted keys. The file is replaced in one
    /// step: after a failure the old one is as it was.
    /// @throws CommandFileError when it cannot be written
    void saveToFile(const std::filesystem::path& path) const;

    /// Removes every command of that id.
    void removeById(const UUID& id);

    std::vector<SnapCommand> menuBarCommands() const;
    std::vector<SnapCommand> greenButtonCommands() const;

    /// The commands to register as hot keys: those with an enabled shortcut, landscape before
    /// portrait. Of several commands with the same key combination the first keeps it, so a
    /// portrait twin is reached through its landscape command.
    std::vector<SnapCommand> hotkeyBindings() const;

    /// What `command` means on a screen of `axis`; `command` itself when it has no twin here.
    SnapCommand counterpart(const SnapCommand& command, Axis axis) const;

    /// "Custom Area", or with the first number from 2 that no custom area shows yet.
    std::string nextCustomAreaName() const;

    /// Appends a custom area of that block under the next name.
    /// @return its id; absent, and nothing added, when the list is as long as it may get
    std::optional<UUID> addCustomArea(std::int64_t ox, std::int64_t oy, std::int64_t w,
                                      std::int64_t h);

    /// `SnapCommand::rename` for the first command of that id; false when there is none.
    bool rename(const UUID& id, std::string_view name);
};

}  // namespace lumatile
