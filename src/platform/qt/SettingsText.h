#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lumatile {

/// What a settings file may hold before the toolkit reads it.
struct SettingsText {
    SettingsText() = delete;

    /// Why a text is not read.
    enum class Fault : std::uint8_t {
        none,
        /// A serialised value, which the program never stores. The toolkit decodes such values
        /// while it reads the file, one inside the other as deep as the file says until its stack
        /// ends, and makes room for as many elements as the file says there are.
        serialised,
        tooManyValues,  ///< The toolkit takes seconds and hundreds of megabytes for a million.
        noise           ///< Control characters, which are always escaped in such a file.
    };

    /// The program stores a dozen values. Of a list each element counts.
    static constexpr int mostValues = 10'000;

    /// Zeros alone are no fault: a power cut leaves them in the place of a file.
    static Fault fault(std::string_view text);

    /// How many keys with a value the toolkit finds in a text without fault.
    static std::size_t keyCount(std::string_view text);
};

}  // namespace lumatile
