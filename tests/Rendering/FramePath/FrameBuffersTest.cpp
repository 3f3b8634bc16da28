#include "Rendering/FramePath/FramePathFixture.h"

#include <condition_variable>
#include <cstring>
#include <deque>
#include <mutex>
#include <set>

namespace tessara {
namespace {

using FrameBuffersTest = FramePathFixture;

const QColor green(0, 255, 0);

TEST_F(FrameBuffersTest, HandsOutTheSameFrameWhileNothingChanges)
{
    addShape(ShapeKind::star, {10, 10, 80, 80});
    const FrameBytes first = frame();

    const FrameBytes second = frame();

    EXPECT_EQ(second.data(), first.data());
}

TEST_F(FrameBuffersTest, HandsOutTheSameFrameForAChangeThatShowsNowhere)
{
    ShapeLayer *shape = addShape(ShapeKind::star, {10, 10, 80, 80});
    const FrameBytes first = frame();

    shape->setName("Another");
    shape->setIsLocked(true);

    EXPECT_EQ(frame().data(), first.data());
}

TEST_F(FrameBuffersTest, NeverWritesAFrameThatIsHeld)
{
    ShapeLayer *shape = addShape(ShapeKind::star, {10, 10, 60, 60});
    std::vector<FrameBytes> held;
    std::vector<QByteArray> copies;

    for (int tick = 0; tick < 12; ++tick) {
        shape->setPosition({10.0 + tick, 10});
        held.push_back(frame());
        copies.push_back(copyOf(held.back()));
    }

    for (std::size_t index = 0; index < held.size(); ++index)
        EXPECT_EQ(copyOf(held[index]), copies[index]) << index;
}

/// Holds the last few frames on a thread of its own, as a card does, and sees whether they stay.
class Holder
{
public:
    ~Holder()
    {
        if (m_thread.joinable())
            finish();
    }

    void take(const FrameBytes &frame)
    {
        constexpr std::size_t most = 4; // a card that gets no further takes no more
        std::unique_lock lock(m_mutex);
        m_change.wait(lock, [this] { return m_queue.size() < most; });
        m_queue.push_back(frame);
        m_change.notify_one();
    }
    /// How many frames were written to while they were held.
    int finish()
    {
        take({});
        m_thread.join();
        return m_broken;
    }

private:
    void work()
    {
        std::deque<std::pair<FrameBytes, QByteArray>> held;
        for (std::size_t count = 1;; ++count) {
            const FrameBytes frame = next();
            if (frame.isNull())
                break;
            held.emplace_back(
                frame, QByteArray(reinterpret_cast<const char *>(frame.data()), frame.size()));
            while (held.size() > count % 4) {
                const auto &[bytes, then] = held.front();
                m_broken +=
                    std::memcmp(bytes.data(), then.constData(), std::size_t(then.size())) ? 1 : 0;
                held.pop_front();
            }
        }
    }
    FrameBytes next()
    {
        std::unique_lock lock(m_mutex);
        m_change.wait(lock, [this] { return !m_queue.empty(); });
        const FrameBytes frame = m_queue.front();
        m_queue.pop_front();
        m_change.notify_one();
        return frame;
    }

    std::mutex m_mutex;
    std::condition_variable m_change;
    std::deque<FrameBytes> m_queue;
    int m_broken = 0;
    std::thread m_thread{[this] { work(); }};
};

TEST_F(FrameBuffersTest, GetsFramesBackFromAThreadOfTheCard)
{
    constexpr int ticks = 300;
    ShapeLayer *shape = addShape(ShapeKind::star, {10, 10, 60, 60});
    Holder holder;
    std::set<const quint8 *> places;
    for (int tick = 0; tick < ticks; ++tick) {
        shape->setPosition({10.0 + tick % 100, 10});
        const FrameBytes bytes = frame();
        EXPECT_EQ(bytes, reference()) << tick;
        places.insert(bytes.data());
        holder.take(bytes);
    }
    EXPECT_EQ(holder.finish(), 0);
    EXPECT_LE(places.size(), 16u); // they went round
}

TEST_F(FrameBuffersTest, WritesAFrameAgainThatNobodyHolds)
{
    ShapeLayer *shape = addShape(ShapeKind::star, {10, 10, 60, 60});
    const quint8 *first = frame().data();

    shape->setPosition({20, 10});

    EXPECT_EQ(frame().data(), first);
}

// Whoever comes back late has missed more than the last change.
TEST_F(FrameBuffersTest, BringsAFrameUpToDateThatWasAwayForLong)
{
    ShapeLayer *left = addShape(ShapeKind::rectangle, {0, 0, 20, 20});
    ShapeLayer *right = addShape(ShapeKind::rectangle, {150, 60, 20, 20});
    FrameBytes away = frame();
    const quint8 *place = away.data();
    left->setPosition({30, 0});
    FrameBytes other = frame();
    right->setPosition({150, 10});
    other = frame();

    away = {};
    left->setColor({0, 1, 0, 1});
    FrameBytes next = frame();
    left->setColor({0, 0, 1, 1});
    next = frame();

    EXPECT_EQ(next, reference());
    other = {};
    right->setColor({0, 1, 1, 1});
    EXPECT_EQ(frame(), reference());
    EXPECT_NE(place, nullptr);
}

TEST_F(FrameBuffersTest, LeavesTheBytesBeyondARowsPixelsAtZero)
{
    background = green;
    addShape(ShapeKind::rectangle, {-10, -10, 500, 500});
    using enum FrameContent;
    using enum FrameFormat;
    for (const FrameContent content : {fill, fillWithMirroredAlpha, key}) {
        for (const FrameFormat format : {bgra, argb, yuv}) {
            const FrameTarget target = frameTarget(content, format, canvas, 52);
            EXPECT_EQ(frame(target), reference(target));
            const FrameBytes shown = frame(target);
            for (int y = 0; y < canvas.height(); ++y) {
                const quint8 *end = shown.data() + (y + 1) * target.rowBytes;
                ASSERT_TRUE(std::all_of(end - 52, end, [](quint8 byte) { return byte == 0; }));
            }
        }
    }
}

} // namespace
} // namespace tessara
