#include "Base/Pixels/PixelConversion.h"

#include <algorithm>
#include <cstring>

#include "Base/Pixels/VectorClones.h"
#include "Base/Pixels/YUVPair.h"

namespace tessara {
namespace {

// Pixels are handled as 32-bit words in little-endian order. Rows may start anywhere, so a word
// travels through memcpy, which costs nothing and lets the compiler vectorise the loops.
inline quint32 load(const quint8 *bytes)
{
    quint32 word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

inline void store(quint8 *bytes, quint32 word)
{
    std::memcpy(bytes, &word, sizeof word);
}

constexpr quint32 alphaMask = 0xFF000000;

TESSARA_VECTOR_CLONES
void reverseRow(const quint8 *source, quint8 *target, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x) {
        const quint32 pixel = load(source + 4 * x);
        store(target + 4 * x,
              pixel << 24 | (pixel & 0xFF00) << 8 | (pixel >> 8 & 0xFF00) | pixel >> 24);
    }
}

TESSARA_VECTOR_CLONES
void swapRedAndBlueRow(const quint8 *source, quint8 *target, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x) {
        const quint32 pixel = load(source + 4 * x);
        store(target + 4 * x, (pixel & 0xFF00FF00) | (pixel & 0xFF) << 16 | (pixel >> 16 & 0xFF));
    }
}

TESSARA_VECTOR_CLONES
void keyRow(const quint8 *source, quint8 *target, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x) {
        const quint32 alpha = load(source + 4 * x) >> 24;
        store(target + 4 * x, alphaMask | alpha << 16 | alpha << 8 | alpha);
    }
}

TESSARA_VECTOR_CLONES
void swapAlphaOfRows(quint8 *__restrict upper, quint8 *__restrict lower, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x) {
        const quint32 above = load(upper + 4 * x);
        const quint32 below = load(lower + 4 * x);
        store(upper + 4 * x, (above & ~alphaMask) | (below & alphaMask));
        store(lower + 4 * x, (below & ~alphaMask) | (above & alphaMask));
    }
}

TESSARA_VECTOR_CLONES
void yuvRow(const quint8 *source, quint8 *target, qsizetype pairs)
{
    for (qsizetype pair = 0; pair < pairs; ++pair)
        store(target + 4 * pair, yuvPair(load(source + 8 * pair), load(source + 8 * pair + 4)));
}

using RowConversion = void (*)(const quint8 *, quint8 *, qsizetype);

void convertRows(RowConversion convert, SourceRows source, TargetRows target, int width, int height)
{
    for (qsizetype y = 0; y < height; ++y)
        convert(source.row(y), target.row(y), width);
}

} // namespace

void convertBGRAToARGB(SourceRows source, TargetRows target, int width, int height)
{
    convertRows(reverseRow, source, target, width, height);
}

void convertRGBAToBGRA(SourceRows source, TargetRows target, int width, int height)
{
    convertRows(swapRedAndBlueRow, source, target, width, height);
}

void convertAlphaToKey(SourceRows source, TargetRows target, int width, int height)
{
    convertRows(keyRow, source, target, width, height);
}

void mirrorAlphaVertically(TargetRows pixels, int width, int height)
{
    for (qsizetype y = 0; y < height / 2; ++y)
        swapAlphaOfRows(pixels.row(y), pixels.row(height - 1 - y), width);
}

qsizetype rowBytesOf2vuy(int width)
{
    return (qsizetype(width) * 2 + 2) / 4 * 4;
}

void convertBGRATo2vuy(SourceRows source, TargetRows target, int width, int height)
{
    const qsizetype pairs = width / 2;
    for (qsizetype y = 0; y < height; ++y) {
        yuvRow(source.row(y), target.row(y), pairs);
        if (width % 2 != 0) {
            const quint32 last = load(source.row(y) + 8 * pairs);
            store(target.row(y) + 4 * pairs, yuvPair(last, last));
        }
    }
}

void repackRows(SourceRows source, TargetRows target, int height)
{
    const qsizetype common = std::min(source.rowBytes, target.rowBytes);
    for (qsizetype y = 0; y < height; ++y) {
        std::memcpy(target.row(y), source.row(y), std::size_t(common));
        std::memset(target.row(y) + common, 0, std::size_t(target.rowBytes - common));
    }
}

} // namespace tessara
