#include "Models/WindowCaptureLayer.h"

#include <algorithm>

namespace tessara {

WindowCaptureLayer::WindowCaptureLayer(const QUuid &id, const QString &name, QPointF position,
                                       QSizeF size)
    : SizedLayer(id, name, position, size)
{
}

void WindowCaptureLayer::setCropRectNormalized(QRectF rect)
{
    constexpr double smallestSide = 0.02; // of the window
    constexpr double nearlyWhole = 0.999; // of the window
    const double x = std::max(std::min(rect.x(), 1 - smallestSide), 0.0);
    const double y = std::max(std::min(rect.y(), 1 - smallestSide), 0.0);
    const double width = std::max(std::min(rect.width(), 1 - x), smallestSide);
    const double height = std::max(std::min(rect.height(), 1 - y), smallestSide);
    const bool isWhole = x == 0 && y == 0 && width >= nearlyWhole && height >= nearlyWhole;
    storeCrop(isWhole ? std::nullopt : std::optional(QRectF(x, y, width, height)));
}

void WindowCaptureLayer::clearCrop()
{
    storeCrop(std::nullopt);
}

void WindowCaptureLayer::storeCrop(const std::optional<QRectF> &crop)
{
    if (replaceValue(m_cropRectNormalized, crop))
        emit cropRectNormalizedChanged();
}

double WindowCaptureLayer::aspectRatio() const
{
    return size().height() > 0 ? size().width() / size().height() : standardAspectRatio;
}

} // namespace tessara
