#include "platform/freedesktop/sync_folder/CollisionCopyName.h"

#include <algorithm>
#include <array>

namespace lumatile {

namespace {

constexpr std::size_t longestName = 255;  // Bytes, of the usual file systems.

struct Mark {
    std::string_view begin;
    std::string_view end;
};

// What stands between the name and its ending.
constexpr std::array<Mark, 6> marks{{
    {" (", ")"},              // A number, "conflicted copy …", "Somebody's conflicted copy …".
    {" [", "]"},              // The same in brackets.
    {".sync-conflict-", ""},  // With date, time and device.
    {"_conflict-", ""},
    {"-conflict-", ""},
    {".conflict", ""},
}};

}  // namespace

bool CollisionCopyName::isCopyOf(std::string_view original, std::string_view name) {
    const std::size_t dot = original.rfind('.');
    const std::string_view stem = original.substr(0, dot);
    const std::string_view ending =
        dot == std::string_view::npos ? std::string_view() : original.substr(dot);
    if (name.size() > longestName || name.size() <= original.size() || !name.starts_with(stem) ||
        !name.ends_with(ending)) {
        return false;
    }
    const std::string_view between =
        name.substr(stem.size(), name.size() - stem.size() - ending.size());
    return std::any_of(marks.begin(), marks.end(), [&](const Mark& mark) {
        return between.size() > mark.begin.size() + mark.end.size() &&
               between.starts_with(mark.begin) && between.ends_with(mark.end);
    });
}

}  // namespace lumatile
