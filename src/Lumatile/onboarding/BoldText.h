#pragma once

#include <QString>

namespace lumatile {

/// A text whose bold parts stand between pairs of asterisks.
struct BoldText {
    QString rich;   ///< For a label that shows rich text.
    QString plain;  ///< Without the marks, for a screen reader.

    /// An asterisk pair without its counterpart marks the rest.
    static BoldText of(const QString& marked);

    /// With `first` and `second` in the places of "%1" and "%2", as they are: what looks like a
    /// mark in them is none.
    BoldText with(const QString& first, const QString& second) const;
};

}  // namespace lumatile
