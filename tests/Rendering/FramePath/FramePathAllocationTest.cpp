// Counts what a tick takes from the heap, in any thread, by any way.
#include "Rendering/FramePath/FramePath.h"

#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"
#include "Rendering/ApplicationFonts.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

namespace {
std::atomic<int> allocations = 0;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isCounting = false; // the heap is the sanitizer's own
#else
constexpr bool isCounting = true;

// What the C library's heap is known by to itself. Operator new comes by here as well.
extern "C" {
void *__libc_malloc(std::size_t bytes);
void *__libc_calloc(std::size_t count, std::size_t bytes);
void *__libc_realloc(void *block, std::size_t bytes);
void *__libc_memalign(std::size_t alignment, std::size_t bytes);

void *malloc(std::size_t bytes)
{
    ++allocations;
    return __libc_malloc(bytes);
}
void *calloc(std::size_t count, std::size_t bytes)
{
    ++allocations;
    return __libc_calloc(count, bytes);
}
void *realloc(void *block, std::size_t bytes)
{
    ++allocations;
    return __libc_realloc(block, bytes);
}
void *memalign(std::size_t alignment, std::size_t bytes)
{
    ++allocations;
    return __libc_memalign(alignment, bytes);
}
void *aligned_alloc(std::size_t alignment, std::size_t bytes)
{
    ++allocations;
    return __libc_memalign(alignment, bytes);
}
int posix_memalign(void **block, std::size_t alignment, std::size_t bytes)
{
    ++allocations;
    *block = __libc_memalign(alignment, bytes);
    return *block ? 0 : 12; // ENOMEM
}
}
#endif

namespace tessara {
namespace {

class FramePathAllocationTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { loadApplicationFonts(); }

    void SetUp() override
    {
        if (!isCounting)
            GTEST_SKIP() << "the sanitizer has the heap";
        for (int index = 0; index < 8; ++index) {
            auto *shape = new ShapeLayer(QUuid::createUuid(), "Shape", ShapeKind(index % 6),
                                         QPointF(index * 70 + 0.5, 20), QSizeF(120 + index, 90));
            shape->setColor({index / 8.0, 0.5, 0, 0.8});
            document.addLayer(shape);
            document.addLayer(new TextLayer(QUuid::createUuid(), "Text", "Title",
                                            QPointF(20, index * 40 + 0.25)));
        }
        QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(20, 90, 200));
        auto *picture = new ImageLayer(QUuid::createUuid(), "Picture", Picture(image), QUrl(),
                                       {100.5, 100}, {320, 200});
        picture->setMaskShape(ImageLayerMaskShape::circle);
        document.addLayer(picture);
    }

    void tick()
    {
        const FramePath::Result frames = path.render(document, {}, targets);
        ASSERT_TRUE(frames);
        held[std::size_t(ticks++) % held.size()] = *frames; // as a device holds them
    }

    /// In one tick after `prepare`, which isn't counted.
    template <typename Prepare>
    int allocationsOfTick(const Prepare &prepare)
    {
        prepare();
        const int before = allocations;
        tick();
        return allocations - before;
    }

    /// The most of any tick, once all of them have happened.
    template <typename Prepare>
    int allocationsOf(const Prepare &prepare)
    {
        constexpr int warmUp = 60;
        int most = 0;
        for (int step = 0; step < 2 * warmUp; ++step) {
            const int taken = allocationsOfTick([&] { prepare(step % 21 / 20.0); });
            if (step >= warmUp)
                most = std::max(most, taken);
        }
        return most;
    }

    void setVisibilities(double value)
    {
        for (const QUuid &id : document.layerOrder())
            document.takes().setVisibility(id, value);
    }

    ManualClock clock;
    CanvasDocument document{clock, {640, 360}};
    std::array<FrameTarget, 2> targets{
        FrameTarget{FrameContent::fill, FrameFormat::bgra, {640, 360}, 640 * 4},
        FrameTarget{FrameContent::key, FrameFormat::yuv, {640, 360}, 640 * 2}};
    FramePath path{2};
    std::array<FramePath::Frames, 3> held;
    int ticks = 0;
};

TEST_F(FramePathAllocationTest, SeesAnAllocation)
{
    const int taken = allocationsOfTick([&] { document.setSize({320, 180}); });

    EXPECT_GT(taken, 0);
}

TEST_F(FramePathAllocationTest, TakesNothingWhileNothingChanges)
{
    EXPECT_EQ(allocationsOf([](double) {}), 0);
}

TEST_F(FramePathAllocationTest, TakesNothingWhileLayersFade)
{
    EXPECT_EQ(allocationsOf([&](double step) { setVisibilities(step); }), 0);
}

TEST_F(FramePathAllocationTest, TakesNothingWhileLayersSlide)
{
    for (const QUuid &id : document.layerOrder())
        document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, id);

    EXPECT_EQ(allocationsOf([&](double step) { setVisibilities(step); }), 0);
}

TEST_F(FramePathAllocationTest, TakesNothingWhileLayersFadeInAnExternalKeyAtAnotherSize)
{
    targets[0] = {FrameContent::fillWithMirroredAlpha, FrameFormat::argb, {640, 360}, 640 * 4};
    targets[1] = {FrameContent::fill, FrameFormat::bgra, {320, 180}, 320 * 4};

    EXPECT_EQ(allocationsOf([&](double step) { setVisibilities(step); }), 0);
}

} // namespace
} // namespace tessara
