#include "Rendering/TextBlock.h"

#include <QPainter>
#include <QRawFont>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

QTextOption textOption(bool wraps)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    option.setUseDesignMetrics(true);
    if (!wraps)
        option.setFlags(QTextOption::IncludeTrailingSpaces);
    return option;
}

void breakLines(QTextLayout &layout, std::optional<double> wrapWidth)
{
    constexpr double endless = 1e6; // px at the face's size
    layout.setCacheEnabled(true);
    layout.setTextOption(textOption(wrapWidth.has_value()));
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
        line.setLineWidth(wrapWidth.value_or(endless));
    layout.endLayout();
}

double heightOf(const QTextLine &line)
{
    return line.ascent() + line.descent() + std::max(line.leading(), 0.0);
}

bool hasColorGlyphs(const QRawFont &font)
{
    constexpr const char *tables[] = {"CBLC", "COLR", "sbix"};
    return std::any_of(std::begin(tables), std::end(tables),
                       [&](const char *table) { return !font.fontTable(table).isEmpty(); });
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
                     TextLayerHorizontalAlignment alignment, std::optional<double> wrapWidth)
    : m_font(font)
{
    const std::optional<double> faceWidth =
        wrapWidth ? std::optional(*wrapWidth / font.scale) : std::nullopt;
    QString normalized = text;
    normalized.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    std::vector<std::unique_ptr<QTextLayout>> paragraphs;
    double widest = 0;
    // A paragraph each, since the direction of writing is found by the paragraph.
    for (const QString &paragraph : normalized.split(QLatin1Char('\n'))) {
        paragraphs.push_back(std::make_unique<QTextLayout>(paragraph, font.face));
        QTextLayout &layout = *paragraphs.back();
        breakLines(layout, faceWidth);
        for (int index = 0; index < layout.lineCount(); ++index)
            widest = std::max(widest, layout.lineAt(index).naturalTextWidth());
    }
    const double room = faceWidth.value_or(widest);
    double top = 0;
    for (const auto &layout : paragraphs) {
        for (int index = 0; index < layout->lineCount(); ++index) {
            const QTextLine line = layout->lineAt(index);
            const double left = (room - line.naturalTextWidth()) * alignmentShare(alignment);
            for (const QGlyphRun &run : line.glyphRuns())
                placeGlyphRun(run, QPointF(left - line.x(), top - line.y()));
            top += heightOf(line);
        }
    }
    m_outlines.setFillRule(Qt::WindingFill);
    m_size = QSizeF(widest, top) * font.scale;
}

// The font tells neither where a picture stands nor how far it reaches, so it is drawn once by
// itself, with room for what hangs over.
TextBlock::PictureGlyph TextBlock::pictureOf(const QRawFont &font, quint32 glyph)
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

void TextBlock::placeGlyphRun(const QGlyphRun &run, QPointF origin)
{
    const QRawFont font = run.rawFont();
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    // Asked before the outlines: a colour glyph whose outline was wanted once shows no picture any
    // more.
    const bool hasColors = hasColorGlyphs(font);
    for (qsizetype index = 0; index < glyphs.size(); ++index) {
        const QPointF position = positions[index] + origin;
        PictureGlyph picture = hasColors ? pictureOf(font, glyphs[index]) : PictureGlyph();
        if (picture.image.isNull()) {
            m_outlines.addPath(font.pathForGlyph(glyphs[index]).translated(position));
        } else {
            picture.box.translate(position);
            m_pictures.push_back(std::move(picture));
        }
    }
}

const QPainterPath &TextBlock::fillPath() const
{
    return m_outlines;
}

QPainterPath TextBlock::strokePath(double outlineWidth) const
{
    if (!(outlineWidth > 0))
        return {};
    if (m_stroke.outlineWidth != outlineWidth) {
        QPainterPathStroker stroker;
        stroker.setWidth(outlineWidth / 100 * m_font.face.pixelSize());
        stroker.setCapStyle(Qt::FlatCap);
        stroker.setJoinStyle(Qt::RoundJoin);
        stroker.setCurveThreshold(0.05); // px at the face's size
        m_stroke = {outlineWidth, stroker.createStroke(m_outlines)};
        m_stroke.path.setFillRule(Qt::WindingFill);
    }
    return m_stroke.path;
}

void TextBlock::draw(QPainter &painter, QPointF topLeft, const TextPaint &paint) const
{
    painter.save();
    painter.translate(topLeft);
    painter.scale(m_font.scale, m_font.scale);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillPath(fillPath(), paint.fill);
    drawPictures(painter, paint.fill.alphaF());
    if (paint.outlineWidth > 0)
        painter.fillPath(strokePath(paint.outlineWidth), paint.outline);
    painter.restore();
}

// Their colours are their own; only the alpha of the fill reaches them.
void TextBlock::drawPictures(QPainter &painter, double alpha) const
{
    const double opacity = painter.opacity();
    painter.setOpacity(opacity * alpha);
    for (const PictureGlyph &picture : m_pictures)
        painter.drawImage(picture.box, picture.image, picture.image.rect());
    painter.setOpacity(opacity);
}

} // namespace tessara
