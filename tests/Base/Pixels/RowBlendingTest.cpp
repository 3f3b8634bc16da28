#include "Base/Pixels/RowBlending.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <functional>
#include <set>
#include <vector>

#include "Base/Pixels/EveryTarget.h"

namespace tessara {
namespace {

using Row = std::vector<quint32>;
using Mask = std::vector<quint8>;

quint32 product(quint32 x, quint32 a)
{
    const quint32 t = x * a;
    return (t + (t >> 8) + 128) >> 8;
}

quint32 scaled(quint32 pixel, quint32 factor)
{
    quint32 result = 0;
    for (int shift = 0; shift < 32; shift += 8)
        result |= product(pixel >> shift & 0xFF, factor) << shift;
    return result;
}

quint32 composed(quint32 source, quint32 target)
{
    const quint32 below = scaled(target, 255 - (source >> 24));
    quint32 result = 0;
    for (int shift = 0; shift < 32; shift += 8)
        result |= ((source >> shift & 0xFF) + (below >> shift & 0xFF)) << shift;
    return result;
}

class Random
{
public:
    explicit Random(quint32 seed)
        : m_state(seed)
    {
    }

    quint32 upTo(quint32 most)
    {
        m_state = m_state * 1664525 + 1013904223;
        return (m_state >> 8) % (most + 1);
    }
    quint8 byte() { return quint8(upTo(3) == 0 ? upTo(1) * 255 : upTo(255)); }
    quint32 pixel() { return pixelOf(byte()); }
    quint32 pixelOf(quint32 alpha)
    {
        return alpha << 24 | upTo(alpha) << 16 | upTo(alpha) << 8 | upTo(alpha);
    }

private:
    quint32 m_state;
};

constexpr quint32 untouched = 0xA5A5A5A5;

/// Rows with something around them; `at` is where the pixels begin.
struct Stage
{
    Stage(qsizetype pixelCount, qsizetype begin, quint32 seed)
        : pixels(pixelCount)
        , at(begin)
    {
        Random random(seed);
        const std::size_t size = std::size_t(pixels + at + 24);
        target.assign(size, untouched);
        for (std::size_t i = 0; i < size; ++i) {
            source.push_back(random.pixel());
            opaque.push_back(random.pixelOf(255));
            mask.push_back(random.byte());
        }
        for (qsizetype x = 0; x < pixels; ++x)
            target[std::size_t(at + x)] = random.pixel();
        before = target;
        color = random.pixel();
        opacity = random.byte();
    }

    quint32 *to() { return target.data() + at; }
    const quint32 *from() const { return source.data() + 3; }
    const quint32 *opaqueFrom() const { return opaque.data() + 5; }
    const quint8 *through() const { return mask.data() + 7; }

    qsizetype pixels;
    qsizetype at;
    Row source;
    Row opaque;
    Row target;
    Row before;
    Mask mask;
    quint32 color = 0;
    int opacity = 0;
};

class RowBlendingTest : public EveryTarget
{
protected:
    using Call = std::function<void(const RowKernels &, Stage &)>;
    using Model = std::function<quint32(const Stage &, qsizetype x, quint32 target)>;

    /// Rows of one to many cells that begin anywhere, and nothing written beside them.
    static void expectEveryPixel(const Call &call, const Model &model)
    {
        quint32 seed = 1;
        for (const qsizetype pixels : {8, 16, 24, 32, 40, 48, 56, 64, 72, 136, 1000}) {
            for (qsizetype at = 0; at < 17; ++at) {
                Stage stage(pixels, at, ++seed);
                Row expected = stage.before;
                for (qsizetype x = 0; x < pixels; ++x)
                    expected[std::size_t(at + x)] =
                        model(stage, x, stage.before[std::size_t(at + x)]);

                call(rowKernels(), stage);

                ASSERT_EQ(stage.target, expected) << pixels << " pixels from " << at;
            }
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Targets, RowBlendingTest, testing::ValuesIn(everyTarget()), targetName);

TEST(RowKernelsTest, EveryTargetHasKernelsOfItsOwn)
{
    std::set<const RowKernels *> kernels;
    for (const std::int64_t target : everyTarget()) {
        hwy::SetSupportedTargetsForTest(target);
        kernels.insert(&rowKernels());
    }
    hwy::SetSupportedTargetsForTest(0);

    EXPECT_EQ(kernels.size(), everyTarget().size());
}

TEST_P(RowBlendingTest, EveryProductOfTwoBytesIsRoundedAsPromised)
{
    const RowKernels &kernels = rowKernels();
    Row greys;
    Mask masks;
    for (quint32 x = 0; x < 256; ++x) {
        greys.push_back(x * 0x01010101);
        masks.push_back(quint8(x));
    }

    for (quint32 a = 0; a < 256; ++a) {
        Row atOpacity(256), throughMask(256), belowSolid = greys, belowOpaque = greys;
        kernels.storePictureAt(atOpacity.data(), greys.data(), int(a), 256);
        kernels.storeMask(throughMask.data(), masks.data(), a * 0x01010101, 256);
        kernels.blendSolid(belowSolid.data(), (255 - a) << 24, 256);
        const Row shade(256, (255 - a) << 24);
        kernels.blendPicture(belowOpaque.data(), shade.data(), 256);

        for (quint32 x = 0; x < 256; ++x) {
            const quint32 grey = product(x, a) * 0x01010101;
            ASSERT_EQ(atOpacity[x], grey) << x << " * " << a;
            ASSERT_EQ(throughMask[x], grey) << x << " * " << a;
            ASSERT_EQ(belowSolid[x], grey + shade[x]) << x << " * " << a;
            ASSERT_EQ(belowOpaque[x], grey + shade[x]) << x << " * " << a;
        }
    }
}

TEST_P(RowBlendingTest, FillingLeavesNothingOfTheTarget)
{
    expectEveryPixel([](const RowKernels &kernels,
                        Stage &stage) { kernels.fill(stage.to(), stage.color, stage.pixels); },
                     [](const Stage &stage, qsizetype, quint32) { return stage.color; });
}

TEST_P(RowBlendingTest, ASolidColorGoesOverTheTarget)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.blendSolid(stage.to(), stage.color, stage.pixels);
        },
        [](const Stage &stage, qsizetype, quint32 target) {
            return composed(stage.color, target);
        });
}

TEST_P(RowBlendingTest, AMaskIsStoredInAColor)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.storeMask(stage.to(), stage.through(), stage.color, stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32) {
            return scaled(stage.color, stage.through()[x]);
        });
}

TEST_P(RowBlendingTest, AMaskGoesOverTheTargetInAColor)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.blendMask(stage.to(), stage.through(), stage.color, stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32 target) {
            return composed(scaled(stage.color, stage.through()[x]), target);
        });
}

TEST_P(RowBlendingTest, AMaskGoesOverTheTargetInAnOpaqueColor)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.blendMask(stage.to(), stage.through(), stage.opaque[0], stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32 target) {
            return composed(scaled(stage.opaque[0], stage.through()[x]), target);
        });
}

TEST_P(RowBlendingTest, APictureIsStoredAsItIs)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.storePicture(stage.to(), stage.from(), stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32) { return stage.from()[x]; });
}

TEST_P(RowBlendingTest, APictureGoesOverTheTarget)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.blendPicture(stage.to(), stage.from(), stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32 target) {
            return composed(stage.from()[x], target);
        });
}

TEST_P(RowBlendingTest, APictureIsStoredAtAnOpacity)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.storePictureAt(stage.to(), stage.from(), stage.opacity, stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32) {
            return scaled(stage.from()[x], quint32(stage.opacity));
        });
}

TEST_P(RowBlendingTest, APictureGoesOverTheTargetAtAnOpacity)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.blendPictureAt(stage.to(), stage.from(), stage.opacity, stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32 target) {
            return composed(scaled(stage.from()[x], quint32(stage.opacity)), target);
        });
}

TEST_P(RowBlendingTest, AnOpaquePictureGoesOverTheTargetAtAnOpacity)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.blendOpaquePictureAt(stage.to(), stage.opaqueFrom(), stage.opacity,
                                         stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32 target) {
            return composed(scaled(stage.opaqueFrom()[x], quint32(stage.opacity)), target);
        });
}

TEST_P(RowBlendingTest, APictureGoesOverTheTargetThroughAMaskAtAnOpacity)
{
    expectEveryPixel(
        [](const RowKernels &kernels, Stage &stage) {
            kernels.blendPictureThrough(stage.to(), stage.from(), stage.through(), stage.opacity,
                                        stage.pixels);
        },
        [](const Stage &stage, qsizetype x, quint32 target) {
            const int share = stage.through()[x] * (stage.opacity + 1) / 256;
            return composed(scaled(stage.from()[x], quint32(share)), target);
        });
}

TEST_P(RowBlendingTest, EveryMixOfTwoBytesIsRoundedAsPromised)
{
    const RowKernels &kernels = rowKernels();
    Mask first, second;
    for (int pair = 0; pair < 65536; ++pair) {
        first.push_back(quint8(pair));
        second.push_back(quint8(pair >> 8));
    }
    Mask mixed(first.size());

    for (const int weight : {0, 1, 2, 37, 127, 128, 129, 200, 255, 256}) {
        kernels.mixRows(mixed.data(), first.data(), second.data(), weight, qsizetype(mixed.size()));

        for (std::size_t i = 0; i < mixed.size(); ++i)
            ASSERT_EQ(mixed[i], (first[i] * (256 - weight) + second[i] * weight + 128) >> 8)
                << weight;
    }
}

TEST_P(RowBlendingTest, RowsAreMixedEightBytesAtATime)
{
    Random random(3);
    Mask source;
    for (int i = 0; i < 600; ++i)
        source.push_back(random.byte());
    for (qsizetype bytes = 8; bytes <= 264; bytes += 8) {
        for (const int shift : {1, 4}) {
            const int weight = int(random.upTo(256));
            const auto at = std::size_t(bytes % 5);
            Mask target(std::size_t(bytes) + 80, 0xA5);
            Mask expected = target;
            for (std::size_t i = 0; i < std::size_t(bytes); ++i)
                expected[at + i] = quint8(
                    (source[i] * (256 - weight) + source[i + std::size_t(shift)] * weight + 128)
                    >> 8);

            rowKernels().mixRows(target.data() + at, source.data(), source.data() + shift, weight,
                                 bytes);

            ASSERT_EQ(target, expected) << bytes;
        }
    }
}

TEST_P(RowBlendingTest, PicturesAndColorsComeOutAsFromQPainter)
{
    Random random(9);
    const auto image = [&random] {
        QImage result(64, 64, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x)
                reinterpret_cast<quint32 *>(result.scanLine(y))[x] = random.pixel();
        return result;
    };
    const QImage picture = image();
    const QColor color(200, 120, 10, 77);
    QImage painted = image();
    QImage composedHere = painted;

    QPainter painter(&painted);
    painter.drawImage(0, 0, picture);
    painter.fillRect(painted.rect(), color);
    painter.end();
    for (int y = 0; y < 64; ++y) {
        auto *row = reinterpret_cast<quint32 *>(composedHere.scanLine(y));
        rowKernels().blendPicture(row, reinterpret_cast<const quint32 *>(picture.constScanLine(y)),
                                  64);
        rowKernels().blendSolid(row, qPremultiply(color.rgba()), 64);
    }

    EXPECT_EQ(composedHere, painted);
}

} // namespace
} // namespace tessara
