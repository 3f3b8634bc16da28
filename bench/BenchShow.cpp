#include "bench/BenchShow.h"

#include <QPainter>

namespace tessara {

namespace {

constexpr int titles = 16;
constexpr int pictures = 8;
constexpr int shapes = 12;
constexpr int countdowns = 4;

Picture testPicture(int index)
{
    QImage image(1280, 720, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor::fromHsv(index * 40 % 360, 160, 220, index % 2 == 0 ? 255 : 160));
    QPainter painter(&image);
    for (int line = 0; line < 40; ++line)
        painter.fillRect(line * 32, line * 18, 400, 6, QColor::fromHsv(line * 9, 200, 255));
    painter.end();
    return Picture(image);
}

} // namespace

BenchShow::BenchShow(QSizeF canvas, const ShowFiles &files)
    : m_document(m_clock, canvas)
    , m_scale(canvas.width() / 1920)
{
    files.addTo(m_document, m_scale);
    if (files.isEmpty())
        addGeneratedShow();
}

void BenchShow::addGeneratedShow()
{
    addShapes();
    addPictures();
    addTitles();
    addCountdowns();
}

QPointF BenchShow::place(int index) const
{
    return QPointF(40 + index % 5 * 370, 30 + index / 5 % 8 * 130) * m_scale;
}

void BenchShow::addTitles()
{
    const QStringList texts{QStringLiteral("Breaking News"), QStringLiteral("สวัสดีครับ ที่นี่"),
                            QStringLiteral("Zürich – Ångström"), QStringLiteral("مرحبا بالعالم")};
    for (int index = 0; index < titles; ++index) {
        TextLayer *layer = m_document.addTextLayer();
        layer->setText(texts[index % texts.size()]);
        layer->setPosition(place(index));
        layer->setFontSize((28 + index % 4 * 14) * m_scale);
        layer->setOutlineWidth(index % 4 == 3 ? 4 : 0);
    }
}

void BenchShow::addPictures()
{
    for (int index = 0; index < pictures; ++index) {
        ImageLayerOptions options;
        options.maskShape =
            index % 2 == 0 ? ImageLayerMaskShape::rectangle : ImageLayerMaskShape::circle;
        m_document.addLayer(CanvasLayerItem(
            new ImageLayer(QUuid::createUuid(), QStringLiteral("Picture"), testPicture(index), {},
                           place(index * 5), QSizeF(480, 270) * m_scale, options)));
    }
}

void BenchShow::addShapes()
{
    for (int index = 0; index < shapes; ++index) {
        ShapeLayer *layer = m_document.addTemplateShapeLayer(ShapeKind(index % 6));
        layer->setPosition(place(index * 3));
        layer->setSize(QSizeF(420, 150) * m_scale);
        layer->setColor({0.1, 0.2, 0.4 + index * 0.04, 0.8});
    }
}

void BenchShow::addCountdowns()
{
    for (int index = 0; index < countdowns; ++index) {
        CountdownLayer *layer = m_document.addCountdownLayer();
        layer->setPosition(place(index * 9 + 4));
        layer->setSize(QSizeF(300, 100) * m_scale);
        layer->setFontSize(64 * m_scale);
        layer->setShowBackground(true);
        layer->setCornerRadius(16 * m_scale);
    }
}

} // namespace tessara
