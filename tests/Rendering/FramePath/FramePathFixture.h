// A frame path over a small document, and what it is measured by.
#pragma once

#include "Rendering/FramePath/FramePath.h"

#include "Rendering/FrameFixture.h"
#include "Rendering/FramePath/ReferenceFrames.h"

#include <thread>

namespace tessara {

class FramePathFixture : public FrameTest
{
protected:
    static constexpr QSize canvas{200, 100};

    FrameBytes frame(const FrameTarget &target)
    {
        const FramePath::Result frames = path.render(document, background, {&target, 1});
        EXPECT_TRUE(frames.has_value());
        return frames ? (*frames)[0] : FrameBytes();
    }
    FrameBytes frame() { return frame(plain); }

    FrameBytes reference(const FrameTarget &target) const
    {
        return referenceBytes(render(background), target);
    }
    FrameBytes reference() const { return reference(plain); }

    /// The bytes that are there now, however they are written later.
    static QByteArray copyOf(const FrameBytes &bytes)
    {
        return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
    }

    /// A picture of which no two neighbours are alike.
    static QImage noise(QSize size)
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x)
                image.setPixel(x, y, qRgb(x * 37 % 256, y * 91 % 256, x * y % 256));
        }
        return image;
    }

    void prepare()
    {
        while (!path.prepare(document, atRest))
            std::this_thread::yield();
    }

    FrameGeometry atRest{canvas, QTransform(), DrawingStyle::frame};
    FrameTarget plain = frameTarget(FrameContent::fill, FrameFormat::bgra, canvas);
    std::optional<QColor> background;
    FramePath path{2};
};

} // namespace tessara
