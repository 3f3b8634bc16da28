#include "Models/Picture.h"

#include <QBuffer>
#include <QImageReader>

namespace tessara {

namespace {

constexpr int smallestLevel = 16;   // px; below it nothing is gained
constexpr int largestMemory = 1200; // MB; the largest side squared, at four bytes a pixel

QImage premultiplied(const QImage &image)
{
    QImage result = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.setDevicePixelRatio(1);
    return result;
}

bool isTooLarge(QSize size)
{
    return size.width() > Picture::largestSide || size.height() > Picture::largestSide;
}

tl::expected<Picture, CanvasDocumentError> pictureFrom(QImageReader &reader)
{
    QImageReader::setAllocationLimit(largestMemory);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    // Asked before decoding: a small file can claim a raster that no memory holds.
    if (isTooLarge(reader.size()))
        return tl::unexpected(CanvasDocumentError::invalidImage);
    const QImage image = reader.read();
    if (image.isNull() || isTooLarge(image.size()))
        return tl::unexpected(CanvasDocumentError::invalidImage);
    return Picture(image);
}

} // namespace

Picture::Picture(const QImage &image)
{
    if (image.isNull())
        return;
    m_levels.push_back(premultiplied(image));
    while (m_levels.back().width() >= 2 * smallestLevel
           && m_levels.back().height() >= 2 * smallestLevel) {
        const QImage &last = m_levels.back();
        m_levels.push_back(premultiplied(last.scaled(
            last.width() / 2, last.height() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
    }
}

tl::expected<Picture, CanvasDocumentError> Picture::load(const QString &path)
{
    QImageReader reader(path);
    return pictureFrom(reader);
}

tl::expected<Picture, CanvasDocumentError> Picture::fromData(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    return pictureFrom(reader);
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
