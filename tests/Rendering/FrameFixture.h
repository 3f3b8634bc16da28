// A document, and its frame by the pixel.
#pragma once

#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"
#include "Rendering/ApplicationFonts.h"
#include "Rendering/RenderEngine.h"

#include <gtest/gtest.h>

#include <array>

namespace tessara {

/// R, G, B, A as they stand in memory, premultiplied.
using PixelBytes = std::array<int, 4>;

inline PixelBytes bytesAt(const QImage &frame, int x, int y)
{
    const uchar *pixel = frame.constScanLine(y) + 4 * x;
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

inline int alphaAt(const QImage &frame, int x, int y)
{
    return bytesAt(frame, x, y)[3];
}

/// The smallest box around everything that is not wholly transparent; empty for a blank frame.
inline QRect inkOf(const QImage &frame)
{
    QRect ink;
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            if (alphaAt(frame, x, y) > 0)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

inline bool isBlank(const QImage &frame)
{
    return inkOf(frame).isEmpty();
}

class FrameTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { loadApplicationFonts(); }

    QImage render(const std::optional<QColor> &background = {}) const
    {
        const auto frame = RenderEngine().render(document, background);
        EXPECT_TRUE(frame.has_value());
        return frame.value_or(QImage());
    }

    template <typename Kind>
    Kind *added(Kind *layer)
    {
        document.addLayer(CanvasLayerItem(layer));
        return layer;
    }

    ShapeLayer *addShape(ShapeKind kind, QRectF box, RGBAColor color = {1, 0, 0, 1})
    {
        auto *shape = new ShapeLayer(QUuid::createUuid(), "Shape", kind, box.topLeft(), box.size());
        shape->setColor(color);
        return added(shape);
    }

    TextLayer *addText(const QString &text, QPointF position, double size = 40)
    {
        auto *layer = new TextLayer(QUuid::createUuid(), "Text", text, position);
        layer->setFontSize(size);
        return added(layer);
    }

    ImageLayer *addPicture(const QImage &image, QRectF box, const ImageLayerOptions &options = {})
    {
        return added(new ImageLayer(QUuid::createUuid(), "Picture", Picture(image), QUrl(),
                                    box.topLeft(), box.size(), options));
    }

    CountdownLayer *addCountdown(QRectF box)
    {
        return added(
            new CountdownLayer(clock, QUuid::createUuid(), "Countdown", box.topLeft(), box.size()));
    }

    void setVisibility(const Layer *layer, double value)
    {
        document.takes().setVisibility(layer->id(), value);
    }

    void forgetVisibility() { document.setLayerVisibility({}); }

    ManualClock clock;
    CanvasDocument document{clock, {200, 100}};
};

} // namespace tessara
