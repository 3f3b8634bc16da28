#include "Rendering/Outline.h"

#include <algorithm>
#include <atomic>

namespace tessara {

namespace {

quint64 nextSerial()
{
    static std::atomic<quint64> last = 0;
    return ++last;
}

} // namespace

OutlineShape OutlineShape::of(const QPainterPath &polygons)
{
    return {polygons, polygons.controlPointRect(), nextSerial()};
}

Outline outlineOf(std::span<const PlacedShape> shapes)
{
    int elements = 0;
    for (const PlacedShape &placed : shapes)
        elements += placed.shape.path.elementCount();
    Outline outline;
    outline.path.setFillRule(Qt::WindingFill);
    outline.path.reserve(elements);
    const auto parts = std::make_shared<std::vector<OutlinePart>>();
    parts->reserve(shapes.size());
    for (const auto &[shape, position] : shapes) {
        if (shape.path.isEmpty())
            continue;
        outline.path.addPath(shape.path.translated(position));
        parts->push_back(
            {shape.serial, position, shape.box.translated(position), outline.path.elementCount()});
    }
    outline.parts = parts;
    return outline;
}

QRectF boxOf(const QPainterPath &path, const OutlineParts &parts)
{
    if (!parts || parts->empty())
        return path.controlPointRect();
    double left = parts->front().box.left(), right = parts->front().box.right();
    double top = parts->front().box.top(), bottom = parts->front().box.bottom();
    for (const OutlinePart &part : *parts) {
        left = std::min(left, part.box.left());
        right = std::max(right, part.box.right());
        top = std::min(top, part.box.top());
        bottom = std::max(bottom, part.box.bottom());
    }
    return {left, top, right - left, bottom - top};
}

} // namespace tessara
