// A piece of text, shaped and laid out.
#pragma once

#include <QGlyphRun>
#include <QString>

#include "Models/FontResolution.h"
#include "Models/LayerEnums.h"
#include "Rendering/GlyphShapes.h"
#include "Rendering/Outline.h"

#include <memory>
#include <optional>
#include <vector>

namespace tessara {

/// How much of the spare room stands before a line: 0, a half or all.
double alignmentShare(TextLayerHorizontalAlignment alignment);

/// Lines of text with their glyphs as outlines, so that a size, a slide or a scale of any fraction
/// shows the same letters. Bitmap glyphs (colour emoji) are drawn as pictures and have no outline.
class TextBlock
{
public:
    using PictureGlyph = GlyphPicture; // its box from the block's top left corner

    /// Without `wrapWidth` the text keeps its own line breaks and never wraps.
    TextBlock(const QString &text, const SizedFont &font,
              TextLayerHorizontalAlignment alignment = TextLayerHorizontalAlignment::leading,
              std::optional<double> wrapWidth = {},
              std::shared_ptr<GlyphShapes> shapes = std::make_shared<GlyphShapes>());

    /// The widest line by the height of all lines, the font's leading included, in canvas units.
    QSizeF size() const { return m_size; }
    /// How high the same text stands that never wraps.
    double unwrappedHeight() const { return m_unwrappedHeight; }
    /// Canvas units in a unit of the face's own size.
    double scale() const { return m_font.scale; }

    /// The glyphs' insides, at the face's own size, from the block's top left corner.
    const Outline &fill() const;
    /// The inside of a line along the glyphs' edges; `outlineWidth` in percent of the font size.
    /// Empty for no width. The last width asked for is kept.
    Outline stroke(double outlineWidth) const;
    const std::vector<PictureGlyph> &pictures() const;

private:
    struct Run
    {
        QGlyphRun glyphs;
        QPointF origin;
    };
    struct PlacedGlyph
    {
        QRawFont font;
        quint32 glyph;
        QPointF position;
    };
    struct Shapes
    {
        std::vector<PlacedGlyph> glyphs; // those with outlines
        Outline fill;
        std::vector<PictureGlyph> pictures;
    };
    struct Stroke
    {
        double outlineWidth = 0;
        Outline outline;
    };

    const Shapes &shapes() const;

    SizedFont m_font;
    QSizeF m_size;
    double m_unwrappedHeight = 0;
    std::vector<Run> m_runs;
    std::shared_ptr<GlyphShapes> m_glyphShapes;
    // Made when somebody draws: many texts are only measured.
    mutable std::optional<Shapes> m_shapes;
    mutable Stroke m_stroke;
};

} // namespace tessara
