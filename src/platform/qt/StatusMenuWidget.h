#pragma once

#include <QMenu>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/qt/KeySequence.h"
#include "ports/StatusMenuItem.h"

namespace lumatile {

/// The status menu as the toolkit's. What is chosen runs from the run loop, after the menu is done
/// with it.
class StatusMenuWidget {
public:
    enum class Use : std::uint8_t {
        shown,     ///< As a window of this program.
        exported,  ///< Over the bus, drawn by the bar, which has rules of its own for titles.
    };

    explicit StatusMenuWidget(Use use, KeyTexts keyTexts = {});

    /// Replaces all items.
    void fill(const StatusMenu& items);

    void setStatusLine(std::size_t index, const StatusLine& line);
    void setChecked(std::size_t index, bool checked);

    /// Writes the keys of all items anew: the layout may have become another.
    void refreshKeys(const StatusMenu& items);

    QMenu& menu() { return menu_; }

    /// `title` so that it reads as it is, without access keys that nobody meant.
    static QString literalTitle(const std::string& title, Use use);

private:
    QAction* add(const StatusLine& line);
    QAction* add(const ClosureMenuItem& item);
    QAction* add(const MenuHeader& header);
    QAction* add(const MenuSeparator& separator);
    void dress(QAction& action, const StatusLine& line) const;
    void writeKeys(QAction& action, const ClosureMenuItem& item) const;

    Use use_;
    KeyTexts keyTexts_;
    QMenu menu_;
    std::vector<QAction*> actions_;  ///< One for each item; the menu owns them.
};

}  // namespace lumatile
