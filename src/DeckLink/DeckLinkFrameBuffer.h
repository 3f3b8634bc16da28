// A rendered image as the bytes that a device takes: the mode's size, premultiplied B, G, R, A.
#pragma once

#include <QImage>
#include <QString>

#include <tl/expected.hpp>

#include "Base/Pixels/FrameBytes.h"

namespace tessara {

enum class DeckLinkFrameBufferError { contextCreationFailed };
QString text(DeckLinkFrameBufferError error);

struct DeckLinkFrameBuffer
{
    FrameBytes data;
    int width = 0;
    int height = 0;
    int rowBytes = 0;

    bool operator==(const DeckLinkFrameBuffer &) const = default;

    using Result = tl::expected<DeckLinkFrameBuffer, DeckLinkFrameBufferError>;

    /// The fill: the image stretched to the size, its aspect ratio is not kept.
    [[nodiscard]] static Result make(const QImage &image, int width, int height);
    /// The key of a pair of devices: the alpha as opaque grey.
    [[nodiscard]] static Result makeAlphaKey(const QImage &image, int width, int height);
    /// The fill for a card that keys by itself: the alpha upside down against the colour.
    [[nodiscard]] static Result makeExternalKeyFill(const QImage &image, int width, int height);
};

} // namespace tessara
