#pragma once

#include <QString>

#include <set>

class QWidget;

namespace lumatile {

/// The letters by which Alt reaches the controls of a page: one for each text, no two the same.
class Mnemonics {
public:
    /// Marks the texts of all buttons in `page`, and of all labels that belong to a control.
    static void assign(QWidget& page);

    /// `text`, in which an ampersand is written twice, with a mark before a letter that no text
    /// before it got: the first of a word where there is one. Without a mark when none is left.
    QString mark(const QString& text);

private:
    std::set<QChar> taken_;
};

}  // namespace lumatile
