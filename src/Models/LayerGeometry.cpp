#include "Models/LayerGeometry.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr double smallestCrop = 0.04; // of the picture's side

double finiteOr(double value, double fallback)
{
    return std::isfinite(value) ? value : fallback;
}

} // namespace

std::optional<double> aspectRatio(QSizeF size)
{
    if (!(size.width() > 0) || !(size.height() > 0))
        return std::nullopt;
    return size.width() / size.height();
}

QRectF sanitizedNormalizedRect(QRectF rect)
{
    const double width = std::max(std::min(finiteOr(rect.width(), 1), 1.0), smallestCrop);
    const double height = std::max(std::min(finiteOr(rect.height(), 1), 1.0), smallestCrop);
    const double x = std::max(std::min(finiteOr(rect.x(), 0), 1 - width), 0.0);
    const double y = std::max(std::min(finiteOr(rect.y(), 0), 1 - height), 0.0);
    return {x, y, width, height};
}

QRectF aspectFillRect(QSizeF source, QSizeF destination)
{
    const std::optional<double> s = aspectRatio(source);
    const std::optional<double> d = aspectRatio(destination);
    if (!s || !d)
        return {0, 0, 1, 1};
    if (*s <= *d) {
        const double height = *s / *d;
        return sanitizedNormalizedRect({0, (1 - height) * 0.5, 1, height});
    }
    const double width = *d / *s;
    return sanitizedNormalizedRect({(1 - width) * 0.5, 0, width, 1});
}

QRectF aspectFitRect(QSizeF image, QRectF rect)
{
    if (!aspectRatio(image) || !aspectRatio(rect.size()))
        return rect;
    const double scale = std::min(rect.width() / image.width(), rect.height() / image.height());
    const QSizeF fitted = image * scale;
    return {rect.x() + (rect.width() - fitted.width()) * 0.5,
            rect.y() + (rect.height() - fitted.height()) * 0.5, fitted.width(), fitted.height()};
}

} // namespace tessara
