#include "Rendering/TextBlockCache.h"

#include "Rendering/DrawnText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace tessara {
namespace {

class TextBlockCacheTest : public testing::Test
{
protected:
    const SizedFont font = systemFont(40, QFont::DemiBold);
    TextBlockCache texts;
};

TEST_F(TextBlockCacheTest, TheSameTextIsLaidOutOnce)
{
    const auto first = texts.block(QStringLiteral("Final score"), font);

    EXPECT_EQ(texts.block(QStringLiteral("Final score"), font), first);
}

TEST_F(TextBlockCacheTest, WhateverChangesThePictureMakesAnotherBlock)
{
    const QString text = QStringLiteral("Final score");
    const auto known = texts.block(text, font);

    EXPECT_NE(texts.block(text + QLatin1Char('s'), font), known);
    EXPECT_NE(texts.block(text, systemFont(41, QFont::DemiBold)), known);
    EXPECT_NE(texts.block(text, systemFont(39.5, QFont::DemiBold)), known); // the face is the same
    EXPECT_NE(texts.block(text, systemFont(40, QFont::Bold)), known);
    EXPECT_NE(texts.block(text, monospacedDigitSystemFont(40, QFont::DemiBold)), known);
    EXPECT_NE(texts.block(text, font, TextLayerHorizontalAlignment::center), known);
    EXPECT_NE(texts.block(text, font, TextLayerHorizontalAlignment::leading, 100), known);
}

TEST_F(TextBlockCacheTest, ABlockOutlivesItsPlaceInTheCache)
{
    TextBlockCache small(20);
    const auto first = small.block(QStringLiteral("1"), font);
    const QSizeF size = first->size();

    (void)small.block(QStringLiteral("2"), font);

    EXPECT_EQ(first->size(), size);
    EXPECT_NE(small.block(QStringLiteral("1"), font), first);
}

// Each key typed into a long title leaves a block behind, with megabytes of outlines.
TEST_F(TextBlockCacheTest, LongTextsThatAreTypedDoNotPileUp)
{
    constexpr qsizetype characters = 400;
    std::vector<std::weak_ptr<const TextBlock>> blocks;
    for (int key = 0; key < 100; ++key)
        blocks.push_back(texts.block(QString(characters, QChar(ushort(0x4e00 + key))), font));

    const auto held = std::count_if(blocks.begin(), blocks.end(),
                                    [](const auto &block) { return !block.expired(); });

    EXPECT_LE(held * characters, TextBlockCache::standardCapacity);
    EXPECT_FALSE(blocks.back().expired());
}

TEST_F(TextBlockCacheTest, ATextBeyondTheCapacityIsKeptAlone)
{
    TextBlockCache small(20);
    const QString text(30, QLatin1Char('x'));
    const auto other = small.block(QStringLiteral("1"), font);

    const auto block = small.block(text, font);

    EXPECT_EQ(block->size(), TextBlock(text, font).size());
    EXPECT_EQ(small.block(text, font), block);
    EXPECT_NE(small.block(QStringLiteral("1"), font), other);
    EXPECT_NE(small.block(text, font), block);
}

TEST_F(TextBlockCacheTest, WhatOfATextIsNotDrawnMakesNoOtherBlock)
{
    const QString drawn(mostDrawnCharacters, QLatin1Char('x'));

    EXPECT_EQ(texts.block(drawn + QLatin1Char('1'), font),
              texts.block(drawn + QLatin1Char('2'), font));
}

} // namespace
} // namespace tessara
