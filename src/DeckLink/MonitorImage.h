// What a monitor shows for the bytes of a frame.
#pragma once

#include <QImage>

#include "Base/Pixels/PixelConversion.h"

namespace tessara {

/// The fill connector's picture, opaque: premultiplied colour over black, the alpha dropped. Null
/// for a format that no device of ours sends or a size that doesn't fit the rows.
QImage monitorImage(SourceRows frame, quint32 pixelFormat, int width, int height);
/// The key connector's picture: the alpha as grey, white for a format without alpha.
QImage monitorKeyImage(SourceRows frame, quint32 pixelFormat, int width, int height);

} // namespace tessara
