// A picture in its frame: cropped, fitted and masked.
#pragma once

#include <QRectF>

class QPainter;

namespace tessara {

class ImageLayer;

/// `frame` is the layer's box in canvas coordinates. The painter's opacity holds.
void drawPicture(QPainter &painter, const ImageLayer &layer, QRectF frame);

} // namespace tessara
