// What the canvas view shows besides the document.
#pragma once

#include <QImage>
#include <QRectF>

#include <vector>

namespace tessara {

class CanvasDocument;
class TextBlockCache;

/// The ground that shows through what is transparent; `size` in item units.
QImage checkerboard(QSizeF size, double pixelRatio);

/// The line round a selected layer.
struct SelectionFrame
{
    QRectF box; // canvas units
    bool isOnAir = false;
    bool isLocked = false;

    bool operator==(const SelectionFrame &) const = default;
};

/// From the lowest layer to the highest.
std::vector<SelectionFrame> selectionFrames(const CanvasDocument &document, TextBlockCache &texts);

/// A picture, and where it stands in an item.
struct PlacedImage
{
    QImage image;
    QRectF rect; // item units
};

/// No larger than needed, and with nothing beyond `bounds`. `canvas` is the canvas in the item, and
/// `scale` tells the item units of a canvas unit.
PlacedImage selectionPicture(const std::vector<SelectionFrame> &frames, const QRectF &canvas,
                             double scale, const QRectF &bounds, double pixelRatio);

} // namespace tessara
