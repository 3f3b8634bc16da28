// The frame path against drawing from nothing, over shows by chance. Longer runs:
// TESSARA_RANDOM_SHOWS tells how many shows a test has, TESSARA_RANDOM_SEED where they begin.
#include "Rendering/FramePath/FramePath.h"

#include "Rendering/ApplicationFonts.h"
#include "Rendering/FramePath/RandomShow.h"
#include "Rendering/FramePath/ReferenceFrames.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <deque>
#include <iostream>
#include <thread>

namespace tessara {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int standardShows = 5;
#else
constexpr int standardShows = 100;
#endif
constexpr int tests = 100;

int showsOfATest()
{
    bool isGiven = false;
    const int shows = qEnvironmentVariableIntValue("TESSARA_RANDOM_SHOWS", &isGiven);
    return isGiven ? shows : standardShows;
}

/// Frames that the device hasn't let go of, and what was in them when they were handed out.
class HeldFrames
{
public:
    void hold(const FrameBytes &bytes)
    {
        m_frames.push_back(
            {bytes, QByteArray(reinterpret_cast<const char *>(bytes.data()), bytes.size())});
    }
    void letGoOfOldest()
    {
        if (!m_frames.empty())
            m_frames.pop_front();
    }
    std::size_t count() const { return m_frames.size(); }
    bool areUntouched() const
    {
        return std::all_of(m_frames.begin(), m_frames.end(), [](const Frame &frame) {
            return std::memcmp(frame.bytes.data(), frame.then.constData(),
                               std::size_t(frame.then.size()))
                   == 0;
        });
    }

private:
    struct Frame
    {
        FrameBytes bytes;
        QByteArray then;
    };
    std::deque<Frame> m_frames;
};

struct Tally
{
    int shows = 0;
    int ticks = 0;
    int exactFrames = 0;
    int nearFrames = 0;    // at rest
    int slidingFrames = 0; // that aren't equal
    int keptSprites = 0;
    int unrepeatable = 0; // ticks that not even the reference draws twice
    int farAtRest = 0;    // by more than 1
    int refused = 0;      // frames for want of memory
    int largestAtRest = 0;
    int largestSliding = 0;
};

class FramePathRandomTest : public testing::TestWithParam<int>
{
protected:
    static void SetUpTestSuite() { loadApplicationFonts(); }
    static void TearDownTestSuite()
    {
        std::cout << tally.shows << " shows, " << tally.ticks
                  << " ticks; frames equal: " << tally.exactFrames
                  << ", near at rest: " << tally.nearFrames << " (by " << tally.largestAtRest
                  << ", more than 1 in " << tally.farAtRest << "), sliding: " << tally.slidingFrames
                  << " (by " << tally.largestSliding << "), of kept sprites: " << tally.keptSprites
                  << "; ticks without a reference: " << tally.unrepeatable
                  << ", without memory: " << tally.refused << '\n';
    }

    void runShow(quint32 seed)
    {
        RandomShow show(seed);
        ++tally.shows;
        const int ticks = 2 + show.dice().below(4);
        for (int tick = 0; tick < ticks; ++tick) {
            if (tick > 0)
                show.edit();
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", tick " << tick << ", canvas "
                                            << show.document().size().width() << " x "
                                            << show.document().size().height() << ", edits: "
                                            << show.story().join(", ").toStdString());
            ++tally.ticks;
            checkTick(show);
            EXPECT_TRUE(held.areUntouched());
            if (HasFailure())
                return;
            if (show.dice().chance(0.5))
                path.prepareHidden(); // with what is made still under way in the next edits
            while (held.count() > std::size_t(show.dice().below(5)))
                held.letGoOfOldest();
        }
    }

    /// Some frames find their sprites made, in one way or the other, or still being made.
    void makeAhead(RandomShow &show)
    {
        const CanvasDocument &document = show.document();
        if (show.dice().chance(0.2))
            path.makeSprites(document);
        if (show.dice().chance(0.2))
            path.prepareHidden();
        if (!show.dice().chance(0.2))
            return;
        const QSize size = *frameSize(document.size());
        const FrameGeometry geometry{size, frameTransform(document.size(), size),
                                     DrawingStyle::frame};
        const bool isWaiting = show.dice().chance(0.5);
        while (!path.prepare(document, geometry) && isWaiting)
            std::this_thread::yield();
    }

    /// Some frames find no memory; the next has to be right all the same.
    FramePath::Result rendered(RandomShow &show)
    {
        const qsizetype limit = show.dice().below(200'000); // bytes
        const auto render = [&] {
            return path.render(show.document(), show.background(), show.targets());
        };
        if (!show.dice().chance(0.05))
            return render();
        FrameBytes::setMaximumSize(limit);
        const FramePath::Result frames = render();
        FrameBytes::setMaximumSize(FrameBytes::maximumSize);
        if (frames)
            return frames;
        EXPECT_EQ(frames.error(), RenderEngineError::bitmapCreationFailed);
        ++tally.refused;
        return render();
    }

    void checkTick(RandomShow &show)
    {
        const auto drawn = reference.render(show.document(), show.background());
        if (drawn)
            makeAhead(show);
        const FramePath::Result frames = rendered(show);
        ASSERT_EQ(frames.has_value(), drawn.has_value());
        if (!drawn) {
            EXPECT_EQ(frames.error(), drawn.error());
            return;
        }
        FrameBytes anew;
        std::optional<bool> isRepeatable;
        for (std::size_t index = 0; index < show.targets().size(); ++index) {
            const FrameTarget &target = show.targets()[index];
            const FrameBytes &bytes = (*frames)[index];
            if (show.dice().chance(0.5))
                held.hold(bytes);
            if (bytes == referenceBytes(*drawn, target)) {
                ++tally.exactFrames;
                continue;
            }
            if (!isRepeatable)
                isRepeatable = drawsTheSameAgain(show, *drawn);
            if (!*isRepeatable)
                continue;
            // Near to the reference is a frame of the canvas's own size; what is made of it and
            // what is kept from tick to tick has no say in it.
            if (anew.isNull())
                anew = canvasFrame(FramePath(1), show, *drawn, false);
            if (bytes == referenceBytes(imageOf(anew, drawn->size()), target))
                continue;
            // A sprite that was made elsewhere on the frame may serve a slide.
            ++tally.keptSprites;
            const FrameBytes own = canvasFrame(path, show, *drawn, true);
            EXPECT_EQ(bytes, referenceBytes(imageOf(own, drawn->size()), target))
                << "target " << index << ": content " << int(target.content) << ", format "
                << int(target.format) << ", " << target.size.width() << " x "
                << target.size.height() << ", " << target.rowBytes << " bytes a row"
                << show.description().toStdString();
        }
    }

    // The platform forgets the picture of a coloured glyph once it was asked for its outline.
    bool drawsTheSameAgain(const RandomShow &show, const QImage &drawn)
    {
        const bool isSame = *RenderEngine().render(show.document(), show.background()) == drawn;
        tally.unrepeatable += isSame ? 0 : 1;
        return isSame;
    }

    template <typename Path>
    FrameBytes canvasFrame(Path &&by, const RandomShow &show, const QImage &drawn,
                           bool areSpritesKept)
    {
        const FrameTarget target = frameTarget(FrameContent::fill, FrameFormat::bgra, drawn.size());
        const FramePath::Result frames =
            by.render(show.document(), show.background(), {&target, 1});
        const QImage canvas = imageOf((*frames)[0], drawn.size());
        const Tolerance tolerance(show.document(), drawn.size(), areSpritesKept);
        const Difference found = difference(
            canvas.convertToFormat(QImage::Format_RGBA8888_Premultiplied), drawn, tolerance);
        EXPECT_EQ(found.beyond, 0)
            << "pixels are too far off, most of all by " << found.excess << " at "
            << found.worst.x() << ", " << found.worst.y() << show.description().toStdString();
        ++(tolerance.isSliding() ? tally.slidingFrames : tally.nearFrames);
        tally.farAtRest += !tolerance.isSliding() && found.largest > 1 ? 1 : 0;
        int &largest = tolerance.isSliding() ? tally.largestSliding : tally.largestAtRest;
        largest = std::max(largest, found.largest);
        return (*frames)[0];
    }

    static inline Tally tally;
    RenderEngine reference;
    FramePath path{1 + GetParam() % 3};
    HeldFrames held;
};

// One frame path lives through all of them.
TEST_P(FramePathRandomTest, GivesTheBytesOfDrawingFromNothingAfterEveryEdit)
{
    const int shows = showsOfATest();
    const int first = qEnvironmentVariableIntValue("TESSARA_RANDOM_SEED") + GetParam() * shows;
    for (int show = 0; show < shows && !HasFailure(); ++show)
        runShow(quint32(first + show));
}

INSTANTIATE_TEST_SUITE_P(Shows, FramePathRandomTest, testing::Range(0, tests));

} // namespace
} // namespace tessara
