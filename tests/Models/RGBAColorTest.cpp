#include "Models/RGBAColor.h"

#include <gtest/gtest.h>

#include <limits>

namespace tessara {
namespace {

TEST(RGBAColorTest, ReadsBackWhatItWrites)
{
    const RGBAColor color{0.1, 0.2, 0.3, 0.4};

    EXPECT_EQ(RGBAColor::fromJson(color.toJson()), color);
}

TEST(RGBAColorTest, AMissingOrMistypedPartIsAnErrorThatNamesIt)
{
    for (const char *part : {"red", "green", "blue", "alpha"}) {
        QJsonObject missing = RGBAColor::white.toJson();
        missing.remove(QLatin1String(part));
        const auto color = RGBAColor::fromJson(missing);
        ASSERT_FALSE(color);
        EXPECT_TRUE(color.error().contains(QLatin1String(part)));

        QJsonObject mistyped = RGBAColor::white.toJson();
        mistyped[QLatin1String(part)] = QStringLiteral("1");
        EXPECT_FALSE(RGBAColor::fromJson(mistyped));
    }
    EXPECT_FALSE(RGBAColor::fromJson(QJsonValue(3)));
}

TEST(RGBAColorTest, AnInvalidColourIsWhite)
{
    EXPECT_EQ(RGBAColor::fromColor(QColor()), RGBAColor::white);
}

TEST(RGBAColorTest, APlatformColourIsTakenIntoRGB)
{
    const RGBAColor color = RGBAColor::fromColor(QColor::fromHsvF(0, 1, 1, 0.5F));

    EXPECT_NEAR(color.red, 1, 1e-4);
    EXPECT_NEAR(color.green, 0, 1e-4);
    EXPECT_NEAR(color.alpha, 0.5, 1e-4);
}

TEST(RGBAColorTest, PartsBeyondTheirRangeAreCut)
{
    const QColor color = RGBAColor{7, -1, std::numeric_limits<double>::quiet_NaN(), 1}.color();

    EXPECT_EQ(color, QColor(255, 0, 0));
}

} // namespace
} // namespace tessara
