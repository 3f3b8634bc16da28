// What glyphs look like, kept from the last time they were wanted.
#pragma once

#include <QCache>
#include <QImage>
#include <QPainterPath>
#include <QRawFont>

#include "Rendering/Outline.h"

namespace tessara {

/// A colour glyph; no image for a glyph that has an outline or nothing to show.
struct GlyphPicture
{
    QImage image; // premultiplied
    QRectF box;   // px at the font's size, from the glyph's origin
};

/// Loading an outline from its font and stroking it take many times as long as drawing it. All
/// are to be filled with the winding rule, in px at the font's size, and the same each time they
/// are asked for, by the same serial as long as they are held. The latest used are held, as many as
/// fit. Fonts belong to a thread, and so does this.
class GlyphShapes
{
public:
    static constexpr qsizetype standardCapacity = 1'000'000;         // path elements of 24 bytes
    static constexpr qsizetype standardPictureCapacity = 16'000'000; // bytes

    explicit GlyphShapes(qsizetype capacity = standardCapacity,
                         qsizetype pictureCapacity = standardPictureCapacity);

    OutlineShape outline(const QRawFont &font, quint32 glyph);
    /// Of a line along the outline, `width` in px.
    OutlineShape stroke(const QRawFont &font, quint32 glyph, double width);
    /// To be asked before the outline: a colour glyph whose outline was wanted once may show no
    /// picture any more.
    GlyphPicture picture(const QRawFont &font, quint32 glyph);

    /// Of all paths that are held.
    qsizetype elementCount() const { return m_paths.totalCost(); }
    /// Of all pictures that are held.
    qsizetype pictureBytes() const { return m_pictures.totalCost(); }

private:
    enum class FontKind { outlines, pictures, both };
    struct Key
    {
        QRawFont font;
        quint32 glyph;
        double width; // 0 for the outline itself

        bool operator==(const Key &) const = default;
    };
    friend size_t qHash(const Key &key, size_t seed);

    FontKind kindOf(const QRawFont &font);

    QCache<Key, OutlineShape> m_paths;
    QCache<Key, GlyphPicture> m_pictures;
    QCache<QRawFont, FontKind> m_fontKinds;
};

} // namespace tessara
