#include "Rendering/TextBlock.h"

#include <QRawFont>
#include <QTextLayout>

#include <algorithm>

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

/// How far a line reaches, all of whose parts stand on one base line.
struct Extent
{
    double ascent = 0;
    double descent = 0;
    double ascentAndLeading = 0;

    double height() const { return descent + std::max(ascentAndLeading, ascent); }
};

Extent extentOf(const QTextLine &line)
{
    return {line.ascent(), line.descent(), line.ascent() + line.leading()};
}

Extent united(const Extent &one, const Extent &other)
{
    return {std::max(one.ascent, other.ascent), std::max(one.descent, other.descent),
            std::max(one.ascentAndLeading, other.ascentAndLeading)};
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
    , m_glyphShapes(std::move(shapes))
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
        Extent oneLine;
        for (int index = 0; index < layout->lineCount(); ++index) {
            const QTextLine line = layout->lineAt(index);
            const double left = (room - line.naturalTextWidth()) * alignmentShare(alignment);
            for (const QGlyphRun &run : line.glyphRuns())
                m_runs.push_back({run, QPointF(left - line.x(), top - line.y())});
            top += extentOf(line).height();
            oneLine = united(oneLine, extentOf(line));
        }
        m_unwrappedHeight += oneLine.height() * font.scale;
    }
    m_size = QSizeF(widest, top) * font.scale;
}

const TextBlock::Shapes &TextBlock::shapes() const
{
    if (m_shapes)
        return *m_shapes;
    Shapes &made = m_shapes.emplace();
    std::vector<PlacedShape> outlines;
    for (const auto &[run, origin] : m_runs) {
        const QRawFont font = run.rawFont();
        const QList<quint32> glyphs = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        for (qsizetype index = 0; index < glyphs.size(); ++index) {
            const QPointF position = positions[index] + origin;
            GlyphPicture picture = m_glyphShapes->picture(font, glyphs[index]);
            if (picture.image.isNull()) {
                made.glyphs.push_back({font, glyphs[index], position});
                outlines.push_back({m_glyphShapes->outline(font, glyphs[index]), position});
            } else {
                picture.box.translate(position);
                made.pictures.push_back(std::move(picture));
            }
        }
    }
    made.fill = outlineOf(outlines);
    return made;
}

const Outline &TextBlock::fill() const
{
    return shapes().fill;
}

Outline TextBlock::stroke(double outlineWidth) const
{
    if (!(outlineWidth > 0))
        return {};
    if (m_stroke.outlineWidth != outlineWidth) {
        const double width = outlineWidth / 100 * m_font.face.pixelSize();
        std::vector<PlacedShape> strokes;
        for (const auto &[font, glyph, position] : shapes().glyphs)
            strokes.push_back({m_glyphShapes->stroke(font, glyph, width), position});
        m_stroke = {outlineWidth, outlineOf(strokes)};
    }
    return m_stroke.outline;
}

const std::vector<TextBlock::PictureGlyph> &TextBlock::pictures() const
{
    return shapes().pictures;
}

} // namespace tessara
