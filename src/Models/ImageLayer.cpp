#include "Models/ImageLayer.h"

#include "Models/LayerGeometry.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

ImageLayerContentMode defaultContentMode(const std::optional<QString> &placeholderKey)
{
    return placeholderKey.value_or(QString()).trimmed().isEmpty()
               ? ImageLayerContentMode::fillCrop
               : ImageLayerContentMode::fitInside;
}

double padding(double value)
{
    return std::isfinite(value) ? std::max(value, 0.0) : 0;
}

QPainterPath polygonPath(const QRectF &rect, std::initializer_list<QPointF> fractions)
{
    QPolygonF polygon;
    for (const QPointF &point : fractions)
        polygon << QPointF(rect.left() + point.x() * rect.width(),
                           rect.top() + point.y() * rect.height());
    QPainterPath path;
    path.addPolygon(polygon);
    path.closeSubpath();
    return path;
}

} // namespace

ImageLayer::ImageLayer(const QUuid &id, const QString &name, const Picture &image,
                       const QUrl &sourceURL, QPointF position, QSizeF size,
                       const ImageLayerOptions &options)
    : AspectLockedLayer(id, name, position, size)
    , m_image(image)
    , m_sourceURL(sourceURL)
    , m_placeholderKey(options.placeholderKey)
    , m_contentMode(options.contentMode.value_or(defaultContentMode(options.placeholderKey)))
    , m_maskShape(options.maskShape)
    , m_maskPadding(padding(options.maskPadding))
    , m_presetGroupID(options.presetGroupID)
{
    if (options.cropRectNormalized)
        m_cropRectNormalized = sanitizedNormalizedRect(*options.cropRectNormalized);
    setOpacity(options.opacity);
    setIsHidden(options.isHidden);
    setIsLocked(options.isLocked);
    setIsAspectRatioLocked(options.isAspectRatioLocked);
    const std::optional<double> ownRatio = aspectRatio(image.size());
    setLockedAspectRatio(ownRatio ? *ownRatio : aspectRatio(size).value_or(standardAspectRatio));
}

QRectF ImageLayer::normalizedCropRect(QSizeF destination) const
{
    if (m_cropRectNormalized)
        return sanitizedNormalizedRect(*m_cropRectNormalized);
    return aspectFillRect(m_image.size(), destination);
}

QRectF ImageLayer::contentRect(QRectF rect) const
{
    constexpr double largestShare = 0.24; // of the shorter side
    constexpr double smallestSide = 8;    // canvas units
    const double wanted = padding(m_maskPadding);
    if (wanted == 0)
        return rect;
    const double inset = std::min(wanted, largestShare * std::min(rect.width(), rect.height()));
    const QRectF content = rect.adjusted(inset, inset, -inset, -inset);
    const bool fits = content.width() >= smallestSide && content.height() >= smallestSide;
    return fits ? content : rect;
}

QPainterPath ImageLayer::maskPath(QRectF rect) const
{
    QPainterPath path;
    switch (m_maskShape) {
    case ImageLayerMaskShape::rectangle:
    case ImageLayerMaskShape::customPolygon: // it takes no points here
        path.addRect(rect);
        return path;
    case ImageLayerMaskShape::roundedRectangle: {
        const double radius = 0.12 * std::min(rect.width(), rect.height());
        path.addRoundedRect(rect, radius, radius);
        return path;
    }
    case ImageLayerMaskShape::circle:
        path.addEllipse(rect);
        return path;
    case ImageLayerMaskShape::hexagon:
        return polygonPath(rect, {{0.14, 0}, {0.86, 0}, {1, 0.5}, {0.86, 1}, {0.14, 1}, {0, 0.5}});
    case ImageLayerMaskShape::shield:
        return polygonPath(
            rect, {{0.22, 0}, {0.78, 0}, {1, 0.2}, {0.88, 0.76}, {0.5, 1}, {0.12, 0.76}, {0, 0.2}});
    }
    Q_UNREACHABLE();
}

} // namespace tessara
