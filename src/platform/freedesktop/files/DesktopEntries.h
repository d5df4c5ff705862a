#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumatile {

/// The installed programs, by their desktop entries: under which name a program is known in every
/// session, whatever its windows say in each.
class DesktopEntries {
public:
    /// @param folders with the entries, the most important first
    explicit DesktopEntries(std::vector<std::filesystem::path> folders)
        : folders_(std::move(folders)) {}

    /// Of the user and the system, as the environment says now.
    static DesktopEntries ofEnvironment();

    /// The id of the entry that `name` means: an entry's id in letters of any case, or the window
    /// class that an entry states, likewise. Where there is none, `name` itself.
    ///
    /// A name is looked up once; an entry that is installed later is found when another name is
    /// asked for. Entries are read bit by bit, a few at each question, so one that is known by its
    /// class alone may be found by a later question.
    std::string idOf(const std::string& name);

    /// ASCII letters made small; window systems that pass classes on do that to them.
    static std::string inSmallLetters(std::string_view text);

    /// Read in one question.
    static constexpr std::size_t filesAtOnce = 32;

private:
    /// What tells that entries have come or gone.
    using Stamps = std::vector<std::optional<std::filesystem::file_time_type>>;

    std::optional<std::string> find(const std::string& name);
    Stamps stamps() const;
    void list();
    void listFolder(const std::filesystem::path& folder);
    void readSome();

    std::vector<std::filesystem::path> folders_;
    std::optional<Stamps> listed_;                // When the names below were listed.
    std::map<std::string, std::string> ids_;      // By themselves in small letters.
    std::map<std::string, std::string> classes_;  // Ids by the class in small letters.
    std::vector<std::pair<std::filesystem::path, std::string>>
        unread_;                                // With their ids, the last first.
    std::map<std::string, std::string> known_;  // Answers.
};

}  // namespace lumatile
