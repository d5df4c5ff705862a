#include "Lumatile/settings/AboutSectionView.h"

#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include <array>

#include "Lumatile/settings/SettingsTexts.h"
#include "Lumatile/widgets/AppFonts.h"
#include "Lumatile/widgets/ApplicationIcon.h"

namespace lumatile {

namespace {

constexpr int iconSide = 96;
constexpr double namePoints = 24;
constexpr double licencePoints = 10.5;

// Everything that is shipped, in the order of the page.
constexpr std::array licenceFiles{":/licences/LICENSE", ":/fonts/ibm-plex-mono-licence.txt",
                                  ":/fonts/hanken-grotesk-licence.txt"};

QString licences() {
    QString all;
    for (const char* path : licenceFiles) {
        QFile file(QString::fromLatin1(path));
        if (file.open(QIODevice::ReadOnly)) {
            all += (all.isEmpty() ? QString() : QStringLiteral("\n\n\n")) +
                   QString::fromUtf8(file.readAll()).trimmed();
        }
    }
    return all;
}

}  // namespace

AboutSectionView::AboutSectionView(const std::string& version, const Saying& say, QWidget* parent)
    : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    auto* icon = new QLabel;
    icon->setPixmap(applicationIcon().pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    icon->setAlignment(Qt::AlignHCenter);
    auto* name = new QLabel(say(SettingsTexts::programName));
    name->setFont(AppFonts::text(namePoints, QFont::Bold));
    name->setAlignment(Qt::AlignHCenter);
    auto* description = new QLabel(say(SettingsTexts::description));
    description->setAlignment(Qt::AlignHCenter);
    description->setWordWrap(true);
    auto* number = new QLabel(QString::fromStdString(SettingsTexts::version(version)));
    number->setAlignment(Qt::AlignHCenter);
    number->setProperty("tone", QStringLiteral("secondary"));
    number->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* heading = new QLabel(say(SettingsTexts::licences));
    heading->setFont(AppFonts::text(13, QFont::DemiBold));
    auto* texts = new QPlainTextEdit(licences());
    texts->setObjectName(QStringLiteral("licences"));
    texts->setReadOnly(true);
    texts->setTabChangesFocus(true);
    texts->setFont(AppFonts::monospaced(licencePoints));
    texts->setAccessibleName(say(SettingsTexts::licences));
    heading->setBuddy(texts);
    layout->addWidget(icon);
    layout->addWidget(name);
    layout->addWidget(description);
    layout->addWidget(number);
    layout->addSpacing(12);
    layout->addWidget(heading);
    layout->addWidget(texts, 1);
}

}  // namespace lumatile
