// A long day of an operator who does anything in any order, and takes it back.
#include <QRandomGenerator>
#include <QTemporaryDir>

#include "Base/RawString.h"
#include "Models/DocumentFixture.h"
#include "Models/DocumentHistory.h"

namespace tessara {
namespace {

using std::chrono::milliseconds;

class RandomHistoryTest : public DocumentFixture, public testing::WithParamInterface<quint32>
{
protected:
    /// What history watches of each layer and what else belongs to it, by id.
    using Observed = QMap<QUuid, QMap<QString, QString>>;

    void SetUp() override
    {
        QImage picture(8, 4, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::red);
        ASSERT_TRUE(picture.save(pictureFile));
    }

    int below(int limit) { return random.bounded(limit); }
    QUuid anyLayer()
    {
        const QList<QUuid> &order = document.layerOrder();
        return order.isEmpty() ? QUuid() : order[below(int(order.size()))];
    }

    /// Past the time in which a change of a new layer would be taken for its start.
    void settle() { clock.advance(milliseconds{600}); }

    Observed observed() const
    {
        Observed all;
        for (const CanvasLayerItem &item : document.orderedLayers()) {
            QMap<QString, QString> &values = all[layerOf(item)->id()];
            for (const LayerPropertyRow &row : layerPropertyRows(item))
                values.insert(row.key, row.encode(*layerOf(item)));
            const QUuid group = presetGroupID(item).value_or(QUuid());
            values.insert(QStringLiteral("group"), document.presetGroupNames().value(group));
            values.insert(QStringLiteral("locked"), QVariant(layerOf(item)->isLocked()).toString());
        }
        return all;
    }

    QSet<QUuid> layersOffAir() const
    {
        QSet<QUuid> ids;
        for (const QUuid &id : document.layerOrder()) {
            if (!document.takes().isOnAir(id))
                ids.insert(id);
        }
        return ids;
    }

    void addAnyLayer()
    {
        const std::function<void()> adds[] = {
            [&] { document.addTextLayer(); },
            [&] { (void)document.addImageLayer(QUrl::fromLocalFile(pictureFile)); },
            [&] { document.addTemplateShapeLayer(ShapeKind(below(6))); },
            [&] {
                document.commitCustomShapeDraw({{1, 2}, {300, 40}, {50, 200}});
            },
            [&] { document.addScoreLayer(ScoreTemplate(below(3)), ScoreSportPreset(below(6))); },
            [&] { document.addWebLayer(); },
            [&] { document.addModel3DLayer(QUrl::fromLocalFile(QStringLiteral("/a.usdz"))); },
            [&] { document.addWindowCaptureLayer(); },
            [&] { document.addCountdownLayer(); },
            [&] { document.duplicateLayer(anyLayer()); },
        };
        adds[below(int(std::size(adds)))]();
        settle();
    }

    /// A value that the layer can hold and that a rebuilt layer would keep.
    QString anyValue(const QString &key)
    {
        if (key == QStringLiteral("opacity"))
            return QString::number(1 + below(100)) + QStringLiteral("e-2");
        if (key.endsWith(QStringLiteral("olor")))
            return QStringLiteral("0.%1,0.%2,0.5,1").arg(below(10)).arg(below(10));
        if (key == QStringLiteral("textAlign"))
            return rawString(TextLayerHorizontalAlignment(below(3)));
        if (key == QStringLiteral("shapeKind"))
            return rawString(ShapeKind(below(6)));
        if (key == QStringLiteral("fontFamily"))
            return below(2) ? QStringLiteral("Inter") : QString();
        if (key == QStringLiteral("text") || key == QStringLiteral("name")
            || key.endsWith(QStringLiteral("Team")))
            return QStringLiteral("สวัสดี %1").arg(below(1000));
        return QString::number(8 + below(900));
    }

    void editAnyProperty()
    {
        const std::optional<CanvasLayerItem> item = document.layerItem(anyLayer());
        if (!item)
            return;
        const auto rows = layerPropertyRows(*item);
        const LayerPropertyRow &row = rows[std::size_t(below(int(rows.size())))];
        const int writes = 1 + below(4); // of a drag
        for (int index = 0; index < writes; ++index) {
            row.apply(*layerOf(*item), anyValue(row.key));
            clock.advance(milliseconds{below(100)});
        }
    }

    void arrange()
    {
        const QUuid id = anyLayer();
        QList<QUuid> shuffled = document.layerOrder();
        std::shuffle(shuffled.begin(), shuffled.end(), random);
        const QUuid group = document.presetGroupNames().isEmpty()
                                ? QUuid()
                                : document.presetGroupNames().firstKey();
        const std::function<void()> operations[] = {
            [&] { document.renameLayer(id, QStringLiteral("Layer %1").arg(below(100))); },
            [&] { document.moveLayer(id, QPointF(below(1920), below(1080))); },
            [&] { document.reorderLayers(shuffled); },
            [&] {
                document.groupLayers({id, anyLayer()}, QStringLiteral("Group"));
            },
            [&] { document.ungroupPreset(group); },
            [&] { document.selectPresetGroup(group); },
            [&] { document.toggleLayerSelection(id); },
            [&] { document.toggleLayerLocked(id); },
            [&] { document.setSize(document.size()); },
        };
        operations[below(int(std::size(operations)))]();
    }

    void runTheShow()
    {
        const QUuid id = anyLayer();
        const QUuid group = document.presetGroupID(id).value_or(QUuid());
        const std::function<void()> operations[] = {
            [&] { document.takeLayerInNow(id); },
            [&] { document.takeLayerOutNow(id); },
            [&] { document.takePresetGroupInNow(group); },
            [&] { document.toggleLayerInRunlist(id); },
            [&] { document.togglePresetGroupInRunlist(group); },
            [&] { document.toggleLayerHidden(id); },
            [&] { document.toggleCue(id); },
            [&] { document.takeCues(); },
            [&] { document.setRunAutoOutDuration(below(3), id); },
            [&] { document.setRunDissolveDuration(below(3), id); },
            [&] { document.setRunTransitionStyle(LayerRunTransitionStyle(below(3)), id); },
        };
        operations[below(int(std::size(operations)))]();
    }

    void removeSome()
    {
        const QUuid id = anyLayer();
        switch (below(3)) {
        case 0:
            document.removeLayer(id);
            break;
        case 1:
            document.removeSelectedLayers();
            break;
        default:
            document.removePresetGroup(document.presetGroupID(id).value_or(QUuid()));
        }
    }

    void doAnything()
    {
        const int kind = below(100);
        if (document.layerOrder().size() < 3 || kind < 10)
            addAnyLayer();
        else if (kind < 55)
            editAnyProperty();
        else if (kind < 70)
            arrange();
        else if (kind < 82)
            runTheShow();
        else if (kind < 88)
            removeSome();
        else if (kind < 95)
            undo().undo();
        else
            undo().redo();
        if (kind >= 88)
            settle(); // it may have brought a layer back
        clock.advance(milliseconds{below(700)});
    }

    /// Back to the oldest entry and forward again: nothing has changed, no echo has come, and
    /// nothing has come on air.
    void undoAllAndRedo()
    {
        clock.advance(std::chrono::seconds{10}); // the longest take
        const QSet<QUuid> offAir = layersOffAir();
        const Observed before = observed();
        const QList<QUuid> order = document.layerOrder();
        const int cursor = undo().cursor();
        const int count = undo().count();
        while (undo().canUndo()) {
            undo().undo();
            if (below(4) == 0)
                settle();
        }
        settle();
        ASSERT_EQ(undo().count(), count);
        while (undo().cursor() < cursor)
            undo().redo();
        settle();
        ASSERT_EQ(undo().count(), count);
        ASSERT_EQ(document.layerOrder(), order);
        ASSERT_EQ(observed(), before);
        ASSERT_TRUE(layersOffAir().contains(offAir));
    }

    UndoStack &undo() { return history.undoStack(); }

    QTemporaryDir directory;
    QString pictureFile = directory.filePath(QStringLiteral("picture.png"));
    QRandomGenerator random{GetParam()};
    DocumentHistory history{document, clock, [] { return false; }};
};

TEST_P(RandomHistoryTest, WhatIsUndoneAndRedoneIsAsBefore)
{
    SCOPED_TRACE(testing::Message() << "seed " << GetParam());
    constexpr int operations = 1000;
    for (int done = 1; done <= operations; ++done) {
        doAnything();
        if (done % 50 == 0)
            undoAllAndRedo();
        if (HasFatalFailure())
            FAIL() << "after " << done << " operations";
    }
    EXPECT_GT(undo().count(), 10);
}

// Ten thousand operations in all.
INSTANTIATE_TEST_SUITE_P(Seeds, RandomHistoryTest, testing::Range(1U, 11U));

} // namespace
} // namespace tessara
