// Shows on a private desktop what Lumatile does: presses every default shortcut, prints what was
// asked of the window manager and what the window became, saves pictures.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

#include "demonstration/DemonstrationDesktop.h"
#include "demonstration/ShortcutRound.h"
#include "tests/desktop/support/DesktopError.h"

namespace {

constexpr int wrongUsage = 2;

int demonstrate(const std::filesystem::path& program, const std::filesystem::path& folder) {
    using namespace lumatile::demonstration;

    std::filesystem::create_directories(folder);
    DemonstrationDesktop desktop(program);
    ResultTable table;
    table.printHead();
    pressEveryShortcut(desktop, table);
    std::cout << '\n';
    {
        const Step step("Saving pictures under " + folder.string());
        savePictures(desktop, folder);
    }
    const auto exit = desktop.lumatile().stop();
    std::cout << desktop.lumatile().output();
    const bool endedCleanly = lumatile::desktop::LumatileProcess::isClean(exit);
    if (!endedCleanly) {
        std::cout << "Lumatile did not end cleanly.\n";
    }
    std::cout << table.rows() - table.wrongRows() << " of " << table.rows()
              << " shortcuts did what they should.\n";
    return table.wrongRows() == 0 && endedCleanly ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: " << argv[0] << " PROGRAM FOLDER\n"
                  << "Runs PROGRAM on a private desktop and saves pictures in FOLDER.\n";
        return wrongUsage;
    }
    try {
        return demonstrate(std::filesystem::absolute(argv[1]), std::filesystem::absolute(argv[2]));
    } catch (const std::exception& problem) {
        std::cerr << "The demonstration could not be given: " << problem.what() << '\n';
        return EXIT_FAILURE;
    }
}
