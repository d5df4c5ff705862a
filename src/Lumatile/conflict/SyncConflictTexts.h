#pragma once

#include <string_view>

/// Every text of the conflict window, in the words of the reference: `Vocabulary::apply` makes them
/// true on the host.
namespace lumatile::SyncConflictTexts {

inline constexpr std::string_view windowTitle = "iCloud Sync";
inline constexpr std::string_view symbol = "arrow.triangle.2.circlepath.icloud";
inline constexpr std::string_view heading = "Settings Conflict";
inline constexpr std::string_view explanation =
    "Your Lumatile settings changed on this Mac and in iCloud since they last synced. Choose which "
    "copy to keep.";
inline constexpr std::string_view keepLocal = "Keep This Mac";
inline constexpr std::string_view useRemote = "Use iCloud";

/// What the two copies are called.
inline constexpr std::string_view localCopy = "This computer";
inline constexpr std::string_view remoteCopy = "Shared folder";

/// Stands before the time of the copy's last change.
inline constexpr std::string_view edited = "Edited ";

/// The badge of the copy that was changed last.
inline constexpr std::string_view newer = "Newer";

}  // namespace lumatile::SyncConflictTexts
