#include <QSignalSpy>

#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"
#include "UI/HeldSelection.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

class HeldSelectionTest : public testing::Test
{
protected:
    HeldSelectionTest()
    {
        document.setSelectedLayerIDs({one, other});
        selection.hold();
        document.setSelectedLayerIDs({front});
    }

    ManualClock clock;
    CanvasDocument document{clock};
    QUuid one = document.addTextLayer()->id();
    QUuid other = document.addTextLayer()->id();
    QUuid front = document.addTextLayer()->id();
    HeldSelection selection{document};
    QSignalSpy broken{&selection, &HeldSelection::broken};
};

TEST_F(HeldSelectionTest, ItIsWhatWasSelectedThen)
{
    EXPECT_EQ(selection.count(), 2);
    EXPECT_TRUE(selection.canGroup());

    selection.hold();
    EXPECT_EQ(selection.count(), 1);
    EXPECT_FALSE(selection.canGroup());
}

TEST_F(HeldSelectionTest, ItsOwnLayersAreRemovedAndNoOthers)
{
    selection.remove();

    EXPECT_EQ(document.layerOrder(), QList<QUuid>{front});
}

TEST_F(HeldSelectionTest, ItsOwnLayersAreGroupedUnderANameThatIsNotBlank)
{
    EXPECT_FALSE(selection.group(QStringLiteral("  ")));
    EXPECT_FALSE(document.presetGroupID(one));

    EXPECT_TRUE(selection.group(QStringLiteral(" Both ")));
    EXPECT_EQ(document.presetGroupNames().values(), QStringList{QStringLiteral("Both")});
    EXPECT_EQ(document.presetGroupID(one), document.presetGroupID(other));
    EXPECT_FALSE(document.presetGroupID(front));
}

TEST_F(HeldSelectionTest, ItBreaksWhenOneOfItsLayersGoes)
{
    document.removeLayer(front);
    EXPECT_EQ(broken.count(), 0);

    document.removeLayer(one);
    EXPECT_EQ(broken.count(), 1);
}

} // namespace
} // namespace tessara
