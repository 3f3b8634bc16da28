#include "Models/TruecolorPNG.h"

#include <QtEndian>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <libdeflate.h>

namespace tessara {

namespace {

// The file's structure and its filters are those of ISO/IEC 15948, chapters 5 and 9.
constexpr std::string_view signature("\x89PNG\r\n\x1a\n", 8);
constexpr std::size_t chunkFrame = 12;                        // bytes: length, name and check sum
constexpr std::size_t largestRaster = std::size_t(128) << 20; // bytes
constexpr quint32 opaque = 0xFF000000;

struct Header
{
    quint32 width = 0;  // px
    quint32 height = 0; // px
    std::size_t pixelBytes = 0;

    // Each row begins with the number of its filter.
    std::size_t rowBytes() const { return 1 + width * pixelBytes; }
    std::size_t rasterBytes() const { return rowBytes() * height; }
};

struct Resolution
{
    int x; // dots a metre
    int y;
};

/// Where a chunk's data lies.
struct Chunk
{
    std::string_view name;
    const uchar *data;
    std::size_t bytes;
};

struct Contents
{
    Header header;
    std::optional<Resolution> resolution;
    std::vector<Chunk> pixels; // compressed, in pieces
    std::size_t pixelBytes = 0;
};

std::optional<Chunk> chunkAt(const QByteArray &file, std::size_t place)
{
    const auto size = std::size_t(file.size());
    if (place + chunkFrame > size)
        return std::nullopt;
    const auto *bytes = reinterpret_cast<const uchar *>(file.constData()) + place;
    const std::size_t length = qFromBigEndian<quint32>(bytes);
    if (length > size - place - chunkFrame)
        return std::nullopt;
    const quint32 checkSum = qFromBigEndian<quint32>(bytes + 8 + length);
    if (libdeflate_crc32(0, bytes + 4, 4 + length) != checkSum)
        return std::nullopt;
    return Chunk{{file.constData() + place + 4, 4}, bytes + 8, length};
}

std::optional<Header> headerIn(const Chunk &chunk)
{
    constexpr uchar colour = 2, colourWithAlpha = 6;
    if (chunk.name != "IHDR" || chunk.bytes != 13)
        return std::nullopt;
    const uchar depth = chunk.data[8], kind = chunk.data[9];
    const bool isPlain = chunk.data[10] == 0 && chunk.data[11] == 0 && chunk.data[12] == 0;
    if (depth != 8 || (kind != colour && kind != colourWithAlpha) || !isPlain)
        return std::nullopt;
    Header header{qFromBigEndian<quint32>(chunk.data), qFromBigEndian<quint32>(chunk.data + 4),
                  kind == colour ? std::size_t(3) : std::size_t(4)};
    constexpr quint32 longest = 1 << 20; // px
    if (header.width == 0 || header.height == 0 || header.width > longest || header.height > longest
        || header.rasterBytes() > largestRaster)
        return std::nullopt;
    return header;
}

std::optional<Resolution> resolutionIn(const Chunk &chunk)
{
    if (chunk.bytes != 9 || chunk.data[8] != 1)
        return std::nullopt;
    return Resolution{qFromBigEndian<qint32>(chunk.data), qFromBigEndian<qint32>(chunk.data + 4)};
}

std::optional<Contents> contentsOf(const QByteArray &file)
{
    if (!std::string_view(file.constData(), std::size_t(file.size())).starts_with(signature))
        return std::nullopt;
    Contents contents;
    for (std::size_t place = signature.size();;) {
        const std::optional<Chunk> chunk = chunkAt(file, place);
        if (!chunk)
            return std::nullopt;
        if (place == signature.size()) {
            const std::optional<Header> header = headerIn(*chunk);
            if (!header)
                return std::nullopt;
            contents.header = *header;
        } else if (chunk->name == "pHYs" && contents.pixels.empty() && !contents.resolution) {
            contents.resolution = resolutionIn(*chunk);
            if (!contents.resolution)
                return std::nullopt;
        } else if (chunk->name == "IDAT") {
            contents.pixels.push_back(*chunk);
            contents.pixelBytes += chunk->bytes;
        } else if (chunk->name == "IEND") {
            return contents;
        } else {
            return std::nullopt;
        }
        place += chunkFrame + chunk->bytes;
    }
}

using Bytes = std::unique_ptr<uchar[]>;

/// Rows with their filters, and room for a word that begins at the last byte.
Bytes inflated(const Contents &contents)
{
    Bytes joined;
    const uchar *compressed = contents.pixels.front().data;
    if (contents.pixels.size() > 1) {
        joined = std::make_unique_for_overwrite<uchar[]>(contents.pixelBytes);
        uchar *next = joined.get();
        for (const Chunk &piece : contents.pixels) {
            std::memcpy(next, piece.data, piece.bytes);
            next += piece.bytes;
        }
        compressed = joined.get();
    }
    const std::size_t expected = contents.header.rasterBytes();
    Bytes raster = std::make_unique_for_overwrite<uchar[]>(expected + sizeof(quint32));
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)>
        decompressor(libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
    // Without a place for it, a length other than the expected is an error.
    if (!decompressor
        || libdeflate_zlib_decompress(decompressor.get(), compressed, contents.pixelBytes,
                                      raster.get(), expected, nullptr)
               != LIBDEFLATE_SUCCESS)
        return nullptr;
    return raster;
}

/// R, G, B, A or R, G, B, something as one of the image's pixels; without alpha the byte above
/// counts for nothing.
quint32 pixelAt(const uchar *bytes)
{
    quint32 word;
    std::memcpy(&word, bytes, sizeof word);
    word = qFromLittleEndian(word);
    return (word & 0xFF00FF00) | (word & 0xFF) << 16 | (word >> 16 & 0xFF);
}

quint32 sumOf(quint32 one, quint32 other)
{
    constexpr quint32 low = 0x7F7F7F7F; // bits that carry within their byte
    return ((one & low) + (other & low)) ^ ((one ^ other) & ~low);
}

quint32 meanOf(quint32 one, quint32 other)
{
    return (one & other) + (((one ^ other) & 0xFEFEFEFE) >> 1);
}

/// Of each byte's neighbours the one nearest to left + above - aboveLeft.
quint32 nearestOf(quint32 left, quint32 above, quint32 aboveLeft)
{
    quint32 nearest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int a = left >> shift & 0xFF, b = above >> shift & 0xFF;
        const int c = aboveLeft >> shift & 0xFF;
        const int fromA = std::abs(b - c), fromB = std::abs(a - c), fromC = std::abs(a + b - 2 * c);
        const int upper = fromB <= fromC ? b : c;
        nearest |= quint32(fromA <= fromB && fromA <= fromC ? a : upper) << shift;
    }
    return nearest;
}

/// Each pixel is what its filter foretells from its neighbours, plus what the file has for it.
template <std::size_t pixelBytes, typename Foretold>
void decodeRow(quint32 *row, const quint32 *rowAbove, const uchar *source, quint32 width,
               const Foretold &foretold)
{
    quint32 left = 0, aboveLeft = 0;
    for (quint32 x = 0; x < width; ++x) {
        const quint32 above = rowAbove[x];
        left = sumOf(pixelAt(source + x * pixelBytes), foretold(left, above, aboveLeft));
        aboveLeft = above;
        row[x] = pixelBytes == 3 ? left | opaque : left;
    }
}

template <std::size_t pixelBytes>
bool decodeRow(quint32 *row, const quint32 *rowAbove, const uchar *source, quint32 width)
{
    const auto decode = [&](const auto &foretold) {
        decodeRow<pixelBytes>(row, rowAbove, source + 1, width, foretold);
        return true;
    };
    switch (source[0]) {
    case 0:
        return decode([](quint32, quint32, quint32) { return quint32(0); });
    case 1:
        return decode([](quint32 left, quint32, quint32) { return left; });
    case 2:
        return decode([](quint32, quint32 above, quint32) { return above; });
    case 3:
        return decode([](quint32 left, quint32 above, quint32) { return meanOf(left, above); });
    case 4:
        return decode(&nearestOf);
    default:
        return false;
    }
}

} // namespace

QImage readTruecolorPNG(const QByteArray &file)
{
    const std::optional<Contents> contents = contentsOf(file);
    if (!contents || contents->pixels.empty())
        return {};
    const Header &header = contents->header;
    const Bytes raster = inflated(*contents);
    if (!raster)
        return {};
    const bool hasAlpha = header.pixelBytes == 4;
    QImage image(int(header.width), int(header.height),
                 hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull())
        return {};
    if (contents->resolution) {
        image.setDotsPerMeterX(contents->resolution->x);
        image.setDotsPerMeterY(contents->resolution->y);
    }
    const std::vector<quint32> nothing(header.width);
    const quint32 *above = nothing.data();
    for (quint32 y = 0; y < header.height; ++y) {
        auto *row = reinterpret_cast<quint32 *>(image.scanLine(int(y)));
        const uchar *source = raster.get() + y * header.rowBytes();
        const bool isKnown = hasAlpha ? decodeRow<4>(row, above, source, header.width)
                                      : decodeRow<3>(row, above, source, header.width);
        if (!isKnown)
            return {};
        above = row;
    }
    return image;
}

} // namespace tessara
