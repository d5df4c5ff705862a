#pragma once

#include <QImage>
#include <QString>

namespace lumatile {

/// Draws a status picture that is kept as an SVG file of one black path, whose commands are M, L
/// and z with absolute places: the toolkit's reader of such files is a library that nothing else
/// here needs, and which takes longer to load than the status item to appear.
struct StatusDrawing {
    StatusDrawing() = delete;

    /// @param path of the file, which may be a resource
    /// @param extent width and height of the result, pixels
    /// @return null where there is no such file, or something else is in it
    static QImage read(const QString& path, int extent);
};

}  // namespace lumatile
