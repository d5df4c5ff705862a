#pragma once

#include <string>
#include <string_view>

#include "onboarding/HostDesktop.h"
#include "onboarding/KeyWords.h"

namespace lumatile {

/// The nouns in the texts of the interface that would be false on another host, and how it writes
/// keys. The texts themselves are written once, with the nouns of the reference and with shortcuts
/// as `ShortcutFormatter` gives them; `apply` puts the host's in their place and leaves every other
/// word as it is. What belongs to the user, such as a name, is put into a text after that.
struct Vocabulary {
    /// A noun in its two places. A sentence that begins with it gets a capital letter.
    struct Noun {
        std::string inSentence;
        std::string inTitle;  ///< In titles and on buttons.

        bool operator==(const Noun&) const = default;
    };

    Noun system;                  ///< What tiles windows by itself: "macOS".
    Noun computer;                ///< "Mac".
    Noun sharedPlace;             ///< Where settings are shared: "iCloud".
    std::string settingsProgram;  ///< "System Settings".
    std::string tilingSettings;   ///< The way to the switches of the system's tiling.
    std::string tilingPane;       ///< The last step of that way as a button names it.
    std::string tilingOptions;    ///< The switches there.
    std::string windowMenu;       ///< The menu by which the system itself places a window.
    bool keysByName = false;      ///< "Ctrl+Alt+Left" in place of glyphs.

    /// What the present layout has on the keys, by what a US keyboard has there ("Z"); a key that
    /// is missing is as on that.
    KeyWords::Legends legends;

    bool operator==(const Vocabulary&) const = default;

    /// The nouns that the texts are written with: `apply` then changes nothing.
    static Vocabulary reference();

    /// The nouns of a desktop; in a session of another name, the window manager's.
    static Vocabulary of(const HostDesktop& host);

    /// `text` with the reference's nouns replaced, each where it stands as a word of its own; what
    /// was put in is not looked at again.
    std::string apply(std::string_view text) const;

    /// Whether `apply` would find a key in it, and with that ask for `legends`.
    static bool namesKeys(std::string_view text);

private:
    std::string withNouns(std::string_view text) const;
};

}  // namespace lumatile
