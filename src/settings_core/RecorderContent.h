#pragma once

#include <cstdint>
#include <optional>

#include "commands/Shortcut.h"

namespace lumatile {

/// What the shortcut recorder shows.
enum class RecorderContent : std::uint8_t { typeAShortcut, shortcut, clickToRecord };

/// The first that applies: it records; it has a shortcut that is on; there is nothing to show.
constexpr RecorderContent recorderContent(bool isRecording,
                                          const std::optional<Shortcut>& current) {
    if (isRecording) {
        return RecorderContent::typeAShortcut;
    }
    return current && current->enabled ? RecorderContent::shortcut : RecorderContent::clickToRecord;
}

}  // namespace lumatile
