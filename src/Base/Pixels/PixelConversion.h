// Pixel formats of the card, as pure functions on rows of bytes.
#pragma once

#include <QtGlobal>

namespace tessara {

/// Rows of pixels somewhere in memory; the first byte of each may have any alignment.
template <typename Byte>
struct PixelRows
{
    Byte *bytes = nullptr;
    qsizetype rowBytes = 0;

    Byte *row(qsizetype y) const { return bytes + y * rowBytes; }
};
using SourceRows = PixelRows<const quint8>;
using TargetRows = PixelRows<quint8>;

/// Every pixel B, G, R, A becomes A, R, G, B. Source and target may be the same rows.
void convertBGRAToARGB(SourceRows source, TargetRows target, int width, int height);
/// Every pixel R, G, B, A becomes B, G, R, A. Source and target may be the same rows.
void convertRGBAToBGRA(SourceRows source, TargetRows target, int width, int height);
/// Every pixel becomes its alpha as opaque grey, (a, a, a, 255). Source and target may be the same.
void convertAlphaToKey(SourceRows source, TargetRows target, int width, int height);
/// Turns the alpha upside down and leaves the colour where it is.
void mirrorAlphaVertically(TargetRows pixels, int width, int height);

/// What `width` pixels of '2vuy' take, in bytes; an odd width is rounded up to a whole pair.
qsizetype rowBytesOf2vuy(int width);
/// B, G, R, A to Cb, Y, Cr, Y by BT.601 in studio range. Alpha is dropped; the last pixel of an odd
/// width makes a pair with itself.
void convertBGRATo2vuy(SourceRows source, TargetRows target, int width, int height);

/// Copies as much of each row as fits and fills what is left of the target's with zeros.
void repackRows(SourceRows source, TargetRows target, int height);

} // namespace tessara
