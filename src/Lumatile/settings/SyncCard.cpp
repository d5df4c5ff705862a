#include "Lumatile/settings/SyncCard.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <string>
#include <utility>

#include "Lumatile/SyncStatusText.h"
#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ChoiceBox.h"
#include "Lumatile/widgets/LocaleTime.h"
#include "Lumatile/widgets/WidgetStyle.h"

namespace lumatile {

namespace {

constexpr double notePoints = 12;
constexpr int noteMargin = 10;
// Room for a folder in the user's home; a longer path loses its middle.
constexpr int shownCharacters = 26;

// The places of the choices; the last one leads to the folder dialog.
constexpr int none = 0;
constexpr int present = 1;

/// As the user writes it: with a tilde for the home folder.
QString shortened(const QString& folder) {
    const QString home = QDir::homePath();
    if (folder == home || folder.startsWith(home + QLatin1Char('/'))) {
        return QLatin1Char('~') + folder.mid(home.size());
    }
    return folder;
}

std::string timeText(double time) {
    constexpr double millisecondsPerSecond = 1000;
    const auto moment =
        QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(time * millisecondsPerSecond));
    const QLocale locale = QLocale::system();
    return locale.toString(moment, withoutSeconds(locale.dateTimeFormat(QLocale::ShortFormat)))
        .toStdString();
}

}  // namespace

SyncCard::SyncCard(SharedStore& sharedStore, Saying say, QWidget* parent)
    : Card(say(SettingsTexts::sync), parent),
      sharedStore_(sharedStore),
      say_(std::move(say)),
      location_(new ChoiceBox),
      status_(new QLabel),
      replace_(new QPushButton(say_(SettingsTexts::replaceShared))) {
    location_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    location_->setMinimumContentsLength(shownCharacters);
    addRow(say_(SettingsTexts::shareThrough), location_);

    auto* below = new QWidget;
    auto* column = new QVBoxLayout(below);
    column->setContentsMargins(0, noteMargin, 0, noteMargin);
    status_->setFont(AppFonts::text(notePoints));
    status_->setProperty("tone", QStringLiteral("secondary"));
    status_->setWordWrap(true);
    column->addWidget(status_);
    column->addWidget(replace_, 0, Qt::AlignLeft);
    addWidget(below);

    connect(location_, &QComboBox::activated, this, [this](int index) { choose(index); });
    connect(replace_, &QPushButton::clicked, this, [this] {
        sharedStore_.startAnew();
        refresh();
    });
    watch_ = sharedStore_.observe([this](const SharedStoreChange&) { refresh(); });
    refresh();
}

SyncCard::~SyncCard() = default;

void SyncCard::refresh() {
    SharedStoreStatus status = sharedStore_.status();
    const bool isShared = status.condition != SharedStoreStatus::Condition::noLocation;
    const QString folder = QString::fromStdString(status.location);
    status.location = shortened(folder).toStdString();
    status.copiesLocation = shortened(QString::fromStdString(status.copiesLocation)).toStdString();

    location_->clear();
    location_->addItem(say_(SettingsTexts::shareNot));
    if (isShared) {
        location_->addItem(shortened(folder));
        location_->setItemData(present, folder, Qt::ToolTipRole);
    }
    location_->addItem(say_(SettingsTexts::chooseFolder));
    location_->setCurrentIndex(isShared ? present : none);
    location_->setToolTip(isShared ? folder : QString());

    // Already in the words of this host; a folder by the name of a noun of others is the user's.
    QStringList lines;
    const auto say = [&lines](const std::string& line) {
        if (!line.empty()) {
            lines.push_back(QString::fromStdString(line));
        }
    };
    say(SyncStatusText::lastSynced(status, timeText));
    say(SyncStatusText::failure(status));
    say(SyncStatusText::clocks(status));
    say(SyncStatusText::copies(status));
    for (const std::string& sentence : SyncStatusText::kept(status)) {
        say(sentence);
    }
    status_->setText(lines.join(QLatin1Char('\n')));
    replace_->setVisible(SyncStatusText::offersStartAnew(status));
}

void SyncCard::choose(int index) {
    if (index == none) {
        sharedStore_.setLocation(std::nullopt);
        refresh();
    } else if (index == location_->count() - 1) {
        chooseFolder();
        // What is chosen there is not chosen yet.
        refresh();
    }
}

void SyncCard::chooseFolder() {
    auto* const dialog = new QFileDialog(window(), say_(SettingsTexts::chooseFolderTitle));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Where it is not the desktop's own: a window takes neither colours nor fonts over.
    dialog->setObjectName(QStringLiteral("settingsWindow"));
    WidgetStyle::apply(*dialog);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& folder) {
        sharedStore_.setLocation(folder.toStdString());
        refresh();
    });
    // Not waited for: windows go on being looked after.
    dialog->open();
}

}  // namespace lumatile
