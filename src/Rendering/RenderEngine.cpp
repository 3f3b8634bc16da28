#include "Rendering/RenderEngine.h"

#include "Models/CanvasDocument.h"
#include "Rendering/LayerDrawing.h"

#include <QPainter>

#include <cmath>
#include <limits>

namespace tessara {

namespace {

constexpr std::int64_t bytesPerPixel = 4;

// A canvas that no integer can measure is an error of the program, not of the show.
std::int64_t wholeSide(double side)
{
    constexpr double limit = 9.2e18; // within a signed 64-bit integer
    if (!(std::abs(side) < limit))
        qFatal("The canvas has no size that could be drawn.");
    return std::int64_t(side);
}

tl::expected<QImage, RenderEngineError> makeClearBitmap(QSize size)
{
    // Painted as the painter is fastest; the bytes are put into their order at the end.
    QImage bitmap(size, QImage::Format_ARGB32_Premultiplied);
    if (bitmap.isNull())
        return tl::unexpected(RenderEngineError::bitmapCreationFailed);
    bitmap.fill(Qt::transparent);
    return bitmap;
}

// On this thread: the platform's own conversion shares the work out and then waits for threads that
// a busy machine wakes late.
void swapRedAndBlue(QImage &bitmap)
{
    auto *pixel = reinterpret_cast<quint32 *>(bitmap.bits());
    auto *const end = pixel + bitmap.sizeInBytes() / bytesPerPixel;
    for (; pixel != end; ++pixel) {
        const quint32 outer = *pixel & 0x00ff00ff;
        *pixel = (*pixel & 0xff00ff00) | outer << 16 | outer >> 16;
    }
}

} // namespace

QString text(RenderEngineError error)
{
    switch (error) {
    case RenderEngineError::bitmapCreationFailed:
        return QStringLiteral("Could not allocate bitmap buffer.");
    case RenderEngineError::contextCreationFailed:
        return QStringLiteral("Could not create graphics context.");
    case RenderEngineError::imageCreationFailed:
        return QStringLiteral("Could not create output image.");
    }
    Q_UNREACHABLE();
}

tl::expected<QSize, RenderEngineError> frameSize(QSizeF canvas)
{
    const std::int64_t width = wholeSide(canvas.width());
    const std::int64_t height = wholeSide(canvas.height());
    if (width > std::numeric_limits<std::int64_t>::max() / bytesPerPixel)
        qFatal("The canvas has no size that could be drawn.");
    constexpr std::int64_t largestSide = 32767; // of a raster that a painter can reach
    if (width < 1 || height < 1)
        return tl::unexpected(RenderEngineError::contextCreationFailed);
    if (width > largestSide || height > largestSide)
        return tl::unexpected(RenderEngineError::bitmapCreationFailed);
    return QSize(int(width), int(height));
}

QTransform frameTransform(QSizeF canvas, QSize frame)
{
    return QTransform::fromTranslate(0, frame.height() - canvas.height());
}

tl::expected<QImage, RenderEngineError>
RenderEngine::render(const CanvasDocument &document, const std::optional<QColor> &background)
{
    const QSizeF canvas = document.size();
    tl::expected<QImage, RenderEngineError> frame = frameSize(canvas).and_then(makeClearBitmap);
    if (!frame)
        return frame;
    QPainter painter;
    if (!painter.begin(&*frame))
        return tl::unexpected(RenderEngineError::contextCreationFailed);
    if (background)
        painter.fillRect(frame->rect(), *background);
    painter.setTransform(frameTransform(canvas, frame->size()));
    for (const CanvasLayerItem &item : document.orderedLayers()) {
        const double opacity = runOpacity(document, item);
        if (opacity > 0)
            drawLayer(painter, document, item, opacity, DrawingStyle::frame, m_texts);
    }
    painter.end();
    swapRedAndBlue(*frame);
    if (!frame->reinterpretAsFormat(QImage::Format_RGBA8888_Premultiplied))
        return tl::unexpected(RenderEngineError::imageCreationFailed);
    return frame;
}

} // namespace tessara
