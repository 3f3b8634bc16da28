#include "UI/IconProvider.h"

#include <QColor>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace tessara {

namespace {

constexpr double drawnSide = 24; // the side that the icons are drawn in

QColor colorFrom(const QString &text)
{
    const QColor color(QLatin1Char('#') + text.left(6));
    bool isHex = false;
    const int alpha = text.mid(6, 2).toInt(&isHex, 16);
    return isHex ? QColor(color.red(), color.green(), color.blue(), alpha) : color;
}

} // namespace

IconProvider::IconProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage IconProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QStringList parts = id.split(QLatin1Char('/'));
    const QSize drawn = requestedSize.isEmpty() ? QSize(24, 24) : requestedSize;
    QImage picture(drawn, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    if (size)
        *size = drawn;
    QFile file(QStringLiteral(":/icons/%1.svg").arg(parts.value(0)));
    if (parts.size() < 3 || !file.open(QIODevice::ReadOnly))
        return picture;
    const QColor color = colorFrom(parts[1]);
    const double line = parts[2].toDouble() * drawnSide / drawn.width();
    QByteArray svg = file.readAll();
    svg.replace("currentColor", color.name().toLatin1());
    svg.replace("stroke-width=\"2\"", "stroke-width=\"" + QByteArray::number(line) + '"');
    QSvgRenderer renderer(svg);
    QPainter painter(&picture);
    painter.setOpacity(color.alphaF());
    renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(drawn)));
    return picture;
}

} // namespace tessara
