#include <QAbstractItemModelTester>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "Base/ManualClock.h"
#include "Base/Settings.h"
#include "Models/CanvasDocument.h"
#include "UI/presets/TemplateFieldModel.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

class TemplateFieldModelTest : public testing::Test
{
protected:
    TextLayer *addField(const QString &key, TemplateFieldKind kind, const QString &text)
    {
        TextLayer *layer = document.addTextLayer();
        layer->setFieldKey(key);
        layer->setFieldKind(kind);
        layer->setText(text);
        return layer;
    }

    QString shown(int row, TemplateFieldModel::Role role) const
    {
        return model.data(model.index(row), role).toString();
    }
    bool until(const std::function<bool()> &isSo) const { return QTest::qWaitFor(isSo, 5000); }
    void untilCount(int count)
    {
        ASSERT_TRUE(until([&] { return model.count() == count; }));
    }

    QTemporaryDir data;
    Settings settings{data.filePath(QStringLiteral("settings.json"))};
    ManualClock clock;
    CanvasDocument document{clock};
    TemplateFieldModel model{document, settings};
    QAbstractItemModelTester tester{&model};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    QSignalSpy changes{&model, &QAbstractItemModel::dataChanged};
};

TEST_F(TemplateFieldModelTest, ListsTheFieldsByTheirKeys)
{
    addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("Live"));
    addField(QStringLiteral("home_score"), TemplateFieldKind::score, QStringLiteral("2"));
    document.addTextLayer(); // is no field

    untilCount(2);

    EXPECT_EQ(shown(0, TemplateFieldModel::KeyRole), QStringLiteral("home_score"));
    EXPECT_EQ(shown(0, TemplateFieldModel::KindRole), QStringLiteral("score"));
    EXPECT_EQ(shown(1, TemplateFieldModel::ValueRole), QStringLiteral("Live"));
}

TEST_F(TemplateFieldModelTest, WhatIsTypedReachesTheLayerAndTheRowAtOnce)
{
    const TextLayer *title =
        addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("Live"));
    untilCount(1);

    model.setText(QStringLiteral("title"), QStringLiteral("Live a"));

    EXPECT_EQ(title->text(), QStringLiteral("Live a"));
    EXPECT_EQ(shown(0, TemplateFieldModel::ValueRole), QStringLiteral("Live a"));
}

TEST_F(TemplateFieldModelTest, ManyChangesAreToldTogetherAndInPlace)
{
    TextLayer *title =
        addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("0"));
    untilCount(1);
    const QSignalSpy removals(&model, &QAbstractItemModel::rowsRemoved);

    for (int round = 1; round <= 100; ++round)
        title->setText(QString::number(round));
    until([&] { return shown(0, TemplateFieldModel::ValueRole) == QStringLiteral("100"); });

    EXPECT_EQ(shown(0, TemplateFieldModel::ValueRole), QStringLiteral("100"));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(removals.count(), 0);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(TemplateFieldModelTest, AFieldThatComesOrGoesLeavesTheOthersAlone)
{
    addField(QStringLiteral("c"), TemplateFieldKind::text, QStringLiteral("3"));
    const TextLayer *first =
        addField(QStringLiteral("a"), TemplateFieldKind::text, QStringLiteral("1"));
    untilCount(2);
    const QPersistentModelIndex last = model.index(1);

    addField(QStringLiteral("b"), TemplateFieldKind::text, QStringLiteral("2"));
    untilCount(3);
    EXPECT_EQ(last.row(), 2);

    document.removeLayer(first->id());
    untilCount(2);
    EXPECT_EQ(last.row(), 1);
    EXPECT_EQ(last.data(TemplateFieldModel::KeyRole).toString(), QStringLiteral("c"));
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(TemplateFieldModelTest, AScoreIsCountedUpAndDown)
{
    addField(QStringLiteral("home"), TemplateFieldKind::score, QStringLiteral("7"));
    untilCount(1);

    model.adjustScore(QStringLiteral("home"), 1);
    EXPECT_EQ(shown(0, TemplateFieldModel::ValueRole), QStringLiteral("8"));

    model.adjustScore(QStringLiteral("home"), -1);
    EXPECT_EQ(shown(0, TemplateFieldModel::ValueRole), QStringLiteral("7"));
}

TEST_F(TemplateFieldModelTest, APictureIsChosenCroppedAndReset)
{
    const QString file = data.filePath(QStringLiteral("wide.png"));
    QImage(400, 100, QImage::Format_RGB32).save(file);
    ImageLayer *logo = *document.addImageLayer(QUrl::fromLocalFile(file));
    logo->setSize({100, 100});
    logo->setContentMode(ImageLayerContentMode::fitInside);
    logo->setPlaceholderKey(QStringLiteral("logo"));
    untilCount(1);
    const QString other = data.filePath(QStringLiteral("other.png"));
    QImage(400, 100, QImage::Format_RGB32).save(other);

    model.chooseImage(QStringLiteral("logo"), QUrl::fromLocalFile(other));
    EXPECT_EQ(shown(0, TemplateFieldModel::ValueRole), QStringLiteral("other.png"));

    model.setContentMode(QStringLiteral("logo"), QStringLiteral("fillCrop"));
    EXPECT_EQ(shown(0, TemplateFieldModel::ContentModeRole), QStringLiteral("fillCrop"));
    const double middle = logo->normalizedCropRect(logo->size()).x();
    model.nudgeCrop(QStringLiteral("logo"), 1, 0);
    EXPECT_NEAR(logo->cropRectNormalized()->x(), middle + 0.04, 1e-9);
    model.resetCrop(QStringLiteral("logo"));
    EXPECT_EQ(logo->cropRectNormalized(), std::nullopt);
}

TEST_F(TemplateFieldModelTest, AFileThatIsNoPictureLeavesTheRowAsItWas)
{
    const QString file = data.filePath(QStringLiteral("logo.png"));
    QImage(10, 10, QImage::Format_RGB32).save(file);
    (*document.addImageLayer(QUrl::fromLocalFile(file)))->setPlaceholderKey(QStringLiteral("logo"));
    untilCount(1);

    model.chooseImage(QStringLiteral("logo"), QUrl::fromLocalFile(settings.file()));

    EXPECT_EQ(shown(0, TemplateFieldModel::ValueRole), QStringLiteral("logo.png"));
}

TEST_F(TemplateFieldModelTest, FoldingIsRemembered)
{
    EXPECT_TRUE(model.isOpen());

    model.setIsOpen(false);

    const Settings reread(settings.file());
    EXPECT_EQ(reread.value(TemplateFieldModel::isOpenKey), QJsonValue(false));
    Settings again(settings.file());
    EXPECT_FALSE(TemplateFieldModel(document, again).isOpen());
}

} // namespace
} // namespace tessara
