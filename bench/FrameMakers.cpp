#include "bench/FrameMakers.h"

#include "Rendering/LayerDrawing.h"

#include <QPainter>

#include <algorithm>

namespace tessara {

namespace {

constexpr QImage::Format painterFormat = QImage::Format_ARGB32_Premultiplied;

/// All pixels that aren't wholly transparent.
QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        int left = 0;
        while (left < image.width() && row[left] == 0)
            ++left;
        if (left == image.width())
            continue;
        int right = image.width() - 1;
        while (row[right] == 0)
            --right;
        ink |= QRect(left, y, right - left + 1, 1);
    }
    return ink;
}

/// A copy as the painter blends it fastest.
QImage spriteOf(const QImage &image, const QRect &ink)
{
    const QImage sprite = image.copy(ink);
    for (int y = 0; y < sprite.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(sprite.constScanLine(y));
        if (std::any_of(row, row + sprite.width(), [](QRgb pixel) { return qAlpha(pixel) < 255; }))
            return sprite;
    }
    return sprite.convertToFormat(QImage::Format_RGB32);
}

} // namespace

FrameTarget targetOf(QSize size, FrameContent content, FrameFormat format)
{
    return {content, format, size, rowBytesOf(format, size.width())};
}

PathFrames::PathFrames(int threads, std::vector<FrameTarget> targets)
    : m_path(threads)
    , m_targets(std::move(targets))
{
}

void PathFrames::make(const CanvasDocument &document)
{
    FramePath::Result frames = m_path.render(document, std::nullopt, m_targets);
    if (!frames)
        qFatal("%s", qPrintable(text(frames.error())));
    m_held[m_made++ % m_held.size()] = std::move(*frames);
}

DrawnFrames::DrawnFrames(QSize size)
    : m_size(size)
{
}

void DrawnFrames::make(const CanvasDocument &document)
{
    const tl::expected<QImage, RenderEngineError> image = m_engine.render(document, std::nullopt);
    if (!image)
        qFatal("%s", qPrintable(text(image.error())));
    DeckLinkFrameBuffer::Result frame =
        DeckLinkFrameBuffer::make(*image, m_size.width(), m_size.height());
    if (!frame)
        qFatal("%s", qPrintable(text(frame.error())));
    m_held[m_made++ % m_held.size()] = std::move(*frame);
}

PaintedFrames::PaintedFrames(const CanvasDocument &document, QSize size)
    : m_frame(size, painterFormat)
{
    const QTransform toDevice = frameTransform(document.size(), size);
    TextBlockCache texts;
    for (const CanvasLayerItem &item : document.orderedLayers()) {
        for (Primitive &primitive : primitivesOf(item, {}, texts)) {
            const Fading fading = std::exchange(primitive.fading, {});
            m_frame.fill(Qt::transparent);
            QPainter painter(&m_frame);
            painter.setTransform(toDevice);
            drawPrimitive(painter, primitive, 1);
            painter.end();
            const QRect ink = inkOf(m_frame);
            if (!ink.isEmpty())
                m_sprites.push_back({item, fading, spriteOf(m_frame, ink), ink.topLeft()});
        }
    }
}

void PaintedFrames::readOpacities(const CanvasDocument &document)
{
    for (Sprite &sprite : m_sprites) {
        const bool isFading = sprite.fading.means != Fading::Means::none;
        const double shown = runOpacity(document, sprite.item);
        sprite.opacity = isFading ? sprite.fading.opacity(shown) : shown > 0 ? 1 : 0;
    }
}

void PaintedFrames::make()
{
    m_frame.fill(Qt::transparent);
    QPainter painter(&m_frame);
    for (const Sprite &sprite : m_sprites) {
        painter.setOpacity(sprite.opacity);
        painter.drawImage(sprite.place, sprite.picture);
    }
}

} // namespace tessara
