#pragma once

#include <string>
#include <string_view>

#include "ports/Notice.h"

/// What the user is told about updates.
namespace lumatile::UpdateTexts {

inline constexpr std::string_view openSoftwareCentre = "Show Updates";
inline constexpr std::string_view install = "Install";

inline Notice available(std::string_view running, std::string_view newVersion,
                        std::string_view action) {
    return {"An update of Lumatile is available",
            "Version " + std::string(newVersion) + " can be installed. You have version " +
                std::string(running) + ".",
            std::string(action)};
}

inline Notice upToDate(std::string_view running) {
    return {"Lumatile is up to date",
            "You have version " + std::string(running) +
                ", the newest that this system's package sources know of.",
            ""};
}

inline Notice noPackage(std::string_view running) {
    return {"This copy of Lumatile is not from a package",
            "It is version " + std::string(running) +
                ". The system keeps installed packages up to date; this copy runs from a folder of "
                "its own and has to be replaced by hand.",
            ""};
}

inline Notice noService(std::string_view running) {
    return {"Updates come with the system",
            "You have version " + std::string(running) +
                ". There is no package service here that could be asked, so a newer version comes "
                "with the next update of the system.",
            ""};
}

inline Notice failed(std::string_view running) {
    return {"Looking for updates failed",
            "The system's package service gave no answer. You have version " +
                std::string(running) + ".",
            ""};
}

inline Notice notInstalled() {
    return {"The update was not installed",
            "The system's package service did not install it. The version that you have stays.",
            ""};
}

inline Notice notOpened() {
    return {"The updates could not be shown",
            "Open the program that shows this system's updates yourself.", ""};
}

inline Notice installed(std::string_view newVersion) {
    return {"The update is installed",
            "Version " + std::string(newVersion) + " runs from the next start of Lumatile on.", ""};
}

}  // namespace lumatile::UpdateTexts
