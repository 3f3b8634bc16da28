#include "Rendering/FramePath/FramePath.h"

#include "Models/CanvasDocument.h"

#include <algorithm>

namespace tessara {

namespace {

quint32 premultiplied(const std::optional<QColor> &background)
{
    return background ? background->rgba64().premultiplied().toArgb32() : 0;
}

tl::expected<FrameGeometry, RenderEngineError> geometryOf(const CanvasDocument &document)
{
    return frameSize(document.size()).map([&](const QSize &size) {
        return FrameGeometry{size, frameTransform(document.size(), size), DrawingStyle::frame};
    });
}

// Too little work to wake anybody for.
constexpr qsizetype leastShared = 64 * 1024; // px

} // namespace

FramePath::FramePath(int threads)
    : m_workers(threads)
    , m_scene(m_workers)
{
}

FramePath::Result FramePath::render(const CanvasDocument &document,
                                    const std::optional<QColor> &background,
                                    std::span<const FrameTarget> targets)
{
    const tl::expected<FrameGeometry, RenderEngineError> geometry = geometryOf(document);
    if (!geometry)
        return tl::unexpected(geometry.error());
    return render(document, *geometry, background, targets);
}

FramePath::Result FramePath::render(const CanvasDocument &document, const FrameGeometry &geometry,
                                    const std::optional<QColor> &background,
                                    std::span<const FrameTarget> targets)
{
    const quint32 color = premultiplied(background);
    const bool isSame = isSetUpFor(geometry, color, targets);
    if (isSame && m_scene.isUpToDate(document, geometry))
        return frames();
    if (!isSame && !setUp(geometry, color, targets)) {
        m_outputs.clear(); // to be set up anew
        return tl::unexpected(RenderEngineError::bitmapCreationFailed);
    }
    m_damage = m_scene.update(document, geometry);
    // What was set up anew has not been composed at all, the frame that is scaled not even once.
    if (!isSame)
        m_damage.addAll();
    reserveItems();
    if (isSame && m_damage.isEmpty())
        return frames();
    for (Output &output : m_outputs) {
        if (output.scaled < 0)
            output.ring.add(m_damage);
    }
    if (!composeOutputs() || !composeScaledOutputs()) {
        m_outputs.clear(); // to be set up anew
        return tl::unexpected(RenderEngineError::bitmapCreationFailed);
    }
    return frames();
}

void FramePath::makeFramesAhead()
{
    for (Output &output : m_outputs)
        output.ring.makeAhead();
}

void FramePath::makeSprites(const CanvasDocument &document)
{
    const tl::expected<FrameGeometry, RenderEngineError> geometry = geometryOf(document);
    if (geometry)
        m_scene.makeAll(document, *geometry);
}

// Before the work is shared: a thread may have its first piece in any later frame.
void FramePath::reserveItems()
{
    for (Thread &thread : m_threads) {
        thread.items.reserve(m_scene.items().size());
        thread.mirroredItems.reserve(m_scene.items().size());
        for (const DrawItem &item : m_scene.items()) {
            thread.composer.reserve(item);
            thread.mirrored.reserve(item);
        }
    }
}

bool FramePath::isSetUpFor(const FrameGeometry &geometry, quint32 background,
                           std::span<const FrameTarget> targets) const
{
    const auto isSame = [](const Output &output, const FrameTarget &target) {
        return output.target == target;
    };
    return m_geometry == geometry && m_background == background
           && std::equal(m_outputs.begin(), m_outputs.end(), targets.begin(), targets.end(), isSame)
           && !m_outputs.empty();
}

bool FramePath::setUp(const FrameGeometry &geometry, quint32 background,
                      std::span<const FrameTarget> targets)
{
    Q_ASSERT(!targets.empty() && targets.size() <= mostTargets);
    const QSize size = geometry.pixels;
    m_geometry = geometry;
    m_background = background;
    m_damage = TileDamage(size);
    m_stale = TileDamage(size);
    m_outputs.clear();
    m_scaled.clear();
    m_canvasFrame = {};
    m_threads.clear();
    for (int thread = 0; thread < m_workers.threads(); ++thread)
        m_threads.emplace_back(size.width());
    for (const FrameTarget &target : targets) {
        Output output{target, {}, -1};
        output.ring.setUp(target.size, target.rowBytes * target.size.height());
        if (target.size != size) {
            const auto known = std::ranges::find(m_scaled, target.size, &ScaledFrame::size);
            output.scaled = int(known - m_scaled.begin());
            if (known == m_scaled.end())
                m_scaled.emplace_back(size, target.size, m_workers.threads());
        }
        m_outputs.push_back(std::move(output));
    }
    if (!m_scaled.empty())
        m_canvasFrame = FrameBytes::allocate(qsizetype(size.width()) * size.height() * 4);
    const bool hasCanvas = m_scaled.empty() || !m_canvasFrame.isNull();
    return hasCanvas && std::ranges::none_of(m_scaled, &ScaledFrame::isNull);
}

FramePath::Frames FramePath::frames() const
{
    Frames frames;
    for (std::size_t index = 0; index < m_outputs.size(); ++index) {
        Q_ASSERT(m_outputs[index].ring.current());
        frames[index] = m_outputs[index].ring.current()->bytes;
    }
    return frames;
}

bool FramePath::composeOutputs()
{
    m_destinations.clear();
    m_stale.clear();
    for (Output &output : m_outputs) {
        if (output.scaled >= 0)
            continue;
        const FrameRing::Slot *slot = output.ring.next();
        if (!slot)
            return false;
        m_stale.add(slot->stale);
    }
    for (Output &output : m_outputs) {
        if (output.scaled >= 0)
            continue;
        FrameRing::Slot *slot = output.ring.current();
        const FrameOutput destination(output.target, slot->bytes.writableData());
        if (destination.isMirrored())
            composeMirrored(destination, slot->stale);
        else
            m_destinations.push_back(destination);
        slot->stale.clear();
    }
    if (!m_destinations.empty())
        compose(m_destinations, m_stale);
    return true;
}

bool FramePath::composeScaledOutputs()
{
    if (m_scaled.empty())
        return true;
    const FrameTarget canvas{FrameContent::fill, FrameFormat::bgra, m_geometry.pixels,
                             qsizetype(m_geometry.pixels.width()) * 4};
    m_destinations.assign(1, FrameOutput(canvas, m_canvasFrame.writableData()));
    compose(m_destinations, m_damage);
    for (std::size_t index = 0; index < m_scaled.size(); ++index) {
        const TileDamage &changed =
            m_scaled[index].update(m_canvasFrame.data(), m_damage, m_workers);
        for (Output &output : m_outputs) {
            if (output.scaled != int(index))
                continue;
            output.ring.add(changed);
            FrameRing::Slot *slot = output.ring.next();
            if (!slot)
                return false;
            write(m_scaled[index], FrameOutput(output.target, slot->bytes.writableData()),
                  slot->stale);
            slot->stale.clear();
        }
    }
    return true;
}

void FramePath::compose(const Destinations &destinations, const TileDamage &stale)
{
    m_bands.clear();
    qsizetype tiles = 0;
    for (int band = 0; band < stale.bands(); ++band) {
        if (stale.band(band) == 0)
            continue;
        m_bands.push_back(band);
        tiles += __builtin_popcountll(stale.band(band));
    }
    const bool isLarge = tiles * stale.tileWidth() * TileDamage::bandRows >= leastShared;
    m_workers.run(
        int(m_bands.size()), isLarge ? m_workers.threads() - 1 : 0, [&](int piece, int thread) {
            const int band = m_bands[std::size_t(piece)];
            composeBand(destinations, band, stale.band(band), m_threads[std::size_t(thread)]);
        });
}

void FramePath::collect(int top, int bottom, std::vector<const DrawItem *> &items) const
{
    items.clear();
    for (const DrawItem &item : m_scene.items()) {
        if (item.place.top() < bottom && item.bounds().bottom() >= top)
            items.push_back(&item);
    }
}

void FramePath::composeBand(const Destinations &destinations, int band, quint64 tiles,
                            Thread &thread)
{
    const int top = band * TileDamage::bandRows;
    const int bottom = std::min(top + TileDamage::bandRows, m_geometry.pixels.height());
    collect(top, bottom, thread.items);
    m_stale.forEachStretch(tiles, [&](int from, int to) {
        for (int y = top; y < bottom; ++y) {
            thread.composer.compose(thread.items, y, from, to, m_background);
            for (const FrameOutput &destination : destinations)
                destination.write(y, thread.composer.row(), from, to);
        }
    });
    finishStreaming();
}

// Rows go in pairs, since each takes its alpha from the other.
void FramePath::composeMirrored(const FrameOutput &destination, const TileDamage &stale)
{
    const int height = m_geometry.pixels.height();
    constexpr int rows = TileDamage::bandRows;
    const int pairs = (height + 1) / 2;
    m_workers.run((pairs + rows - 1) / rows, m_workers.threads() - 1, [&](int piece, int index) {
        const int top = piece * rows;
        const int bottom = std::min(top + rows, pairs);
        const int below = height - bottom; // the pairs' lower rows: from here to height - top
        quint64 tiles = 0;
        for (int band = top / rows; band <= (bottom - 1) / rows; ++band)
            tiles |= stale.band(band);
        for (int band = below / rows; band <= (height - 1 - top) / rows; ++band)
            tiles |= stale.band(band);
        if (tiles == 0)
            return;
        Thread &thread = m_threads[std::size_t(index)];
        collect(top, bottom, thread.items);
        collect(below, height - top, thread.mirroredItems);
        stale.forEachStretch(tiles, [&](int from, int to) {
            for (int y = top; y < bottom; ++y) {
                const int other = height - 1 - y;
                thread.composer.compose(thread.items, y, from, to, m_background);
                thread.mirrored.compose(thread.mirroredItems, other, from, to, m_background);
                destination.write(y, thread.composer.row(), thread.mirrored.row(), from, to);
                if (other != y)
                    destination.write(other, thread.mirrored.row(), thread.composer.row(), from,
                                      to);
            }
        });
        finishStreaming();
    });
}

void FramePath::write(const ScaledFrame &source, const FrameOutput &destination,
                      const TileDamage &stale)
{
    const QSize size = source.size();
    constexpr int rows = TileDamage::bandRows;
    m_workers.run(stale.bands(), m_workers.threads() - 1, [&](int band, int) {
        const int top = band * rows;
        const int bottom = std::min(top + rows, size.height());
        for (int y = top; y < bottom; ++y) {
            const int other = size.height() - 1 - y;
            const bool isStale = stale.band(band) != 0
                                 || (destination.isMirrored() && stale.band(other / rows) != 0);
            if (isStale && destination.isMirrored())
                destination.write(y, source.row(y), source.row(other), 0, size.width());
            else if (isStale)
                destination.write(y, source.row(y), 0, size.width());
        }
        finishStreaming();
    });
}

} // namespace tessara
