#include "DeckLink/MonitorImage.h"

#include <algorithm>

#include "DeckLink/DeckLinkAPI.h"

namespace tessara {

using namespace decklink;

namespace {

quint8 clamped(int value)
{
    return quint8(std::clamp(value, 0, 255));
}

/// The way back from BT.601 studio range, in 8-bit fixed point.
QRgb pixelOf(int luma, int cb, int cr)
{
    const int grey = 298 * (luma - 16) + 128;
    return qRgb(clamped((grey + 409 * (cr - 128)) >> 8),
                clamped((grey - 100 * (cb - 128) - 208 * (cr - 128)) >> 8),
                clamped((grey + 516 * (cb - 128)) >> 8));
}

bool fits(SourceRows frame, quint32 pixelFormat, int width, int height)
{
    if (width < 1 || height < 1)
        return false;
    switch (pixelFormat) {
    case bmdFormat8BitBGRA:
    case bmdFormat8BitARGB:
        return frame.rowBytes >= qsizetype(width) * 4;
    case bmdFormat8BitYUV:
        return frame.rowBytes >= rowBytesOf2vuy(width);
    default:
        return false;
    }
}

/// Hands every row of the frame and of a new opaque image to `convert`.
template <typename Convert>
QImage imageOf(SourceRows frame, int width, int height, Convert convert)
{
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    for (int y = 0; y < height; ++y)
        convert(frame.row(y), reinterpret_cast<QRgb *>(image.scanLine(y)), width);
    return image;
}

void showBGRA(const quint8 *source, QRgb *target, int width)
{
    for (int x = 0; x < width; ++x, source += 4)
        target[x] = qRgb(source[2], source[1], source[0]);
}

void showARGB(const quint8 *source, QRgb *target, int width)
{
    for (int x = 0; x < width; ++x, source += 4)
        target[x] = qRgb(source[1], source[2], source[3]);
}

void showYUV(const quint8 *source, QRgb *target, int width)
{
    for (int x = 0; x < width; ++x) {
        const quint8 *pair = source + qsizetype(x / 2) * 4;
        target[x] = pixelOf(pair[x % 2 == 0 ? 1 : 3], pair[0], pair[2]);
    }
}

} // namespace

QImage monitorImage(SourceRows frame, quint32 pixelFormat, int width, int height)
{
    if (!fits(frame, pixelFormat, width, height))
        return {};
    switch (pixelFormat) {
    case bmdFormat8BitBGRA:
        return imageOf(frame, width, height, showBGRA);
    case bmdFormat8BitARGB:
        return imageOf(frame, width, height, showARGB);
    default:
        return imageOf(frame, width, height, showYUV);
    }
}

QImage monitorKeyImage(SourceRows frame, quint32 pixelFormat, int width, int height)
{
    if (!fits(frame, pixelFormat, width, height))
        return {};
    const int alphaByte = pixelFormat == bmdFormat8BitBGRA ? 3 : 0;
    const bool hasAlpha = pixelFormat != bmdFormat8BitYUV;
    return imageOf(frame, width, height, [&](const quint8 *source, QRgb *target, int pixels) {
        for (int x = 0; x < pixels; ++x) {
            const quint8 alpha = hasAlpha ? source[4 * x + alphaByte] : 255;
            target[x] = qRgb(alpha, alpha, alpha);
        }
    });
}

} // namespace tessara
