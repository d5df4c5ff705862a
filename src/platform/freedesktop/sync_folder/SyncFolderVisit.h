#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "preference_sync/SharedSet.h"

namespace lumatile {

/// One look into a folder that several computers share, and what is to be written there. It waits
/// for the file system, for ever on a network mount that is gone, and so belongs on no thread that
/// anybody waits for; it touches nothing but its own values and the folder.
class SyncFolderVisit {
public:
    /// The one file that counts.
    static constexpr const char* fileName = "lumatile-settings.json";
    /// Where copies from collisions are put, below the folder.
    static constexpr const char* asideName = "lumatile-settings-copies";

    /// What the visitor wants.
    struct Errand {
        std::filesystem::path folder;
        /// What is to be written; absent: nothing.
        std::optional<std::string> text;
        /// It is written only over this, the text read last; absent: only where there is no file.
        std::optional<std::string> over;
        /// It is written as well where there is no file or a damaged one, which is put aside
        /// before.
        bool overAnything = false;
        /// A copy from a collision takes the place of a file that is not there. Services make room
        /// first and let the other file appear a moment later, so not where one is expected.
        bool mayBegin = false;
        /// A copy from a collision takes the place of a damaged file when it was changed later than
        /// that, seconds since 1970-01-01 00:00 UTC.
        double knownTime = 0;
        /// What it is written over is put among the copies before.
        bool keepsReplaced = false;
        /// What is to be written among the copies, each in the form of the file.
        std::vector<std::string> toKeep;
        /// Copies from collisions are looked at from the one behind this name.
        std::string copiesAfter;
        /// This computer's name for `AtomicFile::replace`, and whether what an earlier process of
        /// that name has left half written is removed.
        std::string writer;
        bool clears = false;
        /// What this program wrote there last.
        std::optional<std::string> own;
        /// For so long a file that somebody else put there is left alone. While a service puts one
        /// in its place it does not listen: a change at that moment it would find only at its next
        /// look at everything, which may be an hour away.
        int restMilliseconds = 0;
    };

    enum class File {
        unreachable,  ///< The folder, or the file in it, could not be read.
        absent,
        damaged,  ///< Not what another computer wrote, or not all of it.
        good,
    };

    File file = File::unreachable;
    std::string text;          ///< Of a good file.
    SharedSet set;             ///< That it holds.
    bool hasWritten = false;   ///< The errand's text is the file now, which `text` and `set` are.
    bool isOwn = false;        ///< This visit put the file there.
    bool awaitsRest = false;   ///< There is something to do, for which it was too soon.
    bool isRemote = false;     ///< Changes by other computers may go unseen by the kernel here.
    std::string readFailure;   ///< In the system's words; empty where there was none.
    std::string writeFailure;  ///< Likewise.
    std::size_t copiesPutAside = 0;
    std::size_t kept = 0;  ///< So many of what was to be kept, from the first on, lie there.
    bool hasKeptReplaced = false;  ///< What the errand's text was written over lies there as well.
    std::string copiesAfter;       ///< Where the next visit goes on with the copies; empty: it is
                                   ///< through.

    /// Looks, puts copies from collisions aside after the newest of all has become the file, and
    /// writes.
    explicit SyncFolderVisit(const Errand& errand);

private:
    void look(const Errand& errand);
    bool isTooSoon(const Errand& errand) const;
    void keep(const Errand& errand);
    void settleCopies(const Errand& errand);
    void write(const Errand& errand);
    void readFile(const std::filesystem::path& folder);
};

}  // namespace lumatile
