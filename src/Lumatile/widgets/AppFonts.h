#pragma once

#include <QFont>

namespace lumatile {

/// The fonts of the program's own windows. They belong to the process alone.
struct AppFonts {
    AppFonts() = delete;

    /// The name by which monospaced text is asked for: status lines, shortcuts, values.
    static constexpr const char* monospacedName = "IBMPlexMono-Regular";

    /// Makes the packaged fonts known to the toolkit, once. One that is missing is passed over, and
    /// the system's takes its place wherever it is asked for. What asks for a font below does not
    /// have to call this; unpacked they take more memory than the rest of an idle program's own.
    static void registerFonts();

    /// Text of `points`, which grows with the font size that the user has set for the desktop.
    /// @param weight heavier than semi-bold is shown bold, lighter than medium regular
    static QFont text(double points, QFont::Weight weight = QFont::Normal);

    static QFont monospaced(double points);

    /// How many logical pixels a point of these is: 1 on a desktop with the usual font size or a
    /// smaller one.
    static double pixelsPerPoint();
};

}  // namespace lumatile
