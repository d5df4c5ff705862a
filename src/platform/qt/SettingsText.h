#pragma once

#include <string_view>

namespace lumatile {

/// What a settings file may hold before the toolkit reads it.
struct SettingsText {
    SettingsText() = delete;

    /// False for a text with a serialised value, which the program never stores. The toolkit
    /// decodes such values while it reads the file, one inside the other as deep as the file says
    /// until its stack ends, and makes room for as many elements as the file says there are.
    static bool isSafeToRead(std::string_view text);
};

}  // namespace lumatile
