#include "Models/TextLayer.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

namespace tessara {
namespace {

class FontResolutionTest : public testing::Test
{
protected:
    QFont::Weight weightAt(double weight)
    {
        layer.setFontWeight(weight);
        return layer.resolvedFontWeight(QFont::DemiBold);
    }

    QString family() { return font().family(); }
    QFont font() { return layer.resolvedFont(40, QFont::DemiBold).face; }

    TextLayer layer{QUuid::createUuid(), QStringLiteral("Title"), QStringLiteral("Title")};
};

TEST_F(FontResolutionTest, EachHundredHasItsWeight)
{
    EXPECT_EQ(weightAt(249.9), QFont::ExtraLight);
    EXPECT_EQ(weightAt(250), QFont::Light);
    EXPECT_EQ(weightAt(349.9), QFont::Light);
    EXPECT_EQ(weightAt(350), QFont::Normal);
    EXPECT_EQ(weightAt(450), QFont::Medium);
    EXPECT_EQ(weightAt(550), QFont::DemiBold);
    EXPECT_EQ(weightAt(650), QFont::Bold);
    EXPECT_EQ(weightAt(750), QFont::ExtraBold);
    EXPECT_EQ(weightAt(849.9), QFont::ExtraBold);
    EXPECT_EQ(weightAt(850), QFont::Black);
}

TEST_F(FontResolutionTest, WithoutAWeightTheCallersApplies)
{
    EXPECT_EQ(layer.resolvedFontWeight(QFont::Medium), QFont::Medium);
}

TEST_F(FontResolutionTest, AFamilyOfBlanksIsTheSystemsFace)
{
    layer.setFontFamily(QStringLiteral("   "));

    EXPECT_EQ(family(), QStringLiteral("Inter"));
    EXPECT_EQ(font().weight(), QFont::DemiBold);
}

TEST_F(FontResolutionTest, AFamilyThatIsNotInstalledIsTheSystemsFace)
{
    layer.setFontFamily(QStringLiteral("No Such Family"));

    EXPECT_EQ(family(), QStringLiteral("Inter"));
}

TEST_F(FontResolutionTest, ArialIsFoundInAnySpellingWithBlanksAround)
{
    layer.setFontFamily(QStringLiteral("  aRiAl \n"));

    const QString arial = QFontDatabase::hasFamily(QStringLiteral("Arial"))
                              ? QStringLiteral("aRiAl")
                              : QStringLiteral("Liberation Sans");
    EXPECT_EQ(family().toLower(), arial.toLower());
}

TEST_F(FontResolutionTest, BelowBoldAFamilyComesInItsRegularFace)
{
    layer.setFontFamily(QStringLiteral("Noto Sans Thai"));

    layer.setFontWeight(600);
    EXPECT_EQ(font().weight(), QFont::Normal);
    layer.setFontWeight(700);
    EXPECT_EQ(font().weight(), QFont::Bold);
}

TEST_F(FontResolutionTest, AFractionOfASizeIsDrawnFromTheNextWholeOne)
{
    const SizedFont font = layer.resolvedFont(40.5, QFont::DemiBold);

    EXPECT_EQ(font.face.pixelSize(), 41);
    EXPECT_DOUBLE_EQ(font.scale * font.face.pixelSize(), 40.5);
}

} // namespace
} // namespace tessara
