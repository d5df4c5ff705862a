#include "Lumatile/settings/OLEDSectionView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include <cmath>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ChoiceBox.h"

namespace lumatile {

namespace {

constexpr int leastDistance = 1;
constexpr int mostDistance = 6;

constexpr int secondsPerMinute = 60;
constexpr int leastMinutes = 1;
constexpr int mostMinutes = 30;

// Of the strength, in per cent.
constexpr int percentPerStep = 5;
constexpr int leastStrength = 10;
constexpr int mostStrength = 80;
constexpr double hundred = 100;

constexpr int cardSpacing = 18;

int rounded(double value) { return static_cast<int>(std::lround(value)); }

QString said(const std::string& text) { return QString::fromStdString(text); }

/// Of all sliders of the page, so that they begin and end below one another.
QString widestValue() { return said(SettingsTexts::minutes(mostMinutes)); }

}  // namespace

OLEDSectionView::OLEDSectionView(std::shared_ptr<SettingsViewModel> model, const Saying& say,
                                 QWidget* parent)
    : QWidget(parent), model_(std::move(model)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(cardSpacing);
    layout->addWidget(makeOrbit(say));
    layout->addWidget(makeJitter(say));
    layout->addWidget(makeDimming(say));

    auto* footer = new QLabel(say(SettingsTexts::statusNote));
    footer->setWordWrap(true);
    footer->setProperty("tone", QStringLiteral("secondary"));
    footer->setContentsMargins(2, 0, 2, 0);
    layout->addWidget(footer);
    auto* restoreRow = new QHBoxLayout;
    auto* restore = new QPushButton(say(SettingsTexts::restoreRecommended));
    restoreRow->addWidget(restore);
    restoreRow->addStretch(1);
    layout->addLayout(restoreRow);
    layout->addStretch(1);

    connect(restore, &QPushButton::clicked, this,
            [this] { model_->setOLED(OLEDSettings::recommended); });
    observation_ = model_->observe([this] { refresh(); });
    refresh();
}

QWidget* OLEDSectionView::makeOrbit(const Saying& say) {
    auto* card = new Card(say(SettingsTexts::windowOrbit));
    orbit_ = card->addToggle(say(SettingsTexts::driftWindows));
    distance_ =
        card->addSlider(say(SettingsTexts::distance), leastDistance, mostDistance, widestValue());
    interval_ = new ChoiceBox;
    for (const double seconds : OLEDSettings::orbitStepIntervalChoices) {
        interval_->addItem(said(OLEDSettings::orbitStepIntervalLabel(seconds)), seconds);
    }
    card->addRow(say(SettingsTexts::moveEvery), interval_);
    waits_ = card->addToggle(say(SettingsTexts::waitForPause));
    card->addNote(say(SettingsTexts::orbitNote));

    connect(orbit_, &QCheckBox::toggled, this,
            [this](bool on) { edit([on](OLEDSettings& oled) { oled.orbitEnabled = on; }); });
    connect(distance_.slider, &QSlider::valueChanged, this, [this](int pixels) {
        edit([pixels](OLEDSettings& oled) { oled.orbitAmplitude = pixels; });
    });
    connect(interval_, &QComboBox::activated, this, [this](int index) {
        const double seconds = interval_->itemData(index).toDouble();
        edit([seconds](OLEDSettings& oled) { oled.orbitStepInterval = seconds; });
    });
    connect(waits_, &QCheckBox::toggled, this,
            [this](bool on) { edit([on](OLEDSettings& oled) { oled.orbitWaitForPause = on; }); });
    return card;
}

QWidget* OLEDSectionView::makeJitter(const Saying& say) {
    auto* card = new Card(say(SettingsTexts::edgeJitter));
    jitter_ = card->addToggle(say(SettingsTexts::varyEdges));
    range_ = card->addSlider(say(SettingsTexts::range), leastDistance, mostDistance, widestValue());
    card->addNote(say(SettingsTexts::jitterNote));

    connect(jitter_, &QCheckBox::toggled, this,
            [this](bool on) { edit([on](OLEDSettings& oled) { oled.jitterEnabled = on; }); });
    connect(range_.slider, &QSlider::valueChanged, this, [this](int pixels) {
        edit([pixels](OLEDSettings& oled) { oled.jitterTolerance = pixels; });
    });
    return card;
}

QWidget* OLEDSectionView::makeDimming(const Saying& say) {
    auto* card = new Card(say(SettingsTexts::idleDimming));
    dims_ = card->addToggle(say(SettingsTexts::dimWhenIdle));
    after_ = card->addSlider(say(SettingsTexts::after), leastMinutes, mostMinutes,
                             said(SettingsTexts::minutes(mostMinutes)));
    strength_ = card->addSlider(say(SettingsTexts::strength), leastStrength, mostStrength,
                                widestValue(), percentPerStep);
    card->addNote(say(SettingsTexts::dimNote));

    connect(dims_, &QCheckBox::toggled, this,
            [this](bool on) { edit([on](OLEDSettings& oled) { oled.idleDimEnabled = on; }); });
    connect(after_.slider, &QSlider::valueChanged, this, [this](int minutes) {
        edit([minutes](OLEDSettings& oled) { oled.idleThreshold = minutes * secondsPerMinute; });
    });
    connect(strength_.slider, &QSlider::valueChanged, this, [this] {
        // What is told may lie between two steps; the slider itself does not.
        const int percent = strength_.slider->value();
        edit([percent](OLEDSettings& oled) { oled.idleDimStrength = percent / hundred; });
    });
    return card;
}

void OLEDSectionView::edit(const std::function<void(OLEDSettings&)>& change) {
    OLEDSettings settings = model_->oled();
    change(settings);
    model_->setOLED(settings);
}

void OLEDSectionView::refresh() {
    const OLEDSettings& oled = model_->oled();
    orbit_->showState(oled.orbitEnabled);
    distance_.showState(rounded(oled.orbitAmplitude),
                        said(SettingsTexts::pixels(rounded(oled.orbitAmplitude))));
    int choice = interval_->findData(oled.orbitStepInterval);
    if (choice < 0) {
        // A value that is not on offer was stored by other means; it is shown as it is.
        interval_->addItem(said(OLEDSettings::orbitStepIntervalLabel(oled.orbitStepInterval)),
                           oled.orbitStepInterval);
        choice = interval_->count() - 1;
    }
    interval_->setCurrentIndex(choice);
    waits_->showState(oled.orbitWaitForPause);
    distance_.setEnabled(oled.orbitEnabled);
    // The edge jitter moves windows at the same steps.
    const bool hasSteps = oled.orbitEnabled || oled.jitterEnabled;
    interval_->setEnabled(hasSteps);
    waits_->setEnabled(hasSteps);

    jitter_->showState(oled.jitterEnabled);
    range_.showState(rounded(oled.jitterTolerance),
                     said(SettingsTexts::pixels(rounded(oled.jitterTolerance))));
    range_.setEnabled(oled.jitterEnabled);

    dims_->showState(oled.idleDimEnabled);
    const int minutes = rounded(oled.idleThreshold / secondsPerMinute);
    after_.showState(minutes, said(SettingsTexts::minutes(minutes)));
    const int percent = rounded(oled.idleDimStrength * hundred);
    strength_.showState(percent, said(SettingsTexts::percent(percent)));
    after_.setEnabled(oled.idleDimEnabled);
    strength_.setEnabled(oled.idleDimEnabled);
}

}  // namespace lumatile
