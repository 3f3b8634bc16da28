// Pure rules of boxes and crops.
#pragma once

#include <QRectF>
#include <QSizeF>

#include <optional>

namespace tessara {

/// Width through height; nothing unless both are above 0.
std::optional<double> aspectRatio(QSizeF size);

/// A crop in fractions of a picture, mended: at least 0.04 a side, and inside the picture.
QRectF sanitizedNormalizedRect(QRectF rect);

/// The largest part of a box of `source`'s shape that has `destination`'s shape, centred, in
/// fractions of the source.
QRectF aspectFillRect(QSizeF source, QSizeF destination);

/// `image` scaled to fit into `rect`, centred there; `rect` itself when a side is not above 0.
QRectF aspectFitRect(QSizeF image, QRectF rect);

} // namespace tessara
