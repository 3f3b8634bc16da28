#include "UI/WindowFixture.h"

#include <QDir>

#include <sys/resource.h>

namespace tessara {
namespace {

class PresetSheetTest : public WindowFixture
{
protected:
    void openSheet()
    {
        openTools();
        click(item(QStringLiteral("tool6")));
    }
    void openSystemTab()
    {
        openSheet();
        click(segment(QStringLiteral("System")));
    }

    void saveOwn(const QString &name)
    {
        TextPreset preset;
        preset.id = name;
        preset.name = name;
        preset.entries = {TextPresetEntry()};
        preset.entries[0].text = name;
        preset.entries[0].fontSize = 120;
        preset.entries[0].position = {200, 800};
        app->saveTemplatePreset(preset);
    }

    QList<QQuickItem *> cards() const
    {
        QList<QQuickItem *> found;
        for (QQuickItem *candidate : visibleItems()) {
            if (candidate->objectName() == QStringLiteral("presetPicture"))
                found.append(candidate->parentItem());
        }
        return found;
    }
    QQuickItem *inCard(const QString &presetName, const QString &part) const
    {
        for (const QQuickItem *card : cards()) {
            if (card->property("presetName").toString() != presetName)
                continue;
            for (QQuickItem *child : card->childItems()) {
                if (child->objectName() == part)
                    return child;
            }
        }
        ADD_FAILURE() << "no card " << qPrintable(presetName);
        return nullptr;
    }
    bool isOpen() const { return !cards().isEmpty() || itemWithText(QStringLiteral("Search")); }
    bool areThumbnailsThere() const
    {
        constexpr int ready = 1; // Image.Ready
        int waiting = 0;
        int pictures = 0;
        for (const QQuickItem *candidate : visibleItems()) {
            if (candidate->objectName() != QStringLiteral("presetThumbnail"))
                continue;
            ++pictures;
            waiting += candidate->property("status").toInt() == ready ? 0 : 1;
        }
        return pictures > 0 && waiting == 0;
    }
};

/// Threads of this process that come after ordinary ones.
int politeThreads()
{
    int count = 0;
    const QStringList threads =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads)
        count += getpriority(PRIO_PROCESS, thread.toUInt()) > 0 ? 1 : 0;
    return count;
}

TEST_F(PresetSheetTest, TheToolsOpenItAndItSaysWhenThereAreNone)
{
    openSheet();
    keepPicture(QStringLiteral("presets-empty"));

    EXPECT_TRUE(itemWithText(QStringLiteral("No Presets Yet")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Create your own presets and export them\n"
                                            "to share or save as system presets.")));
    EXPECT_FALSE(itemWithText(QStringLiteral("Add Layer")));
    EXPECT_EQ(window->activeFocusItem()->objectName(), QStringLiteral("presetSearch"));
}

TEST_F(PresetSheetTest, TheSystemTabShowsAPictureOfEachPreset)
{
    const int usual = getpriority(PRIO_PROCESS, 0);

    openSystemTab();

    EXPECT_TRUE(until([this] { return areThumbnailsThere(); }));
    keepPicture(QStringLiteral("presets-system"));
    EXPECT_TRUE(itemWithText(QString::number(app->systemPresets().size())));
    EXPECT_GT(politeThreads(), 0);
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), usual);
}

TEST_F(PresetSheetTest, APictureIsThatOfItsPreset)
{
    openSystemTab();
    click(item(QStringLiteral("presetSearch")));
    type(QStringLiteral("full-screen title"));
    ASSERT_TRUE(until([this] { return areThumbnailsThere(); }));

    ASSERT_EQ(cards().size(), 1);
    const QQuickItem *picture =
        inCard(QStringLiteral("Full-Screen Title"), QStringLiteral("presetPicture"));
    ASSERT_TRUE(picture);
    const QRect area = picture->mapRectToScene(picture->boundingRect()).toRect();
    const QImage seen = window->grabWindow().copy(area);
    QSet<QRgb> colors;
    for (int x = 0; x < seen.width(); ++x)
        colors.insert(seen.pixel(x, seen.height() / 2));
    EXPECT_GT(colors.size(), 8);
}

TEST_F(PresetSheetTest, ApplyAddsTheLayersSelectsThemAndCloses)
{
    saveOwn(QStringLiteral("Interview"));
    openSheet();

    click(inCard(QStringLiteral("Interview"), QStringLiteral("presetApply")));

    ASSERT_EQ(document->layersOf<TextLayer>().size(), 1);
    EXPECT_EQ(document->selectedLayerIDs().size(), 1);
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(until([this] { return itemWithText(QStringLiteral("Interview")) != nullptr; }));
    EXPECT_EQ(window->activeFocusItem()->objectName(), QStringLiteral("toolButton"));
}

TEST_F(PresetSheetTest, ABuiltInPresetIsAppliedWithAllItsLayers)
{
    openSystemTab();
    const TextPreset first = app->systemPresets().constFirst();

    click(inCard(first.name, QStringLiteral("presetApply")));
    settle();
    keepPicture(QStringLiteral("preset-applied"));

    EXPECT_EQ(document->orderedLayers().size(),
              first.rects.size() + first.images.size() + first.entries.size());
}

TEST_F(PresetSheetTest, SearchNarrowsTheCardsAndTellsWhenNothingIsLeft)
{
    saveOwn(QStringLiteral("Interview"));
    saveOwn(QStringLiteral("Weather"));
    openSheet();
    EXPECT_EQ(cards().size(), 2);

    type(QStringLiteral("wea"));
    EXPECT_EQ(cards().size(), 1);
    EXPECT_TRUE(inCard(QStringLiteral("Weather"), QStringLiteral("presetApply")));
    keepPicture(QStringLiteral("presets-search"));

    type(QStringLiteral("x"));
    EXPECT_EQ(cards().size(), 0);
    EXPECT_TRUE(itemWithText(QStringLiteral("No preset found")));
}

TEST_F(PresetSheetTest, AClickOnThePictureSelectsAndAppliesNothing)
{
    saveOwn(QStringLiteral("Interview"));
    openSheet();

    click(inCard(QStringLiteral("Interview"), QStringLiteral("presetPicture")));
    keepPicture(QStringLiteral("presets-selected"));

    EXPECT_TRUE(cards().constFirst()->property("isSelected").toBool());
    EXPECT_TRUE(document->orderedLayers().isEmpty());
}

TEST_F(PresetSheetTest, TheKeyboardReachesApplyAndSpacePressesIt)
{
    saveOwn(QStringLiteral("Interview"));
    openSheet();

    for (int presses = 0; presses < 6; ++presses) {
        if (window->activeFocusItem()->objectName() == QStringLiteral("presetApply"))
            break;
        press(Qt::Key_Tab);
    }
    ASSERT_EQ(window->activeFocusItem()->objectName(), QStringLiteral("presetApply"));
    press(Qt::Key_Space);

    EXPECT_EQ(document->layersOf<TextLayer>().size(), 1);
}

TEST_F(PresetSheetTest, EscapeClosesIt)
{
    openSheet();

    press(Qt::Key_Escape);

    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(document->orderedLayers().isEmpty());
}

TEST_F(PresetSheetTest, ApplyIsMarkedWhileTheOutputRuns)
{
    saveOwn(QStringLiteral("Interview"));
    app->startDeckLinkOutput();
    ASSERT_TRUE(app->isDeckLinkOutputRunning());

    openSheet();
    ASSERT_TRUE(until([this] { return areThumbnailsThere(); }));
    keepPicture(QStringLiteral("presets-live"));

    EXPECT_EQ(inCard(QStringLiteral("Interview"), QStringLiteral("presetApply"))
                  ->property("look")
                  .toString(),
              QStringLiteral("airOutline"));
}

} // namespace
} // namespace tessara
