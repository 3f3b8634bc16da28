// A picture in memory, ready to be drawn at any size.
#pragma once

#include "Models/CanvasDocumentError.h"

#include <QImage>

#include <tl/expected.hpp>

#include <vector>

namespace tessara {

/// A raster with its halves, quarters and so on, so that a large picture drawn small stays smooth
/// without being averaged anew in every frame. Shared, never changed once made.
class Picture
{
    Q_GADGET
    Q_PROPERTY(QSize size READ size FINAL)

public:
    static constexpr int largestSide = 16384; // px

    Picture() = default;
    explicit Picture(QImage image);

    /// PNG, JPEG, WebP, SVG that needs no other file, GIF (its first frame), TIFF and BMP; turned
    /// upright as its camera says.
    static tl::expected<Picture, CanvasDocumentError> load(const QString &path);
    /// The same from a file's bytes.
    static tl::expected<Picture, CanvasDocumentError> fromData(const QByteArray &data);
    /// What a file's bytes tell of its size, without decoding them; invalid when they don't.
    static QSize sizeIn(const QByteArray &data);

    bool isNull() const { return m_levels.empty(); }
    QSize size() const { return isNull() ? QSize() : m_levels.front().size(); }
    /// Premultiplied, at its full size.
    QImage image() const { return isNull() ? QImage() : m_levels.front(); }
    /// The smallest level that is still as large as `drawnSize` on both axes, or nearly so.
    QImage levelFor(QSizeF drawnSize) const;

    /// The same picture in memory.
    bool operator==(const Picture &other) const;

private:
    std::vector<QImage> m_levels;
};

} // namespace tessara
