#include "Rendering/FramePath/FrameScene.h"

#include "Base/ForkJoin.h"
#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

/// A title of one word a line, and what of the frame an edit damages.
class TypedTitleTest : public testing::Test
{
protected:
    static constexpr QSize frame{640, 640};
    static constexpr int lines = 10;

    TypedTitleTest()
    {
        title->setPosition({20, 20});
        title->setTextBoxSize(QSizeF(600, 600));
        title->setFontSize(40);
        title->setOutlineWidth(4);
        title->setText(words.join('\n'));
        update();
    }
    void update() { damage = scene.update(document, {frame, {}, DrawingStyle::frame}); }
    void replace(int line, const QString &word)
    {
        words[line] = word;
        title->setText(words.join('\n'));
        update();
    }
    /// Bands of the frame that are damaged.
    QList<int> damaged() const
    {
        QList<int> bands;
        for (int band = 0; band < damage.bands(); ++band) {
            if (damage.band(band) != 0)
                bands.append(band);
        }
        return bands;
    }

    ManualClock clock;
    CanvasDocument document{clock, QSizeF(frame)};
    TextLayer *title = document.addTextLayer();
    QStringList words = QStringList(lines, "Presented");
    ForkJoin workers{1};
    FrameScene scene{workers};
    TileDamage damage{frame};
};

TEST_F(TypedTitleTest, AnEditDamagesItsLinesAndNoMore)
{
    const QList<int> all = [this] {
        title->setOutlineWidth(5);
        update();
        return damaged();
    }();
    replace(4, "Presenter");
    const QList<int> one = damaged();

    ASSERT_FALSE(one.isEmpty());
    EXPECT_LE(one.size() * 3, all.size());
    EXPECT_GT(one.first(), all.first());
    EXPECT_LT(one.last(), all.last());
}

TEST_F(TypedTitleTest, AnotherColourDamagesAllOfIt)
{
    replace(4, "Presenter");
    const QList<int> one = damaged();
    words[4] = "Presented";
    title->setText(words.join('\n'));
    title->setColor({1, 0, 0, 1});
    update();

    EXPECT_GT(damaged().size(), one.size());
}

TEST_F(TypedTitleTest, AMoveWithTheEditDamagesBothPlaces)
{
    words[4] = "Presenter";
    title->setText(words.join('\n'));
    title->setPosition({20, 52});
    update();

    EXPECT_GE(damaged().size(), 2 * lines);
}

} // namespace
} // namespace tessara
