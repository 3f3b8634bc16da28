#include "DeckLink/DeckLinkModels.h"

#include <QMetaEnum>
#include <QMetaProperty>
#include <QVariant>

#include <gtest/gtest.h>

namespace tessara {
namespace {

DeckLinkDisplayMode mode(const QString &name, int width = 1920, int height = 1080)
{
    return {1, name, width, height, 1000, 50000};
}

TEST(DeckLinkModelsTest, TheLabelTellsSizeAndRate)
{
    EXPECT_EQ(mode("1080p50").displayLabel(), "1080p50 (1920x1080 @ 50.00 fps)");
    EXPECT_EQ((DeckLinkDisplayMode{1, "1080p59.94", 1920, 1080, 1001, 60000}).displayLabel(),
              "1080p59.94 (1920x1080 @ 59.94 fps)");
}

TEST(DeckLinkModelsTest, WithoutAUsableRateTheLabelEndsAtTheSize)
{
    EXPECT_EQ((DeckLinkDisplayMode{1, "odd", 720, 576, 0, 25000}).displayLabel(), "odd (720x576)");
    EXPECT_EQ((DeckLinkDisplayMode{1, "odd", 720, 576, 1000, 0}).displayLabel(), "odd (720x576)");
    EXPECT_EQ((DeckLinkDisplayMode{1, "odd", 720, 576, -1, -1}).displayLabel(), "odd (720x576)");
}

TEST(DeckLinkModelsTest, TheHouseDefaultScoresBest)
{
    EXPECT_EQ(mode("1080p50").modeScore(), 0);
    EXPECT_EQ(mode("1080p 59.94").modeScore(), 1);
    EXPECT_EQ(mode("1080P5994").modeScore(), 1);
    EXPECT_EQ(mode("1080p 59").modeScore(), 2);
    EXPECT_EQ(mode("1080i50").modeScore(), 3);
    EXPECT_EQ(mode("720p50", 1280, 720).modeScore(), 10);
    EXPECT_EQ(mode("HD 1080 p 50").modeScore(), 0);
}

TEST(DeckLinkModelsTest, ADeviceIsItsIndex)
{
    EXPECT_EQ((DeckLinkDevice{1, "one"}), (DeckLinkDevice{1, "two"}));
    EXPECT_FALSE((DeckLinkDevice{1, "one"}) == (DeckLinkDevice{2, "one"}));
}

TEST(DeckLinkModelsTest, AModeIsAllOfItsFields)
{
    DeckLinkDisplayMode other = mode("1080p50");
    EXPECT_EQ(other, mode("1080p50"));

    other.timeScale = 25000;
    EXPECT_FALSE(other == mode("1080p50"));
}

TEST(DeckLinkModelsTest, ScriptsReadEveryField)
{
    const DeckLinkDisplayMode value = mode("1080p50");
    const QMetaObject &description = DeckLinkDisplayMode::staticMetaObject;
    const auto read = [&](const char *name) {
        return description.property(description.indexOfProperty(name)).readOnGadget(&value);
    };

    EXPECT_EQ(read("modeID"), QVariant(qint64(1)));
    EXPECT_EQ(read("displayLabel"), QVariant("1080p50 (1920x1080 @ 50.00 fps)"));
    EXPECT_EQ(read("modeScore"), QVariant(0));
    EXPECT_EQ(read("rate"), QVariant(50.0));
}

TEST(DeckLinkModelsTest, StartModesHaveNames)
{
    const QMetaEnum names = QMetaEnum::fromType<DeckLinkStartMode>();

    EXPECT_STREQ(names.valueToKey(int(DeckLinkStartMode::standard)), "standard");
    EXPECT_STREQ(names.valueToKey(int(DeckLinkStartMode::externalKeying)), "externalKeying");
    EXPECT_EQ(names.keyCount(), 2);
}

} // namespace
} // namespace tessara
