#pragma once

#include <QWidget>

#include <memory>
#include <string_view>

#include "Lumatile/widgets/Saying.h"
#include "onboarding/OnboardingModel.h"
#include "ports/RunLoop.h"

class QLabel;
class QPushButton;
class QStackedWidget;

namespace lumatile {

/// What the onboarding window holds: the page of its model's state.
class OnboardingView : public QWidget {
public:
    /// @param model observed by this view alone, for as long as it lives
    /// @param runLoop outlives the view
    OnboardingView(std::shared_ptr<OnboardingModel> model, RunLoop& runLoop, Saying say,
                   QWidget* parent = nullptr);
    OnboardingView(const OnboardingView&) = delete;
    OnboardingView& operator=(const OnboardingView&) = delete;
    ~OnboardingView() override;

    /// The button that the Return key presses now.
    QPushButton* defaultButton() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeRequestPage();
    QWidget* makeReadyPage();
    static QWidget* makeHint(std::string_view symbol, const QColor& color, QLabel* words);
    void refresh();
    void refreshAdvice();

    std::shared_ptr<OnboardingModel> model_;
    RunLoop& runLoop_;
    Saying say_;
    QStackedWidget* pages_;
    QWidget* requestPage_ = nullptr;
    QWidget* readyPage_ = nullptr;
    QLabel* waiting_ = nullptr;
    QLabel* missing_ = nullptr;
    QWidget* adviceRow_ = nullptr;
    QLabel* advice_ = nullptr;
    QPushButton* open_ = nullptr;
    QPushButton* done_ = nullptr;
};

}  // namespace lumatile
