#include "Rendering/GlyphShapes.h"

#include <QGlyphRun>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <memory>

namespace tessara {

namespace {

// A font's own size is the largest that it is drawn at, and a painter bends its curves by more.
constexpr double flatness = 1.0 / 32; // px between a curve and its chords

double lengthOf(QPointF vector)
{
    return std::hypot(vector.x(), vector.y());
}

void addCurve(QPainterPath &polygons, QPointF from, QPointF control, QPointF secondControl,
              QPointF to)
{
    // The chords of n equal steps are off by 3/4 of the largest second difference over n², at most.
    const double bend = std::max(lengthOf(from - 2 * control + secondControl),
                                 lengthOf(control - 2 * secondControl + to));
    constexpr double mostSteps = 1000;
    const int steps = int(std::clamp(std::ceil(std::sqrt(0.75 * bend / flatness)), 1.0, mostSteps));
    for (int step = 1; step < steps; ++step) {
        const double t = double(step) / steps;
        const double s = 1 - t;
        polygons.lineTo(s * s * s * from + 3 * s * s * t * control + 3 * s * t * t * secondControl
                        + t * t * t * to);
    }
    polygons.lineTo(to);
}

QPainterPath flattened(const QPainterPath &path)
{
    QPainterPath polygons;
    polygons.setFillRule(Qt::WindingFill);
    const int count = path.elementCount();
    for (int index = 0; index < count; ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        if (element.isMoveTo()) {
            if (index + 1 < count && !path.elementAt(index + 1).isMoveTo())
                polygons.moveTo(element);
        } else if (element.isLineTo()) {
            polygons.lineTo(element);
        } else {
            addCurve(polygons, path.elementAt(index - 1), element, path.elementAt(index + 1),
                     path.elementAt(index + 2));
            index += 2;
        }
    }
    return polygons;
}

// The stroker's own measure: by how much the square of the distance to the edge may be off, in
// parts of that square. It follows from the width alone, so that a stroke is the same at every
// scale.
double curveThreshold(double width)
{
    constexpr double farthest = 2 * flatness; // px off the true line
    const double distance = width / 2;
    return std::clamp(2 * farthest / distance, 0.004, 0.25);
}

QPainterPath stroked(const QPainterPath &path, double width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::FlatCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    stroker.setCurveThreshold(curveThreshold(width));
    return stroker.createStroke(path);
}

// The font tells neither where a picture stands nor how far it reaches, so it is drawn once by
// itself, with room for what hangs over.
GlyphPicture pictureOf(const QRawFont &font, quint32 glyph)
{
    constexpr double largest = 512; // px; the fonts' own pictures are smaller
    QRawFont drawn = font;
    if (font.pixelSize() > largest)
        drawn.setPixelSize(largest);
    const QImage map = drawn.alphaMapForGlyph(glyph, QRawFont::PixelAntialiasing);
    if (map.format() != QImage::Format_ARGB32_Premultiplied) // a blank, and no picture at all
        return {};
    const int size = int(std::ceil(drawn.pixelSize()));
    const QRect box(-size / 4, -map.height() - size / 8, map.width() + size / 2,
                    map.height() + size * 5 / 8);
    QImage image(box.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QGlyphRun alone;
    alone.setRawFont(drawn);
    alone.setGlyphIndexes({glyph});
    alone.setPositions({QPointF(0, 0)});
    QPainter painter(&image);
    painter.drawGlyphRun(-box.topLeft(), alone);
    const double scale = font.pixelSize() / drawn.pixelSize();
    return {image, QTransform::fromScale(scale, scale).mapRect(QRectF(box))};
}

template <typename Key, typename Value, typename Make>
Value kept(QCache<Key, Value> &cache, const Key &key, const Make &make)
{
    if (const Value *known = cache.object(key))
        return *known;
    auto [value, cost] = make();
    cache.insert(key, new Value(value), cost);
    return value;
}

} // namespace

size_t qHash(const GlyphShapes::Key &key, size_t seed)
{
    return qHashMulti(seed, key.font, key.glyph, key.width);
}

GlyphShapes::GlyphShapes(qsizetype capacity, qsizetype pictureCapacity)
    : m_paths(capacity)
    , m_pictures(pictureCapacity)
    , m_fontKinds(64)
{
}

OutlineShape GlyphShapes::outline(const QRawFont &font, quint32 glyph)
{
    return stroke(font, glyph, 0);
}

OutlineShape GlyphShapes::stroke(const QRawFont &font, quint32 glyph, double width)
{
    // Asking a font of pictures alone for an outline would cost it its picture.
    if (kindOf(font) == FontKind::pictures)
        return {};
    return kept(m_paths, Key{font, glyph, width}, [&] {
        constexpr qsizetype costOfAny = 8; // elements
        const QPainterPath curves = font.pathForGlyph(glyph);
        const QPainterPath path = flattened(width > 0 ? stroked(curves, width) : curves);
        return std::pair(OutlineShape::of(path), costOfAny + path.elementCount());
    });
}

GlyphPicture GlyphShapes::picture(const QRawFont &font, quint32 glyph)
{
    if (kindOf(font) == FontKind::outlines)
        return {};
    const Key key{font, glyph, 0};
    if (const GlyphPicture *known = m_pictures.object(key))
        return *known;
    constexpr qsizetype costOfAny = 256; // bytes
    const GlyphPicture picture = pictureOf(font, glyph);
    // A font may fail to show a picture that it has; the next who asks may be luckier.
    if (!picture.image.isNull())
        m_pictures.insert(key, new GlyphPicture(picture), costOfAny + picture.image.sizeInBytes());
    return picture;
}

GlyphShapes::FontKind GlyphShapes::kindOf(const QRawFont &font)
{
    return kept(m_fontKinds, font, [&] {
        const auto hasAny = [&](std::initializer_list<const char *> tables) {
            return std::any_of(tables.begin(), tables.end(),
                               [&](const char *table) { return !font.fontTable(table).isEmpty(); });
        };
        FontKind kind = FontKind::outlines;
        if (hasAny({"CBLC", "COLR", "sbix"}))
            kind = hasAny({"glyf", "CFF ", "CFF2"}) ? FontKind::both : FontKind::pictures;
        return std::pair(kind, 1);
    });
}

} // namespace tessara
