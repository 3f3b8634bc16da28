// One layer of each kind, owned by the test.
#pragma once

#include "Base/ManualClock.h"
#include "Models/CanvasLayerItem.h"

#include <gtest/gtest.h>

namespace tessara {

class LayerPropertyFixture : public testing::Test
{
protected:
    /// All kinds, with their values at the start.
    struct Layers
    {
        explicit Layers(Clock &clock)
            : countdown(clock, QUuid::createUuid(), QStringLiteral("Countdown"), {1, 2}, {3, 4})
        {
        }

        QList<CanvasLayerItem> all()
        {
            return {&text, &image, &shape, &score, &web, &model, &windowCapture, &countdown};
        }

        TextLayer text{QUuid::createUuid(), QStringLiteral("Text"), QStringLiteral("Hello")};
        ImageLayer image{QUuid::createUuid(), QStringLiteral("Image"), {}, {}, {1, 2}, {3, 4}};
        ShapeLayer shape{
            QUuid::createUuid(), QStringLiteral("Shape"), ShapeKind::rectangle, {1, 2}, {3, 4}};
        ScoreLayer score{QUuid::createUuid(),
                         QStringLiteral("Score"),
                         ScoreTemplate::compactStrip,
                         ScoreSportPreset::futsal,
                         {1, 2},
                         {3, 4}};
        WebLayer web{QUuid::createUuid(), QStringLiteral("Web"), {}, {1, 2}, {3, 4}};
        Model3DLayer model{QUuid::createUuid(), QStringLiteral("Model"), {1, 2}, {3, 4}};
        WindowCaptureLayer windowCapture{
            QUuid::createUuid(), QStringLiteral("Window"), {1, 2}, {3, 4}};
        CountdownLayer countdown;
    };

    ManualClock clock;
    Layers layers{clock};
};

} // namespace tessara
