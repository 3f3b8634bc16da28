// A document on a clock that stands still.
#pragma once

#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"

#include <gtest/gtest.h>

namespace tessara {

class DocumentFixture : public testing::Test
{
protected:
    /// A picture of one colour, entered as a layer.
    ImageLayer *addPicture(QSize size)
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::red);
        auto *layer = new ImageLayer(QUuid::createUuid(), QStringLiteral("Picture"), Picture(image),
                                     {}, {0, 0}, QSizeF(size));
        document.addLayer(CanvasLayerItem(layer));
        return layer;
    }

    ManualClock clock;
    CanvasDocument document{clock};
};

} // namespace tessara
