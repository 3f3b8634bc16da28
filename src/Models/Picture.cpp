#include "Models/Picture.h"

#include <QBuffer>
#include <QImageReader>

#include <utility>

#include "Base/WholeFile.h"
#include "Models/SelfContainedSVG.h"
#include "Models/TruecolorPNG.h"

namespace tessara {

namespace {

constexpr int smallestLevel = 16;   // px; below it nothing is gained
constexpr int largestMemory = 1200; // MB; the largest side squared, at four bytes a pixel

QImage premultiplied(QImage image)
{
    QImage result = std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.setDevicePixelRatio(1);
    return result;
}

// Of two channels at a time, each with eight bits to spare.
quint32 meanOf(quint32 one, quint32 two, quint32 three, quint32 four)
{
    constexpr quint32 channels = 0x00ff00ff;
    constexpr quint32 half = 0x00020002;
    const auto quarter = [](quint32 sum) { return (sum + half) >> 2 & channels; };
    const quint32 low =
        (one & channels) + (two & channels) + (three & channels) + (four & channels);
    const quint32 high = (one >> 8 & channels) + (two >> 8 & channels) + (three >> 8 & channels)
                         + (four >> 8 & channels);
    return quarter(low) | quarter(high) << 8;
}

QImage halved(const QImage &image)
{
    const QSize size = image.size() / 2;
    if (size * 2 != image.size())
        return premultiplied(image.scaled(image.width() / 2, image.height() / 2,
                                          Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    QImage half(size, image.format());
    for (int y = 0; y < half.height() && !half.isNull(); ++y) {
        const auto *upper = reinterpret_cast<const quint32 *>(image.constScanLine(2 * y));
        const auto *lower = reinterpret_cast<const quint32 *>(image.constScanLine(2 * y + 1));
        auto *mean = reinterpret_cast<quint32 *>(half.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            mean[x] = meanOf(upper[2 * x], upper[2 * x + 1], lower[2 * x], lower[2 * x + 1]);
    }
    return half;
}

bool isTooLarge(QSize size)
{
    return size.width() > Picture::largestSide || size.height() > Picture::largestSide;
}

tl::expected<Picture, CanvasDocumentError> pictureFrom(QImage image)
{
    if (image.isNull() || isTooLarge(image.size()))
        return tl::unexpected(CanvasDocumentError::invalidImage);
    // All readers set the fourth byte of such a pixel.
    if (image.format() == QImage::Format_RGB32)
        image.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    return Picture(std::move(image));
}

tl::expected<Picture, CanvasDocumentError> pictureFrom(QImageReader &reader)
{
    QImageReader::setAllocationLimit(largestMemory);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    // Asked before decoding: a small file can claim a raster that no memory holds.
    if (isTooLarge(reader.size()))
        return tl::unexpected(CanvasDocumentError::invalidImage);
    return pictureFrom(reader.read());
}

bool isHarmless(const QImageReader &reader, const QByteArray &data)
{
    return !reader.format().startsWith("svg") || isSelfContainedSVG(data);
}

} // namespace

Picture::Picture(QImage image)
{
    if (image.isNull())
        return;
    m_levels.push_back(premultiplied(std::move(image)));
    while (m_levels.back().width() >= 2 * smallestLevel
           && m_levels.back().height() >= 2 * smallestLevel)
        m_levels.push_back(halved(m_levels.back()));
}

tl::expected<Picture, CanvasDocumentError> Picture::load(const QString &path)
{
    constexpr qint64 largestFile = 512LL << 20; // bytes; more than most rasters take
    const auto data = readFile(path, largestFile);
    return data ? fromData(*data) : tl::unexpected(CanvasDocumentError::invalidImage);
}

tl::expected<Picture, CanvasDocumentError> Picture::fromData(const QByteArray &data)
{
    if (QImage image = readTruecolorPNG(data); !image.isNull())
        return pictureFrom(std::move(image));
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    if (!isHarmless(reader, data))
        return tl::unexpected(CanvasDocumentError::invalidImage);
    return pictureFrom(reader);
}

QSize Picture::sizeIn(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return isHarmless(reader, data) ? reader.size() : QSize();
}

QImage Picture::levelFor(QSizeF drawnSize) const
{
    if (isNull())
        return {};
    // A linear filter still sees every pixel at a third below half size.
    constexpr double slack = 0.75;
    std::size_t level = 0;
    while (level + 1 < m_levels.size() && m_levels[level + 1].width() >= drawnSize.width() * slack
           && m_levels[level + 1].height() >= drawnSize.height() * slack)
        ++level;
    return m_levels[level];
}

bool Picture::operator==(const Picture &other) const
{
    if (isNull() || other.isNull())
        return isNull() == other.isNull();
    return m_levels.front().cacheKey() == other.m_levels.front().cacheKey();
}

} // namespace tessara
