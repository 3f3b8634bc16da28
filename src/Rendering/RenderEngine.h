// One finished frame from the document.
#pragma once

#include <QColor>
#include <QImage>
#include <QTransform>

#include "Rendering/TextBlockCache.h"

#include <tl/expected.hpp>

#include <optional>

namespace tessara {

class CanvasDocument;

enum class RenderEngineError { bitmapCreationFailed, contextCreationFailed, imageCreationFailed };

QString text(RenderEngineError error);

/// The pixels of a canvas's frame, fractions cut; an error for one that no raster can hold.
tl::expected<QSize, RenderEngineError> frameSize(QSizeF canvas);
/// From canvas units to pixels: the frame counts its rows from the lower edge, so that a fraction
/// of a row is lost at the top.
QTransform frameTransform(QSizeF canvas, QSize frame);

/// Draws every frame from nothing; only the layout of its texts is kept from frame to frame.
class RenderEngine
{
public:
    /// The frame of canvas size (fractions cut), R G B A with the colour premultiplied, rows from
    /// the top without padding. Without a background it is transparent where no layer paints, which
    /// is what the key depends on.
    tl::expected<QImage, RenderEngineError> render(const CanvasDocument &document,
                                                   const std::optional<QColor> &background);

private:
    TextBlockCache m_texts;
};

} // namespace tessara
