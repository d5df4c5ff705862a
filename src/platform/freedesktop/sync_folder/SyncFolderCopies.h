#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "preference_sync/SharedSet.h"

/// What lies in a shared folder beside the file that counts. Everything here waits for the file
/// system.
namespace lumatile::SyncFolderCopies {

/// A copy from a collision.
struct Copy {
    std::filesystem::path path;
    std::string text;
    SharedSet set;
};

/// Copies that one look may read: what is no copy in spite of its name costs as much as one.
constexpr std::size_t mostLooked = 64;

struct Found {
    std::vector<Copy> copies;  ///< Those that can be read; others may still be arriving.
    std::string lookedTo;      ///< The last name that was looked at; empty when it was the last.
};

/// Looks at copies in `folder` in the order of their names, from the one behind `after`.
Found find(const std::filesystem::path& folder, const std::string& after);

/// Renames a file of `folder` into that for copies, under `name` where nothing else has it.
/// @param text what the file holds; empty when that is not known
/// @return whether it lies there now
bool putAside(const std::filesystem::path& folder, const std::filesystem::path& file,
              const std::string& name, const std::string& text);

/// Writes a set that does not count, and may lie nowhere else, into the folder for copies.
/// @param writer as for `AtomicFile::replace`
/// @return whether it lies there now
bool keep(const std::filesystem::path& folder, const std::string& text, const SharedSet& set,
          const std::string& writer);

}  // namespace lumatile::SyncFolderCopies
