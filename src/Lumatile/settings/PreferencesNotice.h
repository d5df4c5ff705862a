#pragma once

#include <QWidget>

#include "ports/Preferences.h"

class QLabel;
class QPushButton;

namespace lumatile {

/// Says what is the matter with the stored settings, and offers what can be done about it. Not
/// there while all is well.
class PreferencesNotice : public QWidget {
public:
    /// @param preferences outlive the widget
    explicit PreferencesNotice(Preferences& preferences, QWidget* parent = nullptr);

private:
    void refresh();

    Preferences& preferences_;
    QLabel* line_;
    QPushButton* setAside_;
    ObserverList<>::Subscription observation_;
};

}  // namespace lumatile
