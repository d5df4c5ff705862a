#pragma once

#include <string_view>

namespace lumatile {

/// What a settings file may hold before the toolkit reads it.
struct SettingsText {
    SettingsText() = delete;

    /// False for a text with a long serialised value. The toolkit decodes such values while it
    /// reads the file, one inside the other as deep as the file says, until its stack ends. The
    /// program stores none; a short one, as other versions may store, is harmless.
    static bool isSafeToRead(std::string_view text);
};

}  // namespace lumatile
