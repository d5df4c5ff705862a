#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/freedesktop/files/KeyFileText.h"
#include "platform/freedesktop/login/DesktopEntryText.h"
#include "tests/fuzz/FuzzInput.h"

// Autostart entries and the settings of window managers are files that anything may have written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using lumatile::fuzzRequire;
    namespace DesktopEntryText = lumatile::DesktopEntryText;

    const std::string bytes = lumatile::fuzzInput(data, size);
    auto file = lumatile::KeyFileText::parse(bytes);
    if (!file) {
        return 0;
    }
    fuzzRequire(file->text().starts_with(bytes), "what is not changed stays");
    for (const auto& entry : file->entries()) {
        const auto program = DesktopEntryText::program(entry.value);
        const auto exec = program ? DesktopEntryText::exec(*program) : std::nullopt;
        fuzzRequire(!exec || DesktopEntryText::program(*exec) == program,
                    "a program that was read can be written");
    }
    const std::size_t before = file->entries().size();
    const bool wasThere = file->value("Desktop Entry", "Hidden").has_value();
    file->set("Desktop Entry", "Hidden", "true");
    fuzzRequire(file->value("Desktop Entry", "Hidden") == "true", "what was set is read");
    fuzzRequire(file->entries().size() == before + (wasThere ? 0 : 1), "nothing else comes");
    file->remove("Desktop Entry", "Hidden");
    fuzzRequire(!file->value("Desktop Entry", "Hidden"), "what was removed is gone");
    return 0;
}
