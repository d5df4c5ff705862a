#pragma once

#include <QString>

namespace lumatile {

/// A text whose bold parts stand between pairs of asterisks.
struct BoldText {
    QString rich;   ///< For a label that shows rich text.
    QString plain;  ///< Without the marks, for a screen reader.

    /// An asterisk pair without its counterpart marks the rest.
    static BoldText of(const QString& marked);
};

}  // namespace lumatile
