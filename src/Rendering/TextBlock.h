// A piece of text, shaped and laid out.
#pragma once

#include <QGlyphRun>
#include <QString>

#include "Models/FontResolution.h"
#include "Models/LayerEnums.h"
#include "Rendering/GlyphShapes.h"
#include "Rendering/Outline.h"
#include "Rendering/TextLines.h"

#include <memory>
#include <optional>
#include <vector>

namespace tessara {

/// How much of the spare room stands before a line: 0, a half or all.
double alignmentShare(TextLayerHorizontalAlignment alignment);

/// Wherever something may be seen.
constexpr QRectF everywhere{-1e12, -1e12, 2e12, 2e12}; // canvas units

/// Lines of text with their glyphs as outlines, so that a size, a slide or a scale of any fraction
/// shows the same letters. Bitmap glyphs (colour emoji) are drawn as pictures and have no outline.
/// Of a long text only what is seen is laid out and kept, as far as that can be told without the
/// rest; a short one is taken whole. `seen` is always in canvas units from the block's top left
/// corner.
class TextBlock
{
public:
    using PictureGlyph = GlyphPicture; // its box from the block's top left corner

    /// Without `wrapWidth` the text keeps its own line breaks and never wraps. Of a text that is
    /// too long its `drawnText` is shown.
    TextBlock(const QString &text, const SizedFont &font,
              TextLayerHorizontalAlignment alignment = TextLayerHorizontalAlignment::leading,
              std::optional<double> wrapWidth = {},
              std::shared_ptr<GlyphShapes> shapes = std::make_shared<GlyphShapes>());

    /// The widest line by the height of all lines, the font's leading included, in canvas units;
    /// but for lines that don't reach into `seen`, of which only the top and the bottom count.
    QSizeF size(const QRectF &seen = everywhere) const;
    /// How high the same text stands that never wraps.
    double unwrappedHeight() const;
    /// Canvas units in a unit of the face's own size.
    double scale() const { return m_font.scale; }

    /// The glyphs' insides, at the face's own size, from the corner of a block of `size(seen)`.
    const Outline &fill(const QRectF &seen = everywhere) const;
    /// The inside of a line along the glyphs' edges; `outlineWidth` in percent of the font size.
    /// Empty for no width. The last width asked for is kept.
    Outline stroke(double outlineWidth, const QRectF &seen = everywhere) const;
    const std::vector<PictureGlyph> &pictures(const QRectF &seen = everywhere) const;

    /// What it took so far.
    qsizetype laidOutCharacters() const { return m_lines.laidOutCharacters(); }

private:
    struct PlacedGlyph
    {
        QRawFont font;
        quint32 glyph;
        QPointF position;
    };
    struct Shapes
    {
        QRectF seen;                     // px at the face's size
        double room;                     // in which the lines were aligned
        std::vector<PlacedGlyph> glyphs; // those with outlines
        Outline fill;
        std::vector<PictureGlyph> pictures;
    };
    struct Stroke
    {
        double outlineWidth = 0;
        Outline outline;
    };

    QRectF seenOfFace(const QRectF &seen) const;
    const Shapes &shapes(const QRectF &seen) const;
    void addGlyphs(const QGlyphRun &run, QPointF origin, Shapes &shapes,
                   std::vector<PlacedShape> &outlines) const;

    SizedFont m_font;
    double m_share; // of the spare room before a line
    std::optional<double> m_faceWidth;
    bool m_isShort; // nothing of it is left out
    bool m_isLaidOutWhole;
    std::shared_ptr<GlyphShapes> m_glyphShapes;
    // Made when somebody draws: many texts are only measured.
    mutable TextLines m_lines;
    mutable std::optional<Shapes> m_shapes;
    mutable Stroke m_stroke;
};

} // namespace tessara
