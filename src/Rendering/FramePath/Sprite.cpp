#include "Rendering/FramePath/Sprite.h"

#include "Base/Overloaded.h"
#include "Base/Pixels/RowBlending.h"
#include "Rendering/CoverageMask.h"

#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <new>

namespace tessara {

namespace {

constexpr qsizetype stripPixels = 1 << 19; // of a raster in the making

enum class Cell : quint8 { empty, soft, full };

Cell cellOfMask(const quint8 *pixels)
{
    quint64 all;
    std::memcpy(&all, pixels, sizeof all);
    return all == 0 ? Cell::empty : all == ~quint64(0) ? Cell::full : Cell::soft;
}

Cell cellOfPicture(const quint8 *pixels)
{
    quint32 either = 0;
    quint32 both = ~quint32(0);
    for (int index = 0; index < cellWidth; ++index) {
        quint32 pixel;
        std::memcpy(&pixel, pixels + 4 * index, sizeof pixel);
        either |= pixel;
        both &= pixel;
    }
    return either == 0 ? Cell::empty : both >> 24 == 255 ? Cell::full : Cell::soft;
}

QRect alignedPixels(const QRectF &box, const QRect &area)
{
    return box.intersected(area).toAlignedRect().intersected(area);
}

bool isRectangle(const QPainterPath &path)
{
    constexpr int corners = 5; // the first twice
    if (path.elementCount() != corners)
        return false;
    const QRectF box = path.controlPointRect();
    for (int index = 0; index < corners; ++index) {
        const QPainterPath::Element corner = path.elementAt(index);
        if ((corner.x != box.left() && corner.x != box.right())
            || (corner.y != box.top() && corner.y != box.bottom()))
            return false;
    }
    return true;
}

// A painter takes a clip of which it sees nothing but rows that are alike, each of one coverage,
// for a rectangle of whole pixels, and its edges for hard.
bool looksRectangular(const QPainterPath &mask, const QTransform &toDevice, const QRect &area)
{
    if (isRectangle(mask))
        return true;
    const CoverageMask seen = rasterizedPath(mask, toDevice, area);
    for (int y = seen.bounds.top(); y <= seen.bounds.bottom(); ++y) {
        const uchar *row = seen.row(y);
        const bool isEven = std::all_of(row, row + seen.bounds.width(),
                                        [row](uchar alpha) { return alpha == row[0]; });
        if (!isEven || row[0] == 0)
            return false;
    }
    return true;
}

// A painter puts a picture that isn't stretched, and a rectangular clip, at whole pixels, and
// rounds halves away from zero, wherever zero is. A hair tells `corner` in which direction it goes
// in the frame; `inside` is on the same side of zero.
QTransform withoutHalves(const QTransform &toDevice, QPointF corner, QPointF inside)
{
    constexpr double hair = 1e-7; // px
    const auto nudge = [](double place, double side) {
        const bool isHalf = std::abs(place - std::floor(place) - 0.5) < hair / 2;
        return isHalf ? std::copysign(hair, side) : 0;
    };
    const QPointF place = toDevice.map(corner);
    const QPointF side = toDevice.map(inside);
    return toDevice
           * QTransform::fromTranslate(nudge(place.x(), side.x()), nudge(place.y(), side.y()));
}

quint32 nextSerial()
{
    static std::atomic<quint32> last = 0;
    return ++last;
}

} // namespace

/// Takes rows from the top and keeps what is in them.
class Sprite::Builder
{
public:
    Builder(Sprite &sprite, Kind kind, const QRect &bounds)
        : m_sprite(sprite)
        , m_kinds(std::size_t(bounds.width() + cellWidth - 1) / cellWidth)
    {
        sprite.m_kind = kind;
        sprite.m_bounds = bounds;
        sprite.m_rowStarts.reserve(std::size_t(bounds.height()) + 1);
        sprite.m_rowStarts.push_back(0);
        sprite.m_fullSpans.reserve(std::size_t(bounds.height()));
    }

    /// Rows of the width of the bounds, the first at `pixels`.
    void addRows(const quint8 *pixels, qsizetype rowBytes, int rows)
    {
        const std::size_t firstRow = m_sprite.m_rowStarts.size() - 1;
        const std::size_t firstRun = m_sprite.m_runs.size();
        for (int row = 0; row < rows; ++row)
            addRow(pixels + row * rowBytes);
        std::size_t bytes = 0;
        for (std::size_t index = firstRun; index < m_sprite.m_runs.size(); ++index)
            bytes += bytesOf(m_sprite.m_runs[index]);
        m_sprite.m_blocks.push_back(Block::make(bytes));
        m_sprite.m_bytes += qsizetype(bytes);
        quint8 *data = m_sprite.m_blocks.back().get();
        for (int row = 0; row < rows; ++row)
            data = keepRow(firstRow + std::size_t(row), pixels + row * rowBytes, data);
    }
    void addEmptyRows(int rows)
    {
        for (int row = 0; row < rows; ++row)
            endRow({});
    }

private:
    /// What is covered wholly needs no mask.
    std::size_t bytesOf(const SpriteRun &run) const
    {
        const bool needsData = m_sprite.m_kind == Kind::picture || !run.isFull;
        return needsData ? std::size_t(run.pixels) * std::size_t(m_sprite.bytesPerPixel()) : 0;
    }

    void classify(const quint8 *row)
    {
        const bool isMask = m_sprite.m_kind == Kind::mask;
        const auto kindOf = isMask ? cellOfMask : cellOfPicture;
        const int cellBytes = cellWidth * m_sprite.bytesPerPixel();
        const auto whole = std::size_t(m_sprite.m_bounds.width() / cellWidth);
        for (std::size_t cell = 0; cell < whole; ++cell)
            m_kinds[cell] = kindOf(row + qsizetype(cell) * cellBytes);
        if (whole < m_kinds.size()) {
            quint8 last[cellWidth * 4] = {};
            const int left = m_sprite.m_bounds.width() % cellWidth * m_sprite.bytesPerPixel();
            std::copy_n(row + qsizetype(whole) * cellBytes, left, last);
            m_kinds[whole] = kindOf(last);
        }
        forEachStretch([this](std::size_t from, std::size_t to) { takeShortAlong(from, to); });
    }

    // A change of kind costs as much as a few cells.
    void takeShortAlong(std::size_t from, std::size_t to)
    {
        constexpr std::size_t shortestGap = 3;
        constexpr std::size_t shortestFull = 8;
        const bool isInside = from > 0 && to < m_kinds.size();
        const bool isShortGap = m_kinds[from] == Cell::empty && isInside && to - from < shortestGap;
        const bool isShortFull = m_kinds[from] == Cell::full && to - from < shortestFull;
        if (isShortGap || isShortFull)
            std::fill(m_kinds.begin() + qsizetype(from), m_kinds.begin() + qsizetype(to),
                      Cell::soft);
    }

    /// Calls `work(from, to)` for cells of one kind that follow each other.
    template <typename Work>
    void forEachStretch(const Work &work)
    {
        for (std::size_t from = 0; from < m_kinds.size();) {
            const Cell kind = m_kinds[from];
            std::size_t to = from + 1;
            while (to < m_kinds.size() && m_kinds[to] == kind)
                ++to;
            work(from, to);
            from = to;
        }
    }

    void addRow(const quint8 *row)
    {
        classify(row);
        Span longest;
        forEachStretch([&](std::size_t from, std::size_t to) {
            if (m_kinds[from] == Cell::empty)
                return;
            const SpriteRun run{nullptr, quint16(from * cellWidth),
                                quint16((to - from) * cellWidth), m_kinds[from] == Cell::full};
            if (run.isFull && run.pixels > longest.pixels)
                longest = {run.x, run.pixels};
            m_sprite.m_runs.push_back(run);
        });
        endRow(longest);
    }

    void endRow(Span longest)
    {
        m_sprite.m_rowStarts.push_back(quint32(m_sprite.m_runs.size()));
        m_sprite.m_fullSpans.push_back(longest);
        m_sprite.m_hasFullSpans = m_sprite.m_hasFullSpans || longest.pixels > 0;
    }

    /// Returns where the next row goes.
    quint8 *keepRow(std::size_t row, const quint8 *pixels, quint8 *data)
    {
        for (std::size_t index = m_sprite.m_rowStarts[row]; index < m_sprite.m_rowStarts[row + 1];
             ++index) {
            SpriteRun &run = m_sprite.m_runs[index];
            const std::size_t bytes = bytesOf(run);
            if (bytes == 0)
                continue;
            const int given = std::min<int>(run.pixels, m_sprite.m_bounds.width() - run.x);
            const auto givenBytes = std::size_t(given * m_sprite.bytesPerPixel());
            std::memcpy(data, pixels + run.x * m_sprite.bytesPerPixel(), givenBytes);
            std::memset(data + givenBytes, 0, bytes - givenBytes);
            run.data = data;
            data += bytes;
        }
        return data;
    }

    Sprite &m_sprite;
    std::vector<Cell> m_kinds; // of the row at hand
};

void Sprite::Block::free(quint8 *bytes)
{
    ::operator delete(bytes, std::align_val_t(cacheLine));
}

std::unique_ptr<quint8, void (*)(quint8 *)> Sprite::Block::make(std::size_t bytes)
{
    auto *memory = ::operator new(std::max<std::size_t>(bytes, 1), std::align_val_t(cacheLine));
    return {static_cast<quint8 *>(memory), &Block::free};
}

void Sprite::addFill(const FilledPath &fill, const QTransform &toDevice, const QRect &area)
{
    constexpr int simple = 200; // elements; more are dearer to walk through than memory is
    constexpr double rim = 2;   // px
    const QRectF box = toDevice.mapRect(fill.path.controlPointRect());
    const QRectF reach = box.adjusted(-rim, -rim, rim, rim);
    const QRect pixels = alignedPixels(reach, area);
    if (pixels.isEmpty())
        return;
    const bool isWhole = fill.path.elementCount() > simple || !QRectF(area).contains(reach)
                         || qsizetype(pixels.width()) * pixels.height() <= 2 * stripPixels;
    if (isWhole) {
        const CoverageMask mask = rasterizedPath(fill.path, toDevice, area);
        if (!mask.bounds.isEmpty())
            Builder(*this, Kind::mask, mask.bounds)
                .addRows(mask.row(mask.bounds.top()), mask.bounds.width(), mask.bounds.height());
        return;
    }
    Builder builder(*this, Kind::mask, pixels);
    std::vector<quint8> row(std::size_t(pixels.width()));
    const int stripRows = std::max(1, int(stripPixels / pixels.width()));
    for (int top = pixels.top(); top <= pixels.bottom(); top += stripRows) {
        const QRect strip(pixels.left(), top, pixels.width(),
                          std::min(stripRows, pixels.bottom() + 1 - top));
        const CoverageMask mask = rasterizedPath(fill.path, toDevice, strip);
        if (mask.bounds.isEmpty()) {
            builder.addEmptyRows(strip.height());
            continue;
        }
        builder.addEmptyRows(mask.bounds.top() - strip.top());
        std::vector<quint8> rows(std::size_t(pixels.width()) * std::size_t(mask.bounds.height()));
        for (int y = 0; y < mask.bounds.height(); ++y)
            std::copy_n(mask.row(mask.bounds.top() + y), mask.bounds.width(),
                        rows.data() + qsizetype(y) * pixels.width() + mask.bounds.left()
                            - pixels.left());
        builder.addRows(rows.data(), pixels.width(), mask.bounds.height());
        builder.addEmptyRows(strip.bottom() - mask.bounds.bottom());
    }
}

// Strip by strip, since a raster of a whole canvas would double the memory that the picture takes.
void Sprite::addPicture(const Primitive &primitive, const QTransform &toDevice, const QRect &area)
{
    const auto &picture = std::get<PlacedPicture>(primitive.what);
    QRect pixels = alignedPixels(toDevice.mapRect(picture.box).adjusted(-1, -1, 1, 1), area);
    if (picture.mask) {
        const QRectF shown = toDevice.mapRect(picture.mask->controlPointRect());
        pixels = alignedPixels(shown.adjusted(-1, -1, 1, 1), pixels);
    }
    if (pixels.isEmpty())
        return;
    Builder builder(*this, Kind::picture, pixels);
    const int stripRows = std::max(1, int(stripPixels / pixels.width()));
    const std::optional<QPainterPath> &clip = picture.mask;
    // What is soft in the whole must not look rectangular in a strip: a pixel above it, at which
    // nobody looks, is shown as well.
    const bool hasSpot = clip && !looksRectangular(*clip, toDevice, area);
    const auto shownThrough = [&](QPainterPath path, QPoint spot) {
        if (hasSpot)
            path.addRect(toDevice.inverted().mapRect(QRectF(spot, QSizeF(1, 1))));
        return path;
    };
    const int above = hasSpot ? 1 : 0;
    QImage strip(pixels.width(), std::min(stripRows, pixels.height()) + above,
                 QImage::Format_ARGB32_Premultiplied);
    for (int top = pixels.top(); top <= pixels.bottom(); top += stripRows) {
        strip.fill(Qt::transparent);
        QPainter painter(&strip);
        const auto toStrip = QTransform::fromTranslate(-pixels.left(), above - top);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        if (clip) {
            const QRectF box = clip->controlPointRect();
            painter.setTransform(withoutHalves(toDevice, box.topLeft(), box.bottomRight())
                                 * toStrip);
            painter.setClipPath(shownThrough(*clip, {pixels.right(), top - 1}));
        }
        const QPointF corner = picture.box.topLeft();
        painter.setTransform(withoutHalves(toDevice, corner, corner) * toStrip);
        painter.drawImage(picture.box, picture.image, picture.image.rect());
        painter.end();
        builder.addRows(strip.constScanLine(above), strip.bytesPerLine(),
                        std::min(stripRows, pixels.bottom() + 1 - top));
    }
}

std::shared_ptr<const Sprite> Sprite::make(const Primitive &primitive,
                                           const QTransform &canvasToDevice, const QRect &area)
{
    const std::shared_ptr<Sprite> sprite(new Sprite);
    sprite->m_serial = nextSerial();
    sprite->m_area = area;
    const QRect shown =
        primitive.clip ? clipInPixels(*primitive.clip, canvasToDevice).intersected(area) : area;
    const QTransform toDevice = primitive.toCanvas * canvasToDevice;
    if (const auto *fill = std::get_if<FilledPath>(&primitive.what))
        sprite->addFill(*fill, toDevice, shown);
    else
        sprite->addPicture(primitive, toDevice, shown);
    return sprite;
}

} // namespace tessara
