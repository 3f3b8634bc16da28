#include "Rendering/DrawnText.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

QString repeated(const QString &piece, qsizetype characters)
{
    return piece.repeated(characters / piece.size());
}

TEST(DrawnText, AnHonestTextIsDrawnWhole)
{
    const QString texts[] = {
        {},
        QStringLiteral("Final score"),
        QStringLiteral("ที่นี่มีน้ำท่วม\nالطريق الساحلي مغلق\n👩‍👩‍👧‍👦 "
                       "👍🏽 "
                       "🇹🇭"),
        repeated(QStringLiteral("Cast of thousands: Jane Doe as herself\n"), 50'000),
        QLatin1Char('a') + QStringLiteral("\u0301").repeated(60),
        QStringLiteral("⚽").repeated(500),
    };

    for (const QString &text : texts) {
        EXPECT_EQ(drawnText(text), text);
        EXPECT_TRUE(isDrawnWhole(text));
    }
}

TEST(DrawnText, LineBreaksOfTwoCharactersCountAsOne)
{
    const QString text = QStringLiteral("\r\n").repeated(mostDrawnCharacters);

    EXPECT_EQ(drawnText(text), QString(mostDrawnCharacters, QLatin1Char('\n')));
    EXPECT_TRUE(isDrawnWhole(text));
}

TEST(DrawnText, BreaksOfOtherProgramsAreLineBreaks)
{
    const QString text = QStringLiteral("Jane Doe\vReporter\fCoast\u0085News");

    EXPECT_EQ(drawnText(text), QStringLiteral("Jane Doe\nReporter\nCoast\nNews"));
    EXPECT_TRUE(isDrawnWhole(text));
}

TEST(DrawnText, CharactersThatNoFontHasAShapeForAreLeftOut)
{
    const QString text =
        QLatin1Char('A') + QString(3, QChar(0)) + QStringLiteral("\a\x1b[0m\u007f\u0090\tB\rC");

    EXPECT_EQ(drawnText(text), QStringLiteral("A[0m\tB\rC"));
    EXPECT_TRUE(isDrawnWhole(text));
}

TEST(DrawnText, OfAMegabyteTheBeginningIsDrawn)
{
    const QString text = repeated(QStringLiteral("The coast road is closed\n"), 1'000'000);

    EXPECT_EQ(drawnText(text), text.left(mostDrawnCharacters));
    EXPECT_FALSE(isDrawnWhole(text));
}

TEST(DrawnText, ALetterOfTwoCharactersIsNotCutInHalves)
{
    const QString text = QLatin1Char('a') + QStringLiteral("𐍈").repeated(mostDrawnCharacters);

    EXPECT_EQ(drawnText(text).size(), mostDrawnCharacters - 1);
    EXPECT_TRUE(drawnText(text).back().isLowSurrogate());
}

TEST(DrawnText, ALetterCarriesNoMoreMarksThanCanBeToldApart)
{
    const QString tower = QLatin1Char('a') + QStringLiteral("\u0301").repeated(5'000);
    const QString text = tower + QStringLiteral("b") + tower;

    const QString low = tower.left(1 + mostDrawnMarks);
    EXPECT_EQ(drawnText(text), low + QStringLiteral("b") + low);
    EXPECT_FALSE(isDrawnWhole(text));
}

TEST(DrawnText, BeyondAThousandPicturesOnlyLettersAreDrawn)
{
    const QString pictures = QStringLiteral("😀").repeated(mostDrawnSymbols);

    EXPECT_EQ(drawnText(pictures + QStringLiteral("⚽👍🏽 goal")),
              pictures + QStringLiteral(" goal"));
    EXPECT_FALSE(isDrawnWhole(pictures + QStringLiteral("⚽")));
}

} // namespace
} // namespace tessara
