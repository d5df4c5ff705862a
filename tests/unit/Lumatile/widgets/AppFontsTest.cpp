#include "Lumatile/widgets/AppFonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>

#include <gtest/gtest.h>

namespace lumatile {
namespace {

class AppFontsTest : public testing::Test {
protected:
    AppFontsTest() { AppFonts::registerFonts(); }
};

TEST_F(AppFontsTest, thePackagedFacesAreUsed) {
    EXPECT_EQ(QFontInfo(AppFonts::text(13)).family(), "Hanken Grotesk");
    EXPECT_EQ(QFontInfo(AppFonts::monospaced(12)).family(), "IBM Plex Mono");
    EXPECT_EQ(QFontInfo(AppFonts::monospaced(12)).weight(), QFont::Normal);
}

TEST_F(AppFontsTest, everyWeightHasItsFace) {
    struct Case {
        QFont::Weight asked;
        QFont::Weight face;
    };
    for (const Case& each :
         {Case{QFont::Thin, QFont::Normal}, Case{QFont::Light, QFont::Normal},
          Case{QFont::Normal, QFont::Normal}, Case{QFont::Medium, QFont::Medium},
          Case{QFont::DemiBold, QFont::DemiBold}, Case{QFont::Bold, QFont::Bold},
          Case{QFont::ExtraBold, QFont::Bold}, Case{QFont::Black, QFont::Bold}}) {
        EXPECT_EQ(AppFonts::text(13, each.asked).weight(), each.face) << each.asked;
        EXPECT_EQ(QFontInfo(AppFonts::text(13, each.asked)).weight(), each.face) << each.asked;
    }
}

TEST_F(AppFontsTest, aMissingFaceIsTheSystemsOfThatSizeAndWeight) {
    QFontDatabase::removeAllApplicationFonts();
    const QFont text = AppFonts::text(13, QFont::Bold);
    EXPECT_EQ(text.families(), QApplication::font().families());
    EXPECT_EQ(text.weight(), QFont::Bold);
    const QFont monospaced = AppFonts::monospaced(12);
    EXPECT_EQ(monospaced.families(),
              QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    AppFonts::registerFonts();
    EXPECT_EQ(monospaced.pixelSize(), AppFonts::monospaced(12).pixelSize());
    EXPECT_EQ(text.pixelSize(), AppFonts::text(13).pixelSize());
}

}  // namespace
}  // namespace lumatile
