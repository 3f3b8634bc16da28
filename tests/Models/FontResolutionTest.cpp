#include "Models/TextLayer.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>

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

    /// The family and the style in which a letter is really drawn.
    std::string drawnFace()
    {
        QTextLayout layout(QStringLiteral("A"), font());
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const QRawFont face = layout.glyphRuns().first().rawFont();
        return (face.familyName() + QStringLiteral(", ") + face.styleName()).toStdString();
    }
    std::string faceOf(const char *name)
    {
        layer.setFontFamily(QLatin1String(name));
        return drawnFace();
    }

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

TEST_F(FontResolutionTest, AFaceIsFoundByItsFullName)
{
    EXPECT_EQ(faceOf("DejaVu Sans Bold Oblique"), "DejaVu Sans, Bold Oblique");
    EXPECT_EQ(faceOf("Liberation Sans Bold Italic"), "Liberation Sans, Bold Italic");
    EXPECT_EQ(faceOf("Inter Display Semi Bold Italic"), "Inter Display, Semi Bold Italic");
    EXPECT_EQ(faceOf("inter semi bold italic"), "Inter, Semi Bold Italic");
}

TEST_F(FontResolutionTest, AFaceIsFoundByItsPostScriptName)
{
    EXPECT_EQ(faceOf("Inter-SemiBold"), "Inter, Semi Bold");
    EXPECT_EQ(faceOf("InterDisplay-ExtraBoldItalic"), "Inter Display, Extra Bold Italic");
    EXPECT_EQ(faceOf("DejaVuSansCondensed-Bold"), "DejaVu Sans Condensed, Condensed Bold");
    EXPECT_EQ(faceOf("LiberationSansNarrow-Italic"), "Liberation Sans Narrow, Italic");
    EXPECT_EQ(faceOf("DejaVuSans"), "DejaVu Sans, Book");
    EXPECT_EQ(faceOf("LiberationSans"), "Liberation Sans, Regular");
}

TEST_F(FontResolutionTest, AFaceByItsNameIsThatFaceWhateverTheWeight)
{
    layer.setFontFamily(QStringLiteral("Inter-SemiBold"));
    for (const double weight : {100.0, 400.0, 700.0, 900.0}) {
        layer.setFontWeight(weight);
        EXPECT_EQ(drawnFace(), "Inter, Semi Bold") << weight;
        EXPECT_EQ(font().weight(), QFont::DemiBold) << weight;
    }
}

TEST_F(FontResolutionTest, AFamilyWithAStyleThatItHasNotIsTheSystemsFace)
{
    for (const char *name : {"Inter Ultra Wide", "Inter-", "Inter-Bold-Bold", "-Bold", "Bold"}) {
        layer.setFontFamily(QLatin1String(name));
        EXPECT_EQ(font(), systemFont(40, QFont::DemiBold).face) << name;
    }
}

TEST_F(FontResolutionTest, AFamilyComesBeforeAFaceOfThatName)
{
    ASSERT_TRUE(QFontDatabase::hasFamily(QStringLiteral("Inter Semi Bold")));
    layer.setFontFamily(QStringLiteral("Inter Semi Bold"));

    layer.setFontWeight(400);

    EXPECT_EQ(family(), QStringLiteral("Inter Semi Bold"));
    EXPECT_EQ(font().styleName(), QString());
}

TEST_F(FontResolutionTest, AFractionOfASizeIsDrawnFromTheNextWholeOne)
{
    const SizedFont font = layer.resolvedFont(40.5, QFont::DemiBold);

    EXPECT_EQ(font.face.pixelSize(), 41);
    EXPECT_DOUBLE_EQ(font.scale * font.face.pixelSize(), 40.5);
}

} // namespace
} // namespace tessara
