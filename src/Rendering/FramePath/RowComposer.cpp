#include "Rendering/FramePath/RowComposer.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr int room = 64; // px beside a row

int wholeCells(int pixels)
{
    return (pixels + cellWidth - 1) / cellWidth * cellWidth;
}

const quint32 *pixelsOf(const quint8 *data)
{
    return reinterpret_cast<const quint32 *>(data);
}

bool hasRow(const DrawItem &item, int y)
{
    return y >= item.place.top() && y <= item.place.bottom();
}

} // namespace

RowComposer::RowComposer(int width, Order order)
    : m_kernels(rowKernels())
    , m_order(order)
    , m_pixels(std::size_t(width + 3 * room))
{
    constexpr std::size_t cacheLine = 64; // bytes
    const auto address = reinterpret_cast<std::size_t>(m_pixels.data() + room);
    m_row =
        m_pixels.data() + room + (cacheLine - address % cacheLine) % cacheLine / sizeof(quint32);
}

void RowComposer::reserve(const DrawItem &item)
{
    if (item.slides())
        m_sliding.reserve(*item.sprite);
}

// What lies under the longest opaque stretch is never looked at.
RowComposer::Cover RowComposer::cover(std::span<const DrawItem *const> items, int y, int from,
                                      int to)
{
    Cover best;
    for (auto index = std::ptrdiff_t(items.size()) - 1; index >= 0; --index) {
        const DrawItem &item = *items[std::size_t(index)];
        if (!item.sprite->hasFullSpans() || item.slides() || !item.isOpaque() || !hasRow(item, y))
            continue;
        const Sprite::Span span = item.sprite->fullSpan(y - item.place.top());
        const int left = std::max(from, item.place.left() + span.x);
        const int right = std::min(to, item.place.left() + span.x + span.pixels);
        if (right - left <= best.to - best.from)
            continue;
        best = {index, left, right};
        if (left == from && right == to)
            break;
    }
    return best;
}

void RowComposer::compose(std::span<const DrawItem *const> items, int y, int from, int to,
                          quint32 background)
{
    const Cover under = cover(items, y, from, to);
    std::size_t index = 0;
    if (under.item >= 0) {
        clear(from, under.from, background);
        clear(under.to, to, background);
        for (; std::ptrdiff_t(index) < under.item; ++index) {
            blend(*items[index], y, from, under.from);
            blend(*items[index], y, under.to, to);
        }
    } else if (!items.empty() && background == 0 && storeFirst(*items[0], y, from, to)) {
        index = 1;
    } else {
        clear(from, to, background);
    }
    for (; index < items.size(); ++index)
        blend(*items[index], y, from, to);
}

void RowComposer::clear(int from, int to, quint32 background)
{
    if (from < to)
        m_kernels.fill(m_row + from, background, wholeCells(to - from));
}

// A lowest layer that fills the row needs nothing under it.
bool RowComposer::storeFirst(const DrawItem &item, int y, int from, int to)
{
    if (item.slides() || !hasRow(item, y))
        return false;
    const std::span<const SpriteRun> runs = item.sprite->row(y - item.place.top());
    if (runs.size() != 1)
        return false;
    const SpriteRun &run = runs.front();
    if (run.isRim)
        return false;
    const int left = item.place.left() + run.x;
    if (left > from || left + run.pixels < to)
        return false;
    const int skipped = (from - left) / cellWidth * cellWidth;
    const int pixels = wholeCells(to - left - skipped);
    quint32 *target = m_row + left + skipped;
    if (item.sprite->kind() == Sprite::Kind::mask) {
        if (run.isFull)
            m_kernels.fill(target, item.color, pixels);
        else
            m_kernels.storeMask(target, run.data + skipped, item.color, pixels);
        return true;
    }
    const quint32 *source = pixelsOf(run.data) + skipped;
    prefetchNext(run, source, pixels);
    if (item.opacity == 255)
        m_kernels.storePicture(target, source, pixels);
    else
        m_kernels.storePictureAt(target, source, item.opacity, pixels);
    return true;
}

void RowComposer::blend(const DrawItem &item, int y, int from, int to)
{
    if (from >= to)
        return;
    if (item.slides()) {
        blendSliding(item, y, from, to);
        return;
    }
    if (!hasRow(item, y))
        return;
    for (const SpriteRun &run : item.sprite->row(y - item.place.top())) {
        if (item.place.left() + run.x >= to)
            return;
        if (item.place.left() + run.x + run.pixels > from)
            blendRun(item, run, from, to);
    }
}

void RowComposer::blendRun(const DrawItem &item, const SpriteRun &run, int from, int to)
{
    const int left = item.place.left() + run.x;
    const int skipped = left < from ? (from - left) / cellWidth * cellWidth : 0;
    const int pixels = wholeCells(std::min(left + run.pixels, to) - left - skipped);
    quint32 *target = m_row + left + skipped;
    if (item.sprite->kind() == Sprite::Kind::mask) {
        if (!run.isFull)
            m_kernels.blendMask(target, run.data + skipped, item.color, pixels);
        else if (item.color >> 24 == 255)
            m_kernels.fill(target, item.color, pixels);
        else
            m_kernels.blendSolid(target, item.color, pixels);
        return;
    }
    const quint32 *source = pixelsOf(run.data) + skipped;
    if (run.isRim) {
        m_kernels.blendPictureThrough(target, source, run.coverage() + skipped, item.opacity,
                                      pixels);
        return;
    }
    if (!item.slides())
        prefetchNext(run, source, pixels);
    if (item.opacity == 255 && run.isFull)
        m_kernels.storePicture(target, source, pixels);
    else if (item.opacity == 255)
        m_kernels.blendPicture(target, source, pixels);
    else if (run.isFull)
        m_kernels.blendOpaquePictureAt(target, source, item.opacity, pixels);
    else
        m_kernels.blendPictureAt(target, source, item.opacity, pixels);
}

void RowComposer::blendSliding(const DrawItem &item, int y, int from, int to)
{
    const int row = y - item.place.top();
    if (row < 0 || row >= item.bounds().height())
        return;
    const int left = item.place.left();
    for (const SpriteRun &run :
         m_sliding.runs(*item.sprite, row, item.slideX, item.slideY, from - left, to - left)) {
        if (left + run.x < to && left + run.x + run.pixels > from)
            blendRun(item, run, from, to);
    }
}

} // namespace tessara
