#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "commands/BuiltInCommands.h"
#include "commands/CommandFileError.h"
#include "commands/CommandStore.h"
#include "commands/SnapCommandCodec.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/TemporaryFolder.h"

namespace lumatile {
namespace {

using Names = std::vector<std::string>;

/// The error that `action` throws.
template <typename Action>
CommandFileError errorOf(Action action) {
    try {
        action();
    } catch (const CommandFileError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return {"", ""};
}

TEST(CommandFile, isThePrettyListWithSortedKeys) {
    const TemporaryFolder folder;
    CommandStore store;
    store.addCustomArea(1, 2, 3, 4);
    store.saveToFile(folder / "commands.json");
    EXPECT_EQ(folder.read("commands.json"),
              SnapCommandCodec::encodeList(store.commands, KeyOrder::sorted, JSONLayout::pretty));
    EXPECT_EQ(folder.names(), Names{"commands.json"});
    EXPECT_EQ(std::filesystem::status(folder / "commands.json").permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(CommandFile, isReadBackAsItIs) {
    const TemporaryFolder folder;
    const CommandStore store({SnapCommand::custom("Side", 0, 0, 6, 6)});
    store.saveToFile(folder / "commands.json");
    EXPECT_EQ(CommandStore::fromFile(folder / "commands.json").commands, store.commands)
        << "a file is not merged";
}

TEST(CommandFile, takesAnyFormOfTheSameArray) {
    const TemporaryFolder folder;
    folder.write("compact.json",
                 SnapCommandCodec::encodeList(BuiltInCommands::defaults(), KeyOrder::field));
    EXPECT_EQ(CommandStore::fromFile(folder / "compact.json").commands,
              BuiltInCommands::defaults());
    folder.write("empty.json", "[]\n");
    EXPECT_TRUE(CommandStore::fromFile(folder / "empty.json").commands.empty());
}

TEST(CommandFile, aReadFailureIsThrownWithPathAndReason) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "missing.json";
    const CommandFileError error = errorOf([&path] { CommandStore::fromFile(path); });
    EXPECT_EQ(error.path(), path);
    EXPECT_EQ(error.reason(), "No such file or directory");
    EXPECT_EQ(error.what(), path.string() + ": No such file or directory");
    EXPECT_EQ(errorOf([&folder] { CommandStore::fromFile(folder.path()); }).reason(),
              "Is a directory");
}

TEST(CommandFile, aDecodingFailureIsThrownAndLeavesTheFile) {
    const TemporaryFolder folder;
    folder.write("bad.json", "[{}]");
    const CommandFileError error =
        errorOf([&folder] { CommandStore::fromFile(folder / "bad.json"); });
    EXPECT_EQ(error.path(), folder / "bad.json");
    EXPECT_EQ(error.reason(), "Not a list of commands");
    EXPECT_EQ(folder.read("bad.json"), "[{}]");
}

TEST(CommandFile, aFilePastTheBoundIsNotRead) {
    const TemporaryFolder folder;
    folder.write("large.json", "[]" + std::string(SnapCommandCodec::maxBytes - 2, ' '));
    EXPECT_TRUE(CommandStore::fromFile(folder / "large.json").commands.empty());
    folder.write("large.json", "[]" + std::string(SnapCommandCodec::maxBytes - 1, ' '));
    EXPECT_EQ(errorOf([&folder] { CommandStore::fromFile(folder / "large.json"); }).reason(),
              "File too large");
}

TEST(CommandFile, aWriteFailureIsThrownWithPathAndReason) {
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "missing/commands.json";
    const CommandFileError error = errorOf([&path] { CommandStore().saveToFile(path); });
    EXPECT_EQ(error.path(), path);
    EXPECT_EQ(error.reason(), "No such file or directory");
    EXPECT_TRUE(folder.names().empty());
    EXPECT_EQ(errorOf([&folder] { CommandStore().saveToFile(folder.path()); }).reason(),
              "Is a directory");
}

TEST(CommandFile, aFullDiskLosesNothing) {
    const TemporaryFolder folder;
    CommandStore({SnapCommand::custom("Side", 0, 0, 6, 6)}).saveToFile(folder / "commands.json");
    const std::string before = folder.read("commands.json");
    {
        const FileSizeLimit limit(4096);
        EXPECT_EQ(
            errorOf([&folder] { CommandStore().saveToFile(folder / "commands.json"); }).reason(),
            "File too large");
    }
    EXPECT_EQ(folder.read("commands.json"), before);
    EXPECT_EQ(folder.names(), Names{"commands.json"});
}

TEST(CommandFile, aListThatCouldNotBeReadAgainIsNotWritten) {
    const TemporaryFolder folder;
    folder.write("commands.json", "[]");
    const CommandStore store(std::vector<SnapCommand>(SnapCommandCodec::maxCommands + 1));
    EXPECT_EQ(errorOf([&] { store.saveToFile(folder / "commands.json"); }).reason(),
              "File too large");

    SnapCommand large;
    large.nameKey = std::string(SnapCommandCodec::maxStringBytes, 'x');
    large.customName = large.nameKey;
    EXPECT_EQ(errorOf([&] {
                  CommandStore(std::vector<SnapCommand>(SnapCommandCodec::maxCommands, large))
                      .saveToFile(folder / "commands.json");
              }).reason(),
              "File too large");
    EXPECT_EQ(folder.read("commands.json"), "[]");
    EXPECT_EQ(folder.names(), Names{"commands.json"});
}

}  // namespace
}  // namespace lumatile
