#include "Models/Presets/PresetOrder.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

QStringList sorted(const QStringList &names, const QLocale &locale)
{
    QList<TextPreset> presets;
    for (const QString &name : names)
        presets.append({.id = QString::number(presets.size()), .name = name});
    sortByName(presets, locale);
    QStringList result;
    for (const TextPreset &preset : presets)
        result.append(preset.name);
    return result;
}

const QLocale english(QLocale::English);

TEST(PresetOrderTest, CaseDoesNotMatter)
{
    EXPECT_EQ(sorted({"banner", "Apple", "Zebra", "Cue", "apple pie"}, english),
              QStringList({"Apple", "apple pie", "banner", "Cue", "Zebra"}));
}

TEST(PresetOrderTest, EqualNamesKeepTheirOrder)
{
    EXPECT_EQ(sorted({"bar", "BAR", "Bar", "a"}, english), QStringList({"a", "bar", "BAR", "Bar"}));
    EXPECT_EQ(sorted({"Bar", "BAR", "bar", "a"}, english), QStringList({"a", "Bar", "BAR", "bar"}));
}

TEST(PresetOrderTest, AccentsStandBesideTheirLetters)
{
    EXPECT_EQ(sorted({"Zoo", "Éclair", "Eclair", "Fan"}, english),
              QStringList({"Eclair", "Éclair", "Fan", "Zoo"}));
    EXPECT_EQ(sorted({"Zoo", "Ärm", "Arm"}, QLocale(QLocale::Swedish)),
              QStringList({"Arm", "Zoo", "Ärm"}));
}

// A vowel that is written first counts after its consonant.
TEST(PresetOrderTest, ThaiSortsByItsConsonants)
{
    const QStringList wanted{"กา", "เกม", "ขาว", "ไข่", "คน"};
    const QStringList mixed{"ไข่", "คน", "เกม", "ขาว", "กา"};

    EXPECT_EQ(sorted(mixed, QLocale(QLocale::Thai)), wanted);
    EXPECT_EQ(sorted(mixed, english), wanted);
}

TEST(PresetOrderTest, WithoutALanguageTheOrderIsThatOfEnglish)
{
    const QStringList names{"เกม", "ขาว", "Zoo", "Éclair", "eclair", "กา", "", "2", "10"};

    EXPECT_EQ(sorted(names, QLocale::c()), sorted(names, english));
}

TEST(PresetOrderTest, EmptyNamesComeFirst)
{
    EXPECT_EQ(sorted({"b", "", "1", "a"}, english), QStringList({"", "1", "a", "b"}));
}

} // namespace
} // namespace tessara
