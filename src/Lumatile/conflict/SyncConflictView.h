#pragma once

#include <QWidget>

#include <functional>
#include <string>
#include <string_view>

#include "Lumatile/widgets/Saying.h"
#include "preference_sync/ConflictDifferences.h"
#include "preference_sync/ConflictSummary.h"

class QLabel;
class QPushButton;

namespace lumatile {

/// Two copies of the settings side by side, of which the user keeps one.
class SyncConflictView : public QWidget {
public:
    /// @param choose runs with the user's choice: true keeps this computer's copy
    SyncConflictView(Saying say, std::function<void(bool)> choose, QWidget* parent = nullptr);

    void show(const ConflictSummary& summary, const ConflictDifferences& differences);

    const ConflictSummary& summary() const { return summary_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// A copy with its button.
    struct Choice {
        QWidget* card = nullptr;
        QPushButton* button = nullptr;
        QLabel* edited = nullptr;
        QLabel* badge = nullptr;
        QLabel* differences = nullptr;
    };
    Choice makeChoice(std::string_view copy, std::string_view title, bool preferLocal);
    void showCopy(const Choice& choice, double timestamp, bool isNewer,
                  const std::string& differences);

    Saying say_;
    std::function<void(bool)> choose_;
    ConflictSummary summary_;
    Choice local_;
    Choice remote_;
};

}  // namespace lumatile
