#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTemporaryDir>

#include "Base/ManualClock.h"
#include "Core/AppState.h"
#include "UI/presets/PresetListModel.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

TextPreset presetNamed(const QString &id, const QString &name)
{
    TextPreset preset;
    preset.id = id;
    preset.name = name;
    preset.entries = {TextPresetEntry()};
    preset.entries[0].text = name;
    return preset;
}

class PresetListModelTest : public testing::Test
{
protected:
    PresetListModelTest()
    {
        app.saveTemplatePreset(presetNamed(QStringLiteral("a"), QStringLiteral("Alpha")));
        app.saveTemplatePreset(presetNamed(QStringLiteral("c"), QStringLiteral("Gamma")));
    }

    QString names() const
    {
        QStringList list;
        for (int row = 0; row < model.count(); ++row)
            list << model.data(model.index(row), PresetListModel::NameRole).toString();
        return list.join(QLatin1Char(' '));
    }
    QString thumbnailAt(int row) const
    {
        return model.data(model.index(row), PresetListModel::ThumbnailRole).toString();
    }

    QTemporaryDir data;
    ApplicationSupport support{data.path()};
    ManualClock clock;
    AppState app{clock, support};
    PresetListModel model{app};
    QAbstractItemModelTester tester{&model};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
};

TEST_F(PresetListModelTest, ReadsNothingBeforeItIsAskedTo)
{
    EXPECT_EQ(model.count(), 0);

    model.refresh();

    EXPECT_EQ(names(), QStringLiteral("Alpha Gamma"));
    EXPECT_EQ(model.mineCount(), 2);
    EXPECT_EQ(model.systemCount(), app.systemPresets().size());
}

TEST_F(PresetListModelTest, FollowsTheLibraryWithoutAReset)
{
    model.refresh();
    const QString alpha = thumbnailAt(0);

    app.saveTemplatePreset(presetNamed(QStringLiteral("b"), QStringLiteral("Beta")));
    EXPECT_EQ(names(), QStringLiteral("Alpha Beta Gamma"));

    app.deleteUserPreset(presetNamed(QStringLiteral("c"), QStringLiteral("Gamma")));
    EXPECT_EQ(names(), QStringLiteral("Alpha Beta"));
    EXPECT_EQ(thumbnailAt(0), alpha);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(PresetListModelTest, ANewContentHasANewPictureInTheSameRow)
{
    model.refresh();
    const QString before = thumbnailAt(1);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
    TextPreset changed = presetNamed(QStringLiteral("c"), QStringLiteral("Gamma"));
    changed.entries[0].text = QStringLiteral("Delta");

    app.saveTemplatePreset(changed);

    EXPECT_NE(thumbnailAt(1), before);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(insertions.count(), 0);
}

TEST_F(PresetListModelTest, SearchesTheNamesInAnyCaseAndNothingElse)
{
    TextPreset tagged = presetNamed(QStringLiteral("d"), QStringLiteral("Delta"));
    tagged.templateTags = {QStringLiteral("gam")};
    app.saveTemplatePreset(tagged);
    model.refresh();

    model.setSearch(QStringLiteral("GAM"));

    EXPECT_EQ(names(), QStringLiteral("Gamma"));
    EXPECT_EQ(model.mineCount(), 3);
}

TEST_F(PresetListModelTest, TheSystemTabHasTheBuiltInOnes)
{
    model.refresh();

    model.setTab(QStringLiteral("system"));

    ASSERT_FALSE(app.systemPresets().isEmpty());
    EXPECT_EQ(model.count(), app.systemPresets().size());
    EXPECT_EQ(model.data(model.index(0), PresetListModel::NameRole).toString(),
              app.systemPresets().constFirst().name);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(PresetListModelTest, AppliesTheShownRow)
{
    model.refresh();
    model.setSearch(QStringLiteral("gamma"));

    model.apply(0);
    model.apply(7);

    ASSERT_EQ(app.document()->layersOf<TextLayer>().size(), 1);
    EXPECT_EQ(app.document()->layersOf<TextLayer>()[0]->text(), QStringLiteral("Gamma"));
    EXPECT_EQ(app.document()->presetGroupNames().values(), QStringList{QStringLiteral("Gamma")});
}

TEST(PresetThumbnailsTest, EqualContentsShareANumberAndForgottenOnesLoseIt)
{
    PresetThumbnails thumbnails;
    const TextPreset one = presetNamed(QStringLiteral("a"), QStringLiteral("Alpha"));
    const TextPreset other = presetNamed(QStringLiteral("a"), QStringLiteral("Beta"));

    thumbnails.setPresets({one, other, one});
    const int number = thumbnails.numberOf(one);
    EXPECT_GT(number, 0);
    EXPECT_NE(thumbnails.numberOf(other), number);
    EXPECT_EQ(thumbnails.preset(number), one);

    thumbnails.setPresets({other});
    EXPECT_EQ(thumbnails.numberOf(one), 0);
    EXPECT_EQ(thumbnails.preset(number), std::nullopt);
}

} // namespace
} // namespace tessara
