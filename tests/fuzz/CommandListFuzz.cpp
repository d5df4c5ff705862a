#include <string>
#include <utility>
#include <vector>

#include "commands/CommandStore.h"
#include "commands/SnapCommandCodec.h"
#include "geometry/Grid.h"
#include "tests/fuzz/FuzzInput.h"

namespace lumatile {
namespace {

void checkReadBack(const std::vector<SnapCommand>& commands) {
    for (const KeyOrder order : {KeyOrder::field, KeyOrder::sorted}) {
        for (const JSONLayout layout : {JSONLayout::compact, JSONLayout::pretty}) {
            fuzzRequire(SnapCommandCodec::decodeList(
                            SnapCommandCodec::encodeList(commands, order, layout)) == commands,
                        "what is written is read back");
        }
    }
}

void use(CommandStore& store, const std::string& bytes) {
    for (const SnapCommand& command : store.commands) {
        fuzzRequire(command.displayName().size() <= 3 * SnapCommandCodec::maxStringBytes,
                    "names are bounded");
        const Rect frame{0, 0, 1920, 1080};
        Grid::rect(command.targetArea(), frame, command.axis);
        Grid::contains({960, 540}, command.activationArea(), frame, command.axis);
        fuzzRequire(store.counterpart(command, command.axis) == command,
                    "a command stands for itself on its own axis");
        store.counterpart(command, Axis::vertical);
    }
    fuzzRequire(store.hotkeyBindings().size() <= store.commands.size(),
                "a command has one hot key at most");
    const UUID id = store.addCustomArea(0, 0, 6, 6).value();
    store.rename(id, bytes);
    checkReadBack(store.commands);
}

}  // namespace
}  // namespace lumatile

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace lumatile;
    const std::string bytes = fuzzInput(data, size);
    // What cannot be decoded ends here: to build the default commands for it would take most of
    // the time and never be another list.
    if (auto commands = SnapCommandCodec::decodeList(bytes)) {
        CommandStore store(*commands);
        use(store, bytes);
        const std::vector<SnapCommand> merged = CommandStore::merged(*std::move(commands));
        fuzzRequire(merged.size() >= 34, "every built-in command is there");
        fuzzRequire(CommandStore::merged(merged) == merged, "merging again changes nothing");
    }
    return 0;
}
