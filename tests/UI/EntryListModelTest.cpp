#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"
#include "Models/Runlist.h"
#include "UI/EntryListModel.h"
#include "UI/EntryRecord.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

class EntryListModelTest : public testing::Test
{
protected:
    QString nameAt(int row) const
    {
        const QVariant record = model.data(model.index(row), EntryListModel::RecordRole);
        return record.value<EntryRecord *>()->name();
    }

    ManualClock clock;
    CanvasDocument document{clock};
    Runlist runlist{document};
    EntryListModel model{document, runlist};
    QAbstractItemModelTester tester{&model};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
};

TEST_F(EntryListModelTest, TheFrontMostLayerStandsFirst)
{
    document.addTextLayer();
    document.addCountdownLayer();

    ASSERT_EQ(model.count(), 2);
    EXPECT_EQ(nameAt(0), QStringLiteral("Countdown 1"));
    EXPECT_EQ(nameAt(1), QStringLiteral("Text 1"));
}

TEST_F(EntryListModelTest, RowsMoveAndGoWithoutAReset)
{
    const QUuid first = document.addTextLayer()->id();
    const QUuid second = document.addTextLayer()->id();
    const QUuid third = document.addTextLayer()->id();

    document.reorderLayers({first, third, second});
    EXPECT_EQ(nameAt(0), QStringLiteral("Text 1"));
    EXPECT_EQ(nameAt(2), QStringLiteral("Text 2"));

    document.removeLayer(third);
    EXPECT_EQ(model.count(), 2);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(EntryListModelTest, ARowThatGoesTellsOfItByItself)
{
    const QUuid layer = document.addTextLayer()->id();
    const QUuid member = document.addTextLayer()->id();
    QSignalSpy layerGone(model.record(layer), &EntryRecord::gone);
    QSignalSpy memberGone(model.record(member), &EntryRecord::gone);

    document.reorderLayers({layer, member});
    EXPECT_EQ(layerGone.count() + memberGone.count(), 0);

    document.groupLayers({member}, QStringLiteral("group"));
    EXPECT_EQ(memberGone.count(), 1); // the row is the group's now

    document.removeLayer(layer);
    EXPECT_EQ(layerGone.count(), 1);
}

TEST_F(EntryListModelTest, ATakeIsToldByItsOwnRowAlone)
{
    const QUuid taken = document.addTextLayer()->id();
    const QUuid other = document.addTextLayer()->id();
    QSignalSpy own(model.record(taken), &EntryRecord::visibilityChanged);
    QSignalSpy others(model.record(other), &EntryRecord::visibilityChanged);

    document.takeLayerOutNow(taken);
    clock.advance(Seconds{0.1});
    ASSERT_TRUE(own.wait());

    EXPECT_EQ(own.count(), 1); // for six steps of the take
    EXPECT_EQ(others.count(), 0);
    EXPECT_LT(model.record(taken)->visibility(), 1);
}

TEST_F(EntryListModelTest, ManyChangesOfARowAreToldOnce)
{
    const QUuid first = document.addTextLayer()->id();
    const QUuid second = document.addTextLayer()->id();
    QTest::qWait(50); // what the additions had to tell
    QSignalSpy firstTold(model.record(first), &EntryRecord::changed);
    QSignalSpy secondTold(model.record(second), &EntryRecord::changed);

    document.toggleCue(first);
    document.renameLayer(first, QStringLiteral("Title"));
    document.setLayerLocked(first, true);
    ASSERT_TRUE(firstTold.wait());

    EXPECT_EQ(firstTold.count(), 1);
    EXPECT_EQ(secondTold.count(), 0);
}

} // namespace
} // namespace tessara
