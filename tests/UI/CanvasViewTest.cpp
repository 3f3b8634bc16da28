#include "UI/CanvasView.h"

#include "Rendering/LayerDrawing.h"
#include "UI/WindowFixture.h"

#include <QImage>
#include <QPainter>
#include <QSignalSpy>

#include <algorithm>
#include <cmath>

namespace tessara {
namespace {

QImage gradient()
{
    QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / 299, y * 255 / 199, 128));
    }
    return image;
}

int distance(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

struct Comparison
{
    int largest = 0; // in a channel
    int unlike = 0;  // pixels that are further off than rounding
};

Comparison compare(const QImage &shown, const QImage &drawn)
{
    Comparison result;
    if (shown.size() != drawn.size())
        return {256, shown.width() * shown.height()};
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            const int off = distance(shown.pixel(x, y), drawn.pixel(x, y));
            result.largest = std::max(result.largest, off);
            result.unlike += off > 1 ? 1 : 0;
        }
    }
    return result;
}

class CanvasViewTest : public WindowFixture
{
protected:
    CanvasViewTest()
        : view(static_cast<CanvasView *>(item(QStringLiteral("canvas"))))
        , drawn(view, &CanvasView::drawn)
    {
    }

    ShapeLayer *addShape(QRectF box, RGBAColor color)
    {
        ShapeLayer *shape = document->addTemplateShapeLayer(ShapeKind::rectangle);
        shape->setCornerRadius(0);
        shape->setColor(color);
        shape->setPosition(box.topLeft());
        shape->setSize(box.size());
        document->setSelectedLayerIDs({});
        return shape;
    }

    ShapeLayer *fillCanvas(RGBAColor color) { return addShape({0, 0, 1920, 1080}, color); }

    TextLayer *addText(const QString &text, QPointF place, double size)
    {
        TextLayer *layer = document->addTextLayer();
        layer->setText(text);
        layer->setFontSize(size);
        layer->setPosition(place);
        document->setSelectedLayerIDs({});
        return layer;
    }

    /// All that the operator can tell apart: kinds, opacities, masks, and what reaches beyond.
    void addAllSorts()
    {
        addShape({-200, 600, 800, 700}, {0.1, 0.3, 0.8, 1})->setCornerRadius(60);
        document->addTemplateShapeLayer(ShapeKind::triangle)->setPosition({1500, 100});
        auto *masked = new ImageLayer(QUuid::createUuid(), QStringLiteral("Picture"),
                                      Picture(gradient()), QUrl(), {1300, 420}, {460, 380});
        masked->setOpacity(0.6);
        masked->setMaskShape(ImageLayerMaskShape::hexagon);
        document->addLayer(masked);
        TextLayer *thai = addText(QStringLiteral("สวัสดีครับ ที่นี่กรุงเทพ"), {120, 130}, 120);
        thai->setOutlineColor({1, 0, 0, 1});
        thai->setOutlineWidth(6);
        addText(QStringLiteral("Half seen"), {200, 380}, 140);
        document->takes().setVisibility(document->layerOrder().last(), 0.5);
        document->addScoreLayer(ScoreTemplate::wideBroadcast, ScoreSportPreset::football)
            ->setPosition({700, 900});
        document->setSelectedLayerIDs({});
    }

    QImage picture() const
    {
        const double ratio = window->effectiveDevicePixelRatio();
        const QRectF rect = view->mapRectToScene(view->canvasRect());
        return window->grabWindow()
            .copy(QRectF(rect.topLeft() * ratio, rect.size() * ratio).toRect())
            .convertToFormat(QImage::Format_RGB32);
    }

    QColor colorInTheMiddle() const
    {
        const QImage shown = picture();
        return shown.pixelColor(shown.rect().center());
    }

    /// The canvas as a painter has it, layer by layer.
    QImage painted() const
    {
        const double ratio = window->effectiveDevicePixelRatio();
        const QSizeF size = view->canvasRect().size();
        QImage layers((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        layers.fill(Qt::transparent);
        QPainter painter(&layers);
        painter.scale(view->canvasScale() * ratio, view->canvasScale() * ratio);
        TextBlockCache texts;
        for (const CanvasLayerItem &layer : document->orderedLayers()) {
            const double opacity = runOpacity(*document, layer);
            if (opacity > 0)
                drawLayer(painter, *document, layer, opacity, DrawingStyle::canvas, texts);
        }
        painter.end();
        QImage canvas = checkerboard(size, ratio);
        QPainter(&canvas).drawImage(0, 0, layers);
        return canvas;
    }

    /// But for a few pixels at edges, whose points a painter rounds to 64ths of a pixel.
    void expectAsPainted() const
    {
        const Comparison found = compare(picture(), painted());
        EXPECT_LE(found.largest, 255 / 64 + 1);
        EXPECT_LE(found.unlike, 10);
    }

    CanvasView *view;
    QSignalSpy drawn;
};

TEST_F(CanvasViewTest, ShowsWhatAPainterDraws)
{
    addAllSorts();
    settle();

    expectAsPainted();
    keepPicture(QStringLiteral("canvas"));
}

TEST_F(CanvasViewTest, FollowsAChange)
{
    ShapeLayer *shape = fillCanvas({1, 0, 0, 1});
    EXPECT_TRUE(until([this] { return colorInTheMiddle() == QColor(255, 0, 0); }));

    shape->setColor({0, 0, 1, 1});

    EXPECT_TRUE(until([this] { return colorInTheMiddle() == QColor(0, 0, 255); }));
}

TEST_F(CanvasViewTest, FollowsAChangeOnAir)
{
    ShapeLayer *shape = fillCanvas({1, 0, 0, 1});
    settle();
    app->startDeckLinkOutput();

    shape->setColor({0, 0, 1, 1});
    addShape({600, 300, 720, 480}, {0, 1, 0, 1});
    ASSERT_TRUE(until([this] { return colorInTheMiddle() == QColor(0, 255, 0); }));

    expectAsPainted();
}

TEST_F(CanvasViewTest, ShowsATextThatNeverRestsOnAir)
{
    TextLayer *text = addText(QStringLiteral("0"), {100, 100}, 300);
    settle();
    app->startDeckLinkOutput();
    int number = 0;
    QTimer everyTurn;
    QObject::connect(&everyTurn, &QTimer::timeout, text,
                     [&] { text->setText(QString::number(++number)); });
    everyTurn.start(0);
    drawn.clear();

    EXPECT_TRUE(until([this] { return drawn.count() >= 3; }));
}

TEST_F(CanvasViewTest, DrawsNothingAnewForAChangeThatShowsNowhere)
{
    ShapeLayer *shape = fillCanvas({1, 0, 0, 1});
    settle();
    drawn.clear();

    shape->setName(QStringLiteral("Another"));
    settle();

    EXPECT_EQ(drawn.count(), 0);
}

TEST_F(CanvasViewTest, IsStretchedWhileItsSizeChangesAndSharpInTheEnd)
{
    addAllSorts();
    settle();
    const QSizeF before = view->canvasRect().size();
    drawn.clear();

    window->resize(window->width() + 110, window->height() + 70);
    ASSERT_TRUE(until([&] { return view->canvasRect().size() != before; }));
    EXPECT_EQ(drawn.count(), 0);
    const QImage stretched = picture();
    EXPECT_GT(compare(stretched, painted()).unlike, 1000);
    EXPECT_EQ(stretched.pixelColor(stretched.width() / 10, stretched.height() * 9 / 10),
              QColor(26, 77, 204));

    EXPECT_TRUE(until([this] { return drawn.count() > 0; }));
    expectAsPainted();
}

TEST_F(CanvasViewTest, IsSharpAfterAChangeOfSizeOnAir)
{
    addAllSorts();
    settle();
    app->startDeckLinkOutput();

    const QSizeF before = view->canvasRect().size();
    window->resize(window->width() + 33, window->height() + 21);
    ASSERT_TRUE(until([&] { return view->canvasRect().size() != before; }));
    drawn.clear();

    EXPECT_TRUE(until([this] { return drawn.count() > 0; }));
    expectAsPainted();
}

TEST_F(CanvasViewTest, FollowsTheSizeOfTheCanvasAtOnce)
{
    addAllSorts();
    settle();
    drawn.clear();

    document->setSize({1080, 1080});
    EXPECT_TRUE(until([this] { return drawn.count() > 0; }));

    expectAsPainted();
}

TEST_F(CanvasViewTest, DrawsNothingWhileNobodySeesIt)
{
    ShapeLayer *shape = fillCanvas({1, 0, 0, 1});
    settle();
    window->hide();
    settle();
    drawn.clear();

    shape->setColor({0, 0, 1, 1});
    settle();
    EXPECT_EQ(drawn.count(), 0);

    window->show();
    EXPECT_TRUE(until([this] { return drawn.count() > 0; }));
    EXPECT_EQ(colorInTheMiddle(), QColor(0, 0, 255));
}

TEST_F(CanvasViewTest, CatchesUpOnAirWhenItIsSeenAgain)
{
    ShapeLayer *shape = fillCanvas({1, 0, 0, 1});
    settle();
    app->startDeckLinkOutput();
    window->hide();
    settle();

    shape->setColor({0, 0, 1, 1});
    addShape({600, 300, 720, 480}, {0, 1, 0, 1});
    settle();
    window->show();

    EXPECT_TRUE(until([this] { return colorInTheMiddle() == QColor(0, 255, 0); }));
}

TEST_F(CanvasViewTest, FramesTheSelectedLayerOverAllOthers)
{
    ShapeLayer *below = addShape({480, 270, 960, 540}, {1, 0, 0, 1});
    fillCanvas({0, 1, 0, 1});
    const auto blue = [this] {
        const QImage shown = picture();
        int pixels = 0;
        for (int x = 0; x < shown.width(); ++x)
            pixels += shown.pixelColor(x, shown.height() / 2).blue() > 120 ? 1 : 0;
        return pixels;
    };
    settle();
    EXPECT_EQ(blue(), 0);

    document->setSelectedLayerIDs({below->id()});
    EXPECT_TRUE(until([&] { return blue() >= 2; }));
    keepPicture(QStringLiteral("canvas-selection"));

    document->setSelectedLayerIDs({});
    EXPECT_TRUE(until([&] { return blue() == 0; }));
}

TEST_F(CanvasViewTest, StandsOnWholePixels)
{
    for (const QSize size : {QSize(1280, 800), QSize(1283, 807), QSize(1401, 901)}) {
        window->resize(size);
        settle();
        const double ratio = window->effectiveDevicePixelRatio();
        const QRectF rect = view->mapRectToScene(view->canvasRect());
        for (const double edge : {rect.left(), rect.top(), rect.width(), rect.height()})
            EXPECT_DOUBLE_EQ(edge * ratio, std::round(edge * ratio));
    }
}

} // namespace
} // namespace tessara
