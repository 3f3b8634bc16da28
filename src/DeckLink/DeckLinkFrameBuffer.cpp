#include "DeckLink/DeckLinkFrameBuffer.h"

#include <limits>

#include "Base/Pixels/PixelConversion.h"
#include "Base/Pixels/Resample.h"

namespace tessara {

using Failure = tl::unexpected<DeckLinkFrameBufferError>;

namespace {

SourceRows rowsOf(const QImage &image)
{
    return {image.constBits(), image.bytesPerLine()};
}

/// An empty frame of that size, its bytes not yet written.
DeckLinkFrameBuffer::Result allocate(int width, int height)
{
    if (width < 1 || height < 1)
        return Failure(DeckLinkFrameBufferError::contextCreationFailed);
    // A size that can't even be counted is nobody's mode.
    if (width > std::numeric_limits<int>::max() / 4)
        qFatal("A frame of %d x %d pixels can't exist", width, height);
    const int rowBytes = width * 4;
    DeckLinkFrameBuffer frame{FrameBytes::allocate(qsizetype(rowBytes) * height), width, height,
                              rowBytes};
    if (frame.data.isNull())
        return Failure(DeckLinkFrameBufferError::contextCreationFailed);
    return frame;
}

/// Whatever the picture's own format, the renderer's: R, G, B, A, premultiplied. Of an empty
/// picture nothing is drawn: one transparent pixel, to be stretched.
QImage rendererImage(const QImage &image)
{
    if (!image.isNull())
        return image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    QImage transparent(1, 1, QImage::Format_RGBA8888_Premultiplied);
    transparent.fill(Qt::transparent);
    return transparent;
}

using Conversion = void (*)(SourceRows, TargetRows, int, int);

/// Both conversions leave the alpha in the last byte, so that scaling may go before them.
DeckLinkFrameBuffer::Result convert(const QImage &image, int width, int height,
                                    Conversion conversion)
{
    return allocate(width, height).map([&](DeckLinkFrameBuffer frame) {
        const QImage source = rendererImage(image);
        const QSize size(width, height);
        const TargetRows target{frame.data.writableData(), frame.rowBytes};
        if (source.size() != size)
            resample(rowsOf(source), source.size(), target, size);
        const SourceRows pixels =
            source.size() == size ? rowsOf(source) : SourceRows{target.bytes, target.rowBytes};
        conversion(pixels, target, width, height);
        return frame;
    });
}

} // namespace

QString text(DeckLinkFrameBufferError error)
{
    switch (error) {
    case DeckLinkFrameBufferError::contextCreationFailed:
        return QStringLiteral("Could not create DeckLink frame buffer context.");
    }
    Q_UNREACHABLE();
}

DeckLinkFrameBuffer::Result DeckLinkFrameBuffer::make(const QImage &image, int width, int height)
{
    return convert(image, width, height, convertRGBAToBGRA);
}

DeckLinkFrameBuffer::Result DeckLinkFrameBuffer::makeAlphaKey(const QImage &image, int width,
                                                              int height)
{
    return convert(image, width, height, convertAlphaToKey);
}

// The card's own keyer wants the alpha plane mirrored; it is not to be straightened out.
DeckLinkFrameBuffer::Result DeckLinkFrameBuffer::makeExternalKeyFill(const QImage &image, int width,
                                                                     int height)
{
    return make(image, width, height).map([](DeckLinkFrameBuffer frame) {
        mirrorAlphaVertically({frame.data.writableData(), frame.rowBytes}, frame.width,
                              frame.height);
        return frame;
    });
}

} // namespace tessara
