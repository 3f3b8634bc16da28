#include "Rendering/FramePath/Sprite.h"

#include "Base/Pixels/RowBlending.h"
#include "Rendering/CoverageMask.h"
#include "Rendering/FramePath/PictureRaster.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <new>

namespace tessara {

namespace {

constexpr qsizetype stripPixels = 1 << 19; // of a raster in the making
constexpr int longOutline = 200;           // elements; more are dearer to walk than memory is

enum class Cell : quint8 { empty, soft, rim, full };

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

// A picture's cell behind an edge.
Cell weakened(Cell cell, Cell coverage)
{
    return cell == Cell::empty || coverage == Cell::full ? cell : Cell::rim;
}

QRect alignedPixels(const QRectF &box, const QRect &area)
{
    return box.intersected(area).toAlignedRect().intersected(area);
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

    /// Of the width of the bounds.
    void addRows(const RasterRows &rows)
    {
        const std::size_t firstRow = m_sprite.m_rowStarts.size() - 1;
        const std::size_t firstRun = m_sprite.m_runs.size();
        for (int row = 0; row < rows.count; ++row)
            addRow(rowOf(rows, row));
        std::size_t bytes = 0;
        for (std::size_t index = firstRun; index < m_sprite.m_runs.size(); ++index)
            bytes += bytesOf(m_sprite.m_runs[index]);
        quint8 *data = addBlock(bytes);
        for (int row = 0; row < rows.count; ++row)
            data = keepRow(firstRow + std::size_t(row), rowOf(rows, row), data);
    }
    /// Of the width of the bounds, but for what is empty on the right.
    void addRows(const CoverageMask &mask)
    {
        const QRect &bounds = m_sprite.m_bounds;
        const auto width = std::size_t(bounds.width());
        std::vector<quint8> rows(width * std::size_t(mask.bounds.height()));
        for (int y = 0; y < mask.bounds.height(); ++y)
            std::copy_n(mask.row(mask.bounds.top() + y), mask.bounds.width(),
                        rows.data() + std::size_t(y) * width + mask.bounds.left() - bounds.left());
        addRows({rows.data(), bounds.width(), mask.bounds.height()});
    }
    /// Those of a sprite that begins at the same left.
    void addRowsOf(const Sprite &other, int first, int count)
    {
        const auto begin = std::size_t(first);
        const auto end = std::size_t(first + count);
        std::size_t bytes = 0;
        for (std::size_t run = other.m_rowStarts[begin]; run < other.m_rowStarts[end]; ++run)
            bytes += bytesOf(other.m_runs[run]);
        quint8 *data = addBlock(bytes);
        for (std::size_t row = begin; row < end; ++row) {
            for (SpriteRun run : other.row(int(row))) {
                const std::size_t size = bytesOf(run);
                if (size > 0) {
                    std::memcpy(data, run.data, size);
                    run.data = data;
                    data += size;
                }
                m_sprite.m_runs.push_back(run);
            }
            endRow(other.fullSpan(int(row)));
        }
    }
    void addEmptyRows(int rows)
    {
        for (int row = 0; row < rows; ++row)
            endRow({});
    }

private:
    struct Row
    {
        const quint8 *pixels;
        const quint8 *coverage; // or none
    };

    static Row rowOf(const RasterRows &rows, int row)
    {
        return {rows.pixels + row * rows.rowBytes,
                rows.coverage ? rows.coverage + row * rows.coverageRowBytes : nullptr};
    }

    quint8 *addBlock(std::size_t bytes)
    {
        m_sprite.m_blocks.push_back(Block::make(bytes));
        m_sprite.m_bytes += qsizetype(bytes);
        return m_sprite.m_blocks.back().get();
    }

    /// What is covered wholly needs no mask.
    std::size_t bytesOf(const SpriteRun &run) const
    {
        const bool needsData = m_sprite.m_kind == Kind::picture || !run.isFull;
        const int bytes = m_sprite.bytesPerPixel() + (run.isRim ? 1 : 0);
        return needsData ? std::size_t(run.pixels) * std::size_t(bytes) : 0;
    }

    /// Calls `work(pixels, kind)`; what lies beyond the bounds is empty.
    template <typename Work>
    void forEachCell(const quint8 *row, int bytesPerPixel, const Work &work)
    {
        const int cellBytes = cellWidth * bytesPerPixel;
        const auto whole = std::size_t(m_sprite.m_bounds.width() / cellWidth);
        for (std::size_t cell = 0; cell < whole; ++cell)
            work(row + qsizetype(cell) * cellBytes, m_kinds[cell]);
        if (whole < m_kinds.size()) {
            quint8 last[cellWidth * 4] = {};
            const int left = m_sprite.m_bounds.width() % cellWidth * bytesPerPixel;
            std::copy_n(row + qsizetype(whole) * cellBytes, left, last);
            work(last, m_kinds[whole]);
        }
    }

    void classify(Row row)
    {
        const bool isMask = m_sprite.m_kind == Kind::mask;
        const auto kindOf = isMask ? cellOfMask : cellOfPicture;
        forEachCell(row.pixels, m_sprite.bytesPerPixel(),
                    [&](const quint8 *pixels, Cell &kind) { kind = kindOf(pixels); });
        if (row.coverage)
            forEachCell(row.coverage, 1, [](const quint8 *coverage, Cell &kind) {
                kind = weakened(kind, cellOfMask(coverage));
            });
        forEachStretch([this](std::size_t from, std::size_t to) { takeShortAlong(from, to); });
    }

    // A change of kind costs as much as a few cells.
    void takeShortAlong(std::size_t from, std::size_t to)
    {
        constexpr std::size_t shortestGap = 3;
        constexpr std::size_t shortest = 8;
        const Cell kind = m_kinds[from];
        const bool hasLeft = from > 0;
        const bool hasRight = to < m_kinds.size();
        const bool isBesideRim =
            (hasLeft && m_kinds[from - 1] == Cell::rim) || (hasRight && m_kinds[to] == Cell::rim);
        const bool isShortGap =
            kind == Cell::empty && hasLeft && hasRight && to - from < shortestGap;
        const bool isShortFull = kind == Cell::full && to - from < shortest;
        const bool isShortSoft = kind == Cell::soft && isBesideRim && to - from < shortest;
        if (isShortGap || isShortFull || isShortSoft)
            std::fill(m_kinds.begin() + qsizetype(from), m_kinds.begin() + qsizetype(to),
                      isBesideRim ? Cell::rim : Cell::soft);
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

    void addRow(Row row)
    {
        classify(row);
        Span longest;
        forEachStretch([&](std::size_t from, std::size_t to) {
            if (m_kinds[from] == Cell::empty)
                return;
            const SpriteRun run{nullptr, quint16(from * cellWidth),
                                quint16((to - from) * cellWidth), m_kinds[from] == Cell::full,
                                m_kinds[from] == Cell::rim};
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
    quint8 *keepRow(std::size_t row, Row given, quint8 *data)
    {
        for (std::size_t index = m_sprite.m_rowStarts[row]; index < m_sprite.m_rowStarts[row + 1];
             ++index) {
            SpriteRun &run = m_sprite.m_runs[index];
            const std::size_t bytes = bytesOf(run);
            if (bytes == 0)
                continue;
            const int pixels = std::min<int>(run.pixels, m_sprite.m_bounds.width() - run.x);
            const int bytesPerPixel = m_sprite.bytesPerPixel();
            quint8 *end = copyPart(data, given.pixels + qsizetype(run.x) * bytesPerPixel,
                                   pixels * bytesPerPixel, run.pixels * bytesPerPixel);
            if (run.isRim)
                copyPart(end, given.coverage + run.x, pixels, run.pixels);
            run.data = data;
            data += bytes;
        }
        return data;
    }

    /// `given` bytes and zeros up to `all`; returns what comes behind.
    static quint8 *copyPart(quint8 *target, const quint8 *source, int given, int all)
    {
        std::memcpy(target, source, std::size_t(given));
        std::memset(target + given, 0, std::size_t(all - given));
        return target + all;
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
    constexpr double rim = 2; // px
    const QRectF box = toDevice.mapRect(boxOf(fill.path, fill.parts));
    const QRectF reach = box.adjusted(-rim, -rim, rim, rim);
    const QRect pixels = alignedPixels(reach, area);
    if (pixels.isEmpty())
        return;
    const bool isWhole = fill.path.elementCount() > longOutline || !QRectF(area).contains(reach)
                         || qsizetype(pixels.width()) * pixels.height() <= 2 * stripPixels;
    if (isWhole) {
        const CoverageMask mask = rasterizedPath(fill.path, toDevice, area, fill.parts);
        if (!mask.bounds.isEmpty())
            Builder(*this, Kind::mask, mask.bounds)
                .addRows({mask.row(mask.bounds.top()), mask.bounds.width(), mask.bounds.height()});
        return;
    }
    Builder builder(*this, Kind::mask, pixels);
    std::vector<quint8> row(std::size_t(pixels.width()));
    const int stripRows = std::max(1, int(stripPixels / pixels.width()));
    for (int top = pixels.top(); top <= pixels.bottom(); top += stripRows) {
        const QRect strip(pixels.left(), top, pixels.width(),
                          std::min(stripRows, pixels.bottom() + 1 - top));
        const CoverageMask mask = rasterizedPath(fill.path, toDevice, strip, fill.parts);
        if (mask.bounds.isEmpty()) {
            builder.addEmptyRows(strip.height());
            continue;
        }
        builder.addEmptyRows(mask.bounds.top() - strip.top());
        builder.addRows(mask);
        builder.addEmptyRows(strip.bottom() - mask.bounds.bottom());
    }
}

// Whoever types changes a line of a title or two.
bool Sprite::addFillLike(const FilledPath &fill, const Sprite &similar)
{
    if (!m_origin || !similar.m_origin || similar.m_bounds.isEmpty()
        || m_origin->toDevice != similar.m_origin->toDevice
        || m_origin->shown != similar.m_origin->shown)
        return false;
    const std::optional<OutlineRows> changed =
        changedRows(similar.m_origin->parts, fill.parts, m_origin->toDevice);
    const QRect &kept = similar.m_bounds;
    if (!changed || (changed->top <= kept.top() && changed->bottom >= kept.bottom()))
        return false;
    const QRect &shown = m_origin->shown;
    const QRect band =
        shown & QRect(QPoint(shown.left(), changed->top), QPoint(shown.right(), changed->bottom));
    const CoverageMask mask = rasterizedPath(fill.path, m_origin->toDevice, band, fill.parts);
    const QRect &come = mask.bounds;
    if (!come.isEmpty() && come.left() < kept.left())
        return false;
    const int above = std::clamp(changed->top - kept.top(), 0, kept.height()); // rows
    const int below = std::clamp(kept.bottom() - changed->bottom, 0, kept.height());
    m_kinship = Kinship{similar.serial(), kept, *changed};
    QRect bounds = come;
    if (above > 0)
        bounds |= QRect(kept.left(), kept.top(), kept.width(), above);
    if (below > 0)
        bounds |= QRect(kept.left(), kept.bottom() + 1 - below, kept.width(), below);
    Builder builder(*this, Kind::mask, bounds);
    int next = bounds.top();
    const auto skipTo = [&](int y) {
        builder.addEmptyRows(y - next);
        next = y;
    };
    if (above > 0) {
        builder.addRowsOf(similar, 0, above);
        next += above;
    }
    if (!come.isEmpty()) {
        skipTo(come.top());
        builder.addRows(mask);
        next += come.height();
    }
    if (below > 0) {
        skipTo(kept.bottom() + 1 - below);
        builder.addRowsOf(similar, kept.height() - below, below);
    }
    return true;
}

// Strip by strip, since a raster of a whole canvas would double the memory that the picture takes.
void Sprite::addPicture(const PlacedPicture &picture, const QTransform &toDevice, const QRect &area,
                        const QRect &shown)
{
    QRect pixels = alignedPixels(toDevice.mapRect(picture.box).adjusted(-1, -1, 1, 1), shown);
    if (picture.mask) {
        const QRectF seen = toDevice.mapRect(picture.mask->controlPointRect());
        pixels = alignedPixels(seen.adjusted(-1, -1, 1, 1), pixels);
    }
    if (pixels.isEmpty())
        return;
    Builder builder(*this, Kind::picture, pixels);
    PictureRaster raster(picture, toDevice, area, shown);
    const int stripRows = std::max(1, int(stripPixels / pixels.width()));
    for (int top = pixels.top(); top <= pixels.bottom(); top += stripRows)
        builder.addRows(raster.rows(pixels & QRect(pixels.left(), top, pixels.width(), stripRows)));
}

std::shared_ptr<const Sprite> Sprite::make(const Primitive &primitive,
                                           const QTransform &canvasToDevice, const QRect &area,
                                           const Sprite *similar)
{
    const std::shared_ptr<Sprite> sprite(new Sprite);
    sprite->m_serial = nextSerial();
    sprite->m_area = area;
    const QRect shown =
        primitive.clip ? clipInPixels(*primitive.clip, canvasToDevice).intersected(area) : area;
    const QTransform toDevice = primitive.toCanvas * canvasToDevice;
    if (const auto *fill = std::get_if<FilledPath>(&primitive.what)) {
        if (fill->parts && fill->path.elementCount() > longOutline)
            sprite->m_origin = Origin{fill->parts, toDevice, shown};
        if (!similar || !sprite->addFillLike(*fill, *similar))
            sprite->addFill(*fill, toDevice, shown);
    } else {
        sprite->addPicture(std::get<PlacedPicture>(primitive.what), toDevice, area, shown);
    }
    return sprite;
}

} // namespace tessara
