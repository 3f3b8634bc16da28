#include "Rendering/LayerPrimitives.h"

#include "Models/ImageLayer.h"
#include "Models/LayerGeometry.h"

#include <algorithm>

namespace tessara {

namespace {

// The whole picture stretched so far that the crop fills the content; the mask does the cutting.
QRectF croppedPlacement(const QRectF &content, const QRectF &crop)
{
    constexpr double leastSide = 0.0001; // of the picture
    const double width = content.width() / std::max(crop.width(), leastSide);
    const double height = content.height() / std::max(crop.height(), leastSide);
    return {content.x() - width * crop.x(), content.y() - height * crop.y(), width, height};
}

QRectF placement(const ImageLayer &layer, const QRectF &content)
{
    if (layer.contentMode() == ImageLayerContentMode::fitInside)
        return aspectFitRect(layer.image().size(), content);
    return croppedPlacement(content, layer.normalizedCropRect(content.size()));
}

bool cutsNothing(const ImageLayer &layer, const QRectF &content, const QRectF &placed)
{
    constexpr double rounding = 1e-6; // px
    const bool isPlainRectangle = layer.maskShape() == ImageLayerMaskShape::rectangle
                                  || layer.maskShape() == ImageLayerMaskShape::customPolygon;
    return isPlainRectangle
           && content.adjusted(-rounding, -rounding, rounding, rounding).contains(placed);
}

} // namespace

std::vector<Primitive> picturePrimitives(const ImageLayer &layer, QPointF place,
                                         double pixelsPerUnit)
{
    const QRectF content = layer.contentRect({QPointF(), layer.size()});
    const QRectF placed = placement(layer, content);
    if (layer.image().isNull() || content.isEmpty() || placed.isEmpty())
        return {};
    PlacedPicture picture{layer.image().levelFor(placed.size() * pixelsPerUnit), placed};
    if (!cutsNothing(layer, content, placed))
        picture.mask = layer.maskPath(content);
    return {{picture,
             QTransform::fromTranslate(place.x(), place.y()),
             {Fading::Means::drawing, layer.opacity()}}};
}

} // namespace tessara
