#include "Base/RawString.h"

#include <gtest/gtest.h>

namespace tessara {
namespace rawStringTest {

Q_NAMESPACE
enum class Fruit { apple, dragonFruit };
Q_ENUM_NS(Fruit)

TEST(RawStringTest, SpellsACaseByItsOwnName)
{
    EXPECT_EQ(rawString(Fruit::dragonFruit), QStringLiteral("dragonFruit"));
}

TEST(RawStringTest, ReadsBackEveryCase)
{
    for (const Fruit fruit : allCases<Fruit>())
        EXPECT_EQ(fromRawString<Fruit>(rawString(fruit)), fruit);
    EXPECT_EQ(allCases<Fruit>().size(), 2u);
}

TEST(RawStringTest, AnyOtherSpellingIsNothing)
{
    for (const char *text : {"", "Apple", "apple ", "Fruit::apple", "1"})
        EXPECT_EQ(fromRawString<Fruit>(QString::fromLatin1(text)), std::nullopt) << text;
}

} // namespace rawStringTest
} // namespace tessara

#include "RawStringTest.moc"
