// One row of a frame, composed where it is hot.
#pragma once

#include "Base/Pixels/RowBlending.h"
#include "Rendering/FramePath/SlidingRow.h"
#include "Rendering/FramePath/Sprite.h"

#include <span>
#include <vector>

namespace tessara {

/// A sprite as it is in one frame.
struct DrawItem
{
    std::shared_ptr<const Sprite> sprite;
    QRect place{};     // px, of the sprite in the frame
    int slideX = 0;    // 256ths of a pixel further to the right; one of the two is 0
    int slideY = 0;    // 256ths of a pixel further down
    quint32 color = 0; // of a mask, premultiplied
    int opacity = 255; // of a picture, 0 to 255

    bool operator==(const DrawItem &) const = default;

    bool slides() const { return slideX != 0 || slideY != 0; }
    /// All that it can reach.
    QRect bounds() const { return place.adjusted(0, 0, slideX != 0 ? 1 : 0, slideY != 0 ? 1 : 0); }
    bool isOpaque() const
    {
        return sprite->kind() == Sprite::Kind::mask ? color >> 24 == 255 : opacity == 255;
    }
};

/// Each thread has one. What is composed comes out as a painter would have it who draws the items
/// one after another.
class RowComposer
{
public:
    enum class Order { downward, upward };

    /// Rows are asked for in that order, or by chance; the order only makes it faster.
    explicit RowComposer(int width, Order order = Order::downward);

    /// Makes room for what `item` needs, so that no row has to.
    void reserve(const DrawItem &item);
    /// The pixels from `from` to below `to` of row `y`; `items` from the lowest to the highest.
    void compose(std::span<const DrawItem *const> items, int y, int from, int to,
                 quint32 background);
    const quint32 *row() const { return m_row; }

private:
    struct Cover
    {
        std::ptrdiff_t item = -1; // none
        int from = 0;
        int to = 0;
    };

    static Cover cover(std::span<const DrawItem *const> items, int y, int from, int to);
    bool storeFirst(const DrawItem &item, int y, int from, int to);
    void blend(const DrawItem &item, int y, int from, int to);
    void blendRun(const DrawItem &item, const SpriteRun &run, int from, int to);
    void blendSliding(const DrawItem &item, int y, int from, int to);
    void clear(int from, int to, quint32 background);

    void prefetchNext(const SpriteRun &run, const quint32 *source, int pixels) const
    {
        // The rows of a sprite lie behind each other.
        const quint32 *next =
            m_order == Order::downward ? source + run.pixels : source - run.pixels;
        prefetchRow(next, qsizetype(pixels) * 4);
    }

    const RowKernels &m_kernels;
    Order m_order;
    std::vector<quint32> m_pixels;
    quint32 *m_row; // with room on both sides for cells that hang over
    SlidingRow m_sliding;
};

} // namespace tessara
