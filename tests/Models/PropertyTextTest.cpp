#include "Models/PropertyText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tessara {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(PropertyTextTest, ANumberIsRoundedAsCRoundsIt)
{
    EXPECT_EQ(encNumber(0.125, 2), QStringLiteral("0.12")); // a tie, to the even neighbour
    EXPECT_EQ(encNumber(0.375, 2), QStringLiteral("0.38"));
    EXPECT_EQ(encNumber(2.5, 0), QStringLiteral("2"));
    EXPECT_EQ(encNumber(-0.001, 2), QStringLiteral("-0.00"));
    EXPECT_EQ(encNumber(1234567.891, 2), QStringLiteral("1234567.89"));
    EXPECT_EQ(encNumber(1, 4), QStringLiteral("1.0000"));
}

TEST(PropertyTextTest, EveryDoubleHasAText)
{
    EXPECT_EQ(encNumber(-std::numeric_limits<double>::max(), 6).size(), 1 + 309 + 1 + 6);
    EXPECT_EQ(encNumber(infinity, 2), QStringLiteral("inf"));
    EXPECT_EQ(encNumber(std::nan(""), 2), QStringLiteral("nan"));
}

TEST(PropertyTextTest, ANumberIsReadByTheRulesOfC)
{
    EXPECT_EQ(parseNumber(u"-1.5e2"), -150);
    EXPECT_EQ(parseNumber(u"+1"), 1);
    for (const QStringView text : {u"", u".", u"1,5", u"1_000", u"0x10", u"1.5 pt"})
        EXPECT_FALSE(parseNumber(text)) << text.toUtf8().constData();
}

TEST(PropertyTextTest, ANumberWithoutEndIsANumberAndNotFinite)
{
    for (const QStringView text : {u"inf", u"-inf", u"nan", u"1e999", u"-1e999"}) {
        EXPECT_TRUE(parseNumber(text)) << text.toUtf8().constData();
        EXPECT_FALSE(parseFiniteNumber(text)) << text.toUtf8().constData();
    }
    EXPECT_EQ(parseFiniteNumber(u"1e308"), 1e308);
    EXPECT_FALSE(parseFiniteNumber(u"word"));
}

TEST(PropertyTextTest, AnIntegerIsDecimalWithin64Bits)
{
    EXPECT_EQ(parseInteger(u"-7"), -7);
    EXPECT_EQ(parseInteger(u"9223372036854775807"), std::numeric_limits<qint64>::max());
    for (const QStringView text : {u"", u"1.0", u"1e2", u"0x1", u"9223372036854775808", u"inf"})
        EXPECT_FALSE(parseInteger(text)) << text.toUtf8().constData();
}

TEST(PropertyTextTest, AColourIsFourNumbersOfSixDigits)
{
    EXPECT_EQ(encColor({0.15, 1, 0, 1.0 / 3}),
              QStringLiteral("0.150000,1.000000,0.000000,0.333333"));
}

TEST(PropertyTextTest, AColourReadsBack)
{
    const RGBAColor color{0.25, 0.5, 0.75, 1};

    EXPECT_EQ(parseColor(encColor(color)), color);
}

TEST(PropertyTextTest, AColourPassesOverWordsAndIsNotCut)
{
    EXPECT_EQ(parseColor(u"0.1,red,0.2,,0.3,0.4"), (RGBAColor{0.1, 0.2, 0.3, 0.4}));
    EXPECT_EQ(parseColor(u"2,-1,0,1"), (RGBAColor{2, -1, 0, 1}));
}

TEST(PropertyTextTest, NoColourHasFewerOrMoreThanFourNumbers)
{
    for (const QStringView text :
         {u"", u"red", u"0,0,0", u"0,0,0,1,1", u"0,0,0,one", u"0;0;0;1", u"0,0,0,1,nan"})
        EXPECT_FALSE(parseColor(text)) << text.toUtf8().constData();
}

TEST(PropertyTextTest, NoColourHasAPartThatIsNotFinite)
{
    for (const QStringView text : {u"nan,0,0,1", u"0,inf,0,1", u"0,0,-inf,1", u"0,0,0,1e999"})
        EXPECT_FALSE(parseColor(text)) << text.toUtf8().constData();
}

} // namespace
} // namespace tessara
