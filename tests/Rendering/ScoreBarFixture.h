// A document for score bars, and what can be asked of their frames.
#pragma once

#include "Rendering/FrameFixture.h"

#include <algorithm>

namespace tessara {

class ScoreBarTest : public FrameTest
{
protected:
    ScoreBarTest() { document.setSize({1300, 300}); }

    ScoreLayer *addScore(ScoreTemplate scoreTemplate, QRectF box,
                         ScoreSportPreset sport = ScoreSportPreset::football)
    {
        return added(new ScoreLayer(QUuid::createUuid(), "Score", scoreTemplate, sport,
                                    box.topLeft(), box.size()));
    }

    /// Nothing is left but the texts and the ornaments of a title bar.
    ScoreLayer *addPanelless(ScoreTemplate scoreTemplate, QRectF box)
    {
        ScoreLayer *score = addScore(scoreTemplate, box);
        score->setOpacity(0);
        return score;
    }

    void cropTo(ScoreLayer *score, QRectF crop) { score->setCropRectNormalized(crop); }

    /// The frame of this layer alone.
    QImage frameOf(ScoreTemplate scoreTemplate, QRectF box, ScoreSportPreset sport)
    {
        ScoreLayer *score = addScore(scoreTemplate, box, sport);
        score->setHomeTeam("A");
        score->setAwayTeam("B");
        score->setHomeScore(0);
        score->setAwayScore(0);
        score->setPeriod("1");
        score->setClock("2");
        const QImage frame = render();
        document.removeSelectedLayers();
        return frame;
    }

    static int highestAlpha(const QImage &frame)
    {
        int highest = 0;
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x)
                highest = std::max(highest, alphaAt(frame, x, y));
        }
        return highest;
    }

    static int largestDifference(const QImage &one, const QImage &other)
    {
        int largest = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                for (size_t part = 0; part < 4; ++part)
                    largest = std::max(
                        largest, std::abs(bytesAt(one, x, y)[part] - bytesAt(other, x, y)[part]));
            }
        }
        return largest;
    }

    static bool hasColor(const QImage &frame, PixelBytes color, int tolerance = 1)
    {
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                const PixelBytes pixel = bytesAt(frame, x, y);
                if (std::equal(pixel.begin(), pixel.end(), color.begin(),
                               [&](int a, int b) { return std::abs(a - b) <= tolerance; }))
                    return true;
            }
        }
        return false;
    }

    static ScorePalette primaries()
    {
        ScorePalette palette;
        palette.background = {0, 0, 0, 1};
        palette.home = {1, 0, 0, 1};
        palette.center = {0, 1, 0, 1};
        palette.away = {0, 0, 1, 1};
        palette.badge = {0, 1, 1, 1};
        return palette;
    }
};

} // namespace tessara
