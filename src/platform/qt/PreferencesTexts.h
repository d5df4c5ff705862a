#pragma once

#include <string>
#include <string_view>

/// What the log and the user are told about the settings file.
namespace lumatile::PreferencesTexts {

inline constexpr std::string_view isFolder = "is a folder";
inline constexpr std::string_view isNoFile = "is no ordinary file";
inline constexpr std::string_view isTooLong = "is too long";
inline constexpr std::string_view isSerialised = "holds serialised values";
inline constexpr std::string_view hasTooManyValues = "holds more than 10,000 values";
inline constexpr std::string_view isNoise = "is no text";

inline constexpr std::string_view isWriteProtected = "it is write-protected";
inline constexpr std::string_view isLocked = "another program keeps it locked";
inline constexpr std::string_view wouldBeTooLong = "it would be too long to be read again";
inline constexpr std::string_view isCut = "it did not reach the disk whole";

inline std::string unreadable(std::string_view why) {
    return "cannot be read (" + std::string(why) + ")";
}

/// @param what one of the above, behind the name of the file
inline std::string refused(std::string_view file, std::string_view what) {
    return std::string(file) + ' ' + std::string(what) +
           ". It is left alone: the settings start with their defaults, and changes are not "
           "stored.";
}

inline std::string notStored(std::string_view file, std::string_view why) {
    return "Changes of the settings are not stored yet: " + std::string(file) +
           " cannot be written (" + std::string(why) + ").";
}

inline std::string notSetAside(std::string_view file, std::string_view why) {
    return std::string(file) + " cannot be set aside (" + std::string(why) + ").";
}

}  // namespace lumatile::PreferencesTexts
