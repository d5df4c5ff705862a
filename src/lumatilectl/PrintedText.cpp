#include "lumatilectl/PrintedText.h"

#include <cstddef>

namespace lumatile {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

// In UTF-8 the controls from U+0080 to U+009F are this byte and one from 0x80 to 0x9F.
constexpr char upperControlsLead = '\xC2';

bool isUpperControl(std::string_view text, std::size_t at) {
    return text[at] == upperControlsLead && at + 1 < text.size() &&
           static_cast<unsigned char>(text[at + 1]) >= 0x80 &&
           static_cast<unsigned char>(text[at + 1]) <= 0x9F;
}

}  // namespace

std::string printedText(std::string_view name) {
    std::string result;
    result.reserve(name.size());
    for (std::size_t at = 0; at < name.size(); ++at) {
        const auto byte = static_cast<unsigned char>(name[at]);
        if (byte < 0x20 || byte == 0x7F) {
            result += replacement;
        } else if (isUpperControl(name, at)) {
            result += replacement;
            ++at;
        } else {
            result += name[at];
        }
    }
    return result;
}

}  // namespace lumatile
