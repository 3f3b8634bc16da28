#include "Rendering/TextBlock.h"

#include <QRawFont>

#include "Rendering/DrawnText.h"

namespace tessara {

namespace {

// To find out what of it is seen would take longer than the whole.
constexpr qsizetype shortText = 2000; // characters

// Lines that end or have their middle at one place stand there whatever the widest is. But at a
// fraction of the face's size sums are rounded, and which one the widest is shows in the last bit.
bool needsWidest(const QString &text, const SizedFont &font, TextLayerHorizontalAlignment alignment)
{
    constexpr qsizetype mostCharacters = 20'000; // to lay out for the sake of a bit
    return alignmentShare(alignment) > 0 && font.scale != 1 && text.size() <= mostCharacters;
}

} // namespace

double alignmentShare(TextLayerHorizontalAlignment alignment)
{
    switch (alignment) {
    case TextLayerHorizontalAlignment::leading:
        return 0;
    case TextLayerHorizontalAlignment::center:
        return 0.5;
    case TextLayerHorizontalAlignment::trailing:
        return 1;
    }
    Q_UNREACHABLE();
}

TextBlock::TextBlock(const QString &text, const SizedFont &font,
                     TextLayerHorizontalAlignment alignment, std::optional<double> wrapWidth,
                     std::shared_ptr<GlyphShapes> shapes)
    : m_font(font)
    , m_share(alignmentShare(alignment))
    , m_faceWidth(wrapWidth ? std::optional(*wrapWidth / font.scale) : std::nullopt)
    , m_isShort(text.size() <= shortText)
    , m_isLaidOutWhole(m_isShort || (!wrapWidth && needsWidest(text, font, alignment)))
    , m_glyphShapes(std::move(shapes))
    , m_lines(drawnText(text), font.face, m_faceWidth, m_share == 0)
{
    if (m_isLaidOutWhole)
        m_lines.layOut(everywhere);
}

QRectF TextBlock::seenOfFace(const QRectF &seen) const
{
    if (m_isShort)
        return everywhere;
    constexpr double rim = 0.1; // of the font size: what an outline adds, and more
    const double more = rim * m_font.face.pixelSize();
    return {seen.left() / m_font.scale - more, seen.top() / m_font.scale - more,
            seen.width() / m_font.scale + 2 * more, seen.height() / m_font.scale + 2 * more};
}

QSizeF TextBlock::size(const QRectF &seen) const
{
    m_lines.layOut(seenOfFace(seen));
    return QSizeF(m_lines.widest(), m_lines.height()) * m_font.scale;
}

double TextBlock::unwrappedHeight() const
{
    return m_lines.unwrappedHeight(m_font.scale);
}

const TextBlock::Shapes &TextBlock::shapes(const QRectF &seen) const
{
    const QRectF seenHere = seenOfFace(seen);
    m_lines.layOut(seenHere);
    const double room = m_faceWidth.value_or(m_lines.widest());
    if (m_shapes && m_shapes->seen == seenHere && m_shapes->room == room)
        return *m_shapes;
    m_stroke = {};
    Shapes &made = m_shapes.emplace();
    made.seen = seenHere;
    made.room = room;
    std::vector<PlacedShape> outlines;
    m_lines.forEachLine(seenHere, [&](const TextLines::Line &line, double top) {
        const QPointF begin((room - line.width) * m_share, top);
        for (const QGlyphRun &run : line.runs)
            addGlyphs(run, begin + line.runsBegin, made, outlines);
    });
    made.fill = outlineOf(outlines);
    return made;
}

void TextBlock::addGlyphs(const QGlyphRun &run, QPointF origin, Shapes &shapes,
                          std::vector<PlacedShape> &outlines) const
{
    const QRawFont font = run.rawFont();
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    for (qsizetype index = 0; index < glyphs.size(); ++index) {
        const QPointF position = positions[index] + origin;
        GlyphPicture picture = m_glyphShapes->picture(font, glyphs[index]);
        if (picture.image.isNull()) {
            OutlineShape shape = m_glyphShapes->outline(font, glyphs[index]);
            if (!m_isShort && !shapes.seen.intersects(shape.box.translated(position)))
                continue;
            shapes.glyphs.push_back({font, glyphs[index], position});
            outlines.push_back({std::move(shape), position});
        } else {
            picture.box.translate(position);
            if (m_isShort || shapes.seen.intersects(picture.box))
                shapes.pictures.push_back(std::move(picture));
        }
    }
}

const Outline &TextBlock::fill(const QRectF &seen) const
{
    return shapes(seen).fill;
}

Outline TextBlock::stroke(double outlineWidth, const QRectF &seen) const
{
    if (!(outlineWidth > 0))
        return {};
    const Shapes &filled = shapes(seen);
    if (m_stroke.outlineWidth != outlineWidth) {
        const double width = outlineWidth / 100 * m_font.face.pixelSize();
        std::vector<PlacedShape> strokes;
        for (const auto &[font, glyph, position] : filled.glyphs)
            strokes.push_back({m_glyphShapes->stroke(font, glyph, width), position});
        m_stroke = {outlineWidth, outlineOf(strokes)};
    }
    return m_stroke.outline;
}

const std::vector<TextBlock::PictureGlyph> &TextBlock::pictures(const QRectF &seen) const
{
    return shapes(seen).pictures;
}

} // namespace tessara
