#include "Rendering/CoverageMask.h"
#include "Rendering/DrawnText.h"
#include "Rendering/FramePath/FramePathFixture.h"
#include "Rendering/FramePath/Sprite.h"
#include "Rendering/LayerPrimitives.h"
#include "Rendering/TextBlockCache.h"

namespace tessara {
namespace {

constexpr QRect canvas{0, 0, 400, 200};
constexpr qsizetype megabyte = 1'000'000; // characters

QString repeated(const QString &piece, qsizetype characters = megabyte)
{
    return piece.repeated(characters / piece.size());
}

QString numberedLines(const QString &line, int count)
{
    QString text;
    for (int number = 0; number < count; ++number)
        text += line.arg(number * number) + QLatin1Char('\n');
    return text;
}

class LongTextTest : public FrameTest
{
protected:
    LongTextTest() { document.setSize(canvas.size()); }

    std::vector<Primitive> drawn(TextLayer *layer, const QRectF &seen) const
    {
        TextBlockCache texts;
        return primitivesOf(layer, {.seen = seen}, texts);
    }

    /// The fill's and the outline's; none where nothing of them is in the primitives.
    static std::vector<CoverageMask> masksOf(const std::vector<Primitive> &primitives)
    {
        std::vector<CoverageMask> masks;
        for (const Primitive &primitive : primitives) {
            const auto *fill = std::get_if<FilledPath>(&primitive.what);
            if (!fill)
                continue;
            CoverageMask mask = rasterizedPath(fill->path, primitive.toCanvas, canvas, fill->parts);
            if (!mask.bounds.isEmpty())
                masks.push_back(std::move(mask));
        }
        return masks;
    }

    static int picturesIn(const std::vector<Primitive> &primitives, const QRectF &seen)
    {
        int count = 0;
        for (const Primitive &primitive : primitives) {
            const auto *picture = std::get_if<PlacedPicture>(&primitive.what);
            count += picture && primitive.toCanvas.mapRect(picture->box).intersects(seen);
        }
        return count;
    }

    static void expectSameOnCanvas(const std::vector<Primitive> &part,
                                   const std::vector<Primitive> &whole)
    {
        const std::vector<CoverageMask> masks = masksOf(part);
        const std::vector<CoverageMask> expected = masksOf(whole);
        ASSERT_EQ(masks.size(), expected.size());
        for (std::size_t index = 0; index < masks.size(); ++index) {
            EXPECT_EQ(masks[index].bounds, expected[index].bounds);
            EXPECT_TRUE(masks[index].alpha == expected[index].alpha);
        }
        EXPECT_EQ(picturesIn(part, canvas), picturesIn(whole, canvas));
    }

    /// Elsewhere round the canvas and on it, in all alignments, with a box and without.
    void expectSameWhereverItLies(const QString &text, double size)
    {
        TextLayer *layer = addText(text, {}, size);
        layer->setOutlineWidth(8);
        TextBlockCache texts;
        const auto primitives = [&](const QRectF &seen) {
            return primitivesOf(layer, {.seen = seen}, texts);
        };
        for (const auto alignment :
             {TextLayerHorizontalAlignment::leading, TextLayerHorizontalAlignment::center,
              TextLayerHorizontalAlignment::trailing}) {
            layer->setHorizontalAlignment(alignment);
            for (const bool isBoxed : {false, true}) {
                layer->setTextBoxSize(isBoxed ? std::optional(QSizeF(170, 90)) : std::nullopt);
                layer->setPosition({});
                const QSizeF whole =
                    texts
                        .block(text, layer->resolvedFont(size, QFont::DemiBold), alignment,
                               isBoxed ? std::optional(170.0) : std::nullopt)
                        ->size();
                for (const QPointF place :
                     {QPointF(100, 50), QPointF(-120, 30), QPointF(330, 30), QPointF(50.5, 170.25),
                      QPointF(100, -whole.height() / 3), QPointF(100, 150 - whole.height()),
                      QPointF(-whole.width() / 2, 20), QPointF(100, whole.height() / 3)}) {
                    layer->setPosition(place);
                    SCOPED_TRACE(testing::Message()
                                 << "alignment " << int(alignment) << " boxed " << isBoxed << " at "
                                 << place.x() << ", " << place.y());
                    TextBlockCache others; // so that each place finds nothing laid out
                    expectSameOnCanvas(primitivesOf(layer, {.seen = QRectF(canvas)}, others),
                                       primitives(everywhere));
                }
            }
        }
    }

    static std::size_t partsOf(const std::vector<Primitive> &primitives)
    {
        std::size_t parts = 0;
        for (const Primitive &primitive : primitives)
            parts += std::get<FilledPath>(primitive.what).parts->size();
        return parts;
    }

    const SizedFont font = systemFont(40, QFont::DemiBold);
};

TEST_F(LongTextTest, LinesPartlyOutsideTheCanvasAreDrawnAsWithAllTheRest)
{
    for (const double size : {20.0, 20.5})
        expectSameWhereverItLies(numberedLines("Line %1 of a long list", 200), size);
}

TEST_F(LongTextTest, StackedMarksAreDrawnAsWithAllTheRest)
{
    expectSameWhereverItLies(numberedLines(QStringLiteral("ที่นี่มีน้ำท่วม %1 สูงปิดถนน"), 120), 24);
}

TEST_F(LongTextTest, MarksThatClimbIntoTheCanvasFromLinesBelowAreDrawn)
{
    const QString tower = QStringLiteral("a\u0301\u0302\u0303\u0304\u0306\u0307").repeated(4);
    expectSameWhereverItLies(numberedLines(tower + "%1", 120), 24);
}

TEST_F(LongTextTest, LinesOfDifferentHeightsAreDrawnWhereTheyAreWithAllTheRest)
{
    expectSameWhereverItLies(
        numberedLines(QStringLiteral("News %1\n\nالطريق الساحلي مغلق\r\nน้ำท่วม 😀 café"), 60), 20.5);
}

TEST_F(LongTextTest, BothDirectionsOfWritingAreDrawnAsWithAllTheRest)
{
    expectSameWhereverItLies(
        numberedLines(QStringLiteral("(%1) الطريق الساحلي 24 km مغلق closed"), 70), 20);
}

TEST_F(LongTextTest, ALineThatGoesOnAndOnIsDrawnAsWithAllTheRest)
{
    QString line;
    for (int number = 0; line.size() < 12'000; ++number)
        line += QStringLiteral("AVATAR->%1x").arg(number);
    expectSameWhereverItLies(line, 20);
    expectSameWhereverItLies(line, 3.5);
}

TEST_F(LongTextTest, OfAMegabyteOfLinesOnlyThoseThatAreSeenAreLaidOut)
{
    const TextBlock block(repeated(QStringLiteral("The coast road is closed\n")), font);

    const Outline &fill = block.fill(canvas);

    EXPECT_GT(fill.parts->size(), 50U);
    EXPECT_LT(fill.parts->size(), 150U);
    EXPECT_LT(block.laidOutCharacters(), 300);
}

TEST_F(LongTextTest, LinesAboveTheCanvasAreNotLaidOut)
{
    const TextBlock block(repeated(QStringLiteral("The coast road is closed\n")), font);

    const Outline &fill = block.fill(QRectF(canvas).translated(0, 50'000));

    EXPECT_GT(fill.parts->size(), 50U);
    EXPECT_LT(block.laidOutCharacters(), 400);
}

TEST_F(LongTextTest, OfAMegabyteInOneLineOnlyWhatIsSeenIsDrawn)
{
    const QString word = repeated(QStringLiteral("severeweather"));
    const TextBlock line(word, font);
    const TextBlock wrapped(word, font, TextLayerHorizontalAlignment::leading, 300);

    EXPECT_LT(line.fill(canvas).parts->size(), 40U);
    EXPECT_LT(line.laidOutCharacters(), 5'000);
    EXPECT_LT(wrapped.fill(canvas).parts->size(), 120U);
    EXPECT_DOUBLE_EQ(wrapped.unwrappedHeight(), line.unwrappedHeight());
}

TEST_F(LongTextTest, WhicheverWayAMegabyteIsAlignedWhatIsDrawnIsBounded)
{
    const QString texts[] = {
        repeated(QStringLiteral("severeweather")),
        repeated(QStringLiteral("ที่นี่มีน้ำท่วม")),
        repeated(QStringLiteral("الطريق الساحلي\n")),
        repeated(QStringLiteral("a\u0301\u0316\u0302")),
        QLatin1Char('a') + repeated(QStringLiteral("\u0301")),
    };
    for (const QString &text : texts) {
        for (const auto alignment :
             {TextLayerHorizontalAlignment::center, TextLayerHorizontalAlignment::trailing}) {
            for (const std::optional<QSizeF> box :
                 {std::optional<QSizeF>(), std::optional(QSizeF(300, 100))}) {
                TextLayer *layer = addText(text, {390, 0});
                layer->setHorizontalAlignment(alignment);
                layer->setTextBoxSize(box);
                layer->setOutlineWidth(4);

                const std::vector<Primitive> primitives = drawn(layer, canvas);

                EXPECT_LT(partsOf(primitives), 1'500U);
                for (const Primitive &primitive : primitives)
                    EXPECT_LE(Sprite::make(primitive, QTransform(), canvas)->bytes(), 400 * 200);
            }
        }
    }
}

TEST_F(LongTextTest, AMegabyteOfBlankLinesDrawsNothing)
{
    const QString blank(megabyte, QLatin1Char('\n'));

    EXPECT_TRUE(drawn(addText(blank, {0, 0}), canvas).empty());
    EXPECT_LT(TextBlock(blank, font).size(canvas).height(), 1'000);
}

TEST_F(LongTextTest, AMegabyteThatIsOutOfSightDrawsNothing)
{
    for (const QPointF place : {QPointF(0, 400), QPointF(600, 0), QPointF(-1'500, 0)}) {
        TextLayer *layer = addText(repeated(QStringLiteral("The coast road is closed\n")), place);

        EXPECT_TRUE(drawn(layer, canvas).empty());
    }
}

// Who looks elsewhere later finds what was laid out before, and the rest.
TEST_F(LongTextTest, ABlockShowsEachPartOfItselfAsOneThatShowsNothingElse)
{
    const QString text = numberedLines("Line %1 of a long list", 500);
    const TextBlock block(text, font, TextLayerHorizontalAlignment::leading, 250);

    for (const double top : {0.0, 9'000.0, 300.0, 20'000.0, 8'900.0}) {
        const QRectF seen = QRectF(canvas).translated(0, top);
        const TextBlock fresh(text, font, TextLayerHorizontalAlignment::leading, 250);

        EXPECT_EQ(block.fill(seen).path, fresh.fill(seen).path);
    }
}

TEST_F(LongTextTest, AShortTextIsTheSameOutlineWhereverItLies)
{
    const TextBlock block(QStringLiteral("Severe\nweather"), font);

    EXPECT_EQ(block.fill(QRectF(0, 0, 20, 20)).parts, block.fill().parts);
}

TEST_F(LongTextTest, AMegabyteForATeamNameStaysWithinTheBar)
{
    auto *bar = added(new ScoreLayer(QUuid::createUuid(), "Bar", ScoreTemplate::wideBroadcast,
                                     ScoreSportPreset::football, {}, {960, 128}));
    bar->setHomeTeam(repeated(QStringLiteral("Wolverhampton")));
    bar->setPeriod(repeated(QStringLiteral("Half\n")));
    TextBlockCache texts;

    std::size_t elements = 0;
    for (const Primitive &primitive : primitivesOf(bar, {}, texts))
        elements += std::size_t(std::get<FilledPath>(primitive.what).path.elementCount());

    EXPECT_LT(elements, 100'000U);
}

using LongTextFrameTest = FramePathFixture;

TEST_F(LongTextFrameTest, AFrameOfALongTextIsTheReferences)
{
    TextLayer *layer = addText(numberedLines("Line %1 of a long list", 300), {30, 20}, 20.5);
    layer->setOutlineWidth(6);

    for (const QPointF place : {QPointF(30, 20), QPointF(-60, -900.5), QPointF(150, 80)}) {
        layer->setPosition(place);
        EXPECT_EQ(copyOf(frame()), copyOf(reference()));
    }
}

} // namespace
} // namespace tessara
